#include "platform/web/canvas/CanvasPath.h"

void CanvasPath::closePath() {}
void CanvasPath::moveTo(double, double) {}
void CanvasPath::lineTo(double, double) {}
void CanvasPath::quadraticCurveTo(double, double, double, double) {}
void CanvasPath::bezierCurveTo(double, double, double, double, double, double) {}
ExceptionOr<void> CanvasPath::arcTo(double, double, double, double, double) { return {}; }
void CanvasPath::rect(double, double, double, double) {}
ExceptionOr<void> CanvasPath::roundRect(double, double, double, double, const std::vector<RoundRectRadius>&) { return {}; }
ExceptionOr<void> CanvasPath::arc(double, double, double, double, double, bool) { return {}; }
ExceptionOr<void> CanvasPath::ellipse(double, double, double, double, double, double, double, bool) { return {}; }
void CanvasPath::appendTo(cairo_t*) const {}
const AffineTransform& CanvasPath::pathTransform() const
{
    static const AffineTransform identity;
    return identity;
}
void CanvasPath::clearPath() { data_.clear(); hasSubpath_ = false; }
void CanvasPath::appendPath(const CanvasPath&, const AffineTransform&) {}
