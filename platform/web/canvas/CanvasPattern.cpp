#include "platform/web/canvas/CanvasPattern.h"

#include "platform/web/canvas/CanvasImageSource.h"

CanvasPattern::CanvasPattern(cairo_surface_t* snapshot, CanvasPatternRepetition repetition)
    : surface_(snapshot), repetition_(repetition) {}
CanvasPattern::~CanvasPattern()
{
    if (surface_)
        cairo_surface_destroy(surface_);
}
ExceptionOr<std::shared_ptr<CanvasPattern>> CanvasPattern::create(CanvasImageSource&, std::string_view)
{
    return std::shared_ptr<CanvasPattern>();
}
ExceptionOr<void> CanvasPattern::setTransform(const DOMMatrix2DInit&) { return {}; }
int CanvasPattern::width() const { return surface_ ? cairo_image_surface_get_width(surface_) : 0; }
int CanvasPattern::height() const { return surface_ ? cairo_image_surface_get_height(surface_) : 0; }
