#include "web/css/CSSTransform.h"

#include "web/css/CSSScanner.h"
#include "web/css/CSSUnits.h"
#include "web/geometry/Matrix4x4.h"
#include "web/geometry/SinCosDegrees.h"

#include <cmath>
#include <string>
#include <vector>

namespace {

using Matrix = Matrix4x4;
using Numeric = CSSScanner::Numeric;

constexpr Matrix kIdentity = {{{1, 0, 0, 0}, {0, 1, 0, 0}, {0, 0, 1, 0}, {0, 0, 0, 1}}};

// Absolute lengths in px; relative ones (em, %, vw, ...) cannot be resolved without a document.
std::optional<double> toPixels(const Numeric& n)
{
    return dimensionOrZero(n, pixelsPerAbsoluteLengthUnit);
}

std::optional<double> toDegrees(const Numeric& n)
{
    return dimensionOrZero(n, degreesPerAngleUnit);
}

// scale() takes numbers and, since Transforms 2, percentages.
std::optional<double> toFactor(const Numeric& n)
{
    if (n.isNumber())
        return n.value;
    if (n.isPercentage())
        return n.value / 100;
    return {};
}

std::optional<std::vector<Numeric>> parseArguments(CSSScanner& scanner)
{
    std::vector<Numeric> args;
    scanner.skipWhitespace();
    if (scanner.consume(')'))
        return args;
    while (true) {
        scanner.skipWhitespace();
        auto n = scanner.numeric();
        if (!n)
            return {};
        args.push_back(*n);
        scanner.skipWhitespace();
        if (scanner.consume(')'))
            return args;
        if (!scanner.consume(','))
            return {};
    }
}

Matrix translation(double x, double y, double z)
{
    Matrix m = kIdentity;
    m[0][3] = x;
    m[1][3] = y;
    m[2][3] = z;
    return m;
}

Matrix scaling(double x, double y, double z)
{
    Matrix m = kIdentity;
    m[0][0] = x;
    m[1][1] = y;
    m[2][2] = z;
    return m;
}

Matrix skewing(double degreesX, double degreesY)
{
    Matrix m = kIdentity;
    m[0][1] = std::tan(degreesX * M_PI / 180);
    m[1][0] = std::tan(degreesY * M_PI / 180);
    return m;
}

Matrix rotation(double x, double y, double z, double degrees)
{
    return rotationMatrix(x, y, z, degrees).value_or(kIdentity);
}

// One transform function; its name is already read, the scanner is inside the parentheses.
std::optional<Matrix> parseFunction(const std::string& name, CSSScanner& scanner, bool& is2D)
{
    auto args = parseArguments(scanner);
    if (!args)
        return {};
    const auto& a = *args;
    auto count = a.size();
    auto lengths = [&](std::vector<double>& out) {
        for (const auto& n : a) {
            auto px = toPixels(n);
            if (!px)
                return false;
            out.push_back(*px);
        }
        return true;
    };
    std::vector<double> v;

    if (name == "matrix" || name == "matrix3d") {
        bool flat = name == "matrix";
        if (count != (flat ? 6u : 16u))
            return {};
        for (const auto& n : a) {
            if (!n.isNumber())
                return {};
            v.push_back(n.value);
        }
        Matrix m = kIdentity;
        if (flat) {
            m[0][0] = v[0], m[1][0] = v[1], m[0][1] = v[2], m[1][1] = v[3], m[0][3] = v[4], m[1][3] = v[5];
        } else {
            is2D = false;
            for (int column = 0; column < 4; ++column)
                for (int row = 0; row < 4; ++row)
                    m[row][column] = v[column * 4 + row];
        }
        return m;
    }
    if (name == "translate" || name == "translatex" || name == "translatey" || name == "translatez" || name == "translate3d") {
        if (!lengths(v))
            return {};
        if (name == "translate" && (count == 1 || count == 2))
            return translation(v[0], count == 2 ? v[1] : 0, 0);
        if (count == 1 && name == "translatex")
            return translation(v[0], 0, 0);
        if (count == 1 && name == "translatey")
            return translation(0, v[0], 0);
        is2D = false;
        if (count == 1 && name == "translatez")
            return translation(0, 0, v[0]);
        if (count == 3 && name == "translate3d")
            return translation(v[0], v[1], v[2]);
        return {};
    }
    if (name == "scale" || name == "scalex" || name == "scaley" || name == "scalez" || name == "scale3d") {
        for (const auto& n : a) {
            auto factor = toFactor(n);
            if (!factor)
                return {};
            v.push_back(*factor);
        }
        if (name == "scale" && (count == 1 || count == 2))
            return scaling(v[0], count == 2 ? v[1] : v[0], 1);
        if (count == 1 && name == "scalex")
            return scaling(v[0], 1, 1);
        if (count == 1 && name == "scaley")
            return scaling(1, v[0], 1);
        is2D = false;
        if (count == 1 && name == "scalez")
            return scaling(1, 1, v[0]);
        if (count == 3 && name == "scale3d")
            return scaling(v[0], v[1], v[2]);
        return {};
    }
    if (name == "rotate" || name == "rotatex" || name == "rotatey" || name == "rotatez") {
        if (count != 1)
            return {};
        auto angle = toDegrees(a[0]);
        if (!angle)
            return {};
        if (name != "rotate")
            is2D = false;
        if (name == "rotatex")
            return rotation(1, 0, 0, *angle);
        if (name == "rotatey")
            return rotation(0, 1, 0, *angle);
        return rotation(0, 0, 1, *angle);
    }
    if (name == "rotate3d") {
        if (count != 4 || !a[0].isNumber() || !a[1].isNumber() || !a[2].isNumber())
            return {};
        auto angle = toDegrees(a[3]);
        if (!angle)
            return {};
        is2D = false;
        return rotation(a[0].value, a[1].value, a[2].value, *angle);
    }
    if (name == "skew" || name == "skewx" || name == "skewy") {
        for (const auto& n : a) {
            auto angle = toDegrees(n);
            if (!angle)
                return {};
            v.push_back(*angle);
        }
        if (name == "skew" && (count == 1 || count == 2))
            return skewing(v[0], count == 2 ? v[1] : 0);
        if (count == 1 && name == "skewx")
            return skewing(v[0], 0);
        if (count == 1 && name == "skewy")
            return skewing(0, v[0]);
        return {};
    }
    if (name == "perspective") {
        if (count != 1 || !lengths(v) || v[0] < 0)
            return {};
        is2D = false;
        Matrix m = kIdentity;
        m[3][2] = -1 / std::max(v[0], 1.0);
        return m;
    }
    return {};
}

} // namespace

std::optional<CSSTransformMatrix> parseCSSTransformList(std::string_view text)
{
    CSSTransformMatrix result{kIdentity, true};
    CSSScanner scanner(text);
    scanner.skipWhitespace();
    if (scanner.atEnd())
        return {};
    if (scanner.consumeOnlyKeyword("none"))
        return result;
    while (!scanner.atEnd()) {
        auto name = scanner.functionName();
        if (!name)
            return {};
        auto m = parseFunction(*name, scanner, result.is2D);
        if (!m)
            return {};
        result.m = multiply(result.m, *m);
        scanner.skipWhitespace();
    }
    return result;
}
