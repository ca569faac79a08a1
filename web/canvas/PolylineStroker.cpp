#include "web/canvas/PolylineStroker.h"

#include "web/canvas/CacheKey.h"
#include "web/text/LruCache.h"

#include <algorithm>
#include <cmath>
#include <string>

namespace {

struct Vec {
    double x = 0, y = 0;
};

Vec operator+(Vec a, Vec b) { return {a.x + b.x, a.y + b.y}; }
Vec operator-(Vec a, Vec b) { return {a.x - b.x, a.y - b.y}; }
Vec operator*(double s, Vec a) { return {s * a.x, s * a.y}; }
double dot(Vec a, Vec b) { return a.x * b.x + a.y * b.y; }
double cross(Vec a, Vec b) { return a.x * b.y - a.y * b.x; }
// Device coordinates stay far from where squaring overflows, so std::hypot's care is not needed.
double norm(Vec a) { return std::sqrt(dot(a, a)); }
Vec toVec(DevicePoint p) { return {p.x, p.y}; }
DevicePoint toPoint(Vec v) { return {v.x, v.y}; }

// A turn this close to straight back has no sensible join in a polyline; Cairo draws it.
constexpr double kReversal = -0.9999;

class SideBuilder {
public:
    SideBuilder(const StrokeGeometry& geometry, std::vector<DevicePoint>& out)
        : g_(geometry), out_(out)
    {
        double ratio = std::clamp(1 - g_.tolerance / g_.halfWidth, -1.0, 1.0);
        arcStep_ = std::max(2 * std::acos(ratio), 0.05);
    }

    void add(Vec p) { out_.push_back(toPoint(p)); }
    bool folded() const { return folded_; }

    // The points of an arc of radius halfWidth around `centre` from direction `from` through
    // `sweep` radians, both ends excluded.
    void arc(Vec centre, Vec from, double sweep)
    {
        int steps = int(std::ceil(std::fabs(sweep) / arcStep_));
        double start = std::atan2(from.y, from.x);
        for (int i = 1; i < steps; ++i) {
            double angle = start + sweep * i / steps;
            add(centre + g_.halfWidth * Vec{std::cos(angle), std::sin(angle)});
        }
    }

    // The side's points at the corner `p` between a segment with normal `na` (length `lengthA`)
    // and one with normal `nb` (length `lengthB`); `side` is +1 or -1.
    void join(Vec p, Vec na, Vec nb, double lengthA, double lengthB, double side)
    {
        double w = g_.halfWidth;
        Vec a = p + side * w * na, b = p + side * w * nb;
        double turn = cross(na, nb), cosine = dot(na, nb);
        if (std::fabs(turn) < 1e-12 && cosine > 0) {
            add(a);
            return;
        }
        // Where the two offset lines meet.
        Vec miter = p + (side * w / (1 + cosine)) * (na + nb);
        // The bend turns towards +n when turn > 0, so that side is the inside.
        bool outer = side * turn < 0;
        if (!outer) {
            // Inside the bend the offsets cross; their crossing ends both when it lies on both.
            // Each end of a segment may take up to half of it; beyond that the inside edge would
            // fold back over itself, which the rasterizer cannot fill as a union.
            double reach = w * std::fabs(turn) / (1 + cosine);
            if (reach <= lengthA / 2 && reach <= lengthB / 2)
                add(miter);
            else
                folded_ = true;
            return;
        }
        add(a);
        if (g_.join == CAIRO_LINE_JOIN_ROUND)
            arc(p, side * na, std::atan2(cross(na, nb), cosine));
        else if (g_.join == CAIRO_LINE_JOIN_MITER && 1 / std::sqrt((1 + cosine) / 2) <= g_.miterLimit)
            add(miter);
        add(b);
    }

    // A cap at `p`, the stroke going in direction `d` with normal `n`, from p + w n round to
    // p - w n (both ends left to the sides).
    void cap(Vec p, Vec d, Vec n)
    {
        double w = g_.halfWidth;
        if (g_.cap == CAIRO_LINE_CAP_SQUARE) {
            add(p + w * n + w * d);
            add(p - w * n + w * d);
        } else if (g_.cap == CAIRO_LINE_CAP_ROUND) {
            // From n to -n through d: a half turn whose sign follows which side d is on.
            arc(p, n, cross(n, d) > 0 ? M_PI : -M_PI);
        }
    }

private:
    const StrokeGeometry& g_;
    std::vector<DevicePoint>& out_;
    double arcStep_;
    bool folded_ = false;
};

double signedArea(const std::vector<DevicePoint>& contour)
{
    double area = 0;
    for (std::size_t i = 0; i < contour.size(); ++i) {
        const DevicePoint& a = contour[i];
        const DevicePoint& b = contour[(i + 1) % contour.size()];
        area += a.x * b.y - b.x * a.y;
    }
    return area / 2;
}

std::vector<Vec> distinctPoints(const FlattenedSubpath& subpath)
{
    std::vector<Vec> points;
    for (const DevicePoint& p : subpath.points) {
        Vec v = toVec(p);
        if (points.empty() || norm(v - points.back()) > 1e-9)
            points.push_back(v);
    }
    if (subpath.closed && points.size() > 1 && norm(points.back() - points[0]) <= 1e-9)
        points.pop_back();
    return points;
}

void addPositively(DeviceContours& contours, std::vector<DevicePoint> contour)
{
    if (signedArea(contour) < 0)
        std::reverse(contour.begin(), contour.end());
    contours.push_back(std::move(contour));
}

// The cap at `p` of a stroke going in direction `d`, whose end runs from p + reach n to
// p - reach n.
void addCap(DeviceContours& contours, const StrokeGeometry& g, Vec p, Vec d, Vec n, double reach)
{
    if (g.cap == CAIRO_LINE_CAP_BUTT)
        return;
    std::vector<DevicePoint> cap;
    SideBuilder builder(g, cap);
    builder.add(p + reach * n);
    builder.cap(p, d, n);
    builder.add(p - reach * n);
    addPositively(contours, std::move(cap));
}

// Whether the stroke's outline is sure not to overlap itself (the rasterizer adds overlapping
// outlines up, which is right inside them but too dark at their edges). A path that turns no
// more than once round even when closed is part of a convex outline, whose stroke stays clear of
// itself unless it bends tighter than the pen (refused where that happens). Caps other than butt
// ones may reach over the other end of such a path (a full circle's do), so with those the path
// may turn no more than half round.
bool cannotOverlapItself(const FlattenedSubpath& subpath, const StrokeGeometry& g)
{
    constexpr double kSlack = 1e-6;
    if (!subpath.closed && g.cap != CAIRO_LINE_CAP_BUTT && subpath.totalTurning() > M_PI + kSlack)
        return false;
    return subpath.totalTurning(true) <= 2 * M_PI + kSlack;
}

bool strokeSubpath(const FlattenedSubpath& subpath, const StrokeGeometry& g, DeviceContours& contours)
{
    std::vector<Vec> p = distinctPoints(subpath);
    if (p.size() < 2)
        return subpath.points.size() < 2 && !subpath.closed;  // a lone point draws nothing
    if (subpath.closed && p.size() < 3)
        return false;
    std::size_t segmentCount = subpath.closed ? p.size() : p.size() - 1;
    std::vector<Vec> normal(segmentCount);
    std::vector<double> length(segmentCount);
    for (std::size_t i = 0; i < segmentCount; ++i) {
        Vec d = p[(i + 1) % p.size()] - p[i];
        length[i] = norm(d);
        normal[i] = {-d.y / length[i], d.x / length[i]};
    }
    for (std::size_t i = 1; i < segmentCount + (subpath.closed ? 1 : 0); ++i) {
        if (dot(normal[i - 1], normal[i % segmentCount]) < kReversal)
            return false;
    }
    if (!cannotOverlapItself(subpath, g))
        return false;

    double w = g.halfWidth;
    if (subpath.closed) {
        std::vector<DevicePoint> loops[2];
        for (int i = 0; i < 2; ++i) {
            double side = i == 0 ? 1 : -1;
            SideBuilder builder(g, loops[i]);
            for (std::size_t k = 0; k < segmentCount; ++k) {
                std::size_t before = (k + segmentCount - 1) % segmentCount;
                builder.join(p[k], normal[before], normal[k], length[before], length[k], side);
            }
            if (builder.folded())
                return false;
        }
        std::reverse(loops[1].begin(), loops[1].end());
        // Every stroke counts positively, so that overlapping strokes add up rather than cancel.
        if (signedArea(loops[0]) + signedArea(loops[1]) < 0) {
            std::reverse(loops[0].begin(), loops[0].end());
            std::reverse(loops[1].begin(), loops[1].end());
        }
        contours.push_back(std::move(loops[0]));
        contours.push_back(std::move(loops[1]));
        return true;
    }

    // The caps stand across the path's own direction at its ends, not across the first and last
    // chords of a flattened curve (the two ends of a full circle must meet without a notch).
    // Their corners lie on the chords' offset lines.
    auto endNormal = [&](DevicePoint tangent, std::size_t segment) {
        double size = norm(toVec(tangent));
        if (size == 0)
            return std::pair{normal[segment], w};
        Vec n{-tangent.y / size, tangent.x / size};
        double cosine = dot(n, normal[segment]);
        return cosine > 0.5 ? std::pair{n, w / cosine} : std::pair{normal[segment], w};
    };
    std::size_t last = segmentCount - 1;
    auto [startNormal, startReach] = endNormal(subpath.startTangent, 0);
    auto [finalNormal, finalReach] = endNormal(subpath.endTangent, last);

    std::vector<DevicePoint> left, right;
    SideBuilder leftSide(g, left), rightSide(g, right);
    leftSide.add(p[0] + startReach * startNormal);
    rightSide.add(p[0] - startReach * startNormal);
    for (std::size_t k = 1; k < segmentCount; ++k) {
        leftSide.join(p[k], normal[k - 1], normal[k], length[k - 1], length[k], 1);
        rightSide.join(p[k], normal[k - 1], normal[k], length[k - 1], length[k], -1);
    }
    leftSide.add(p.back() + finalReach * finalNormal);
    rightSide.add(p.back() - finalReach * finalNormal);

    if (leftSide.folded() || rightSide.folded())
        return false;
    std::vector<DevicePoint> body = std::move(left);
    body.insert(body.end(), right.rbegin(), right.rend());
    addPositively(contours, std::move(body));
    // Caps are outlines of their own, so that the stroke's outline stays simple.
    auto along = [](Vec n) { return Vec{n.y, -n.x}; };
    addCap(contours, g, p.back(), along(finalNormal), finalNormal, finalReach);
    addCap(contours, g, p[0], -1 * along(startNormal), -1 * startNormal, startReach);
    return true;
}

std::optional<DeviceContours> outlineOfStroke(const FlattenedPath& path, const StrokeGeometry& geometry)
{
    DeviceContours contours;
    for (const FlattenedSubpath& subpath : path.subpaths) {
        if (!strokeSubpath(subpath, geometry, contours))
            return std::nullopt;
    }
    return contours;
}

// A stroke drawn again along the same points with the same pen, as a battery's ring is in
// every render, takes its outline from here. The key holds every number the outline is made
// from, bit for bit.
constexpr std::size_t kCachedOutlines = 32;
constexpr std::size_t kMostCachedPoints = 1024;

std::string outlineKey(const FlattenedPath& path, const StrokeGeometry& geometry)
{
    CacheKey key(64 + path.subpaths.size() * 64);
    key.add(geometry.halfWidth);
    key.add(geometry.cap);
    key.add(geometry.join);
    key.add(geometry.miterLimit);
    key.add(geometry.tolerance);
    for (const FlattenedSubpath& subpath : path.subpaths) {
        key.add(subpath.points.size());
        key.add(subpath.closed);
        key.add(subpath.startTangent);
        key.add(subpath.endTangent);
        key.addBytes(subpath.points.data(), subpath.points.size() * sizeof(DevicePoint));
    }
    return std::move(key).take();
}

} // namespace

std::optional<DeviceContours> strokeOutline(const FlattenedPath& path, const StrokeGeometry& geometry)
{
    if (!(geometry.halfWidth > 0) || !std::isfinite(geometry.halfWidth))
        return std::nullopt;
    std::size_t points = 0;
    for (const FlattenedSubpath& subpath : path.subpaths)
        points += subpath.points.size();
    if (points > kMostCachedPoints)
        return outlineOfStroke(path, geometry);
    thread_local LruCache<std::string, std::optional<DeviceContours>> cache(kCachedOutlines);
    std::string key = outlineKey(path, geometry);
    if (const auto* cached = cache.find(key))
        return *cached;
    return cache.insert(key, outlineOfStroke(path, geometry));
}
