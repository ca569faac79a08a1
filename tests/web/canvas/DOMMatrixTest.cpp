#include "web/geometry/DOMMatrix.h"
#include "web/geometry/NumberToString.h"

#include <gtest/gtest.h>

#include <cmath>
#include <vector>

namespace {

std::string text(const DOMMatrixReadOnly& m)
{
    auto s = m.toString();
    return s.isException() ? "throws " + s.exception().name : s.value();
}

std::string text(const ExceptionOr<DOMMatrix>& m)
{
    return m.isException() ? "throws " + m.exception().name : text(m.value());
}

DOMMatrix matrix(std::vector<double> numbers) { return DOMMatrix::create(numbers).releaseValue(); }

// Expected strings are Chromium's for the same calls.
TEST(DOMMatrix, ParsesTransformListsLikeCSS)
{
    EXPECT_EQ(text(DOMMatrix::create("translate(10px, 5px) rotate(90deg)")), "matrix(0, 1, -1, 0, 10, 5)");
    EXPECT_EQ(text(DOMMatrix::create("translate(10px, 5px) scale(2) skewX(45deg)")), "matrix(2, 0, 1.9999999999999998, 2, 10, 5)");
    EXPECT_EQ(text(DOMMatrix::create("rotate(0.25turn)")), "matrix(0, 1, -1, 0, 0, 0)");
    EXPECT_EQ(text(DOMMatrix::create("translate(1in, 0)")), "matrix(1, 0, 0, 1, 96, 0)");
    EXPECT_EQ(text(DOMMatrix::create("scale(50%)")), "matrix(0.5, 0, 0, 0.5, 0, 0)");
    EXPECT_EQ(text(DOMMatrix::create("rotate(0)")), "matrix(1, 0, 0, 1, 0, 0)");
    EXPECT_EQ(text(DOMMatrix::create("none")), "matrix(1, 0, 0, 1, 0, 0)");
    EXPECT_EQ(text(DOMMatrix::create("")), "matrix(1, 0, 0, 1, 0, 0)");
    EXPECT_EQ(text(DOMMatrix::create("matrix(1,2,3,4,5,6)")), "matrix(1, 2, 3, 4, 5, 6)");
    EXPECT_EQ(text(DOMMatrix::create("translateZ(5px)")), "matrix3d(1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 0, 0, 5, 1)");
    EXPECT_EQ(text(DOMMatrix::create("perspective(100px)")), "matrix3d(1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, -0.01, 0, 0, 0, 1)");
    EXPECT_EQ(text(DOMMatrix::create("scale3d(1, 2, 3) translate3d(1px, 2px, 3px)")),
              "matrix3d(1, 0, 0, 0, 0, 2, 0, 0, 0, 0, 3, 0, 1, 4, 9, 1)");
    for (const char* bad : {"translate(1em)", "translate(10%)", "rotate(45)", "matrix(1 2 3 4 5 6)", "scale(2) junk", "none none"})
        EXPECT_EQ(text(DOMMatrix::create(bad)), "throws SyntaxError") << bad;
}

TEST(DOMMatrix, ConstructsFromSequencesAndDictionaries)
{
    EXPECT_EQ(text(DOMMatrix::create(std::vector<double>{1, 2, 3, 4, 5})), "throws TypeError");
    DOMMatrix m3d = matrix({1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 7, 8, 9, 1});
    EXPECT_FALSE(m3d.is2D());
    EXPECT_EQ(m3d.m43(), 9);

    DOMMatrixInit conflicting;
    conflicting.a = 1;
    conflicting.m11 = 2;
    EXPECT_EQ(text(DOMMatrix::fromMatrix(conflicting)), "throws TypeError");
    DOMMatrixInit flat3D;
    flat3D.a = 3;
    flat3D.is2D = true;
    flat3D.m33 = 2;
    EXPECT_EQ(text(DOMMatrix::fromMatrix(flat3D)), "throws TypeError");
    DOMMatrixInit nanAlias;
    nanAlias.a = NAN;
    nanAlias.m11 = NAN;
    EXPECT_FALSE(DOMMatrix::fromMatrix(nanAlias).isException());
    DOMMatrixInit implied3D;
    implied3D.m13 = 0.5;
    EXPECT_FALSE(DOMMatrix::fromMatrix(implied3D).value().is2D());
    DOMMatrixInit shortNames;
    shortNames.b = 2;
    shortNames.e = 5;
    DOMMatrix fromShort = DOMMatrix::fromMatrix(shortNames).releaseValue();
    EXPECT_EQ(fromShort.m12(), 2);
    EXPECT_EQ(fromShort.m41(), 5);
    EXPECT_EQ(fromShort.m11(), 1);
}

TEST(DOMMatrix, OperationsFollowTheGeometryInterfaces)
{
    DOMMatrixInit doubling;
    doubling.a = 2;
    doubling.d = 2;
    EXPECT_EQ(text(matrix({1, 2, 3, 4, 5, 6}).multiply(doubling)), "matrix(2, 4, 6, 8, 5, 6)");
    EXPECT_EQ(text(matrix({2, 0, 0, 2, 10, 20}).inverse()), "matrix(0.5, 0, 0, 0.5, -5, -10)");
    DOMMatrix singular = matrix({0, 0, 0, 0, 10, 20}).inverse();
    EXPECT_EQ(text(singular), "throws InvalidStateError");
    EXPECT_FALSE(singular.is2D());
    EXPECT_EQ(text(DOMMatrix().rotate(30)), "matrix(0.8660254037844387, 0.49999999999999994, -0.49999999999999994, 0.8660254037844387, 0, 0)");
    EXPECT_FALSE(DOMMatrix().rotate(30, 0, 0).is2D());
    EXPECT_TRUE(DOMMatrix().rotate(30).is2D());
    EXPECT_EQ(text(DOMMatrix().translate(1, 2, 3)), "matrix3d(1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 1, 2, 3, 1)");
    EXPECT_EQ(text(DOMMatrix().scale(2, {}, 1, 5, 5)), "matrix(2, 0, 0, 2, -5, -5)");
    EXPECT_EQ(text(DOMMatrix().skewY(30)), "matrix(1, 0.5773502691896257, 0, 1, 0, 0)");
    EXPECT_EQ(text(DOMMatrix().rotateFromVector(0, 2)), "matrix(0, 1, -1, 0, 0, 0)");
    EXPECT_EQ(text(DOMMatrix().rotateFromVector(0, 0)), "matrix(1, 0, 0, 1, 0, 0)");
    EXPECT_EQ(text(DOMMatrix().rotateAxisAngle(0, 0, 1, 90)), "matrix(0, 1, -1, 0, 0, 0)");
    EXPECT_EQ(text(DOMMatrix().flipX()), "matrix(-1, 0, 0, 1, 0, 0)");
    EXPECT_EQ(text(DOMMatrix::create("rotate3d(1, 1, 0, 90deg)")),
              "matrix3d(0.4999999999999999, 0.4999999999999999, -0.7071067811865475, 0, 0.4999999999999999, "
              "0.4999999999999999, 0.7071067811865475, 0, 0.7071067811865475, -0.7071067811865475, 0, 0, 0, 0, 0, 1)");

    DOMMatrixInit scaleAndMove;
    scaleAndMove.a = 2;
    scaleAndMove.e = 5;
    EXPECT_EQ(DOMPoint(1, 2).matrixTransform(scaleAndMove).value().x(), 7);
    DOMPoint p = DOMMatrix::create("translate(10px, 20px) scale(2)").value().transformPoint({1, 1, 0, 1});
    EXPECT_EQ(p.x(), 12);
    EXPECT_EQ(p.y(), 22);

    DOMMatrix m;
    m.setM33(2);
    EXPECT_FALSE(m.is2D());
    EXPECT_FALSE(m.setMatrixValue("translate(3px)").isException());
    EXPECT_TRUE(m.is2D());
    EXPECT_EQ(m.e(), 3);
    EXPECT_TRUE(m.setMatrixValue("bogus").isException());
    EXPECT_EQ(m.e(), 3);
}

TEST(DOMMatrix, PrintsNumbersAsECMAScriptDoes)
{
    EXPECT_EQ(text(matrix({1e21, 1e-7, 0.1, -0.0, 123456789.125, 1.0 / 3})),
              "matrix(1e+21, 1e-7, 0.1, 0, 123456789.125, 0.3333333333333333)");
    EXPECT_EQ(text(matrix({1, 0, 0, 1, NAN, 0})), "throws InvalidStateError");
    EXPECT_EQ(numberToString(123e-20), "1.23e-18");
    EXPECT_EQ(numberToString(0.000001), "0.000001");
    EXPECT_EQ(numberToString(-1e21), "-1e+21");
    EXPECT_EQ(numberToString(1e20), "100000000000000000000");
    EXPECT_EQ(numberToString(-INFINITY), "-Infinity");
}

} // namespace
