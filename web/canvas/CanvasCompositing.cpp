#include "web/canvas/CanvasRenderingContext2D.h"

#include "web/canvas/CanvasFilter.h"
#include "web/css/CSSFilter.h"

#include <algorithm>
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

std::shared_ptr<const FilterChain> CanvasRenderingContext2D::resolveFilter(std::string_view filter) const
{
    auto functions = parseCSSFilter(filter);
    if (!functions || functions->empty())
        return nullptr;
    bool needsCurrentColor = std::any_of(functions->begin(), functions->end(), [](const CSSFilterFunction& f) {
        return f.kind == CSSFilterFunction::Kind::DropShadow && !f.color;
    });
    CSSColorValue currentColor = needsCurrentColor ? CSSColorValue::fromLegacy(canvas_.currentColor()) : CSSColorValue::opaqueBlack();
    auto chain = filterChainForCSS(*functions, currentColor);
    return chain.empty() ? nullptr : std::make_shared<const FilterChain>(std::move(chain));
}

void CanvasRenderingContext2D::setFilter(std::string_view filter)
{
    if (!isValidCSSFilter(filter))
        return;
    state_.filter = std::string(filter);
    state_.filterObject.reset();
    state_.filterChain = resolveFilter(filter);
}

void CanvasRenderingContext2D::setFilter(std::shared_ptr<CanvasFilter> filter)
{
    if (!filter)
        return;
    state_.filterChain = filter->chain()->empty() ? nullptr : filter->chain();
    state_.filterObject = std::move(filter);
}
