#pragma once

#include "web/canvas/CoverageMask.h"

#include <cairo.h>

#include <span>
#include <vector>

// A device-space path as polylines: curves cut into lines no farther than `tolerance` pixels
// from the curve, as Cairo flattens them.
struct FlattenedSubpath {
    std::vector<DevicePoint> points;
    bool closed = false;
    // The directions of the path itself where it starts and ends, which for a curve differ
    // from its first and last chords; (0, 0) when the subpath has no length.
    DevicePoint startTangent, endTangent;

    // How far the subpath turns in all, in radians, counting every bend as positive; with
    // `asClosed`, the turns onto and off a closing line too. A closed outline turns 2π when it
    // is convex and more otherwise, so one that turns no further cannot cross itself.
    double totalTurning(bool asClosed = false) const;
};

struct FlattenedPath {
    std::vector<FlattenedSubpath> subpaths;
};

bool containsCurves(std::span<const cairo_path_data_t> path);

FlattenedPath flattenPath(std::span<const cairo_path_data_t> path, double tolerance);
