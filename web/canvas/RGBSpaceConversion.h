#pragma once

#include "web/canvas/PredefinedColorSpace.h"

#include <array>
#include <cstdint>

// Converts unpremultiplied, gamma-encoded RGB between the canvas colour spaces. sRGB and
// Display P3 share their transfer curve and differ in primaries, so a conversion is: decode,
// one 3x3 matrix in linear light, encode. Values outside 0..1 pass through (extended range).
class RGBSpaceConversion {
public:
    RGBSpaceConversion(PredefinedColorSpace from, PredefinedColorSpace to);

    bool isIdentity() const { return identity_; }
    std::array<float, 3> convert(float r, float g, float b) const;
    std::array<float, 3> convertBytes(std::uint8_t r, std::uint8_t g, std::uint8_t b) const;
    // 8-bit in, 8-bit out (clipped to the gamut, rounded).
    void convertBytesInPlace(std::uint8_t* rgb) const;

private:
    bool identity_;
    const std::array<std::array<double, 3>, 3>* matrix_;
};
