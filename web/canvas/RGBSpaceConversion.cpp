#include "web/canvas/RGBSpaceConversion.h"

#include "web/css/CSSColorSpace.h"

#include <algorithm>
#include <cmath>

namespace {

using Matrix = std::array<std::array<double, 3>, 3>;

// Linear Display P3 to linear sRGB, and back (through XYZ, D65 white for both).
constexpr Matrix kP3ToSRGB = {{{1.2249401762805601, -0.22494017628055996, 0},
                               {-0.042056954709688177, 1.0420569547096883, 0},
                               {-0.019637554590334391, -0.07863604555063182, 1.0982736001409665}}};
constexpr Matrix kSRGBToP3 = {{{0.82246196871436206, 0.17753803128563761, 0},
                               {0.033194198850961636, 0.96680580114903825, 0},
                               {0.017082630721120033, 0.072397440663963392, 0.9105199286149166}}};

const std::array<double, 256>& decodedBytes()
{
    static const std::array<double, 256> table = [] {
        std::array<double, 256> values{};
        for (int i = 0; i < 256; ++i)
            values[i] = srgbToLinear(i / 255.0);
        return values;
    }();
    return table;
}

std::array<float, 3> transform(const Matrix& m, double r, double g, double b)
{
    std::array<float, 3> out;
    for (int i = 0; i < 3; ++i)
        out[i] = float(srgbFromLinear(m[i][0] * r + m[i][1] * g + m[i][2] * b));
    return out;
}

} // namespace

RGBSpaceConversion::RGBSpaceConversion(PredefinedColorSpace from, PredefinedColorSpace to)
    : identity_(from == to), matrix_(from == PredefinedColorSpace::DisplayP3 ? &kP3ToSRGB : &kSRGBToP3)
{
}

std::array<float, 3> RGBSpaceConversion::convert(float r, float g, float b) const
{
    if (identity_)
        return {r, g, b};
    return transform(*matrix_, srgbToLinear(r), srgbToLinear(g), srgbToLinear(b));
}

std::array<float, 3> RGBSpaceConversion::convertBytes(std::uint8_t r, std::uint8_t g, std::uint8_t b) const
{
    if (identity_)
        return {r / 255.0f, g / 255.0f, b / 255.0f};
    const auto& table = decodedBytes();
    return transform(*matrix_, table[r], table[g], table[b]);
}

void RGBSpaceConversion::convertBytesInPlace(std::uint8_t* rgb) const
{
    if (identity_)
        return;
    auto converted = convertBytes(rgb[0], rgb[1], rgb[2]);
    for (int i = 0; i < 3; ++i)
        rgb[i] = std::uint8_t(std::lround(std::clamp(converted[i], 0.0f, 1.0f) * 255));
}
