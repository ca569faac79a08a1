#pragma once

#include <algorithm>
#include <cmath>

// The DOMRectInit dictionary.
struct DOMRectInit {
    double x = 0;
    double y = 0;
    double width = 0;
    double height = 0;
};

// A rectangle given by a corner and a size that may be negative. Values, not identities: a
// script's wrapper holds its own copy, as for points.
class DOMRectReadOnly {
public:
    DOMRectReadOnly() = default;
    DOMRectReadOnly(double x, double y, double width, double height) : x_(x), y_(y), width_(width), height_(height) {}
    static DOMRectReadOnly fromRect(const DOMRectInit& other) { return {other.x, other.y, other.width, other.height}; }

    double x() const { return x_; }
    double y() const { return y_; }
    double width() const { return width_; }
    double height() const { return height_; }
    // The edges, whichever way the size points; NaN when a coordinate is.
    double top() const { return edgeMin(y_, y_ + height_); }
    double right() const { return edgeMax(x_, x_ + width_); }
    double bottom() const { return edgeMax(y_, y_ + height_); }
    double left() const { return edgeMin(x_, x_ + width_); }

    DOMRectInit toJSON() const { return {x_, y_, width_, height_}; }

protected:
    // std::min/max would hide a NaN on one side; the edges must show it.
    static double edgeMin(double a, double b) { return std::isnan(a) || std::isnan(b) ? NAN : std::min(a, b); }
    static double edgeMax(double a, double b) { return std::isnan(a) || std::isnan(b) ? NAN : std::max(a, b); }

    double x_ = 0;
    double y_ = 0;
    double width_ = 0;
    double height_ = 0;
};
