#include "web/text/CanvasText.h"

#include "web/text/CanvasTextLayout.h"
#include "web/text/TextGeometry.h"

#include <cairo.h>

#include <cmath>

using namespace text_geometry;

TextMetrics measureText(std::string_view utf8, const CanvasTextStyle& style)
{
    return measureText(utf8, std::make_shared<const CanvasTextStyle>(style));
}

TextMetrics measureText(std::string_view utf8, std::shared_ptr<const CanvasTextStyle> sharedStyle)
{
    auto layout = std::make_shared<const CanvasTextLayout>(utf8, std::move(sharedStyle));
    const CanvasTextStyle& style = layout->style();
    const VerticalMetrics v = verticalMetrics(layout->primaryFace(), style.font.size);
    const double baseline = baselineOffset(style.baseline, v);
    const double dx = alignOffset(style.align, style.direction, layout->width());
    const InkBox ink = inkBox(layout->shaped(), style);

    TextMetrics m;
    m.width = layout->width();
    m.actualBoundingBoxLeft = -ink.left + dx;
    m.actualBoundingBoxRight = ink.right - dx;
    m.fontBoundingBoxAscent = v.ascent - baseline;
    m.fontBoundingBoxDescent = v.descent + baseline;
    m.actualBoundingBoxAscent = -ink.top - baseline;
    m.actualBoundingBoxDescent = ink.bottom + baseline;
    m.emHeightAscent = v.emAscent - baseline;
    m.emHeightDescent = v.emDescent + baseline;
    m.hangingBaseline = v.ascent * kHangingBaselineOfAscent - baseline;
    m.alphabeticBaseline = -baseline;
    m.ideographicBaseline = -v.descent - baseline;
    m.layout = std::move(layout);
    return m;
}

void appendTextPath(cairo_t* cr, std::string_view utf8, double x, double y, const CanvasTextStyle& style,
                    std::optional<double> maxWidth, TextPathUse use)
{
    if (!cr || !std::isfinite(x) || !std::isfinite(y))
        return;
    if (maxWidth && (!std::isfinite(*maxWidth) || *maxWidth <= 0))
        return;
    if (!(glyphSize(style.font.size) > 0) || utf8.empty())
        return;
    const Layout layout = layOut(utf8, style);
    if (layout.shaped->glyphs.empty())
        return;

    double squeeze = 1;
    double width = layout.width;
    if (maxWidth && *maxWidth < width) {
        squeeze = *maxWidth / width;
        width = *maxWidth;
    }
    const VerticalMetrics v = verticalMetrics(layout.primary, style.font.size);
    const double startX = x - alignOffset(style.align, style.direction, width);
    const double baselineY = y + baselineOffset(style.baseline, v);
    appendGlyphOutlines(cr, *layout.shaped, style, startX, baselineY, squeeze, use);
}

void appendTextClusterPath(cairo_t* cr, const TextCluster& cluster, double x, double y,
                           const TextClusterOptions& options, TextPathUse use)
{
    if (!cr || !cluster.layout || cluster.start >= cluster.end)
        return;
    const double anchorX = x + options.x.value_or(cluster.x);
    const double anchorY = y + options.y.value_or(cluster.y);
    if (!std::isfinite(anchorX) || !std::isfinite(anchorY))
        return;
    const CanvasTextLayout& layout = *cluster.layout;
    const CanvasTextStyle& style = layout.style();
    if (!(glyphSize(style.font.size) > 0))
        return;
    // The cells of the cluster's characters, and its edge the align names.
    double left = INFINITY, right = -INFINITY;
    for (const CanvasTextLayout::Cluster& cell : layout.clusters()) {
        if (cell.from < cluster.end && cell.to > cluster.start) {
            left = std::min(left, cell.left);
            right = std::max(right, cell.right);
        }
    }
    if (left > right)
        return;
    const CanvasTextAlign align = physicalAlign(options.align.value_or(cluster.align), style.direction);
    const double edge = align == CanvasTextAlign::Right ? right : align == CanvasTextAlign::Center ? (left + right) / 2 : left;
    const VerticalMetrics v = verticalMetrics(layout.primaryFace(), style.font.size);
    const double baselineY = anchorY + baselineOffset(options.baseline.value_or(cluster.baseline), v);
    const ShapedText& shaped = layout.shaped();
    appendGlyphOutlines(cr, shaped, style, anchorX - edge, baselineY, 1, use, [&](const ShapedGlyph& glyph) {
        const ShapedCluster& owner = shaped.clusters[glyph.cluster];
        return owner.from < cluster.end && owner.to > cluster.start;
    });
}
