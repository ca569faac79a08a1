#include "web/canvas/FlattenedPath.h"

#include "web/canvas/CacheKey.h"
#include "web/text/LruCache.h"

#include <algorithm>
#include <cmath>
#include <initializer_list>
#include <string>
#include <utility>

namespace {

// Enough line segments that a cubic strays at most `tolerance` from them: the bound from the
// curve's second differences (Wang's formula).
int cubicSegments(DevicePoint p0, DevicePoint p1, DevicePoint p2, DevicePoint p3, double tolerance)
{
    double ax = p0.x - 2 * p1.x + p2.x, ay = p0.y - 2 * p1.y + p2.y;
    double bx = p1.x - 2 * p2.x + p3.x, by = p1.y - 2 * p2.y + p3.y;
    double bend = std::sqrt(std::max(ax * ax + ay * ay, bx * bx + by * by));
    double n = std::ceil(std::sqrt(0.75 * bend / tolerance));
    return int(std::clamp(n, 1.0, 1000.0));
}

void appendCubic(std::vector<DevicePoint>& points, DevicePoint p1, DevicePoint p2, DevicePoint p3, double tolerance)
{
    DevicePoint p0 = points.back();
    int n = cubicSegments(p0, p1, p2, p3, tolerance);
    for (int i = 1; i <= n; ++i) {
        double t = double(i) / n, u = 1 - t;
        double a = u * u * u, b = 3 * u * u * t, c = 3 * u * t * t, d = t * t * t;
        points.push_back({a * p0.x + b * p1.x + c * p2.x + d * p3.x, a * p0.y + b * p1.y + c * p2.y + d * p3.y});
    }
}

// The first of the differences that is not zero.
DevicePoint direction(std::initializer_list<std::pair<DevicePoint, DevicePoint>> candidates)
{
    for (auto [from, to] : candidates) {
        double dx = to.x - from.x, dy = to.y - from.y;
        if (dx * dx + dy * dy > 1e-18)
            return {to.x - from.x, to.y - from.y};
    }
    return {};
}

void noteDirections(FlattenedSubpath& subpath, DevicePoint start, DevicePoint end)
{
    bool hadLength = subpath.startTangent.x != 0 || subpath.startTangent.y != 0;
    if (end.x == 0 && end.y == 0)
        return;
    if (!hadLength)
        subpath.startTangent = start;
    subpath.endTangent = end;
}

} // namespace

double FlattenedSubpath::totalTurning(bool asClosed) const
{
    bool closed = this->closed || asClosed;
    double total = 0;
    double previousX = 0, previousY = 0;
    bool havePrevious = false;
    // Closed: round to the first segment again, for the turn at the start.
    std::size_t count = points.size() + (closed ? 2 : 0);
    for (std::size_t i = 1; i < count; ++i) {
        const DevicePoint& from = points[(i - 1) % points.size()];
        const DevicePoint& to = points[i % points.size()];
        double dx = to.x - from.x, dy = to.y - from.y;
        if (dx * dx + dy * dy <= 1e-18)
            continue;
        if (havePrevious)
            total += std::fabs(std::atan2(previousX * dy - previousY * dx, previousX * dx + previousY * dy));
        previousX = dx, previousY = dy, havePrevious = true;
    }
    return total;
}

bool containsCurves(std::span<const cairo_path_data_t> path)
{
    for (std::size_t i = 0; i < path.size(); i += std::size_t(std::max(1, path[i].header.length))) {
        if (path[i].header.type == CAIRO_PATH_CURVE_TO)
            return true;
    }
    return false;
}

namespace {

FlattenedPath flattenUncached(std::span<const cairo_path_data_t> path, double tolerance)
{
    FlattenedPath flat;
    DevicePoint start;
    auto current = [&]() -> FlattenedSubpath& {
        if (flat.subpaths.empty() || flat.subpaths.back().closed)
            flat.subpaths.push_back(FlattenedSubpath{{start}, false, {}, {}});
        return flat.subpaths.back();
    };
    for (std::size_t i = 0; i < path.size(); i += std::size_t(std::max(1, path[i].header.length))) {
        const cairo_path_data_t& item = path[i];
        auto point = [&](int k) { return DevicePoint{path[i + k].point.x, path[i + k].point.y}; };
        switch (item.header.type) {
        case CAIRO_PATH_MOVE_TO:
            start = point(1);
            flat.subpaths.push_back(FlattenedSubpath{{start}, false, {}, {}});
            break;
        case CAIRO_PATH_LINE_TO: {
            FlattenedSubpath& subpath = current();
            DevicePoint from = subpath.points.back();
            subpath.points.push_back(point(1));
            DevicePoint along = direction({{from, point(1)}});
            noteDirections(subpath, along, along);
            break;
        }
        case CAIRO_PATH_CURVE_TO: {
            FlattenedSubpath& subpath = current();
            DevicePoint from = subpath.points.back();
            appendCubic(subpath.points, point(1), point(2), point(3), tolerance);
            noteDirections(subpath, direction({{from, point(1)}, {from, point(2)}, {from, point(3)}}),
                           direction({{point(2), point(3)}, {point(1), point(3)}, {from, point(3)}}));
            break;
        }
        case CAIRO_PATH_CLOSE_PATH:
            current().closed = true;
            break;
        }
    }
    return flat;
}

// Text drawn again, or a ring, comes as the same path: its lines are taken from here. The key
// is every number the lines are made from.
constexpr std::size_t kCachedPaths = 32;
constexpr std::size_t kLargestCachedPath = 2048; // path elements

std::string pathKey(std::span<const cairo_path_data_t> path, double tolerance)
{
    CacheKey key(sizeof tolerance + path.size() * 2 * sizeof(double));
    key.add(tolerance);
    for (std::size_t i = 0; i < path.size(); i += std::size_t(std::max(1, path[i].header.length))) {
        key.add(path[i].header.type);
        key.add(path[i].header.length);
        for (std::size_t k = 1; k < std::size_t(std::max(1, path[i].header.length)) && i + k < path.size(); ++k) {
            key.add(path[i + k].point.x);
            key.add(path[i + k].point.y);
        }
    }
    return std::move(key).take();
}

} // namespace

FlattenedPath flattenPath(std::span<const cairo_path_data_t> path, double tolerance)
{
    if (path.size() > kLargestCachedPath)
        return flattenUncached(path, tolerance);
    thread_local LruCache<std::string, FlattenedPath> cache(kCachedPaths);
    std::string key = pathKey(path, tolerance);
    if (const FlattenedPath* cached = cache.find(key))
        return *cached;
    return cache.insert(key, flattenUncached(path, tolerance));
}
