#include "web/canvas/CanvasRenderingContext2D.h"

#include <algorithm>
#include <cmath>

void CanvasRenderingContext2D::setLineWidth(double width)
{
    if (std::isfinite(width) && width > 0)
        state_.lineWidth = width;
}

std::string_view CanvasRenderingContext2D::lineCap() const { return toString(state_.lineCap); }

void CanvasRenderingContext2D::setLineCap(std::string_view cap)
{
    if (auto value = parseCanvasLineCap(cap))
        state_.lineCap = *value;
}

std::string_view CanvasRenderingContext2D::lineJoin() const { return toString(state_.lineJoin); }

void CanvasRenderingContext2D::setLineJoin(std::string_view join)
{
    if (auto value = parseCanvasLineJoin(join))
        state_.lineJoin = *value;
}

void CanvasRenderingContext2D::setMiterLimit(double limit)
{
    if (std::isfinite(limit) && limit > 0)
        state_.miterLimit = limit;
}

void CanvasRenderingContext2D::setLineDash(std::span<const double> segments)
{
    if (std::any_of(segments.begin(), segments.end(), [](double v) { return !std::isfinite(v) || v < 0; }))
        return;
    state_.lineDash.assign(segments.begin(), segments.end());
    if (segments.size() % 2 == 1)
        state_.lineDash.insert(state_.lineDash.end(), segments.begin(), segments.end());
}

void CanvasRenderingContext2D::setLineDashOffset(double offset)
{
    if (std::isfinite(offset))
        state_.lineDashOffset = offset;
}
