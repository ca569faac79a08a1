#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

// An sRGB colour with 8-bit channels, not premultiplied: what a canvas keeps of a CSS colour.
struct CSSColor {
    std::uint8_t red = 0;
    std::uint8_t green = 0;
    std::uint8_t blue = 0;
    std::uint8_t alpha = 0;

    bool isOpaque() const { return alpha == 255; }
    bool isTransparent() const { return alpha == 0; }
    friend bool operator==(const CSSColor&, const CSSColor&) = default;
};

// Parses a CSS colour value: named and system colours, "transparent", "currentcolor" (opaque
// black: a canvas has no element style to take it from), hex notations, rgb()/rgba(),
// hsl()/hsla() and hwb() in legacy comma and modern space syntax. Nothing for anything else.
std::optional<CSSColor> parseCSSColor(std::string_view text);

// The canvas serialization: "#rrggbb" when opaque, else "rgba(r, g, b, a)" with the alpha as
// CSSOM writes an 8-bit alpha (two decimals when they round-trip, else three).
std::string serializeCanvasColor(const CSSColor& color);
