#include "platform/web/canvas/CanvasGradient.h"

#include <algorithm>
#include <cmath>

CanvasGradient::CanvasGradient(Kind kind, const std::array<double, 6>& geometry) : kind_(kind), geometry_(geometry) {}

CanvasGradient::~CanvasGradient()
{
    if (pattern_)
        cairo_pattern_destroy(pattern_);
}

std::shared_ptr<CanvasGradient> CanvasGradient::createLinear(double x0, double y0, double x1, double y1)
{
    return std::make_shared<CanvasGradient>(Kind::Linear, std::array<double, 6>{x0, y0, x1, y1, 0, 0});
}

std::shared_ptr<CanvasGradient> CanvasGradient::createRadial(double x0, double y0, double r0, double x1, double y1, double r1)
{
    return std::make_shared<CanvasGradient>(Kind::Radial, std::array<double, 6>{x0, y0, r0, x1, y1, r1});
}

std::shared_ptr<CanvasGradient> CanvasGradient::createConic(double startAngle, double x, double y)
{
    return std::make_shared<CanvasGradient>(Kind::Conic, std::array<double, 6>{startAngle, x, y, 0, 0, 0});
}

ExceptionOr<void> CanvasGradient::addColorStop(double offset, std::string_view color)
{
    if (!std::isfinite(offset))
        return DOMException{"TypeError", "The provided double value is non-finite."};
    if (offset < 0 || offset > 1)
        return DOMException{"IndexSizeError", "The provided offset is outside the range [0.0, 1.0]."};
    auto parsed = parseCSSColor(color);
    if (!parsed)
        return DOMException{"SyntaxError", "The value provided could not be parsed as a color."};
    // Stops at the same offset keep the order they were added in.
    auto at = std::upper_bound(stops_.begin(), stops_.end(), offset,
                               [](double value, const ColorStop& stop) { return value < stop.offset; });
    stops_.insert(at, ColorStop{offset, *parsed});
    if (pattern_) {
        cairo_pattern_destroy(pattern_);
        pattern_ = nullptr;
    }
    return {};
}

bool CanvasGradient::paintsNothing() const
{
    const auto& g = geometry_;
    switch (kind_) {
    case Kind::Linear:
        return g[0] == g[2] && g[1] == g[3];
    case Kind::Radial:
        return g[0] == g[3] && g[1] == g[4] && g[2] == g[5];
    case Kind::Conic:
        break;
    }
    return false;
}

cairo_pattern_t* CanvasGradient::cairoPattern() const
{
    if (pattern_ || kind_ == Kind::Conic)
        return pattern_;
    const auto& g = geometry_;
    pattern_ = kind_ == Kind::Linear ? cairo_pattern_create_linear(g[0], g[1], g[2], g[3])
                                     : cairo_pattern_create_radial(g[0], g[1], g[2], g[3], g[4], g[5]);
    for (const auto& stop : stops_) {
        const CSSColor& c = stop.color;
        cairo_pattern_add_color_stop_rgba(pattern_, stop.offset, c.red / 255.0, c.green / 255.0, c.blue / 255.0, c.alpha / 255.0);
    }
    cairo_pattern_set_extend(pattern_, CAIRO_EXTEND_PAD);
    return pattern_;
}
