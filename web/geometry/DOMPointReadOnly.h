#pragma once

#include "web/dom/ExceptionOr.h"

struct DOMMatrixInit;
class DOMPoint;

// The DOMPointInit dictionary: every member has its default, so a binding fills in only what
// the script passed.
struct DOMPointInit {
    double x = 0;
    double y = 0;
    double z = 0;
    double w = 1;
};

// A point in homogeneous coordinates. Values, not identities: a script's wrapper holds its own
// copy (std::make_shared<DOMPoint>(...)).
class DOMPointReadOnly {
public:
    DOMPointReadOnly() = default;
    DOMPointReadOnly(double x, double y, double z = 0, double w = 1) : x_(x), y_(y), z_(z), w_(w) {}
    static DOMPointReadOnly fromPoint(const DOMPointInit& other) { return {other.x, other.y, other.z, other.w}; }

    double x() const { return x_; }
    double y() const { return y_; }
    double z() const { return z_; }
    double w() const { return w_; }

    // TypeError when the matrix dictionary is inconsistent.
    ExceptionOr<DOMPoint> matrixTransform(const DOMMatrixInit& matrix) const;
    DOMPointInit toJSON() const { return {x_, y_, z_, w_}; }

protected:
    double x_ = 0;
    double y_ = 0;
    double z_ = 0;
    double w_ = 1;
};
