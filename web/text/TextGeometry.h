#pragma once

// The geometry canvas text shares between measuring, drawing and the questions TextMetrics
// answers about ranges: vertical metrics, baselines, alignment, glyph placement and ink.

#include "web/text/CanvasText.h"
#include "web/text/TextShaper.h"

#include <cstdint>
#include <functional>

typedef struct _cairo cairo_t;

namespace text_geometry {

// Where the hanging baseline lies for fonts that do not say: 80% of the ascent.
constexpr double kHangingBaselineOfAscent = 0.8;

// The vertical metrics of the primary face at a size, rounded as the reference browser
// rounds them: ascent and descent to whole pixels (except for tiny fonts), the em box split
// by the OS/2 typographic ascent and descent, in layout units.
struct VerticalMetrics {
    double ascent = 0, descent = 0;
    double emAscent = 0, emDescent = 0;
};
VerticalMetrics verticalMetrics(const FontFace* face, double size);

// How far below the anchor's y the alphabetic baseline lies.
double baselineOffset(CanvasTextBaseline baseline, const VerticalMetrics& m);

// Start and end made physical by the direction.
CanvasTextAlign physicalAlign(CanvasTextAlign align, CanvasDirection direction);

// How far right of the text's left edge the anchor of `align` lies.
double alignOffset(CanvasTextAlign align, CanvasDirection direction, double width);

// The size glyphs are laid out and drawn at, and the size of made-up small capitals.
double glyphSize(double size);
double smallCapsSize(double size);

// Text shaped for a style, with its primary face and its width in pixels.
struct Layout {
    std::shared_ptr<const ShapedText> shaped;
    FontFace* primary = nullptr;
    double width = 0;
};
Layout layOut(std::string_view utf8, const CanvasTextStyle& style);

// A glyph's position and drawing size in pixels, from the text's start on the baseline
// (y down), before any squeeze.
struct GlyphPlacement {
    double x, y, size;
};
GlyphPlacement place(const ShapedGlyph& glyph, const CanvasTextStyle& style);

// A cluster's cell in pixels from the text's left edge: its advance with the spacing after it.
struct ClusterCell {
    double left, right;
};
ClusterCell cell(const ShapedCluster& cluster, const CanvasTextStyle& style);

// The ink box in pixels (y down, from the text's start on the baseline): each glyph's control
// box at the size, rounded out to whole pixels, as the reference measures. Only glyphs
// `include` accepts count, when given.
struct InkBox {
    double left = 0, top = 0, right = 0, bottom = 0;
    bool empty = true;
};
InkBox inkBox(const ShapedText& shaped, const CanvasTextStyle& style,
              const std::function<bool(const ShapedGlyph&)>& include = {});

// Adds the outlines of the glyphs `include` accepts to cr's path, the text's left end on the
// baseline at (startX, baselineY) in cr's user space, squeezed horizontally by `squeeze`; glyphs
// to fill as the reference rasterizes them with `use` Fill.
void appendGlyphOutlines(cairo_t* cr, const ShapedText& shaped, const CanvasTextStyle& style, double startX,
                         double baselineY, double squeeze, TextPathUse use,
                         const std::function<bool(const ShapedGlyph&)>& include = {});

} // namespace text_geometry
