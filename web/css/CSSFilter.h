#pragma once

#include "web/css/CSSColor.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

// One function of a CSS <filter-value-list>, its arguments resolved: amounts as fractions
// (50% is 0.5), angles in degrees, lengths in CSS pixels.
struct CSSFilterFunction {
    enum class Kind { Blur, Brightness, Contrast, DropShadow, Grayscale, HueRotate, Invert, Opacity, Saturate, Sepia, Url };
    Kind kind = Kind::Blur;
    double amount = 0; // the function's one argument (blur: the deviation in px)
    // drop-shadow()
    double offsetX = 0;
    double offsetY = 0;
    double blur = 0;
    std::optional<CSSColorValue> color; // none: currentcolor
    std::string url;                    // url()
};

// Parses what the canvas filter attribute accepts: "none" (an empty list) or a list of
// blur(), brightness(), contrast(), drop-shadow(), grayscale(), hue-rotate(), invert(),
// opacity(), saturate(), sepia() and url() references. Font-relative lengths take a 16px
// font. Nothing when the text is not such a list.
std::optional<std::vector<CSSFilterFunction>> parseCSSFilter(std::string_view text);

inline bool isValidCSSFilter(std::string_view text) { return parseCSSFilter(text).has_value(); }
