#pragma once

#include <algorithm>
#include <cmath>
#include <optional>

// The canvas's current transformation matrix, [a c e; b d f; 0 0 1] in the standard's naming.
struct AffineTransform {
    double a = 1, b = 0, c = 0, d = 1, e = 0, f = 0;

    static AffineTransform translation(double x, double y) { return {1, 0, 0, 1, x, y}; }

    // this * other: other applies to a point first.
    AffineTransform multiply(const AffineTransform& other) const
    {
        return {a * other.a + c * other.b, b * other.a + d * other.b,
                a * other.c + c * other.d, b * other.c + d * other.d,
                a * other.e + c * other.f + e, b * other.e + d * other.f + f};
    }
    // Finite points stay finite: where a huge (finite) matrix overflows a double, the point
    // is worked out in wider precision and held at kFar, beyond anything drawn.
    static constexpr double kFar = 1e300;
    void map(double& x, double& y) const
    {
        double mappedX = a * x + c * y + e;
        double mappedY = b * x + d * y + f;
        if (!std::isfinite(mappedX) || !std::isfinite(mappedY)) {
            long double wideX = (long double)a * x + (long double)c * y + e;
            long double wideY = (long double)b * x + (long double)d * y + f;
            mappedX = double(std::clamp<long double>(wideX, -kFar, kFar));
            mappedY = double(std::clamp<long double>(wideY, -kFar, kFar));
        }
        x = mappedX;
        y = mappedY;
    }
    double determinant() const { return a * d - b * c; }
    bool isFinite() const
    {
        return std::isfinite(a) && std::isfinite(b) && std::isfinite(c) && std::isfinite(d) && std::isfinite(e) && std::isfinite(f);
    }
    // What Cairo accepts as a matrix: finite entries and a finite, non-zero determinant.
    bool isInvertible() const
    {
        double det = determinant();
        return det != 0 && std::isfinite(det) && isFinite();
    }
    // Invertible in exact arithmetic: finite entries and a non-zero determinant, even one that
    // overflows a double (scale(1e200, 1e200)). Paths can be built and hit-tested under such
    // a transform, though Cairo cannot draw with it.
    bool hasInverse() const { return isFinite() && (long double)a * d - (long double)b * c != 0; }
    std::optional<AffineTransform> inverse() const
    {
        if (!isInvertible())
            return {};
        double det = determinant();
        return AffineTransform{d / det, -b / det, -c / det, a / det, (c * f - d * e) / det, (b * e - a * f) / det};
    }
    bool isIdentity() const { return a == 1 && b == 0 && c == 0 && d == 1 && e == 0 && f == 0; }
    friend bool operator==(const AffineTransform&, const AffineTransform&) = default;
};
