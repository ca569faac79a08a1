#include "web/canvas/CanvasRenderingContext2D.h"

#include "web/canvas/CairoMapping.h"
#include "web/canvas/CanvasPainter.h"
#include "web/text/CanvasText.h"
#include "web/text/CanvasTextLayout.h"
#include "web/text/FontFace.h"
#include "web/text/GlyphCoverage.h"

#include <algorithm>
#include <cmath>

namespace {

// Filled glyphs small enough for the reference's glyph masks have their coverage adjusted to
// the lightness of what they are painted with; larger ones, and strokes, it draws as paths.
const GlyphCoverageTable* coverageTableFor(const CanvasPaintStyle& style, const AffineTransform& transform,
                                           double fontSize)
{
    const double scale = std::max(std::hypot(transform.a, transform.b), std::hypot(transform.c, transform.d));
    if (!(fontSize * scale <= kLargestRasterizedGlyphSize))
        return nullptr;
    if (!style.isColor())
        return &glyphCoverageTable(kNonSolidLightnessClass);
    const CSSColor& color = style.color.srgb;
    return &glyphCoverageTable(glyphLightnessClass(color.red, color.green, color.blue));
}

} // namespace

void CanvasRenderingContext2D::drawText(const std::function<void(cairo_t*)>& appendText, double fontSize, bool stroke)
{
    if (!state_.transform.isInvertible())
        return;
    cairo_t* cr = cairo();
    if (!cr)
        return;
    // The glyph outlines, laid out in user space, become a device-space path that goes
    // through the same painting as any other shape.
    cairo_new_path(cr);
    cairo_matrix_t ctm = to_cairo_matrix(state_.transform);
    cairo_set_matrix(cr, &ctm);
    appendText(cr);
    cairo_identity_matrix(cr);
    cairo_path_t* path = cairo_copy_path(cr);
    cairo_new_path(cr);
    if (path->status == CAIRO_STATUS_SUCCESS && path->num_data > 0) {
        CanvasShape shape{std::span<const cairo_path_data_t>(path->data, path->num_data), false, stroke, CAIRO_FILL_RULE_WINDING, true};
        if (!stroke)
            shape.coverageTable = coverageTableFor(state_.fillStyle, state_.transform, fontSize);
        paint(shape, stroke ? &state_.strokeStyle : &state_.fillStyle);
    } else if (path->status == CAIRO_STATUS_SUCCESS) {
        // Text with no glyph to draw (empty, spaces, a zero font size) is still composited in
        // browsers, and clears the canvas under copy or destination-in.
        compositeNothing();
    }
    cairo_path_destroy(path);
}

namespace {

double clusterFontSize(const TextCluster& cluster)
{
    return cluster.layout ? cluster.layout->style().font.size : 0;
}

bool drawsText(double x, double y, std::optional<double> maxWidth)
{
    if (!std::isfinite(x) || !std::isfinite(y))
        return false;
    return !maxWidth || (std::isfinite(*maxWidth) && *maxWidth > 0);
}

} // namespace

void CanvasRenderingContext2D::fillText(std::string_view text, double x, double y, std::optional<double> maxWidth)
{
    if (drawsText(x, y, maxWidth))
        drawText([&](cairo_t* cr) { appendTextPath(cr, text, x, y, state_.text->style, maxWidth, TextPathUse::Fill); },
                 state_.text->style.font.size, false);
}

void CanvasRenderingContext2D::strokeText(std::string_view text, double x, double y, std::optional<double> maxWidth)
{
    if (drawsText(x, y, maxWidth))
        drawText([&](cairo_t* cr) { appendTextPath(cr, text, x, y, state_.text->style, maxWidth); },
                 state_.text->style.font.size, true);
}

TextMetrics CanvasRenderingContext2D::measureText(std::string_view text)
{
    // The metrics keep the style they were measured in; the text state is shared copy on write,
    // so they can hold it as it is.
    return ::measureText(text, std::shared_ptr<const CanvasTextStyle>(state_.text, &state_.text->style));
}

void CanvasRenderingContext2D::fillTextCluster(const TextCluster& cluster, double x, double y,
                                               const TextClusterOptions& options)
{
    if (std::isfinite(x) && std::isfinite(y))
        drawText([&](cairo_t* cr) { appendTextClusterPath(cr, cluster, x, y, options, TextPathUse::Fill); },
                 clusterFontSize(cluster), false);
}

void CanvasRenderingContext2D::strokeTextCluster(const TextCluster& cluster, double x, double y,
                                                 const TextClusterOptions& options)
{
    if (std::isfinite(x) && std::isfinite(y))
        drawText([&](cairo_t* cr) { appendTextClusterPath(cr, cluster, x, y, options); }, clusterFontSize(cluster), true);
}
