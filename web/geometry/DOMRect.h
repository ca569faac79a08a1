#pragma once

#include "web/geometry/DOMRectReadOnly.h"

class DOMRect : public DOMRectReadOnly {
public:
    using DOMRectReadOnly::DOMRectReadOnly;
    DOMRect(const DOMRectReadOnly& other) : DOMRectReadOnly(other) {}
    static DOMRect fromRect(const DOMRectInit& other) { return {other.x, other.y, other.width, other.height}; }

    void setX(double x) { x_ = x; }
    void setY(double y) { y_ = y; }
    void setWidth(double width) { width_ = width; }
    void setHeight(double height) { height_ = height; }
};
