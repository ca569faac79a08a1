#include "web/canvas/CanvasRenderingContext2D.h"

#include <cmath>

void CanvasRenderingContext2D::setShadowOffsetX(double offset)
{
    if (std::isfinite(offset))
        state_.shadowOffsetX = offset;
}

void CanvasRenderingContext2D::setShadowOffsetY(double offset)
{
    if (std::isfinite(offset))
        state_.shadowOffsetY = offset;
}

void CanvasRenderingContext2D::setShadowBlur(double blur)
{
    if (std::isfinite(blur) && blur >= 0)
        state_.shadowBlur = blur;
}

std::string CanvasRenderingContext2D::shadowColor() const
{
    return serializeCanvasColor(state_.shadowColor.value);
}

void CanvasRenderingContext2D::setShadowColor(std::string_view color)
{
    if (auto parsed = parseColor(color))
        state_.shadowColor = CanvasColor(*parsed);
}
