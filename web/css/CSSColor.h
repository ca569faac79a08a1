#pragma once

#include "web/css/CSSColorSpace.h"

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

// An sRGB colour with 8-bit channels, not premultiplied: what an sRGB canvas draws.
struct CSSColor {
    std::uint8_t red = 0;
    std::uint8_t green = 0;
    std::uint8_t blue = 0;
    std::uint8_t alpha = 0;

    bool isOpaque() const { return alpha == 255; }
    bool isTransparent() const { return alpha == 0; }
    friend bool operator==(const CSSColor&, const CSSColor&) = default;
};

// A parsed CSS colour. Legacy colours (names, hex, rgb(), hsl(), hwb()) are 8-bit sRGB as
// browsers keep them, and serialize as "#rrggbb" or "rgba(...)"; the others (color(), lab(),
// oklch(), color-mix(), relative colours, ...) keep their space and exact components, and
// serialize in that space.
struct CSSColorValue {
    CSSColorSpace space = CSSColorSpace::SRGB;
    ColorComponents components{};
    double alpha = 1;
    // Bits 0-2: the component was the keyword none; bit 3: the alpha was.
    std::uint8_t missing = 0;
    bool legacy = true;

    static CSSColorValue fromLegacy(const CSSColor& color);
    static CSSColorValue opaqueBlack() { return fromLegacy(CSSColor{0, 0, 0, 255}); }

    bool isMissing(int index) const { return missing & (1 << index); }
    // Components in `target` (missing ones as zero, out-of-gamut values kept) and the alpha.
    std::array<double, 4> in(CSSColorSpace target) const;
    // 8-bit sRGB clipped to the gamut; legacy colours give their bytes back exactly.
    CSSColor toSRGB8() const;
    // 8-bit channels in an RGB space, clipped to its gamut.
    CSSColor toBytesIn(CSSColorSpace target) const;
    friend bool operator==(const CSSColorValue&, const CSSColorValue&) = default;
};

// Parses a CSS colour value: named and system colours, "transparent", "currentcolor", hex
// notations, rgb()/rgba(), hsl()/hsla() and hwb() in legacy and modern syntax, color(), lab(),
// lch(), oklab(), oklch(), color-mix() and the relative syntax ("rgb(from red g r b)") with
// calc() over the channel keywords. `currentColor` is what currentcolor stands for (a canvas
// without an element style takes opaque black). Nothing for anything else.
std::optional<CSSColorValue> parseCSSColorValue(std::string_view text,
                                                const CSSColorValue& currentColor = CSSColorValue::opaqueBlack());
// The same, as 8-bit sRGB.
std::optional<CSSColor> parseCSSColor(std::string_view text);

// The canvas serialization: legacy colours as "#rrggbb" when opaque, else "rgba(r, g, b, a)"
// with the alpha as CSSOM writes an 8-bit alpha (two decimals when they round-trip, else
// three); other colours as "color(srgb 0.5 0 0.5)", "lab(50 20 30 / 0.5)", ... with six
// significant digits.
std::string serializeCanvasColor(const CSSColor& color);
std::string serializeCanvasColor(const CSSColorValue& color);

class CSSScanner;
namespace css_color_detail {
// One colour at the scanner (for colours nested in functions); the scanner is left after it.
std::optional<CSSColorValue> consumeColor(CSSScanner& scanner, const CSSColorValue& currentColor);
// The modern colour functions, with the scanner just after "name(".
std::optional<CSSColorValue> consumeModernColorFunction(std::string_view name, CSSScanner& scanner,
                                                        const CSSColorValue& currentColor);
std::optional<CSSColorValue> consumeColorMix(CSSScanner& scanner, const CSSColorValue& currentColor);
} // namespace css_color_detail
