#pragma once

#include <cairo.h>

#include <array>
#include <vector>

// Fills and strokes of curved shapes, drawn as a coverage mask.
//
// Cairo's own scan converter samples each pixel on a fine grid, which costs tens of
// microseconds for a ring a few dozen pixels wide, about all of a battery's drawing. FreeType's
// rasterizer computes the exact area each pixel has inside the outline (as browsers do) for a
// fraction of that. The mask is then painted through Cairo, so sources, clips and compositing
// stay Cairo's.

struct DevicePoint {
    double x = 0, y = 0;
};

// Closed outlines in device pixels.
using DeviceContours = std::vector<std::vector<DevicePoint>>;

// Paints the current source of `cr` through the coverage of `contours` (nonzero or even-odd)
// with the current operator and clip, as a fill of the same outline would; with `table`, each
// pixel's coverage is looked up in it first. False, having drawn nothing, for outlines out of
// the rasterizer's range; the caller then lets Cairo fill.
bool paintCoverage(cairo_t* cr, const DeviceContours& contours, cairo_fill_rule_t rule,
                   const std::array<unsigned char, 256>* table = nullptr);
