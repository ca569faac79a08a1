#include "web/canvas/CanvasRenderingContext2D.h"

#include "web/canvas/AllFinite.h"
#include "web/canvas/CanvasGradient.h"
#include "web/canvas/CanvasPattern.h"

#include <algorithm>
#include <cmath>

namespace {

constexpr char kCurrentColor[] = "currentcolor";

DOMException nonFinite() { return DOMException{"TypeError", "The provided double value is non-finite."}; }

} // namespace

std::optional<CSSColorValue> CanvasRenderingContext2D::parseColor(std::string_view text) const
{
    // Only a value that names it pays for the element's computed style.
    auto lower = [](char c) { return c >= 'A' && c <= 'Z' ? char(c - 'A' + 'a') : c; };
    auto named = std::search(text.begin(), text.end(), std::begin(kCurrentColor), std::end(kCurrentColor) - 1,
                             [&](char a, char b) { return lower(a) == b; });
    if (named == text.end())
        return parseCSSColorValue(text);
    return parseCSSColorValue(text, CSSColorValue::fromLegacy(canvas_.currentColor()));
}

void CanvasRenderingContext2D::setStyle(CanvasPaintStyle& style, const CanvasStyle& value) const
{
    if (auto* text = std::get_if<std::string>(&value)) {
        if (auto color = parseColor(*text))
            style = CanvasPaintStyle{CanvasColor(*color), nullptr, nullptr};
    } else if (auto* gradient = std::get_if<std::shared_ptr<CanvasGradient>>(&value)) {
        if (*gradient)
            style = CanvasPaintStyle{CanvasColor(), *gradient, nullptr};
    } else if (auto* pattern = std::get_if<std::shared_ptr<CanvasPattern>>(&value)) {
        if (*pattern)
            style = CanvasPaintStyle{CanvasColor(), nullptr, *pattern};
    }
}

CanvasStyle CanvasRenderingContext2D::styleValue(const CanvasPaintStyle& style)
{
    if (style.gradient)
        return style.gradient;
    if (style.pattern)
        return style.pattern;
    return serializeCanvasColor(style.color.value);
}

CanvasStyle CanvasRenderingContext2D::strokeStyle() const { return styleValue(state_.strokeStyle); }
void CanvasRenderingContext2D::setStrokeStyle(const CanvasStyle& style) { setStyle(state_.strokeStyle, style); }
CanvasStyle CanvasRenderingContext2D::fillStyle() const { return styleValue(state_.fillStyle); }
void CanvasRenderingContext2D::setFillStyle(const CanvasStyle& style) { setStyle(state_.fillStyle, style); }

ExceptionOr<std::shared_ptr<CanvasGradient>> CanvasRenderingContext2D::createLinearGradient(double x0, double y0, double x1, double y1)
{
    if (!allFinite({x0, y0, x1, y1}))
        return nonFinite();
    return CanvasGradient::createLinear(x0, y0, x1, y1);
}

ExceptionOr<std::shared_ptr<CanvasGradient>> CanvasRenderingContext2D::createRadialGradient(double x0, double y0, double r0,
                                                                                           double x1, double y1, double r1)
{
    if (!allFinite({x0, y0, r0, x1, y1, r1}))
        return nonFinite();
    if (r0 < 0 || r1 < 0)
        return DOMException{"IndexSizeError", "The radius provided is negative."};
    return CanvasGradient::createRadial(x0, y0, r0, x1, y1, r1);
}

ExceptionOr<std::shared_ptr<CanvasGradient>> CanvasRenderingContext2D::createConicGradient(double startAngle, double x, double y)
{
    if (!allFinite({startAngle, x, y}))
        return nonFinite();
    return CanvasGradient::createConic(startAngle, x, y);
}

ExceptionOr<std::shared_ptr<CanvasPattern>> CanvasRenderingContext2D::createPattern(CanvasImageSource& image, std::string_view repetition)
{
    if (auto layers = checkNoOpenLayers(image, "createPattern"); layers.isException())
        return layers.exception();
    return CanvasPattern::create(image, repetition);
}
