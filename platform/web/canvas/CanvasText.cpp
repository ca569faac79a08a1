#include "platform/web/canvas/CanvasRenderingContext2D.h"

#include "platform/web/canvas/CairoMapping.h"
#include "platform/web/canvas/CanvasPainter.h"
#include "platform/web/text/CanvasText.h"

#include <cmath>

void CanvasRenderingContext2D::drawText(std::string_view text, double x, double y, std::optional<double> maxWidth, bool stroke)
{
    if (!std::isfinite(x) || !std::isfinite(y) || text.empty())
        return;
    if (maxWidth && (!std::isfinite(*maxWidth) || *maxWidth <= 0))
        return;
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
    appendTextPath(cr, text, x, y, state_.text->style, maxWidth);
    cairo_identity_matrix(cr);
    cairo_path_t* path = cairo_copy_path(cr);
    cairo_new_path(cr);
    if (path->status == CAIRO_STATUS_SUCCESS && path->num_data > 0) {
        CanvasShape shape{std::span<const cairo_path_data_t>(path->data, path->num_data), false, stroke, CAIRO_FILL_RULE_WINDING};
        paint(shape, stroke ? &state_.strokeStyle : &state_.fillStyle);
    }
    cairo_path_destroy(path);
}

void CanvasRenderingContext2D::fillText(std::string_view text, double x, double y, std::optional<double> maxWidth)
{
    drawText(text, x, y, maxWidth, false);
}

void CanvasRenderingContext2D::strokeText(std::string_view text, double x, double y, std::optional<double> maxWidth)
{
    drawText(text, x, y, maxWidth, true);
}

TextMetrics CanvasRenderingContext2D::measureText(std::string_view text)
{
    return ::measureText(text, state_.text->style);
}
