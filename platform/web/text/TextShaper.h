#pragma once

#include "platform/web/text/CanvasText.h"
#include "platform/web/text/FontSelector.h"

#include <cstdint>
#include <memory>
#include <string_view>
#include <vector>

// A glyph of shaped text, placed from the text's start (y up), before spacing. Positions
// come in two parts: ems of the font's size and ems of the smaller size made-up small
// capitals are drawn at (the two sizes do not keep a fixed ratio).
struct ShapedGlyph {
    FontFace* face = nullptr;
    std::uint32_t glyph = 0;
    bool smallCap = false;         // drawn at the small-capitals size
    double x = 0, y = 0;           // in ems of the font size
    double smallX = 0, smallY = 0; // in ems of the small-capitals size
    std::uint32_t letterGaps = 0;  // letter-spacing gaps left of this glyph
    std::uint32_t wordGaps = 0;    // word-spacing gaps left of this glyph
};

// Text prepared the way canvas text is (white space becomes spaces), split into runs by
// direction and face, shaped, and laid out left to right in visual order. Independent of the
// font size and of the spacing amounts, so one result serves every size.
struct ShapedText {
    std::vector<ShapedGlyph> glyphs;
    double advance = 0;       // in ems of the font size
    double smallAdvance = 0;  // in ems of the small-capitals size
    std::uint32_t letterGaps = 0;
    std::uint32_t wordGaps = 0;

    // The width in pixels at the given sizes and spacing.
    double width(double size, double smallSize, double letterSpacing, double wordSpacing) const
    {
        return advance * size + smallAdvance * smallSize + letterGaps * letterSpacing + wordGaps * wordSpacing;
    }
};

// Texts longer than this many characters are cut there: canvas text that long cannot show,
// and the cut keeps a hostile script from making the layout's memory grow without end.
constexpr std::size_t kMaximumTextLength = 1 << 20;

// Shapes `utf8` (invalid sequences read as U+FFFD) with `fonts`. Short texts come from a
// cache keyed by text, font set and options.
std::shared_ptr<const ShapedText> shapeText(std::string_view utf8, FontSet& fonts, bool rtl,
                                            CanvasFontKerning kerning, bool letterSpaced);

// Drops every cached shaping result.
void clearShapedTextCache();
