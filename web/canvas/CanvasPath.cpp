#include "web/canvas/CanvasPath.h"

#include "web/canvas/AllFinite.h"

#include <algorithm>
#include <cmath>
#include <utility>

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
    shape_ = Shape::Other;
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
    shape_ = Shape::Other;
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
    shape_ = Shape::Other;
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
    shape_ = Shape::None;
}

void CanvasPath::forgetLoneLine()
{
    if (!data_.empty())
        shape_ = Shape::Other;
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
    shape_ = Shape::Other;
}

void CanvasPath::moveTo(double x, double y)
{
    if (!allFinite({x, y}) || !acceptsPathCalls())
        return;
    Shape shape = shapeAfterMove();
    addMoveTo(mapped(x, y));
    shape_ = shape;
}

void CanvasPath::lineTo(double x, double y)
{
    if (!allFinite({x, y}) || !acceptsPathCalls())
        return;
    Shape shape = shapeAfterLine();
    if (!hasSubpath_)
        addMoveTo(mapped(x, y));
    else
        addLineTo(mapped(x, y));
    shape_ = shape;
}

void CanvasPath::quadraticCurveTo(double cpx, double cpy, double x, double y)
{
    if (!allFinite({cpx, cpy, x, y}) || !acceptsPathCalls())
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
    if (!allFinite({cp1x, cp1y, cp2x, cp2y, x, y}) || !acceptsPathCalls())
        return;
    ensureSubpath(cp1x, cp1y);
    addCurveTo(mapped(cp1x, cp1y), mapped(cp2x, cp2y), mapped(x, y));
}

void CanvasPath::rect(double x, double y, double w, double h)
{
    if (!allFinite({x, y, w, h}) || !acceptsPathCalls())
        return;
    if (w == 0 && h == 0) {
        // Browsers take a rectangle with no size for a start point alone: a stroke draws
        // nothing there, and a lineTo() after it is the path's lone line.
        Shape shape = shapeAfterMove();
        addMoveTo(mapped(x, y));
        shape_ = shape;
        return;
    }
    addMoveTo(mapped(x, y));
    addLineTo(mapped(x + w, y));
    addLineTo(mapped(x + w, y + h));
    addLineTo(mapped(x, y + h));
    closePath();
}

void CanvasPath::appendPath(const CanvasPath& other, const AffineTransform& transform)
{
    if (other.data_.empty()) {
        forgetLoneLine();
        return;
    }
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
