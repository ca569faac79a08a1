#include "platform/web/canvas/CanvasGradient.h"

CanvasGradient::CanvasGradient(Kind kind, const std::array<double, 6>& geometry) : kind_(kind), geometry_(geometry) {}
CanvasGradient::~CanvasGradient()
{
    if (pattern_)
        cairo_pattern_destroy(pattern_);
}
std::shared_ptr<CanvasGradient> CanvasGradient::createLinear(double x0, double y0, double x1, double y1)
{
    return std::make_shared<CanvasGradient>(Kind::Linear, std::array<double, 6>{x0, y0, x1, y1, 0, 0});
}
std::shared_ptr<CanvasGradient> CanvasGradient::createRadial(double x0, double y0, double r0, double x1, double y1, double r1)
{
    return std::make_shared<CanvasGradient>(Kind::Radial, std::array<double, 6>{x0, y0, r0, x1, y1, r1});
}
std::shared_ptr<CanvasGradient> CanvasGradient::createConic(double startAngle, double x, double y)
{
    return std::make_shared<CanvasGradient>(Kind::Conic, std::array<double, 6>{startAngle, x, y, 0, 0, 0});
}
ExceptionOr<void> CanvasGradient::addColorStop(double, std::string_view) { return {}; }
bool CanvasGradient::paintsNothing() const { return true; }
cairo_pattern_t* CanvasGradient::cairoPattern() const { return nullptr; }
