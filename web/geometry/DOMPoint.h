#pragma once

#include "web/geometry/DOMPointReadOnly.h"

class DOMPoint : public DOMPointReadOnly {
public:
    using DOMPointReadOnly::DOMPointReadOnly;
    DOMPoint(const DOMPointReadOnly& other) : DOMPointReadOnly(other) {}
    static DOMPoint fromPoint(const DOMPointInit& other) { return {other.x, other.y, other.z, other.w}; }

    void setX(double x) { x_ = x; }
    void setY(double y) { y_ = y; }
    void setZ(double z) { z_ = z; }
    void setW(double w) { w_ = w; }
};
