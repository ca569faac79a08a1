#pragma once

#include <bit>
#include <cmath>
#include <cstdint>

// IEEE 754 half precision, as Float16Array stores it: conversions rounding to nearest even.
inline std::uint16_t floatToHalf(float value)
{
    std::uint32_t bits = std::bit_cast<std::uint32_t>(value);
    std::uint16_t sign = std::uint16_t((bits >> 16) & 0x8000);
    std::uint32_t magnitude = bits & 0x7fffffff;
    if (magnitude >= 0x7f800000) // infinity or NaN
        return sign | 0x7c00 | (magnitude > 0x7f800000 ? 0x200 : 0);
    if (magnitude >= 0x477ff000) // rounds beyond the largest half
        return sign | 0x7c00;
    if (magnitude < 0x38800000) {
        // Subnormal half (or zero): the value in units of 2^-24, rounded to even.
        float scaled = std::bit_cast<float>(magnitude) * 16777216.0f;
        return sign | std::uint16_t(std::nearbyint(scaled));
    }
    std::uint32_t rounded = magnitude + 0xfff + ((magnitude >> 13) & 1);
    return sign | std::uint16_t((rounded - 0x38000000) >> 13);
}

inline float halfToFloat(std::uint16_t half)
{
    std::uint32_t sign = std::uint32_t(half & 0x8000) << 16;
    std::uint32_t exponent = (half >> 10) & 0x1f, mantissa = half & 0x3ff;
    if (exponent == 0) {
        float value = float(mantissa) / 16777216.0f;
        return sign ? -value : value;
    }
    if (exponent == 31)
        return std::bit_cast<float>(sign | 0x7f800000 | (mantissa << 13));
    return std::bit_cast<float>(sign | ((exponent + 112) << 23) | (mantissa << 13));
}
