#pragma once

#include "platform/web/css/CSSColor.h"
#include "platform/web/dom/ExceptionOr.h"

#include <cairo.h>

#include <array>
#include <memory>
#include <string_view>
#include <vector>

// A gradient made by createLinearGradient, createRadialGradient or createConicGradient.
// Geometry is in the user space of whichever drawing call uses it.
class CanvasGradient {
public:
    enum class Kind { Linear, Radial, Conic };
    struct ColorStop {
        double offset;
        CSSColor color;
    };

    static std::shared_ptr<CanvasGradient> createLinear(double x0, double y0, double x1, double y1);
    static std::shared_ptr<CanvasGradient> createRadial(double x0, double y0, double r0, double x1, double y1, double r1);
    static std::shared_ptr<CanvasGradient> createConic(double startAngle, double x, double y);
    ~CanvasGradient();

    // IndexSizeError for an offset outside 0..1, TypeError for a non-finite one, SyntaxError
    // for a colour that does not parse.
    ExceptionOr<void> addColorStop(double offset, std::string_view color);

    Kind kind() const { return kind_; }
    // Linear: x0 y0 x1 y1; radial: x0 y0 r0 x1 y1 r1; conic: startAngle x y.
    const std::array<double, 6>& geometry() const { return geometry_; }
    const std::vector<ColorStop>& colorStops() const { return stops_; }
    // Whether the gradient paints at all: a linear one with equal points or a radial one with
    // equal circles paints nothing.
    bool paintsNothing() const;
    // The linear or radial gradient as a Cairo pattern in the gradient's space (made on first
    // use, kept until a stop is added); null for conic gradients, which are rendered by hand.
    cairo_pattern_t* cairoPattern() const;

    CanvasGradient(Kind kind, const std::array<double, 6>& geometry);

private:
    Kind kind_;
    std::array<double, 6> geometry_;
    std::vector<ColorStop> stops_;
    mutable cairo_pattern_t* pattern_ = nullptr;
};
