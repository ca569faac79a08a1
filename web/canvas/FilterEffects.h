#pragma once

#include "web/canvas/CanvasPainter.h"
#include "web/canvas/FilterPrimitive.h"

#include <cairo.h>

// Past this many pixels beyond the canvas, what a filter would pull in is not drawn: shadows
// and blurs of content that far away are cut off rather than paid for with huge layers.
constexpr int kMaxFilterReach = 1024;

// How far a chain carries pixels: a pixel can change what lies this many device pixels away
// (blur spread, shadow offsets, kernels), capped at kMaxFilterReach.
int filterReach(const FilterChain& chain);

// Whether a chain can make something out of transparent pixels (turbulence, an alpha offset),
// so that it paints beyond what was drawn.
bool filterFillsRegion(const FilterChain& chain);

// Applies the chain in place to a premultiplied ARGB32 surface that holds the device pixels of
// `area`, for a canvas whose channels are in `colorSpace`.
void applyFilterChain(cairo_surface_t* surface, const CanvasDeviceRect& area, const FilterChain& chain,
                      CSSColorSpace colorSpace);

// Single primitives, for the chain (and its tests); the surface as above.
void applyConvolveMatrix(cairo_surface_t* surface, const ConvolveMatrixPrimitive& primitive);
void renderTurbulence(cairo_surface_t* surface, const CanvasDeviceRect& area, const TurbulencePrimitive& primitive);
