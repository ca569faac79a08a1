#pragma once

#include "web/canvas/AffineTransform.h"

#include <cairo.h>

#include <span>
#include <vector>

// Cairo keeps path coordinates in 24.8 fixed point and wraps around beyond about ±8 million
// device pixels, where a canvas path may legitimately reach (fillRect(-1e10, ...)). These keep
// device-space paths within range without changing what lands on the canvas.

// Whether some point lies too far out for Cairo.
bool exceedsCairoRange(std::span<const cairo_path_data_t> path);

// The path cut to a box well inside Cairo's range: curves flattened, filled subpaths clipped
// as polygons (winding kept inside the box), stroked ones cut into the pieces inside the box.
std::vector<cairo_path_data_t> clampToCairoRange(std::span<const cairo_path_data_t> path, bool stroke);

// A path ready to append to a Cairo context whose matrix is the identity: mapped to device
// space when `userToDevice` is given, stripped of what a stroke must not draw (zero-length
// segments, lone points) when `stroke`, and kept within Cairo's range. Returns `path` itself
// when nothing needs changing, else a span over `storage`.
std::span<const cairo_path_data_t> prepareForCairo(std::span<const cairo_path_data_t> path, const AffineTransform* userToDevice,
                                                   bool stroke, std::vector<cairo_path_data_t>& storage);
