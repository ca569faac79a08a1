#include "platform/web/canvas/CanvasPath.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace {

constexpr double kTwoPi = 2 * M_PI;
constexpr double kHalfPi = M_PI / 2;

bool finite(std::initializer_list<double> values)
{
    return std::all_of(values.begin(), values.end(), [](double v) { return std::isfinite(v); });
}

DOMException indexSizeError(const char* message) { return DOMException{"IndexSizeError", message}; }
DOMException rangeError(const char* message) { return DOMException{"RangeError", message}; }

// Where an arc from `start` should end: a full turn when the sweep reaches 2π, else the end
// angle brought within one turn of the start in the arc's direction. Like browsers, a
// counter-clockwise arc from 0 to 2π is a full circle.
double adjustedEndAngle(double start, double end, bool counterclockwise)
{
    if (!counterclockwise && end - start >= kTwoPi)
        return start + kTwoPi;
    if (counterclockwise && start - end >= kTwoPi)
        return start - kTwoPi;
    if (!counterclockwise && start > end)
        return start + (kTwoPi - std::fmod(start - end, kTwoPi));
    if (counterclockwise && start < end)
        return start - (kTwoPi - std::fmod(end - start, kTwoPi));
    return end;
}

} // namespace

const AffineTransform& CanvasPath::pathTransform() const
{
    static const AffineTransform identity;
    return identity;
}

CanvasPath::Point CanvasPath::mapped(double x, double y) const
{
    pathTransform().map(x, y);
    return {x, y};
}

CanvasPath::Point CanvasPath::lastPointInUserSpace() const
{
    Point p = lastPoint_;
    if (auto inverse = pathTransform().inverse())
        inverse->map(p.x, p.y);
    return p;
}

void CanvasPath::addMoveTo(Point p)
{
    // A second move in a row replaces the first: a lone point draws nothing.
    if (lastElementIs(CAIRO_PATH_MOVE_TO)) {
        data_.back().point = {p.x, p.y};
    } else {
        lastElement_ = data_.size();
        cairo_path_data_t header;
        header.header = {CAIRO_PATH_MOVE_TO, 2};
        data_.push_back(header);
        cairo_path_data_t point;
        point.point = {p.x, p.y};
        data_.push_back(point);
    }
    hasSubpath_ = true;
    subpathStart_ = lastPoint_ = p;
}

void CanvasPath::addLineTo(Point p)
{
    lastElement_ = data_.size();
    cairo_path_data_t header;
    header.header = {CAIRO_PATH_LINE_TO, 2};
    data_.push_back(header);
    cairo_path_data_t point;
    point.point = {p.x, p.y};
    data_.push_back(point);
    lastPoint_ = p;
}

void CanvasPath::addCurveTo(Point c1, Point c2, Point p)
{
    lastElement_ = data_.size();
    cairo_path_data_t element[4];
    element[0].header = {CAIRO_PATH_CURVE_TO, 4};
    element[1].point = {c1.x, c1.y};
    element[2].point = {c2.x, c2.y};
    element[3].point = {p.x, p.y};
    data_.insert(data_.end(), element, element + 4);
    lastPoint_ = p;
}

void CanvasPath::ensureSubpath(double x, double y)
{
    if (!hasSubpath_)
        addMoveTo(mapped(x, y));
}

bool CanvasPath::lastElementIs(cairo_path_data_type_t type) const
{
    return lastElement_ < data_.size() && data_[lastElement_].header.type == type;
}

void CanvasPath::clearPath()
{
    data_.clear();
    lastElement_ = 0;
    hasSubpath_ = false;
}

void CanvasPath::closePath()
{
    if (!hasSubpath_ || !acceptsPathCalls())
        return;
    if (!data_.empty() && !lastElementIs(CAIRO_PATH_CLOSE_PATH) && !lastElementIs(CAIRO_PATH_MOVE_TO)) {
        lastElement_ = data_.size();
        cairo_path_data_t header;
        header.header = {CAIRO_PATH_CLOSE_PATH, 1};
        data_.push_back(header);
    }
    lastPoint_ = subpathStart_;
}

void CanvasPath::moveTo(double x, double y)
{
    if (!finite({x, y}) || !acceptsPathCalls())
        return;
    addMoveTo(mapped(x, y));
}

void CanvasPath::lineTo(double x, double y)
{
    if (!finite({x, y}) || !acceptsPathCalls())
        return;
    if (!hasSubpath_)
        addMoveTo(mapped(x, y));
    else
        addLineTo(mapped(x, y));
}

void CanvasPath::quadraticCurveTo(double cpx, double cpy, double x, double y)
{
    if (!finite({cpx, cpy, x, y}) || !acceptsPathCalls())
        return;
    ensureSubpath(cpx, cpy);
    Point p0 = lastPoint_;
    Point c = mapped(cpx, cpy);
    Point p = mapped(x, y);
    // The cubic with the same curve: control points two thirds of the way to the quadratic's.
    addCurveTo({p0.x + 2.0 / 3 * (c.x - p0.x), p0.y + 2.0 / 3 * (c.y - p0.y)},
               {p.x + 2.0 / 3 * (c.x - p.x), p.y + 2.0 / 3 * (c.y - p.y)}, p);
}

void CanvasPath::bezierCurveTo(double cp1x, double cp1y, double cp2x, double cp2y, double x, double y)
{
    if (!finite({cp1x, cp1y, cp2x, cp2y, x, y}) || !acceptsPathCalls())
        return;
    ensureSubpath(cp1x, cp1y);
    addCurveTo(mapped(cp1x, cp1y), mapped(cp2x, cp2y), mapped(x, y));
}

ExceptionOr<void> CanvasPath::arcTo(double x1, double y1, double x2, double y2, double radius)
{
    if (!finite({x1, y1, x2, y2, radius}) || !acceptsPathCalls())
        return {};
    ensureSubpath(x1, y1);
    if (radius < 0)
        return indexSizeError("The radius provided is negative.");

    Point p0 = lastPointInUserSpace();
    double ux = p0.x - x1, uy = p0.y - y1;
    double vx = x2 - x1, vy = y2 - y1;
    double uLength = std::hypot(ux, uy);
    double vLength = std::hypot(vx, vy);
    if (uLength == 0 || vLength == 0 || radius == 0) {
        addLineTo(mapped(x1, y1));
        return {};
    }
    ux /= uLength, uy /= uLength;
    vx /= vLength, vy /= vLength;
    double cosine = ux * vx + uy * vy;
    double sine = ux * vy - uy * vx;
    // Nearly collinear points: the circle would be at infinity (or the lines fold back).
    if (std::fabs(sine) <= 1.0 / 4096) {
        addLineTo(mapped(x1, y1));
        return {};
    }
    // Distance from (x1, y1) to the tangent points: r / tan(θ/2), θ the angle between the lines.
    double tangent = radius * (1 + cosine) / std::fabs(sine);
    double t1x = x1 + ux * tangent, t1y = y1 + uy * tangent;
    double t2x = x1 + vx * tangent, t2y = y1 + vy * tangent;
    // The centre lies along the bisector, on the side the lines turn to.
    double nx = sine > 0 ? uy : -uy, ny = sine > 0 ? -ux : ux;
    double cx = t1x - nx * radius, cy = t1y - ny * radius;
    double startAngle = std::atan2(t1y - cy, t1x - cx);
    double endAngle = std::atan2(t2y - cy, t2x - cx);
    double sweep = endAngle - startAngle;
    if (sweep > M_PI)
        sweep -= kTwoPi;
    else if (sweep < -M_PI)
        sweep += kTwoPi;
    addLineTo(mapped(t1x, t1y));
    addArc(cx, cy, radius, radius, 0, startAngle, sweep, false);
    return {};
}

void CanvasPath::rect(double x, double y, double w, double h)
{
    if (!finite({x, y, w, h}) || !acceptsPathCalls())
        return;
    addMoveTo(mapped(x, y));
    addLineTo(mapped(x + w, y));
    addLineTo(mapped(x + w, y + h));
    addLineTo(mapped(x, y + h));
    closePath();
}

ExceptionOr<void> CanvasPath::arc(double x, double y, double radius, double startAngle, double endAngle, bool counterclockwise)
{
    return ellipse(x, y, radius, radius, 0, startAngle, endAngle, counterclockwise);
}

ExceptionOr<void> CanvasPath::ellipse(double x, double y, double radiusX, double radiusY, double rotation,
                                      double startAngle, double endAngle, bool counterclockwise)
{
    if (!finite({x, y, radiusX, radiusY, rotation, startAngle, endAngle}) || !acceptsPathCalls())
        return {};
    if (radiusX < 0 || radiusY < 0)
        return indexSizeError("The radius provided is negative.");

    // Bring the start into [0, 2π) and move the end with it.
    double canonicalStart = std::fmod(startAngle, kTwoPi);
    if (canonicalStart < 0)
        canonicalStart += kTwoPi;
    endAngle += canonicalStart - startAngle;
    startAngle = canonicalStart;
    endAngle = adjustedEndAngle(startAngle, endAngle, counterclockwise);

    if (radiusX == 0 || radiusY == 0 || startAngle == endAngle) {
        // A flat ellipse: straight lines through the extreme points it passes, so that a stroke
        // still shows it.
        auto pointAt = [&](double angle) {
            double px = radiusX * std::cos(angle), py = radiusY * std::sin(angle);
            double cr = std::cos(rotation), sr = std::sin(rotation);
            return mapped(x + px * cr - py * sr, y + px * sr + py * cr);
        };
        auto lineToPoint = [&](Point p) {
            if (hasSubpath_)
                addLineTo(p);
            else
                addMoveTo(p);
        };
        lineToPoint(pointAt(startAngle));
        if ((radiusX == 0 && radiusY == 0) || startAngle == endAngle)
            return {};
        if (!counterclockwise) {
            for (double angle = startAngle - std::fmod(startAngle, kHalfPi) + kHalfPi; angle < endAngle; angle += kHalfPi)
                lineToPoint(pointAt(angle));
        } else {
            double first = startAngle - std::fmod(startAngle, kHalfPi);
            if (first == startAngle)
                first -= kHalfPi;
            for (double angle = first; angle > endAngle; angle -= kHalfPi)
                lineToPoint(pointAt(angle));
        }
        lineToPoint(pointAt(endAngle));
        return {};
    }
    addArc(x, y, radiusX, radiusY, rotation, startAngle, endAngle - startAngle, true);
    return {};
}

void CanvasPath::addArc(double cx, double cy, double rx, double ry, double rotation, double start, double sweep, bool connect)
{
    const AffineTransform& transform = pathTransform();
    double cr = std::cos(rotation), sr = std::sin(rotation);
    auto toPath = [&](double ux, double uy) {
        // (ux, uy) on the unit circle, to the ellipse, rotated, placed, then mapped.
        double ex = rx * ux, ey = ry * uy;
        return mapped(cx + ex * cr - ey * sr, cy + ex * sr + ey * cr);
    };

    // Cubic segments whose error stays near a hundredth of a device pixel: 90° for small
    // arcs, down to about 20° for huge ones.
    double scale = std::sqrt(std::fabs(transform.determinant()));
    double radius = std::max(rx, ry) * std::max(scale, 1e-6);
    double maxSegment = kHalfPi * std::min(1.0, std::pow(0.01 / (2.7e-4 * std::max(radius, 1e-9)), 1.0 / 6));
    maxSegment = std::max(maxSegment, M_PI / 9);
    int segments = std::max(1, int(std::ceil(std::fabs(sweep) / maxSegment - 1e-9)));
    segments = std::min(segments, 4096);
    double step = sweep / segments;
    double k = 4.0 / 3 * std::tan(step / 4);

    Point first = toPath(std::cos(start), std::sin(start));
    if (connect && hasSubpath_)
        addLineTo(first);
    else if (!hasSubpath_)
        addMoveTo(first);
    for (int i = 0; i < segments; ++i) {
        double a0 = start + step * i;
        double a1 = i + 1 == segments ? start + sweep : a0 + step;
        double c0 = std::cos(a0), s0 = std::sin(a0);
        double c1 = std::cos(a1), s1 = std::sin(a1);
        addCurveTo(toPath(c0 - k * s0, s0 + k * c0), toPath(c1 + k * s1, s1 - k * c1), toPath(c1, s1));
    }
}

ExceptionOr<void> CanvasPath::roundRect(double x, double y, double w, double h, const std::vector<RoundRectRadius>& radii)
{
    if (!finite({x, y, w, h}) || !acceptsPathCalls())
        return {};
    std::vector<RoundRectRadius> given = radii.empty() ? std::vector<RoundRectRadius>{{0, 0}} : radii;
    if (given.size() > 4)
        return rangeError("The radii sequence must have 1 to 4 elements.");
    for (const auto& r : given) {
        if (!finite({r.x, r.y}))
            return {};
        if (r.x < 0 || r.y < 0)
            return rangeError("A radius provided is negative.");
    }
    // Upper left, upper right, lower right, lower left.
    RoundRectRadius corners[4];
    switch (given.size()) {
    case 4:
        corners[0] = given[0], corners[1] = given[1], corners[2] = given[2], corners[3] = given[3];
        break;
    case 3:
        corners[0] = given[0], corners[1] = corners[3] = given[1], corners[2] = given[2];
        break;
    case 2:
        corners[0] = corners[2] = given[0], corners[1] = corners[3] = given[1];
        break;
    default:
        corners[0] = corners[1] = corners[2] = corners[3] = given[0];
        break;
    }
    double originX = x, originY = y;
    bool reversed = (w < 0) != (h < 0);
    if (w < 0) {
        x += w, w = -w;
        std::swap(corners[0], corners[1]);
        std::swap(corners[2], corners[3]);
    }
    if (h < 0) {
        y += h, h = -h;
        std::swap(corners[0], corners[3]);
        std::swap(corners[1], corners[2]);
    }
    // Corners that would overlap shrink together.
    double scale = 1;
    auto limit = [&](double side, double sum) {
        if (sum > 0)
            scale = std::min(scale, side / sum);
    };
    limit(w, corners[0].x + corners[1].x);
    limit(h, corners[1].y + corners[2].y);
    limit(w, corners[2].x + corners[3].x);
    limit(h, corners[3].y + corners[0].y);
    if (scale < 1) {
        for (auto& corner : corners)
            corner.x *= scale, corner.y *= scale;
    }
    addRoundRectCorners(x, y, w, h, corners, reversed);
    addMoveTo(mapped(originX, originY));
    return {};
}

void CanvasPath::addRoundRectCorners(double x, double y, double w, double h, const RoundRectRadius (&r)[4], bool reversed)
{
    // Each corner: where its straight edge ends, the arc's centre and its start angle.
    struct Corner {
        double fromX, fromY, centreX, centreY, angle;
        RoundRectRadius radius;
    };
    Corner corners[4] = {
        {x, y + r[0].y, x + r[0].x, y + r[0].y, M_PI, r[0]},
        {x + w - r[1].x, y, x + w - r[1].x, y + r[1].y, -kHalfPi, r[1]},
        {x + w, y + h - r[2].y, x + w - r[2].x, y + h - r[2].y, 0, r[2]},
        {x + r[3].x, y + h, x + r[3].x, y + h - r[3].y, kHalfPi, r[3]},
    };
    auto arcCorner = [&](const Corner& c, bool backwards) {
        if (c.radius.x == 0 || c.radius.y == 0) {
            double cornerX = c.angle == M_PI || c.angle == kHalfPi ? x : x + w;
            double cornerY = c.angle == M_PI || c.angle == -kHalfPi ? y : y + h;
            addLineTo(mapped(cornerX, cornerY));
            return;
        }
        if (backwards)
            addArc(c.centreX, c.centreY, c.radius.x, c.radius.y, 0, c.angle + kHalfPi, -kHalfPi, true);
        else
            addArc(c.centreX, c.centreY, c.radius.x, c.radius.y, 0, c.angle, kHalfPi, true);
    };
    if (!reversed) {
        addMoveTo(mapped(x + r[0].x, y));
        for (int i = 1; i <= 4; ++i)
            arcCorner(corners[i % 4], false);
    } else {
        addMoveTo(mapped(x + r[0].x, y));
        arcCorner(corners[0], true);
        for (int i = 3; i >= 1; --i)
            arcCorner(corners[i], true);
    }
    closePath();
}

void CanvasPath::appendPath(const CanvasPath& other, const AffineTransform& transform)
{
    if (other.data_.empty())
        return;
    std::size_t first = data_.size();
    data_.insert(data_.end(), other.data_.begin(), other.data_.end());
    for (std::size_t i = first; i < data_.size(); i += data_[i].header.length) {
        for (int j = 1; j < data_[i].header.length; ++j)
            transform.map(data_[i + j].point.x, data_[i + j].point.y);
    }
    // The current point is the appended path's last one, or its subpath start after a close.
    hasSubpath_ = true;
    for (std::size_t i = first; i < data_.size(); i += data_[i].header.length) {
        const auto& header = data_[i].header;
        lastElement_ = i;
        if (header.type == CAIRO_PATH_MOVE_TO)
            subpathStart_ = {data_[i + 1].point.x, data_[i + 1].point.y};
        if (header.type == CAIRO_PATH_CLOSE_PATH)
            lastPoint_ = subpathStart_;
        else
            lastPoint_ = {data_[i + header.length - 1].point.x, data_[i + header.length - 1].point.y};
    }
}

void CanvasPath::appendTo(cairo_t* cr) const
{
    if (data_.empty())
        return;
    cairo_path_t path{CAIRO_STATUS_SUCCESS, const_cast<cairo_path_data_t*>(data_.data()), int(data_.size())};
    cairo_append_path(cr, &path);
}
