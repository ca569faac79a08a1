#include "web/canvas/CanvasPath.h"

#include "web/canvas/AllFinite.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace {

constexpr double kHalfPi = M_PI / 2;

DOMException rangeError(const char* message) { return DOMException{"RangeError", message}; }

} // namespace

ExceptionOr<void> CanvasPath::roundRect(double x, double y, double w, double h, const std::vector<RoundRectRadius>& radii)
{
    if (!allFinite({x, y, w, h}) || !acceptsPathCalls())
        return {};
    std::vector<RoundRectRadius> given = radii.empty() ? std::vector<RoundRectRadius>{{0, 0}} : radii;
    if (given.size() > 4)
        return rangeError("The radii sequence must have 1 to 4 elements.");
    for (const auto& r : given) {
        if (!allFinite({r.x, r.y}))
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

