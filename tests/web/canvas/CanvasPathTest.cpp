#include "CanvasTestSupport.h"

#include "web/canvas/Path2D.h"

#include <cmath>
#include <vector>

namespace {

// Counts the elements of each kind in a path.
struct PathShape {
    int moves = 0, lines = 0, curves = 0, closes = 0;
};

PathShape shapeOf(const CanvasPath& path)
{
    PathShape shape;
    auto data = path.pathData();
    for (std::size_t i = 0; i < data.size(); i += data[i].header.length) {
        switch (data[i].header.type) {
        case CAIRO_PATH_MOVE_TO: ++shape.moves; break;
        case CAIRO_PATH_LINE_TO: ++shape.lines; break;
        case CAIRO_PATH_CURVE_TO: ++shape.curves; break;
        case CAIRO_PATH_CLOSE_PATH: ++shape.closes; break;
        }
    }
    return shape;
}

TEST(CanvasPath, NegativeRadiiThrowAfterTheSubpathIsEnsured)
{
    TestCanvas canvas(10, 10);
    EXPECT_EQ(canvas->arc(5, 5, -1, 0, 1).exception().name, "IndexSizeError");
    EXPECT_EQ(canvas->ellipse(5, 5, 1, -1, 0, 0, 1).exception().name, "IndexSizeError");
    EXPECT_TRUE(canvas->isEmpty());
    EXPECT_EQ(canvas->arcTo(1, 1, 2, 2, -5).exception().name, "IndexSizeError");
    EXPECT_EQ(shapeOf(*canvas.context).moves, 1);
    // Non-finite arguments win over negative radii: nothing happens.
    EXPECT_FALSE(canvas->arc(NAN, 5, -1, 0, 1).isException());
}

TEST(CanvasPath, ArcSweepsFollowBrowsers)
{
    // A sweep of 2π or more is a full circle; so is a counter-clockwise 0 → 2π.
    for (auto [start, end, ccw] : {std::tuple{0.0, 7.0, false}, {0.0, 2 * M_PI, true}, {1.0, 1.0 + 4 * M_PI, false}}) {
        TestCanvas canvas(40, 40);
        canvas->setLineWidth(4);
        ASSERT_FALSE(canvas->arc(20, 20, 10, start, end, ccw).isException());
        canvas->stroke();
        for (auto [x, y] : {std::pair{30, 20}, {10, 20}, {20, 10}, {20, 30}})
            EXPECT_EQ(pixelAt(canvas, x, y)[3], 255) << start << ".." << end << " at " << x << "," << y;
    }
    // Equal angles add only the start point; the wrong-way short sweep goes the long way round.
    TestCanvas same(40, 40);
    ASSERT_FALSE(same->arc(20, 20, 10, 1, 1).isException());
    EXPECT_EQ(shapeOf(*same.context).curves, 0);
    TestCanvas longWay(40, 40);
    longWay->setLineWidth(4);
    ASSERT_FALSE(longWay->arc(20, 20, 10, 0.5 * M_PI, 0, false).isException());
    longWay->stroke();
    EXPECT_EQ(pixelAt(longWay, 10, 20)[3], 255);
    EXPECT_EQ(pixelAt(longWay, 27, 27)[3], 0);
}

TEST(CanvasPath, ArcConnectsToTheCurrentPoint)
{
    TestCanvas canvas(40, 20);
    canvas->moveTo(0, 10);
    ASSERT_FALSE(canvas->arc(30, 10, 5, M_PI, 2 * M_PI).isException());
    auto shape = shapeOf(*canvas.context);
    EXPECT_EQ(shape.moves, 1);
    EXPECT_EQ(shape.lines, 1);
    canvas->setLineWidth(2);
    canvas->stroke();
    EXPECT_EQ(pixelAt(canvas, 12, 10)[3], 255);
}

TEST(CanvasPath, ArcToDegenerateCasesDrawStraightLines)
{
    // Collinear points, a repeated point and a zero radius all give a line to (x1, y1).
    struct Case {
        double x1, y1, x2, y2, radius;
    };
    for (Case c : {Case{20, 10, 40, 10, 10}, Case{0, 10, 40, 30, 10}, Case{20, 10, 20, 10, 10}, Case{20, 10, 20, 40, 0}}) {
        TestCanvas canvas(50, 50);
        canvas->moveTo(0, 10);
        ASSERT_FALSE(canvas->arcTo(c.x1, c.y1, c.x2, c.y2, c.radius).isException());
        auto shape = shapeOf(*canvas.context);
        EXPECT_EQ(shape.curves, 0);
        EXPECT_EQ(shape.lines, 1);
    }
    // A corner gets a tangent arc that ends where the second line starts.
    TestCanvas canvas(50, 50);
    canvas->moveTo(0, 10);
    ASSERT_FALSE(canvas->arcTo(40, 10, 40, 50, 10).isException());
    canvas->lineTo(40, 50);
    canvas->setLineWidth(2);
    canvas->stroke();
    EXPECT_EQ(pixelAt(canvas, 20, 10)[3], 255);
    EXPECT_EQ(pixelAt(canvas, 40, 35)[3], 255);
    EXPECT_EQ(pixelAt(canvas, 39, 11)[3], 0); // the corner itself is cut off
}

TEST(CanvasPath, RoundRectRadiiFollowTheStandard)
{
    TestCanvas canvas(10, 10);
    EXPECT_EQ(canvas->roundRect(0, 0, 5, 5, {{1, 1}, {1, 1}, {1, 1}, {1, 1}, {1, 1}}).exception().name, "RangeError");
    EXPECT_EQ(canvas->roundRect(0, 0, 5, 5, {{1, -1}}).exception().name, "RangeError");
    EXPECT_FALSE(canvas->roundRect(0, 0, 5, 5, {{NAN, 1}, {-1, 1}}).isException());
    EXPECT_TRUE(canvas->isEmpty());

    // Radii too large for the sides shrink together: a 20 by 10 box with radius 10 becomes a
    // stadium, whose corners are empty and whose middle is full.
    TestCanvas stadium(40, 20);
    ASSERT_FALSE(stadium->roundRect(10, 5, 20, 10, {{10, 10}}).isException());
    stadium->fill();
    EXPECT_EQ(pixelAt(stadium, 20, 10)[3], 255);
    EXPECT_EQ(pixelAt(stadium, 10, 5)[3], 0);
    EXPECT_EQ(pixelAt(stadium, 29, 14)[3], 0);

    // Two radii: upper-left and lower-right take the first, the others the second.
    TestCanvas corners(40, 40);
    ASSERT_FALSE(corners->roundRect(0, 0, 40, 40, {{20, 20}, {0, 0}}).isException());
    corners->fill();
    EXPECT_EQ(pixelAt(corners, 1, 1)[3], 0);
    EXPECT_EQ(pixelAt(corners, 38, 1)[3], 255);
    EXPECT_EQ(pixelAt(corners, 38, 38)[3], 0);
    EXPECT_EQ(pixelAt(corners, 1, 38)[3], 255);

    // Negative sizes flip the box and the winding, as rect() does: drawn inside a rectangle of
    // the other direction it cuts a hole under the non-zero rule.
    TestCanvas flipped(40, 40);
    flipped->rect(0, 0, 40, 40);
    ASSERT_FALSE(flipped->roundRect(30, 10, -20, 20, {{2, 2}}).isException());
    flipped->fill();
    EXPECT_EQ(pixelAt(flipped, 20, 20)[3], 0);
    EXPECT_EQ(pixelAt(flipped, 5, 5)[3], 255);
}

TEST(CanvasPath, IsPointInPathUsesCanvasCoordinates)
{
    TestCanvas canvas(100, 100);
    canvas->rect(0, 0, 20, 20);
    for (auto [x, y] : {std::pair{0.0, 0.0}, {10.0, 0.0}, {20.0, 20.0}, {0.0, 10.0}})
        EXPECT_TRUE(canvas->isPointInPath(x, y)) << x << "," << y;
    EXPECT_FALSE(canvas->isPointInPath(10, -0.01));
    EXPECT_FALSE(canvas->isPointInPath(NAN, 5));
    // The default path was transformed when built; the point is not.
    canvas->beginPath();
    canvas->translate(50, 50);
    canvas->rect(0, 0, 10, 10);
    EXPECT_TRUE(canvas->isPointInPath(55, 55));
    EXPECT_FALSE(canvas->isPointInPath(5, 5));
    // A Path2D takes the current transform when tested.
    Path2D path;
    path.rect(0, 0, 10, 10);
    EXPECT_TRUE(canvas->isPointInPath(path, 55, 55));
    EXPECT_FALSE(canvas->isPointInPath(path, 5, 5));
    // Fill rules.
    Path2D rings;
    rings.rect(0, 0, 30, 30);
    rings.rect(10, 10, 10, 10);
    canvas->resetTransform();
    EXPECT_TRUE(canvas->isPointInPath(rings, 15, 15, CanvasFillRule::Nonzero));
    EXPECT_FALSE(canvas->isPointInPath(rings, 15, 15, CanvasFillRule::Evenodd));
    // Strokes use the line width in user space.
    canvas->beginPath();
    canvas->moveTo(0, 80);
    canvas->lineTo(100, 80);
    canvas->setLineWidth(10);
    EXPECT_TRUE(canvas->isPointInStroke(50, 84));
    EXPECT_FALSE(canvas->isPointInStroke(50, 86));
    canvas->scale(1, 2);
    EXPECT_TRUE(canvas->isPointInStroke(50, 89));
}

TEST(CanvasPath, PathCallsWaitForAnInvertibleTransform)
{
    TestCanvas canvas(20, 20);
    canvas->scale(0, 1);
    canvas->moveTo(1, 1);
    canvas->lineTo(5, 5);
    EXPECT_TRUE(canvas->isEmpty());
    canvas->setTransform(1, 0, 0, 1, 0, 0);
    canvas->moveTo(1, 1);
    EXPECT_FALSE(canvas->isEmpty());

    // A scale whose determinant overflows a double is still invertible; the path it makes
    // reaches past the canvas on every side.
    canvas->beginPath();
    canvas->scale(1.7e308, 1.7e308);
    canvas->rect(-10, -10, 20, 20);
    EXPECT_TRUE(canvas->isPointInPath(0, 0, CanvasFillRule::Nonzero));
    EXPECT_TRUE(canvas->isPointInPath(19, 19, CanvasFillRule::Evenodd));
    Path2D square;
    square.rect(0, 0, 1, 1);
    EXPECT_TRUE(canvas->isPointInPath(square, 5, 5));
    EXPECT_FALSE(canvas->isPointInPath(square, -5, 5));
    // Cairo cannot draw through such a transform: nothing is drawn, and the context still
    // draws once the transform is reasonable again.
    canvas->setFillStyle(std::string("lime"));
    canvas->fill();
    canvas->stroke();
    EXPECT_FALSE(canvas->isPointInStroke(0, 0));
    canvas->resetTransform();
    canvas->fillRect(0, 0, 5, 5);
    EXPECT_EQ(pixelAt(canvas, 2, 2), (RGBA{{0, 255, 0, 255}}));
}

TEST(Path2D, ParsesSVGPathDataUpToTheFirstError)
{
    EXPECT_EQ(shapeOf(Path2D("M 10 10 L 20 20 z")).lines, 1);
    PathShape relative = shapeOf(Path2D("m10,10 20,0 0,20 h-20 v-20z"));
    EXPECT_EQ(relative.lines, 4);
    EXPECT_EQ(relative.closes, 1);
    EXPECT_EQ(shapeOf(Path2D("M0 0 C 1 1 2 2 3 3 S 5 5 6 6 Q 7 7 8 8 T 9 9")).curves, 4);
    EXPECT_GT(shapeOf(Path2D("M0 0 A 10 10 0 1 1 20 0")).curves, 1);
    EXPECT_GT(shapeOf(Path2D("M0 0a10 10 0 1020 0")).curves, 1); // flags without separators
    EXPECT_EQ(shapeOf(Path2D("M 0 0 L 10 10 L 20")).lines, 1);
    EXPECT_TRUE(Path2D("L 10 10").isEmpty());
    EXPECT_TRUE(Path2D("").isEmpty());
    EXPECT_EQ(shapeOf(Path2D("M 0 0 L 10 10 X 5 5")).lines, 1);

    Path2D square("M 2 2 h 6 v 6 h -6 z");
    TestCanvas canvas(10, 10);
    canvas->fill(square);
    EXPECT_EQ(pixelAt(canvas, 5, 5), kBlack);
    EXPECT_EQ(pixelAt(canvas, 1, 1), kTransparent);
}

TEST(Path2D, AddPathAppliesItsTransform)
{
    Path2D square;
    square.rect(0, 0, 4, 4);
    Path2D combined;
    DOMMatrix2DInit move;
    move.e = 10;
    move.f = 2;
    ASSERT_FALSE(combined.addPath(square, move).isException());
    TestCanvas canvas(20, 10);
    canvas->fill(combined);
    EXPECT_EQ(pixelAt(canvas, 12, 4), kBlack);
    EXPECT_EQ(pixelAt(canvas, 2, 2), kTransparent);
    DOMMatrix2DInit bad;
    bad.b = 1;
    bad.m12 = 2;
    EXPECT_EQ(combined.addPath(square, bad).exception().name, "TypeError");
    Path2D copy(combined);
    EXPECT_EQ(copy.pathData().size(), combined.pathData().size());
}

} // namespace
