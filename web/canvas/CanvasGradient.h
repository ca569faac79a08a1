#pragma once

#include "web/css/CSSColor.h"
#include "web/dom/ExceptionOr.h"

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
        CSSColorValue color;
    };
    // A stop as a canvas of some colour space draws it.
    struct DeviceStop {
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
    // The stops in 8-bit channels of a canvas in `space` (sRGB or Display P3). Legacy colours
    // interpolate in sRGB, and a gradient with any other colour in OKLab, as browsers do; where
    // that differs from interpolating the canvas's channels, intermediate stops follow it.
    const std::vector<DeviceStop>& deviceStops(CSSColorSpace space) const;
    // The linear or radial gradient as a Cairo pattern in the gradient's space for a canvas in
    // `space` (made on first use, kept until a stop is added); null for conic gradients, which
    // are rendered by hand.
    cairo_pattern_t* cairoPattern(CSSColorSpace space = CSSColorSpace::SRGB) const;

    CanvasGradient(Kind kind, const std::array<double, 6>& geometry);

private:
    Kind kind_;
    std::array<double, 6> geometry_;
    // Caches for sRGB and Display P3 canvases.
    static int cacheSlot(CSSColorSpace space) { return space == CSSColorSpace::SRGB ? 0 : 1; }
    void clearCaches();

    std::vector<ColorStop> stops_;
    mutable std::array<std::vector<DeviceStop>, 2> deviceStops_;
    mutable std::array<bool, 2> deviceStopsValid_{};
    mutable std::array<cairo_pattern_t*, 2> patterns_{};
};
