#pragma once

#include "web/canvas/AffineTransform.h"
#include "web/canvas/CanvasEnums.h"
#include "web/css/CSSColor.h"

#include <cairo.h>

#include <cmath>

// The canvas's values in Cairo's terms.

inline cairo_matrix_t to_cairo_matrix(const AffineTransform& t)
{
    cairo_matrix_t m;
    cairo_matrix_init(&m, t.a, t.b, t.c, t.d, t.e, t.f);
    return m;
}

inline cairo_fill_rule_t to_cairo_fill_rule(CanvasFillRule rule)
{
    return rule == CanvasFillRule::Evenodd ? CAIRO_FILL_RULE_EVEN_ODD : CAIRO_FILL_RULE_WINDING;
}

inline cairo_line_cap_t to_cairo_line_cap(CanvasLineCap cap)
{
    switch (cap) {
    case CanvasLineCap::Round:
        return CAIRO_LINE_CAP_ROUND;
    case CanvasLineCap::Square:
        return CAIRO_LINE_CAP_SQUARE;
    case CanvasLineCap::Butt:
        break;
    }
    return CAIRO_LINE_CAP_BUTT;
}

inline cairo_line_join_t to_cairo_line_join(CanvasLineJoin join)
{
    switch (join) {
    case CanvasLineJoin::Round:
        return CAIRO_LINE_JOIN_ROUND;
    case CanvasLineJoin::Bevel:
        return CAIRO_LINE_JOIN_BEVEL;
    case CanvasLineJoin::Miter:
        break;
    }
    return CAIRO_LINE_JOIN_MITER;
}

inline cairo_filter_t to_cairo_filter(bool smoothingEnabled, ImageSmoothingQuality quality)
{
    if (!smoothingEnabled)
        return CAIRO_FILTER_NEAREST;
    switch (quality) {
    case ImageSmoothingQuality::Medium:
        return CAIRO_FILTER_GOOD;
    case ImageSmoothingQuality::High:
        return CAIRO_FILTER_BEST;
    case ImageSmoothingQuality::Low:
        break;
    }
    return CAIRO_FILTER_BILINEAR;
}

inline cairo_operator_t to_cairo_operator(CanvasCompositeOperation op)
{
    using Op = CanvasCompositeOperation;
    switch (op) {
    case Op::SourceOver: return CAIRO_OPERATOR_OVER;
    case Op::SourceIn: return CAIRO_OPERATOR_IN;
    case Op::SourceOut: return CAIRO_OPERATOR_OUT;
    case Op::SourceAtop: return CAIRO_OPERATOR_ATOP;
    case Op::DestinationOver: return CAIRO_OPERATOR_DEST_OVER;
    case Op::DestinationIn: return CAIRO_OPERATOR_DEST_IN;
    case Op::DestinationOut: return CAIRO_OPERATOR_DEST_OUT;
    case Op::DestinationAtop: return CAIRO_OPERATOR_DEST_ATOP;
    case Op::Lighter: return CAIRO_OPERATOR_ADD;
    case Op::Copy: return CAIRO_OPERATOR_SOURCE;
    case Op::Xor: return CAIRO_OPERATOR_XOR;
    case Op::Clear: return CAIRO_OPERATOR_CLEAR;
    case Op::Multiply: return CAIRO_OPERATOR_MULTIPLY;
    case Op::Screen: return CAIRO_OPERATOR_SCREEN;
    case Op::Overlay: return CAIRO_OPERATOR_OVERLAY;
    case Op::Darken: return CAIRO_OPERATOR_DARKEN;
    case Op::Lighten: return CAIRO_OPERATOR_LIGHTEN;
    case Op::ColorDodge: return CAIRO_OPERATOR_COLOR_DODGE;
    case Op::ColorBurn: return CAIRO_OPERATOR_COLOR_BURN;
    case Op::HardLight: return CAIRO_OPERATOR_HARD_LIGHT;
    case Op::SoftLight: return CAIRO_OPERATOR_SOFT_LIGHT;
    case Op::Difference: return CAIRO_OPERATOR_DIFFERENCE;
    case Op::Exclusion: return CAIRO_OPERATOR_EXCLUSION;
    case Op::Hue: return CAIRO_OPERATOR_HSL_HUE;
    case Op::Saturation: return CAIRO_OPERATOR_HSL_SATURATION;
    case Op::Color: return CAIRO_OPERATOR_HSL_COLOR;
    case Op::Luminosity: return CAIRO_OPERATOR_HSL_LUMINOSITY;
    }
    return CAIRO_OPERATOR_OVER;
}

// Operators for which a transparent source still changes the destination: the canvas then
// composites across the whole clipping region, not only under the shape.
inline bool isUnboundedOperator(CanvasCompositeOperation op)
{
    using Op = CanvasCompositeOperation;
    return op == Op::SourceIn || op == Op::SourceOut || op == Op::DestinationIn || op == Op::DestinationAtop || op == Op::Copy;
}

// Sets a solid source so that Cairo's own rounding (through 16 bits) lands on exactly the
// premultiplied 8-bit values a browser computes: alpha round(a * 255), channels
// round(c * alpha).
inline void set_cairo_source_color(cairo_t* cr, const CSSColor& color, double alphaFactor)
{
    double alpha = std::round(color.alpha * alphaFactor);
    if (alpha <= 0) {
        cairo_set_source_rgba(cr, 0, 0, 0, 0);
        return;
    }
    auto channel = [&](std::uint8_t c) { return std::round(c * alpha / 255) / alpha; };
    cairo_set_source_rgba(cr, channel(color.red), channel(color.green), channel(color.blue), alpha / 255);
}
