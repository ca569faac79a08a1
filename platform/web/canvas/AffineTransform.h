#pragma once

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
    void map(double& x, double& y) const
    {
        double mappedX = a * x + c * y + e;
        y = b * x + d * y + f;
        x = mappedX;
    }
    double determinant() const { return a * d - b * c; }
    bool isFinite() const
    {
        return std::isfinite(a) && std::isfinite(b) && std::isfinite(c) && std::isfinite(d) && std::isfinite(e) && std::isfinite(f);
    }
    bool isInvertible() const
    {
        double det = determinant();
        return det != 0 && std::isfinite(det) && isFinite();
    }
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
