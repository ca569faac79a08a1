#pragma once

#include "web/css/CSSColor.h"
#include "web/dom/CSSProperty.h"

#include <array>
#include <optional>
#include <string>
#include <vector>

class Element;

// What an element's style computes to, for the properties CSSPropertyID names: the inline
// styles of the element and its ancestors over the initial values (no style sheets here, and
// no layout: a percentage width stays a percentage).
struct ComputedStyle {
    enum class LineHeight { Normal, Number, Length };

    CSSColor color{0, 0, 0, 255};
    double fontSize = 16; // px ("medium")
    LineHeight lineHeightKind = LineHeight::Normal;
    double lineHeightValue = 0; // the multiplier for Number, px for Length
    std::string fontFamily = "serif";
    std::string fontStyle = "normal";
    std::string fontVariant = "normal";
    double fontWeight = 400;
    std::string fontStretch = "100%";
    std::string width = "auto";
    std::string height = "auto";
    std::string display = "inline";
    std::string direction = "ltr";
    std::string visibility = "visible";
    std::string position = "static";
    std::string letterSpacing = "normal";
    std::string wordSpacing = "0px";
    std::string textAlign = "start";
    std::string unicodeBidi = "normal";
    // Top, right, bottom, left in px ("auto" margins and percentages count as 0 without layout).
    std::array<double, 4> margin{};
    std::array<double, 4> padding{};

    // The used line height in px; nothing for "normal", whose height depends on the font.
    std::optional<double> lineHeightPixels() const;

    // getComputedStyle(element).getPropertyValue(name) for these properties and 'font'; ""
    // for any other name.
    std::string propertyValue(std::string_view name) const;
};

ComputedStyle computeStyle(const Element& element);

// The families of a font-family value, unquoted: "Foo Bar", serif -> {"Foo Bar", "serif"}.
std::vector<std::string> splitFontFamilies(std::string_view list);
