#include "web/canvas/FilterPrimitive.h"

#include <algorithm>
#include <cmath>

namespace {

// A matrix acting on colour alone: 3x3 over r, g, b; alpha passes through.
ColorMatrixPrimitive colorOnly(const std::array<double, 9>& m)
{
    ColorMatrixPrimitive primitive;
    for (int row = 0; row < 3; ++row) {
        for (int column = 0; column < 3; ++column)
            primitive.matrix[row * 5 + column] = m[row * 3 + column];
    }
    primitive.matrix[18] = 1;
    return primitive;
}

} // namespace

ColorMatrixPrimitive ColorMatrixPrimitive::identity() { return colorOnly({1, 0, 0, 0, 1, 0, 0, 0, 1}); }

ColorMatrixPrimitive ColorMatrixPrimitive::saturate(double s)
{
    return colorOnly({0.213 + 0.787 * s, 0.715 - 0.715 * s, 0.072 - 0.072 * s,
                      0.213 - 0.213 * s, 0.715 + 0.285 * s, 0.072 - 0.072 * s,
                      0.213 - 0.213 * s, 0.715 - 0.715 * s, 0.072 + 0.928 * s});
}

ColorMatrixPrimitive ColorMatrixPrimitive::hueRotate(double degrees)
{
    double c = std::cos(degrees * M_PI / 180), s = std::sin(degrees * M_PI / 180);
    return colorOnly({0.213 + c * 0.787 - s * 0.213, 0.715 - c * 0.715 - s * 0.715, 0.072 - c * 0.072 + s * 0.928,
                      0.213 - c * 0.213 + s * 0.143, 0.715 + c * 0.285 + s * 0.140, 0.072 - c * 0.072 - s * 0.283,
                      0.213 - c * 0.213 - s * 0.787, 0.715 - c * 0.715 + s * 0.715, 0.072 + c * 0.928 + s * 0.072});
}

ColorMatrixPrimitive ColorMatrixPrimitive::luminanceToAlpha()
{
    ColorMatrixPrimitive primitive;
    primitive.matrix[15] = 0.2125, primitive.matrix[16] = 0.7154, primitive.matrix[17] = 0.0721;
    return primitive;
}

ColorMatrixPrimitive ColorMatrixPrimitive::grayscale(double amount)
{
    double a = 1 - std::clamp(amount, 0.0, 1.0);
    return colorOnly({0.2126 + 0.7874 * a, 0.7152 - 0.7152 * a, 0.0722 - 0.0722 * a,
                      0.2126 - 0.2126 * a, 0.7152 + 0.2848 * a, 0.0722 - 0.0722 * a,
                      0.2126 - 0.2126 * a, 0.7152 - 0.7152 * a, 0.0722 + 0.9278 * a});
}

ColorMatrixPrimitive ColorMatrixPrimitive::sepia(double amount)
{
    double a = 1 - std::clamp(amount, 0.0, 1.0);
    return colorOnly({0.393 + 0.607 * a, 0.769 - 0.769 * a, 0.189 - 0.189 * a,
                      0.349 - 0.349 * a, 0.686 + 0.314 * a, 0.168 - 0.168 * a,
                      0.272 - 0.272 * a, 0.534 - 0.534 * a, 0.131 + 0.869 * a});
}

double TransferFunction::apply(double c) const
{
    switch (type) {
    case Type::Identity:
        return c;
    case Type::Table: {
        if (tableValues.empty())
            return c;
        std::size_t n = tableValues.size() - 1;
        if (n == 0)
            return tableValues[0];
        double position = std::clamp(c, 0.0, 1.0) * double(n);
        std::size_t k = std::min(n - 1, std::size_t(position));
        return tableValues[k] + (position - double(k)) * (tableValues[k + 1] - tableValues[k]);
    }
    case Type::Discrete: {
        if (tableValues.empty())
            return c;
        std::size_t n = tableValues.size();
        std::size_t k = std::min(n - 1, std::size_t(std::clamp(c, 0.0, 1.0) * double(n)));
        return tableValues[k];
    }
    case Type::Linear:
        return slope * c + intercept;
    case Type::Gamma:
        return amplitude * std::pow(c, exponent) + offset;
    }
    return c;
}
