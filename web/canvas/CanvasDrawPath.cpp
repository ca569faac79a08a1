#include "web/canvas/CanvasRenderingContext2D.h"

#include "web/canvas/CairoMapping.h"
#include "web/canvas/CairoSafePath.h"
#include "web/canvas/CanvasPainter.h"
#include "web/canvas/Path2D.h"

#include <algorithm>
#include <cfloat>
#include <cmath>

namespace {

// A copy of user-space path data mapped into device space.
std::vector<cairo_path_data_t> toDeviceSpace(std::span<const cairo_path_data_t> path, const AffineTransform& transform)
{
    std::vector<cairo_path_data_t> data(path.begin(), path.end());
    for (std::size_t i = 0; i < data.size(); i += data[i].header.length) {
        for (int j = 1; j < data[i].header.length; ++j)
            transform.map(data[i + j].point.x, data[i + j].point.y);
    }
    return data;
}

void setStrokeParameters(cairo_t* cr, const CanvasDrawingState& state)
{
    cairo_set_line_width(cr, state.lineWidth);
    cairo_set_line_cap(cr, to_cairo_line_cap(state.lineCap));
    cairo_set_line_join(cr, to_cairo_line_join(state.lineJoin));
    cairo_set_miter_limit(cr, state.miterLimit);
    double total = 0;
    for (double segment : state.lineDash)
        total += segment;
    if (total > 0)
        cairo_set_dash(cr, state.lineDash.data(), int(state.lineDash.size()), state.lineDashOffset);
    else
        cairo_set_dash(cr, nullptr, 0, 0);
}

// Whether a stroke has anything to draw from. Browsers skip a stroke altogether, caps and
// compositing included, when the points its segments pass through lie within a millionth of
// a unit of each other in single precision (a line a millionth long is skipped at x = 5,
// where single precision rounds it shorter, and drawn at x = 0); a start point that no
// segment leaves does not count.
bool strokeHasExtent(std::span<const cairo_path_data_t> path)
{
    constexpr float kNearlyZero = 1e-6f;
    auto single = [](double v) { return float(std::clamp(v, -double(FLT_MAX), double(FLT_MAX))); };
    float minX = INFINITY, minY = INFINITY, maxX = -INFINITY, maxY = -INFINITY;
    auto include = [&](const cairo_path_data_t& point) {
        float x = single(point.point.x), y = single(point.point.y);
        minX = std::min(minX, x), maxX = std::max(maxX, x);
        minY = std::min(minY, y), maxY = std::max(maxY, y);
    };
    const cairo_path_data_t* start = nullptr;
    for (std::size_t i = 0; i < path.size(); i += path[i].header.length) {
        const auto& header = path[i].header;
        if (header.type == CAIRO_PATH_MOVE_TO) {
            start = &path[i + 1];
            continue;
        }
        if (start)
            include(*start);
        start = nullptr;
        for (int j = 1; j < header.length; ++j)
            include(path[i + j]);
    }
    return maxX - minX >= kNearlyZero || maxY - minY >= kNearlyZero;
}

} // namespace

void CanvasRenderingContext2D::beginPath()
{
    clearPath();
}

void CanvasRenderingContext2D::fillOrStroke(const CanvasPath& path, bool inUserSpace, bool stroke, CanvasFillRule fillRule)
{
    // A path with no area still composites when filled (under copy it clears the canvas),
    // except for the two kinds browsers skip: an empty path and a lone line. A stroke is
    // skipped when it has no extent.
    if (stroke ? !strokeHasExtent(path.pathData()) : path.isEmpty() || path.isLoneLine())
        return;
    CanvasShape shape{path.pathData(), inUserSpace, stroke, to_cairo_fill_rule(fillRule)};
    paint(shape, stroke ? &state_.strokeStyle : &state_.fillStyle);
}

void CanvasRenderingContext2D::fill(CanvasFillRule fillRule) { fillOrStroke(*this, false, false, fillRule); }
void CanvasRenderingContext2D::fill(const Path2D& path, CanvasFillRule fillRule) { fillOrStroke(path, true, false, fillRule); }
void CanvasRenderingContext2D::stroke() { fillOrStroke(*this, false, true, CanvasFillRule::Nonzero); }
void CanvasRenderingContext2D::stroke(const Path2D& path) { fillOrStroke(path, true, true, CanvasFillRule::Nonzero); }

void CanvasRenderingContext2D::addClip(std::vector<cairo_path_data_t> devicePath, CanvasFillRule fillRule)
{
    auto node = std::make_shared<CanvasClip>();
    node->parent = state_.clip;
    node->path = std::move(devicePath);
    node->fillRule = to_cairo_fill_rule(fillRule);
    state_.clip = std::move(node);
}

void CanvasRenderingContext2D::clip(CanvasFillRule fillRule)
{
    auto data = pathData();
    addClip(std::vector<cairo_path_data_t>(data.begin(), data.end()), fillRule);
}

void CanvasRenderingContext2D::clip(const Path2D& path, CanvasFillRule fillRule)
{
    addClip(toDeviceSpace(path.pathData(), state_.transform), fillRule);
}

bool CanvasRenderingContext2D::hitTest(std::span<const cairo_path_data_t> path, bool inUserSpace, double x, double y,
                                       bool stroke, CanvasFillRule fillRule)
{
    if (!std::isfinite(x) || !std::isfinite(y))
        return false;
    // Fills are tested in device space, which even a transform too large for Cairo reaches;
    // strokes need Cairo to work in user space.
    auto inverse = state_.transform.inverse();
    if ((stroke && !inverse) || (inUserSpace && !state_.transform.hasInverse()))
        return false;
    std::vector<cairo_path_data_t> storage;
    auto data = prepareForCairo(path, inUserSpace ? &state_.transform : nullptr, stroke, storage);
    cairo_t* cr = scratchCairo();
    cairo_path_t cairoPath{CAIRO_STATUS_SUCCESS, const_cast<cairo_path_data_t*>(data.data()), int(data.size())};
    cairo_append_path(cr, &cairoPath);
    if (!stroke) {
        cairo_set_fill_rule(cr, to_cairo_fill_rule(fillRule));
        return cairo_in_fill(cr, x, y);
    }
    // The stroke's width is in user space, and so is the point Cairo tests against it.
    cairo_matrix_t ctm = to_cairo_matrix(state_.transform);
    cairo_set_matrix(cr, &ctm);
    setStrokeParameters(cr, state_);
    inverse->map(x, y);
    return cairo_in_stroke(cr, x, y);
}

bool CanvasRenderingContext2D::isPointInPath(double x, double y, CanvasFillRule fillRule)
{
    return hitTest(pathData(), false, x, y, false, fillRule);
}

bool CanvasRenderingContext2D::isPointInPath(const Path2D& path, double x, double y, CanvasFillRule fillRule)
{
    return hitTest(path.pathData(), true, x, y, false, fillRule);
}

bool CanvasRenderingContext2D::isPointInStroke(double x, double y)
{
    return hitTest(pathData(), false, x, y, true, CanvasFillRule::Nonzero);
}

bool CanvasRenderingContext2D::isPointInStroke(const Path2D& path, double x, double y)
{
    return hitTest(path.pathData(), true, x, y, true, CanvasFillRule::Nonzero);
}
