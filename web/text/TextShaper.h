#pragma once

#include "web/text/CanvasText.h"
#include "web/text/FontSelector.h"

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
    std::uint32_t cluster = 0;     // index of its cluster in ShapedText::clusters
};

// Characters that shape together and so are never split: a letter with its marks, an emoji
// sequence, a ligature. Its pen position and advance come in the same two parts as a glyph's;
// spacing goes after it (to its right) when it has a gap.
struct ShapedCluster {
    std::uint32_t from = 0, to = 0;  // the characters, in UTF-16 code units as scripts count
    std::uint8_t level = 0;          // bidirectional embedding level: odd is right to left
    bool control = false;            // only invisible formatting characters (bidi controls)
    std::uint32_t run = 0;           // the shaping run it belongs to; runs come left to right
    // Characters a reader tells apart inside it (a ligature has several, a letter and its
    // marks one); the offsets between them are graphemeBoundaries[firstBoundary, +graphemes-1).
    std::uint32_t graphemes = 1;
    std::uint32_t firstBoundary = 0;
    bool letterGap = false;          // letter spacing follows it
    bool wordGap = false;            // word spacing follows it
    double x = 0, smallX = 0;
    double advance = 0, smallAdvance = 0;
    std::uint32_t letterGaps = 0;    // gaps left of it
    std::uint32_t wordGaps = 0;
};

// Text prepared the way canvas text is (white space becomes spaces), split into runs by
// direction and face, shaped, and laid out left to right in visual order. Independent of the
// font size and of the spacing amounts, so one result serves every size.
struct ShapedText {
    std::vector<ShapedGlyph> glyphs;
    std::vector<ShapedCluster> clusters;  // left to right
    std::vector<std::uint32_t> graphemeBoundaries;  // inside clusters, in reading order
    std::uint32_t length = 0;  // of the text, in UTF-16 code units
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
