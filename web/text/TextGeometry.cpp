#include "web/text/TextGeometry.h"

#include "web/text/FontSelector.h"

#include <cairo.h>

#include <algorithm>
#include <cmath>

namespace text_geometry {

namespace {

double roundHalfUp(double value)
{
    return std::floor(value + 0.5);
}

// To the browser's layout unit, a 64th of a pixel.
double roundToLayoutUnit(double value)
{
    return std::round(value * 64) / 64;
}

// Convex outlines up to this many device pixels wide the reference fills with exact coverage.
constexpr double kExactFillWidth = 32;

// Large glyphs have their ink boxes rounded out at this size and scaled up.
constexpr double kOutlineMeasureSize = 64;

bool drawnAsOutlines(double size)
{
    return size > kLargestRasterizedGlyphSize;
}

bool isAxisAligned(const cairo_matrix_t& m)
{
    return m.xy == 0 && m.yx == 0 && m.xx != 0 && m.yy != 0;
}

// Cairo keeps device coordinates in fixed point of about 24 bits; glyphs further out than this
// could not show on any canvas and would only wrap around.
constexpr double kFarthestDeviceCoordinate = 4e6;

bool withinDeviceRange(double value)
{
    return std::isfinite(value) && std::abs(value) < kFarthestDeviceCoordinate;
}

// The reference rasterizer places glyphs at quarter pixels along a horizontal baseline and at
// whole pixels across it, and at quarter pixels both ways when the text is turned; doing the
// same in device space keeps text on the same pixels. Returns false for a glyph too far away
// to draw.
bool snapToDevicePixels(cairo_t* cr, double& x, double& y, bool axisAligned)
{
    double dx = x, dy = y;
    cairo_user_to_device(cr, &dx, &dy);
    if (!withinDeviceRange(dx) || !withinDeviceRange(dy))
        return false;
    dx = std::floor((dx + 0.125) * 4) / 4;
    dy = axisAligned ? std::floor(dy + 0.5) : std::floor((dy + 0.125) * 4) / 4;
    cairo_device_to_user(cr, &dx, &dy);
    x = dx;
    y = dy;
    return true;
}

// How device y follows user y under a transform that keeps horizontal lines horizontal.
struct VerticalMapping {
    double scale, offset;
};

// Measured against the reference's pictures: it fills glyphs (but for narrow convex ones) as if
// every point on the outline, every end of a line or a curve, lay on the nearest quarter of a
// pixel vertically (after its font backend has scaled the point to a 64th of a pixel), the
// curves between keeping their shape. Moving the same points, and each curve's control points
// along with the end beside them, puts flat tops and bottoms, and the flat ends of curves, on
// the reference's pixels, where exact outlines would shade them a level or two apart.
void appendOutline(cairo_t* cr, const GlyphOutline& outline, double x, double y, double scaleX, double scaleY,
                   const VerticalMapping* snap)
{
    const float* p = outline.points.data();
    // How far the last point on the outline was moved, in user space.
    double moved = 0;
    auto onOutline = [&](int k) {
        const double offset = -p[2 * k + 1] * scaleY;
        if (!snap)
            return y + offset;
        const double device = snap->scale * y + snap->offset + std::round(offset * snap->scale * 64) / 64;
        const double snapped = (std::floor(device * 4 + 0.5) / 4 - snap->offset) / snap->scale;
        moved = snapped - (y + offset);
        return snapped;
    };
    for (GlyphOutline::Verb verb : outline.verbs) {
        switch (verb) {
        case GlyphOutline::Move:
            cairo_move_to(cr, x + p[0] * scaleX, onOutline(0));
            p += 2;
            break;
        case GlyphOutline::Line:
            cairo_line_to(cr, x + p[0] * scaleX, onOutline(0));
            p += 2;
            break;
        case GlyphOutline::Cubic: {
            const double firstControl = y - p[1] * scaleY + moved;
            const double end = onOutline(2);
            cairo_curve_to(cr, x + p[0] * scaleX, firstControl, x + p[2] * scaleX, y - p[3] * scaleY + moved,
                           x + p[4] * scaleX, end);
            p += 6;
            break;
        }
        case GlyphOutline::Close:
            cairo_close_path(cr);
            break;
        }
    }
}

} // namespace

VerticalMetrics verticalMetrics(const FontFace* face, double size)
{
    VerticalMetrics m;
    if (!face)
        return m;
    const double ascent = face->ascent() * size;
    const double descent = face->descent() * size;
    if (ascent < 3 || ascent + descent < 2) {
        m.ascent = ascent;
        m.descent = descent;
    } else {
        m.ascent = roundHalfUp(ascent);
        m.descent = roundHalfUp(descent);
    }
    const double typoHeight = face->typoAscent() + face->typoDescent();
    const double emDescent = typoHeight > 0 ? face->typoDescent() * size / typoHeight : descent;
    m.emDescent = roundToLayoutUnit(emDescent);
    m.emAscent = roundToLayoutUnit(size) - m.emDescent;
    return m;
}

double baselineOffset(CanvasTextBaseline baseline, const VerticalMetrics& m)
{
    switch (baseline) {
    case CanvasTextBaseline::Top:
        return m.emAscent;
    case CanvasTextBaseline::Hanging:
        return m.ascent * kHangingBaselineOfAscent;
    case CanvasTextBaseline::Middle:
        return (m.emAscent - m.emDescent) / 2;
    case CanvasTextBaseline::Alphabetic:
        return 0;
    case CanvasTextBaseline::Ideographic:
        return -m.descent;
    case CanvasTextBaseline::Bottom:
        return -m.emDescent;
    }
    return 0;
}

CanvasTextAlign physicalAlign(CanvasTextAlign align, CanvasDirection direction)
{
    const bool rtl = direction == CanvasDirection::Rtl;
    if (align == CanvasTextAlign::Start)
        return rtl ? CanvasTextAlign::Right : CanvasTextAlign::Left;
    if (align == CanvasTextAlign::End)
        return rtl ? CanvasTextAlign::Left : CanvasTextAlign::Right;
    return align;
}

double alignOffset(CanvasTextAlign align, CanvasDirection direction, double width)
{
    switch (physicalAlign(align, direction)) {
    case CanvasTextAlign::Right:
        return width;
    case CanvasTextAlign::Center:
        return width / 2;
    default:
        return 0;
    }
}

// Whole 64ths of a pixel, cut, not rounded.
double glyphSize(double size)
{
    return drawnAsOutlines(size) ? size : std::floor(size * 64) / 64;
}

// Lower-case letters drawn as made-up small capitals are capitals of 70% of the size,
// rounded to whole pixels.
double smallCapsSize(double size)
{
    return glyphSize(std::floor(size * 0.7 + 0.5));
}

Layout layOut(std::string_view utf8, const CanvasTextStyle& style)
{
    Layout layout;
    FontSet& fonts = FontSelector::shared().fontSet(style.font);
    layout.primary = fonts.primary();
    const bool letterSpaced = style.letterSpacing != 0;
    layout.shaped = shapeText(utf8, fonts, style.direction == CanvasDirection::Rtl, style.kerning, letterSpaced);
    layout.width = layout.shaped->width(glyphSize(style.font.size), smallCapsSize(style.font.size),
                                        style.letterSpacing, style.wordSpacing);
    return layout;
}

GlyphPlacement place(const ShapedGlyph& glyph, const CanvasTextStyle& style)
{
    const double size = glyphSize(style.font.size);
    const double smallSize = smallCapsSize(style.font.size);
    return {glyph.x * size + glyph.smallX * smallSize + glyph.letterGaps * style.letterSpacing
                + glyph.wordGaps * style.wordSpacing,
            -(glyph.y * size + glyph.smallY * smallSize), glyph.smallCap ? smallSize : size};
}

ClusterCell cell(const ShapedCluster& cluster, const CanvasTextStyle& style)
{
    const double size = glyphSize(style.font.size);
    const double smallSize = smallCapsSize(style.font.size);
    const double left = cluster.x * size + cluster.smallX * smallSize + cluster.letterGaps * style.letterSpacing
        + cluster.wordGaps * style.wordSpacing;
    const double advance = cluster.advance * size + cluster.smallAdvance * smallSize
        + (cluster.letterGap ? style.letterSpacing : 0) + (cluster.wordGap ? style.wordSpacing : 0);
    return {left, left + advance};
}

InkBox inkBox(const ShapedText& shaped, const CanvasTextStyle& style,
              const std::function<bool(const ShapedGlyph&)>& include)
{
    InkBox box;
    for (const ShapedGlyph& glyph : shaped.glyphs) {
        if (include && !include(glyph))
            continue;
        const auto [x, y, size] = place(glyph, style);
        if (!(size > 0))
            continue;
        const double measuredSize = drawnAsOutlines(size) ? kOutlineMeasureSize : size;
        auto outward = [&](double value, bool up) {
            value = roundToLayoutUnit(value * measuredSize / size);
            return (up ? std::ceil(value) : std::floor(value)) * size / measuredSize;
        };
        const GlyphOutline& outline = glyph.face->outline(glyph.glyph, size, GlyphUse::Measure);
        if (outline.empty())
            continue;
        const double scale = size / glyph.face->unitsPerEm();
        const double left = x + outward(outline.xMin * scale, false);
        const double right = x + outward(outline.xMax * scale, true);
        const double top = y + outward(-outline.yMax * scale, false);
        const double bottom = y + outward(-outline.yMin * scale, true);
        if (right <= left || bottom <= top)
            continue;
        if (box.empty) {
            box = {left, top, right, bottom, false};
        } else {
            box.left = std::min(box.left, left);
            box.top = std::min(box.top, top);
            box.right = std::max(box.right, right);
            box.bottom = std::max(box.bottom, bottom);
        }
    }
    return box;
}

void appendGlyphOutlines(cairo_t* cr, const ShapedText& shaped, const CanvasTextStyle& style, double startX,
                         double baselineY, double squeeze, TextPathUse use, const std::function<bool(const ShapedGlyph&)>& include)
{
    cairo_matrix_t ctm;
    cairo_get_matrix(cr, &ctm);
    const bool axisAligned = isAxisAligned(ctm);
    const double determinant = ctm.xx * ctm.yy - ctm.xy * ctm.yx;
    if (!(std::abs(determinant) > 1e-12))
        return;
    // How far one user unit reaches in device space, at most.
    const double reach = std::abs(ctm.xx) + std::abs(ctm.xy) + std::abs(ctm.yx) + std::abs(ctm.yy);
    for (const ShapedGlyph& glyph : shaped.glyphs) {
        if (include && !include(glyph))
            continue;
        const GlyphPlacement at = place(glyph, style);
        if (!(at.size > 0) || !withinDeviceRange(at.size * reach))
            continue;
        const GlyphOutline& outline = glyph.face->outline(glyph.glyph, at.size);
        if (outline.empty())
            continue;
        double gx = startX + at.x * squeeze;
        double gy = baselineY + at.y;
        if (!snapToDevicePixels(cr, gx, gy, axisAligned))
            continue;
        const double scale = at.size / glyph.face->unitsPerEm();
        // Glyphs to fill take the reference's quarter-pixel steps (see appendOutline), but for
        // narrow convex ones, which it fills exactly; outlines to stroke stay as they are.
        const double deviceLeft = ctm.xx * (gx + outline.xMin * scale * squeeze) + ctm.x0;
        const double deviceRight = ctm.xx * (gx + outline.xMax * scale * squeeze) + ctm.x0;
        const bool exact = outline.convex
            && std::ceil(std::max(deviceLeft, deviceRight)) - std::floor(std::min(deviceLeft, deviceRight)) <= kExactFillWidth;
        const VerticalMapping mapping{ctm.yy, ctm.y0};
        appendOutline(cr, outline, gx, gy, scale * squeeze, scale,
                      use == TextPathUse::Fill && axisAligned && !exact ? &mapping : nullptr);
    }
}

} // namespace text_geometry
