#pragma once

#include "web/text/CanvasFont.h"

#include <optional>
#include <string>
#include <string_view>

enum class CanvasTextAlign { Start, End, Left, Right, Center };
enum class CanvasTextBaseline { Top, Hanging, Middle, Alphabetic, Ideographic, Bottom };
enum class CanvasDirection { Ltr, Rtl, Inherit };
enum class CanvasFontKerning { Auto, Normal, None };

// The attribute values as scripts write them ("center", "middle", "rtl", ...). Parsing gives
// nothing for a value the attribute does not know, and the setter then ignores it.
std::optional<CanvasTextAlign> parseCanvasTextAlign(std::string_view);
std::optional<CanvasTextBaseline> parseCanvasTextBaseline(std::string_view);
std::optional<CanvasDirection> parseCanvasDirection(std::string_view);
std::optional<CanvasFontKerning> parseCanvasFontKerning(std::string_view);
std::string_view toString(CanvasTextAlign);
std::string_view toString(CanvasTextBaseline);
std::string_view toString(CanvasDirection);
std::string_view toString(CanvasFontKerning);

// Parses the letterSpacing / wordSpacing attribute: one CSS length ("2px", "0.1em", "-1pt")
// in pixels; the font-relative units (em, ex, ch, ic, cap and their root forms) refer to
// `font`, viewport and line units are zero. Gives nothing for invalid text (white space
// around it, a percentage, a unitless number), and the setter then ignores it.
std::optional<double> parseCanvasSpacing(std::string_view text, const CanvasFont& font);

// What the attribute's getter returns for a value parseCanvasSpacing accepted: the number
// printed anew with its unit in lower case ("1.5PX" gives "1.5px", "1e1px" gives "10px").
std::string serializeCanvasSpacing(std::string_view text);

// Everything of a context's drawing state that places text. Inherit direction means ltr.
struct CanvasTextStyle {
    CanvasFont font = defaultCanvasFont();
    CanvasTextAlign align = CanvasTextAlign::Start;
    CanvasTextBaseline baseline = CanvasTextBaseline::Alphabetic;
    CanvasDirection direction = CanvasDirection::Inherit;
    double letterSpacing = 0;  // CSS pixels, added after every character
    double wordSpacing = 0;    // CSS pixels, added to every space
    CanvasFontKerning kerning = CanvasFontKerning::Auto;
};

// What a text path is made for. Glyphs to fill take the steps the reference's glyph rasterizer
// gives their edges; outlines to stroke or to measure stay as the font draws them.
enum class TextPathUse { Outline, Fill };
