#pragma once

#include <cairo.h>

// Shadow blurs beyond this deviation look the same and would only cost time and memory.
constexpr double kMaxBlurSigma = 128;

// Blurs an A8 image surface in place with a Gaussian of deviation `sigma` (capped at
// kMaxBlurSigma): exactly for small deviations, else by three box blurs as browsers do.
void gaussianBlurAlpha(cairo_surface_t* surface, double sigma);
// The same for A8 or premultiplied ARGB32 surfaces, with deviations of their own along x and y.
void gaussianBlurSurface(cairo_surface_t* surface, double sigmaX, double sigmaY);
