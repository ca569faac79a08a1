#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string_view>

// The colour spaces CSS colours are written in, plus HSL and HWB, which color-mix() may
// interpolate in. Components are in each space's own units: 0..1 for the RGB spaces and XYZ,
// lightness 0..100 and a/b for Lab, 0..1 for OKLab, hues in degrees, HSL/HWB percentages as
// 0..100.
enum class CSSColorSpace : std::uint8_t {
    SRGB,
    SRGBLinear,
    DisplayP3,
    A98RGB,
    ProPhotoRGB,
    Rec2020,
    XYZD50,
    XYZD65,
    Lab,
    LCH,
    OKLab,
    OKLCH,
    HSL,
    HWB,
};

using ColorComponents = std::array<double, 3>;

// The name color() takes for a space ("srgb", "display-p3", "xyz-d65", ...); "xyz" is xyz-d65.
std::optional<CSSColorSpace> colorFunctionSpace(std::string_view name);
std::string_view colorFunctionName(CSSColorSpace space);
// Whether the space is one of color()'s (RGB and XYZ spaces).
bool isColorFunctionSpace(CSSColorSpace space);
// The index of the hue component in cylindrical spaces (LCH, OKLCH, HSL, HWB), else -1.
int hueIndex(CSSColorSpace space);

// Converts components from one space to another (through XYZ). Out-of-gamut values are kept:
// RGB results may lie outside 0..1.
ColorComponents convertColor(const ColorComponents& components, CSSColorSpace from, CSSColorSpace to);

// The sRGB transfer function and its inverse, odd-extended so that values beyond the gamut
// survive a round trip.
double srgbToLinear(double v);
double srgbFromLinear(double v);
