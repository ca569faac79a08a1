#pragma once

#include <array>

// A 4x4 matrix in rows, as DOMMatrix and CSS transforms keep theirs.
using Matrix4x4 = std::array<std::array<double, 4>, 4>;

inline Matrix4x4 multiply(const Matrix4x4& a, const Matrix4x4& b)
{
    Matrix4x4 result{};
    for (int i = 0; i < 4; ++i) {
        for (int j = 0; j < 4; ++j) {
            double sum = 0;
            for (int k = 0; k < 4; ++k)
                sum += a[i][k] * b[k][j];
            result[i][j] = sum;
        }
    }
    return result;
}
