#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

// The font of a 2D canvas context, as the CSS 'font' shorthand computes it. Line height is
// accepted by the parser and dropped, as canvas text never uses it.
enum class CanvasFontStyle { Normal, Italic, Oblique };
enum class CanvasFontVariant { Normal, SmallCaps };

// One entry of the family list: a generic family keyword ("sans-serif", "serif",
// "monospace", "system-ui", ...), or a family name, quoted or not, as written.
struct CanvasFontFamily {
    std::string name;
    bool generic = false;
    bool operator==(const CanvasFontFamily&) const = default;
};

struct CanvasFont {
    CanvasFontStyle style = CanvasFontStyle::Normal;
    double obliqueAngle = 14;  // degrees, for the oblique style
    CanvasFontVariant variant = CanvasFontVariant::Normal;
    int weight = 400;       // 1 to 1000
    double stretch = 100;   // per cent of the normal width, 50 to 200
    double size = 10;       // computed size in CSS pixels, never negative
    // In order of preference.
    std::vector<CanvasFontFamily> families{{"sans-serif", true}};

    // The text the context's font getter returns, e.g. "italic bold 12px Arial, sans-serif".
    std::string serialization() const;

    // A compact text naming every field (but the size, when `withSize` is false); equal
    // fonts have equal keys. The text layer keys its caches on it.
    std::string cacheKey(bool withSize = true) const;

    bool operator==(const CanvasFont&) const = default;
};

// What relative sizes in a context's font refer to: the canvas element's computed font and the
// root element's. A canvas outside a document has the default, 10px sans-serif in a 16px root.
struct CanvasFontBasis {
    double fontSize = 10;
    std::optional<double> lineHeight;  // nothing: the font's normal line height
    double rootFontSize = 16;
    std::optional<double> rootLineHeight;
    std::vector<std::string> families;  // as CSS names them; none: sans-serif
    bool operator==(const CanvasFontBasis&) const = default;
};

// The CSS 'font' shorthand as the canvas font setter reads it. Gives nothing for text that is
// not a valid font (and for the CSS-wide keywords), in which case the setter keeps its font.
// Relative sizes (em, %, ex, lh, rem, larger, ...) resolve against `basis`.
std::optional<CanvasFont> parseCanvasFont(std::string_view text, const CanvasFontBasis& basis = {});

// "10px sans-serif".
CanvasFont defaultCanvasFont();
