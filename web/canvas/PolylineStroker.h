#pragma once

#include "web/canvas/FlattenedPath.h"

#include <optional>

struct StrokeGeometry {
    double halfWidth = 0.5;  // in device pixels
    cairo_line_cap_t cap = CAIRO_LINE_CAP_BUTT;
    cairo_line_join_t join = CAIRO_LINE_JOIN_MITER;
    double miterLimit = 10;
    double tolerance = 0.1;  // how far round joins and caps may stray from the circle
};

// The outline of a stroke along a flattened device-space path, to be filled nonzero: for each
// subpath one closed contour (open subpaths, with their caps) or two (closed ones). Corners
// get the join; the bends of a flattened curve get it too, which at their small angles differs
// from the curve's own offset by far less than the tolerance.
//
// Every contour turns the same way. Nothing when the outline might overlap itself, which the
// rasterizer could not fill as a union at its edges (a path that would not be convex if closed,
// caps on one that turns more than half round, a bend tighter than the pen), or when the path holds what it
// does not draw as the canvas does: a subpath of zero length (which may still show its caps).
std::optional<DeviceContours> strokeOutline(const FlattenedPath& path, const StrokeGeometry& geometry);
