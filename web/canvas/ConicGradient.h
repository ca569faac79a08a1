#pragma once

#include "web/canvas/AffineTransform.h"
#include "web/canvas/CanvasPainter.h"

#include <cairo.h>

class CanvasGradient;

// Cairo has no conic gradients: this renders one, seen through `ctm`, over the device
// rectangle `rect` as an ARGB32 surface for a canvas in `space` (null when it cannot be made).
cairo_surface_t* renderConicGradient(const CanvasGradient& gradient, const AffineTransform& ctm, const CanvasDeviceRect& rect,
                                     CSSColorSpace space = CSSColorSpace::SRGB);
