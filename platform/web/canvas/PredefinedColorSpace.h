#pragma once

#include <optional>
#include <string_view>

// Only sRGB is drawn; "display-p3" is accepted and reported back, as the dictionaries allow.
enum class PredefinedColorSpace { Srgb, DisplayP3 };

inline std::optional<PredefinedColorSpace> parsePredefinedColorSpace(std::string_view text)
{
    if (text == "srgb")
        return PredefinedColorSpace::Srgb;
    if (text == "display-p3")
        return PredefinedColorSpace::DisplayP3;
    return {};
}

inline std::string_view toString(PredefinedColorSpace space)
{
    return space == PredefinedColorSpace::DisplayP3 ? "display-p3" : "srgb";
}
