#pragma once

#include <cmath>
#include <initializer_list>

// The canvas API ignores a call when any of its numbers is infinite or NaN.
inline bool allFinite(std::initializer_list<double> values)
{
    for (double v : values) {
        if (!std::isfinite(v))
            return false;
    }
    return true;
}
