#pragma once

#include "web/css/CSSColor.h"

#include <memory>
#include <string>
#include <variant>

class CanvasGradient;
class CanvasPattern;

// fillStyle and strokeStyle as a script sees them: a serialized colour or the object it set.
using CanvasStyle = std::variant<std::string, std::shared_ptr<CanvasGradient>, std::shared_ptr<CanvasPattern>>;

// A colour of the drawing state: as parsed (for the getters and wide-gamut canvases) and as the
// 8-bit sRGB an sRGB canvas draws, worked out once when set.
struct CanvasColor {
    CSSColorValue value = CSSColorValue::opaqueBlack();
    CSSColor srgb{0, 0, 0, 255};

    CanvasColor() = default;
    explicit CanvasColor(const CSSColorValue& color) : value(color), srgb(color.toSRGB8()) {}
    static CanvasColor transparentBlack() { return CanvasColor(CSSColorValue::fromLegacy(CSSColor{0, 0, 0, 0})); }
    // The 8-bit channels to draw on a canvas of `space` (sRGB or Display P3).
    CSSColor bytesIn(CSSColorSpace space) const { return space == CSSColorSpace::SRGB ? srgb : value.toBytesIn(space); }
};

// What the drawing state keeps: the parsed colour, or the gradient or pattern when one is set.
struct CanvasPaintStyle {
    CanvasColor color;
    std::shared_ptr<CanvasGradient> gradient;
    std::shared_ptr<CanvasPattern> pattern;

    bool isColor() const { return !gradient && !pattern; }
};
