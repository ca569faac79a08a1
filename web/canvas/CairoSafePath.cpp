#include "web/canvas/CairoSafePath.h"

#include <algorithm>
#include <cmath>

namespace {

// Far beyond any canvas (8192 pixels), far within Cairo's fixed-point range.
constexpr double kLimit = 1 << 21;
// Flattening tolerance in device pixels, Cairo's own default.
constexpr double kTolerance = 0.1;

struct Point {
    double x, y;
};

using Polyline = std::vector<Point>;

bool inside(const Point& p) { return std::fabs(p.x) <= kLimit && std::fabs(p.y) <= kLimit; }

// Subdivision stops at this depth, and once a path has produced this many points in all:
// far-flung curves are an abuse, not a drawing, and must not cost unbounded time or memory.
constexpr int kMaxDepth = 16;
constexpr std::size_t kPointBudget = 1 << 18;

void flattenCurve(Point p0, Point p1, Point p2, Point p3, Polyline& out, int depth, std::size_t& budget)
{
    double minX = std::min({p0.x, p1.x, p2.x, p3.x}), maxX = std::max({p0.x, p1.x, p2.x, p3.x});
    double minY = std::min({p0.y, p1.y, p2.y, p3.y}), maxY = std::max({p0.y, p1.y, p2.y, p3.y});
    bool outside = maxX < -kLimit || minX > kLimit || maxY < -kLimit || minY > kLimit;
    // Flat enough when both control points lie near the chord.
    double dx = p3.x - p0.x, dy = p3.y - p0.y;
    double length = std::hypot(dx, dy);
    auto distance = [&](const Point& p) {
        if (length == 0)
            return std::hypot(p.x - p0.x, p.y - p0.y);
        return std::fabs((p.x - p0.x) * dy - (p.y - p0.y) * dx) / length;
    };
    // A curve wholly outside the box bounds no visible area between it and its chord.
    if (outside || depth >= kMaxDepth || budget == 0 || std::max(distance(p1), distance(p2)) <= kTolerance) {
        out.push_back(p3);
        if (budget > 0)
            --budget;
        return;
    }
    auto mid = [](Point a, Point b) { return Point{(a.x + b.x) / 2, (a.y + b.y) / 2}; };
    Point p01 = mid(p0, p1), p12 = mid(p1, p2), p23 = mid(p2, p3);
    Point p012 = mid(p01, p12), p123 = mid(p12, p23);
    Point m = mid(p012, p123);
    flattenCurve(p0, p01, p012, m, out, depth + 1, budget);
    flattenCurve(m, p123, p23, p3, out, depth + 1, budget);
}

// Sutherland-Hodgman against one side of the box: keeps points with coordinate `axis`
// on the inner side of `bound` (sign tells which side).
Polyline clipPolygon(const Polyline& polygon, int axis, double bound, double sign)
{
    Polyline result;
    if (polygon.empty())
        return result;
    auto coord = [&](const Point& p) { return axis == 0 ? p.x : p.y; };
    auto in = [&](const Point& p) { return (coord(p) - bound) * sign <= 0; };
    auto crossing = [&](const Point& a, const Point& b) {
        double t = (bound - coord(a)) / (coord(b) - coord(a));
        Point p{a.x + (b.x - a.x) * t, a.y + (b.y - a.y) * t};
        (axis == 0 ? p.x : p.y) = bound;
        return p;
    };
    for (std::size_t i = 0; i < polygon.size(); ++i) {
        const Point& current = polygon[i];
        const Point& previous = polygon[(i + polygon.size() - 1) % polygon.size()];
        if (in(current)) {
            if (!in(previous))
                result.push_back(crossing(previous, current));
            result.push_back(current);
        } else if (in(previous)) {
            result.push_back(crossing(previous, current));
        }
    }
    return result;
}

// Liang-Barsky: the part of segment a-b inside the box, if any.
bool clipSegment(Point& a, Point& b)
{
    double t0 = 0, t1 = 1;
    double dx = b.x - a.x, dy = b.y - a.y;
    auto test = [&](double p, double q) {
        if (p == 0)
            return q >= 0;
        double r = q / p;
        if (p < 0) {
            if (r > t1)
                return false;
            t0 = std::max(t0, r);
        } else {
            if (r < t0)
                return false;
            t1 = std::min(t1, r);
        }
        return true;
    };
    if (!test(-dx, a.x + kLimit) || !test(dx, kLimit - a.x) || !test(-dy, a.y + kLimit) || !test(dy, kLimit - a.y))
        return false;
    Point start{a.x + dx * t0, a.y + dy * t0};
    Point end{a.x + dx * t1, a.y + dy * t1};
    a = start;
    b = end;
    return true;
}

class Writer {
public:
    explicit Writer(std::vector<cairo_path_data_t>& out) : out_(out) {}
    void add(cairo_path_data_type_t type, const Point* point)
    {
        cairo_path_data_t header;
        header.header = {type, point ? 2 : 1};
        out_.push_back(header);
        if (point) {
            cairo_path_data_t data;
            data.point = {point->x, point->y};
            out_.push_back(data);
        }
    }

private:
    std::vector<cairo_path_data_t>& out_;
};

void emitFilled(const Polyline& subpath, Writer& writer)
{
    Polyline polygon = subpath;
    polygon = clipPolygon(polygon, 0, kLimit, 1);
    polygon = clipPolygon(polygon, 0, -kLimit, -1);
    polygon = clipPolygon(polygon, 1, kLimit, 1);
    polygon = clipPolygon(polygon, 1, -kLimit, -1);
    if (polygon.size() < 3)
        return;
    writer.add(CAIRO_PATH_MOVE_TO, &polygon[0]);
    for (std::size_t i = 1; i < polygon.size(); ++i)
        writer.add(CAIRO_PATH_LINE_TO, &polygon[i]);
    writer.add(CAIRO_PATH_CLOSE_PATH, nullptr);
}

void emitStroked(const Polyline& subpath, bool closed, Writer& writer)
{
    if (closed && std::all_of(subpath.begin(), subpath.end(), inside)) {
        writer.add(CAIRO_PATH_MOVE_TO, &subpath[0]);
        for (std::size_t i = 1; i < subpath.size(); ++i)
            writer.add(CAIRO_PATH_LINE_TO, &subpath[i]);
        writer.add(CAIRO_PATH_CLOSE_PATH, nullptr);
        return;
    }
    Polyline points = subpath;
    if (closed)
        points.push_back(subpath.front());
    bool penDown = false;
    Point pen{};
    for (std::size_t i = 1; i < points.size(); ++i) {
        Point a = points[i - 1], b = points[i];
        if (!clipSegment(a, b)) {
            penDown = false;
            continue;
        }
        if (!penDown || a.x != pen.x || a.y != pen.y)
            writer.add(CAIRO_PATH_MOVE_TO, &a);
        writer.add(CAIRO_PATH_LINE_TO, &b);
        pen = b;
        penDown = true;
    }
}

} // namespace

bool exceedsCairoRange(std::span<const cairo_path_data_t> path)
{
    for (std::size_t i = 0; i < path.size(); i += path[i].header.length) {
        for (int j = 1; j < path[i].header.length; ++j) {
            if (!inside({path[i + j].point.x, path[i + j].point.y}))
                return true;
        }
    }
    return false;
}

std::vector<cairo_path_data_t> clampToCairoRange(std::span<const cairo_path_data_t> path, bool stroke)
{
    std::vector<cairo_path_data_t> out;
    Writer writer(out);
    Polyline subpath;
    bool broken = false; // the subpath met a point that is not a number
    // Overflowed coordinates stay huge but finite, so that clipping them stays arithmetic.
    auto tame = [&](double v) {
        if (std::isnan(v))
            broken = true;
        return std::clamp(v, -1e150, 1e150);
    };
    auto finish = [&](bool closed) {
        if (subpath.size() >= 2 && !broken) {
            if (stroke)
                emitStroked(subpath, closed, writer);
            else
                emitFilled(subpath, writer);
        }
        subpath.clear();
        broken = false;
    };
    Point start{};
    std::size_t budget = kPointBudget;
    for (std::size_t i = 0; i < path.size(); i += path[i].header.length) {
        const cairo_path_data_t* element = &path[i];
        auto point = [&](int j) { return Point{tame(element[j].point.x), tame(element[j].point.y)}; };
        switch (element->header.type) {
        case CAIRO_PATH_MOVE_TO:
            finish(false);
            start = point(1);
            subpath.push_back(start);
            break;
        case CAIRO_PATH_LINE_TO:
            if (subpath.empty())
                subpath.push_back(start);
            subpath.push_back(point(1));
            break;
        case CAIRO_PATH_CURVE_TO:
            if (subpath.empty())
                subpath.push_back(start);
            flattenCurve(subpath.back(), point(1), point(2), point(3), subpath, 0, budget);
            break;
        case CAIRO_PATH_CLOSE_PATH:
            finish(true);
            break;
        }
    }
    finish(false);
    return out;
}

namespace {

// Whether the line or curve `e` leaves `current` at all: all its points there is no length.
bool staysAt(const cairo_path_data_t* e, Point current)
{
    for (int j = 1; j < e->header.length; ++j) {
        if (e[j].point.x != current.x || e[j].point.y != current.y)
            return false;
    }
    return true;
}

// Zero-length segments go, and subpaths left without a segment: the stroke of a lone point
// is nothing, whatever the caps.
bool hasDegenerateParts(std::span<const cairo_path_data_t> path)
{
    Point current{0, 0};
    bool segment = true;
    for (std::size_t i = 0; i < path.size(); i += path[i].header.length) {
        const cairo_path_data_t* e = &path[i];
        switch (e->header.type) {
        case CAIRO_PATH_MOVE_TO:
            if (!segment)
                return true;
            segment = false;
            current = {e[1].point.x, e[1].point.y};
            break;
        case CAIRO_PATH_LINE_TO:
        case CAIRO_PATH_CURVE_TO: {
            int last = e->header.length - 1;
            if (staysAt(e, current))
                return true;
            segment = true;
            current = {e[last].point.x, e[last].point.y};
            break;
        }
        case CAIRO_PATH_CLOSE_PATH:
            if (!segment)
                return true;
            break;
        }
    }
    return !segment;
}

std::vector<cairo_path_data_t> withoutDegenerateParts(std::span<const cairo_path_data_t> path)
{
    std::vector<cairo_path_data_t> out;
    out.reserve(path.size());
    Point current{0, 0}, start{0, 0};
    bool pendingMove = false;
    bool segment = false;
    auto emitMove = [&] {
        if (!pendingMove)
            return;
        cairo_path_data_t header, point;
        header.header = {CAIRO_PATH_MOVE_TO, 2};
        point.point = {start.x, start.y};
        out.push_back(header);
        out.push_back(point);
        pendingMove = false;
    };
    for (std::size_t i = 0; i < path.size(); i += path[i].header.length) {
        const cairo_path_data_t* e = &path[i];
        switch (e->header.type) {
        case CAIRO_PATH_MOVE_TO:
            start = current = {e[1].point.x, e[1].point.y};
            pendingMove = true;
            segment = false;
            break;
        case CAIRO_PATH_LINE_TO:
        case CAIRO_PATH_CURVE_TO: {
            int last = e->header.length - 1;
            if (staysAt(e, current))
                break;
            if (!segment && !pendingMove) {
                // After a close, a segment starts a new subpath at the closed one's start.
                pendingMove = true;
            }
            emitMove();
            out.insert(out.end(), e, e + e->header.length);
            current = {e[last].point.x, e[last].point.y};
            segment = true;
            break;
        }
        case CAIRO_PATH_CLOSE_PATH:
            if (segment) {
                out.push_back(*e);
                current = start;
            }
            segment = false;
            pendingMove = false;
            break;
        }
    }
    return out;
}

} // namespace

namespace {

// Cairo's rasterizer slows down with the square of the edges that cross a scan line, so a
// script piling up tens of thousands of overlapping segments could stall the process for
// many seconds in one call. Paths are cut after this many segments, far beyond any drawing's
// needs (a battery is tens of segments, a line of text a few thousand).
constexpr std::size_t kMaxFillSegments = 20000;
constexpr std::size_t kMaxStrokeSegments = 20000;

// The number of data items that hold the first `limit` segments.
std::size_t prefixWithSegments(std::span<const cairo_path_data_t> path, std::size_t limit)
{
    std::size_t segments = 0;
    for (std::size_t i = 0; i < path.size(); i += path[i].header.length) {
        auto type = path[i].header.type;
        if ((type == CAIRO_PATH_LINE_TO || type == CAIRO_PATH_CURVE_TO) && ++segments > limit)
            return i;
    }
    return path.size();
}

} // namespace

std::span<const cairo_path_data_t> prepareForCairo(std::span<const cairo_path_data_t> path, const AffineTransform* userToDevice,
                                                   bool stroke, std::vector<cairo_path_data_t>& storage)
{
    path = path.first(prefixWithSegments(path, stroke ? kMaxStrokeSegments : kMaxFillSegments));
    if (userToDevice) {
        storage.assign(path.begin(), path.end());
        for (std::size_t i = 0; i < storage.size(); i += storage[i].header.length) {
            for (int j = 1; j < storage[i].header.length; ++j)
                userToDevice->map(storage[i + j].point.x, storage[i + j].point.y);
        }
        path = storage;
    }
    if (stroke && hasDegenerateParts(path)) {
        auto pruned = withoutDegenerateParts(path);
        storage = std::move(pruned);
        path = storage;
    }
    if (exceedsCairoRange(path)) {
        auto clamped = clampToCairoRange(path, stroke);
        storage = std::move(clamped);
        path = storage;
    }
    return path;
}
