#include "platform/web/canvas/HTMLCanvasElement.h"

#include "platform/web/canvas/CanvasRenderingContext2D.h"

std::shared_ptr<HTMLCanvasElement> HTMLCanvasElement::create() { return std::make_shared<HTMLCanvasElement>(Token{}); }
HTMLCanvasElement::HTMLCanvasElement(Token) {}
HTMLCanvasElement::~HTMLCanvasElement()
{
    context_.reset();
    if (surface_)
        cairo_surface_destroy(surface_);
}
void HTMLCanvasElement::setWidth(unsigned width) { width_ = width; resetBitmap(); }
void HTMLCanvasElement::setHeight(unsigned height) { height_ = height; resetBitmap(); }
CanvasRenderingContext2D* HTMLCanvasElement::getContext2d(const CanvasRenderingContext2DSettings& settings)
{
    if (!context_)
        context_ = std::make_unique<CanvasRenderingContext2D>(*this, settings);
    return context_.get();
}
std::string HTMLCanvasElement::toDataURL(std::string_view, std::optional<double>) { return "data:,"; }
std::string HTMLCanvasElement::toPNG() { return {}; }
bool HTMLCanvasElement::hasBitmap() const { return false; }
cairo_surface_t* HTMLCanvasElement::bitmap() { return nullptr; }
ExceptionOr<bool> HTMLCanvasElement::checkUsability() const { return false; }
void HTMLCanvasElement::resetBitmap() {}
