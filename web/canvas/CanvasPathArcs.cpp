#include "web/canvas/CanvasPath.h"

#include "web/canvas/AllFinite.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace {

constexpr double kTwoPi = 2 * M_PI;
constexpr double kHalfPi = M_PI / 2;

DOMException indexSizeError(const char* message) { return DOMException{"IndexSizeError", message}; }

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

ExceptionOr<void> CanvasPath::arcTo(double x1, double y1, double x2, double y2, double radius)
{
    if (!allFinite({x1, y1, x2, y2, radius}) || !acceptsPathCalls())
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

ExceptionOr<void> CanvasPath::arc(double x, double y, double radius, double startAngle, double endAngle, bool counterclockwise)
{
    return ellipse(x, y, radius, radius, 0, startAngle, endAngle, counterclockwise);
}

ExceptionOr<void> CanvasPath::ellipse(double x, double y, double radiusX, double radiusY, double rotation,
                                      double startAngle, double endAngle, bool counterclockwise)
{
    if (!allFinite({x, y, radiusX, radiusY, rotation, startAngle, endAngle}) || !acceptsPathCalls())
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
        Shape shape = data_.empty() ? Shape::Line : Shape::Other;
        lineToPoint(pointAt(startAngle));
        if ((radiusX == 0 && radiusY == 0) || startAngle == endAngle) {
            // An arc with nothing to sweep starting a path is taken for a line to its end
            // point; after a start point, with the line joining it, it is more than one.
            shape_ = shape;
            return {};
        }
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

