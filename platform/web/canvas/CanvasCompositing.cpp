#include "platform/web/canvas/CanvasRenderingContext2D.h"

#include "platform/web/css/CSSFilter.h"

#include <cmath>

void CanvasRenderingContext2D::setGlobalAlpha(double alpha)
{
    if (!std::isfinite(alpha) || alpha < 0 || alpha > 1)
        return;
    state_.globalAlpha = alpha;
}

std::string_view CanvasRenderingContext2D::globalCompositeOperation() const
{
    return toString(state_.globalCompositeOperation);
}

void CanvasRenderingContext2D::setGlobalCompositeOperation(std::string_view operation)
{
    if (auto op = parseCanvasCompositeOperation(operation))
        state_.globalCompositeOperation = *op;
}

std::string_view CanvasRenderingContext2D::imageSmoothingQuality() const
{
    return toString(state_.imageSmoothingQuality);
}

void CanvasRenderingContext2D::setImageSmoothingQuality(std::string_view quality)
{
    if (auto value = parseImageSmoothingQuality(quality))
        state_.imageSmoothingQuality = *value;
}

void CanvasRenderingContext2D::setFilter(std::string_view filter)
{
    // Filters are not drawn; a valid value is kept as written, so scripts read back what they set.
    if (isValidCSSFilter(filter))
        state_.filter = std::string(filter);
}
