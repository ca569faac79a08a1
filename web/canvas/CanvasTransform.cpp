#include "web/canvas/CanvasRenderingContext2D.h"

#include "web/canvas/AllFinite.h"

#include <cmath>

void CanvasRenderingContext2D::changeTransform(const AffineTransform& transform)
{
    // A lone line (isLoneLine()) stops being one when the transform changes under it, even
    // after its last point: browsers then fill it like any path with no area. Setting the
    // same matrix again changes nothing.
    if (transform != state_.transform)
        forgetLoneLine();
    state_.transform = transform;
}

void CanvasRenderingContext2D::scale(double x, double y)
{
    if (!allFinite({x, y}))
        return;
    changeTransform(state_.transform.multiply({x, 0, 0, y, 0, 0}));
}

void CanvasRenderingContext2D::rotate(double angle)
{
    if (!allFinite({angle}))
        return;
    double c = std::cos(angle), s = std::sin(angle);
    changeTransform(state_.transform.multiply({c, s, -s, c, 0, 0}));
}

void CanvasRenderingContext2D::translate(double x, double y)
{
    if (!allFinite({x, y}))
        return;
    changeTransform(state_.transform.multiply(AffineTransform::translation(x, y)));
}

void CanvasRenderingContext2D::transform(double a, double b, double c, double d, double e, double f)
{
    if (!allFinite({a, b, c, d, e, f}))
        return;
    changeTransform(state_.transform.multiply({a, b, c, d, e, f}));
}

DOMMatrix CanvasRenderingContext2D::getTransform() const
{
    const AffineTransform& t = state_.transform;
    return DOMMatrix(t.a, t.b, t.c, t.d, t.e, t.f);
}

void CanvasRenderingContext2D::setTransform(double a, double b, double c, double d, double e, double f)
{
    if (!allFinite({a, b, c, d, e, f}))
        return;
    changeTransform({a, b, c, d, e, f});
}

ExceptionOr<void> CanvasRenderingContext2D::setTransform(const DOMMatrix2DInit& transform)
{
    DOMMatrix2DInit init = transform;
    if (auto result = validateAndFixup(init); result.isException())
        return result;
    setTransform(*init.m11, *init.m12, *init.m21, *init.m22, *init.m41, *init.m42);
    return {};
}

void CanvasRenderingContext2D::resetTransform()
{
    changeTransform(AffineTransform());
}
