#include "web/canvas/CanvasGradient.h"

#include <algorithm>
#include <cmath>

CanvasGradient::CanvasGradient(Kind kind, const std::array<double, 6>& geometry) : kind_(kind), geometry_(geometry) {}

CanvasGradient::~CanvasGradient() { clearCaches(); }

void CanvasGradient::clearCaches()
{
    for (auto& pattern : patterns_) {
        if (pattern)
            cairo_pattern_destroy(pattern);
        pattern = nullptr;
    }
    deviceStopsValid_ = {};
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
    auto parsed = parseCSSColorValue(color);
    if (!parsed)
        return DOMException{"SyntaxError", "The value provided could not be parsed as a color."};
    // Stops at the same offset keep the order they were added in.
    auto at = std::upper_bound(stops_.begin(), stops_.end(), offset,
                               [](double value, const ColorStop& stop) { return value < stop.offset; });
    stops_.insert(at, ColorStop{offset, *parsed});
    clearCaches();
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

const std::vector<CanvasGradient::DeviceStop>& CanvasGradient::deviceStops(CSSColorSpace space) const
{
    int slot = cacheSlot(space);
    std::vector<DeviceStop>& result = deviceStops_[slot];
    if (deviceStopsValid_[slot])
        return result;
    deviceStopsValid_[slot] = true;
    result.clear();
    bool legacy = std::all_of(stops_.begin(), stops_.end(), [](const ColorStop& stop) { return stop.color.legacy; });
    CSSColorSpace interpolation = legacy ? CSSColorSpace::SRGB : CSSColorSpace::OKLab;
    if (interpolation == space || stops_.size() < 2) {
        for (const auto& stop : stops_)
            result.push_back({stop.offset, stop.color.toBytesIn(space)});
        return result;
    }
    // Enough steps that the canvas's own interpolation between them strays less than a level.
    constexpr int kSteps = 16;
    for (std::size_t i = 0; i < stops_.size(); ++i) {
        result.push_back({stops_[i].offset, stops_[i].color.toBytesIn(space)});
        if (i + 1 == stops_.size() || stops_[i + 1].offset == stops_[i].offset)
            continue;
        auto from = stops_[i].color.in(interpolation), to = stops_[i + 1].color.in(interpolation);
        for (int step = 1; step < kSteps; ++step) {
            double t = double(step) / kSteps;
            CSSColorValue between;
            between.space = interpolation;
            between.legacy = false;
            for (int c = 0; c < 3; ++c)
                between.components[c] = from[c] + (to[c] - from[c]) * t;
            between.alpha = from[3] + (to[3] - from[3]) * t;
            double offset = stops_[i].offset + (stops_[i + 1].offset - stops_[i].offset) * t;
            result.push_back({offset, between.toBytesIn(space)});
        }
    }
    return result;
}

cairo_pattern_t* CanvasGradient::cairoPattern(CSSColorSpace space) const
{
    cairo_pattern_t*& pattern = patterns_[cacheSlot(space)];
    if (pattern || kind_ == Kind::Conic)
        return pattern;
    const auto& g = geometry_;
    pattern = kind_ == Kind::Linear ? cairo_pattern_create_linear(g[0], g[1], g[2], g[3])
                                    : cairo_pattern_create_radial(g[0], g[1], g[2], g[3], g[4], g[5]);
    for (const auto& stop : deviceStops(space)) {
        const CSSColor& c = stop.color;
        cairo_pattern_add_color_stop_rgba(pattern, stop.offset, c.red / 255.0, c.green / 255.0, c.blue / 255.0, c.alpha / 255.0);
    }
    cairo_pattern_set_extend(pattern, CAIRO_EXTEND_PAD);
    return pattern;
}
