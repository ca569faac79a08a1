#pragma once

#include "web/css/CSSColorSpace.h"

#include <optional>
#include <string_view>

// The colour spaces a canvas and its image data can be in.
enum class PredefinedColorSpace { Srgb, DisplayP3 };

inline CSSColorSpace toCSSColorSpace(PredefinedColorSpace space)
{
    return space == PredefinedColorSpace::DisplayP3 ? CSSColorSpace::DisplayP3 : CSSColorSpace::SRGB;
}

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
