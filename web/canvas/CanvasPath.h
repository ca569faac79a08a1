#pragma once

#include "web/canvas/AffineTransform.h"
#include "web/dom/ExceptionOr.h"

#include <cairo.h>

#include <span>
#include <vector>

// One corner radius of roundRect(): a number gives x == y, a DOMPointInit its x and y.
struct RoundRectRadius {
    double x = 0;
    double y = 0;
};

// The CanvasPath mixin shared by the context's current default path and Path2D. Points are
// mapped by pathTransform() as they are added (the context's current transform; identity for
// a Path2D) and kept as Cairo path data, ready to append to a Cairo context whose matrix is
// the identity. Non-finite arguments make a call do nothing.
class CanvasPath {
public:
    virtual ~CanvasPath() = default;

    void closePath();
    void moveTo(double x, double y);
    void lineTo(double x, double y);
    void quadraticCurveTo(double cpx, double cpy, double x, double y);
    void bezierCurveTo(double cp1x, double cp1y, double cp2x, double cp2y, double x, double y);
    // IndexSizeError for a negative radius.
    ExceptionOr<void> arcTo(double x1, double y1, double x2, double y2, double radius);
    void rect(double x, double y, double w, double h);
    // radii: 1 to 4 corner radii (RangeError otherwise, or for a negative component); an empty
    // vector is the default single radius 0.
    ExceptionOr<void> roundRect(double x, double y, double w, double h, const std::vector<RoundRectRadius>& radii = {});
    // IndexSizeError for a negative radius.
    ExceptionOr<void> arc(double x, double y, double radius, double startAngle, double endAngle, bool counterclockwise = false);
    ExceptionOr<void> ellipse(double x, double y, double radiusX, double radiusY, double rotation,
                              double startAngle, double endAngle, bool counterclockwise = false);

    std::span<const cairo_path_data_t> pathData() const { return data_; }
    bool isEmpty() const { return data_.empty(); }
    // Whether the path is one straight line made by moveTo() and lineTo() (or by lineTo() or a
    // degenerate arc alone). Browsers fill such a path with nothing at all, leaving even what
    // copy or destination-in would clear; other paths with no area still composite.
    bool isLoneLine() const { return shape_ == Shape::Line; }
    // Adds the path to `cr`'s current path; the caller has set the matrix the data is meant for.
    void appendTo(cairo_t* cr) const;

protected:
    CanvasPath() = default;
    CanvasPath(const CanvasPath&) = default;
    CanvasPath& operator=(const CanvasPath&) = default;

    // Maps arguments into the space the path is kept in.
    virtual const AffineTransform& pathTransform() const;
    // Path calls are ignored while this is false (a context whose transform cannot be inverted),
    // as browsers do.
    virtual bool acceptsPathCalls() const { return true; }

    void clearPath();
    // Appends `other`'s data mapped by `transform`, as Path2D.addPath does.
    void appendPath(const CanvasPath& other, const AffineTransform& transform);
    // For a path made from SVG data or a copy of another path: browsers never take it for a
    // lone line, even when its data is one.
    void forgetLoneLine();

private:
    struct Point {
        double x = 0;
        double y = 0;
    };
    Point mapped(double x, double y) const;
    // Last point in the caller's coordinates (undoing pathTransform()).
    Point lastPointInUserSpace() const;
    void ensureSubpath(double x, double y);
    void addMoveTo(Point p);
    void addLineTo(Point p);
    void addCurveTo(Point c1, Point c2, Point p);
    // An elliptical arc in user space, from the given start angle sweeping `sweep` radians.
    void addArc(double cx, double cy, double rx, double ry, double rotation, double start, double sweep, bool connect);
    void addRoundRectCorners(double x, double y, double w, double h, const RoundRectRadius (&r)[4], bool reversed);

    bool lastElementIs(cairo_path_data_type_t type) const;

    // How the path was built, as far as isLoneLine() needs: a start point alone (moveTo()), a
    // line from it (lineTo()), or anything else; None while it is empty.
    enum class Shape { None, Start, Line, Other };
    // What a moveTo() or a lineTo() call (or a call acting as one) makes of the path as it
    // stands; the add functions mark every other change as Other.
    Shape shapeAfterMove() const { return data_.empty() ? Shape::Start : Shape::Other; }
    Shape shapeAfterLine() const { return data_.empty() || shape_ == Shape::Start ? Shape::Line : Shape::Other; }

    std::vector<cairo_path_data_t> data_;
    std::size_t lastElement_ = 0; // index of the last element's header
    bool hasSubpath_ = false;
    Point subpathStart_;
    Point lastPoint_;
    Shape shape_ = Shape::None;
};
