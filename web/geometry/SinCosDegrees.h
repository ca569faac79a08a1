#pragma once

#include <array>
#include <cmath>
#include <optional>
#include <utility>

// Sine and cosine of an angle in degrees, exact at multiples of 90° (rotate(90deg) gives 0
// and 1, not 6.1e-17), as browsers compute transforms.
inline std::pair<double, double> sinCosDegrees(double degrees)
{
    double turns = degrees / 90;
    if (std::isfinite(turns) && turns == std::floor(turns)) {
        long quadrant = long(std::fmod(turns, 4));
        if (quadrant < 0)
            quadrant += 4;
        static constexpr double kSin[] = {0, 1, 0, -1};
        return {kSin[quadrant], kSin[(quadrant + 1) % 4]};
    }
    double radians = degrees * (M_PI / 180);
    return {std::sin(radians), std::cos(radians)};
}

// The rotation by `degrees` about the axis (x, y, z) in column-vector convention, M[row][column]:
// the axis-angle formula with the full angle's sine and cosine, as browsers build it for
// rotate3d() and DOMMatrix.rotateAxisAngle(). Nothing for a zero axis.
inline std::optional<std::array<std::array<double, 4>, 4>> rotationMatrix(double x, double y, double z, double degrees)
{
    double squareLength = x * x + y * y + z * z;
    if (squareLength == 0 || !std::isfinite(squareLength))
        return std::nullopt;
    if (squareLength != 1) {
        double scale = 1 / std::sqrt(squareLength);
        x *= scale;
        y *= scale;
        z *= scale;
    }
    auto [s, c] = sinCosDegrees(degrees);
    double t = 1 - c;
    return std::array<std::array<double, 4>, 4>{{
        {t * x * x + c, t * x * y - s * z, t * x * z + s * y, 0},
        {t * x * y + s * z, t * y * y + c, t * y * z - s * x, 0},
        {t * x * z - s * y, t * y * z + s * x, t * z * z + c, 0},
        {0, 0, 0, 1},
    }};
}
