#include "web/canvas/HTMLCanvasElement.h"

#include "web/canvas/CanvasRenderingContext2D.h"
#include "web/image/DataURL.h"
#include "web/image/PNGEncoder.h"

#include <cstring>

namespace {

// Reflected unsigned attributes fall back to their default above the signed 32-bit range.
constexpr unsigned kMaxReflectedValue = 2147483647u;

} // namespace

std::shared_ptr<HTMLCanvasElement> HTMLCanvasElement::create()
{
    return std::make_shared<HTMLCanvasElement>(Token{});
}

HTMLCanvasElement::HTMLCanvasElement(Token)
    : Element("canvas")
{
}

void HTMLCanvasElement::attributeChanged(std::string_view name)
{
    if (name != "width" && name != "height")
        return;
    const std::string* text = attribute(name);
    std::optional<unsigned> size = text ? parseNonNegativeInteger(*text) : std::nullopt;
    if (name == "width")
        setWidth(size.value_or(kDefaultWidth));
    else
        setHeight(size.value_or(kDefaultHeight));
}

HTMLCanvasElement::~HTMLCanvasElement()
{
    context_.reset();
    if (surface_)
        cairo_surface_destroy(surface_);
}

void HTMLCanvasElement::setWidth(unsigned width)
{
    width_ = width > kMaxReflectedValue ? kDefaultWidth : width;
    resetBitmap();
}

void HTMLCanvasElement::setHeight(unsigned height)
{
    height_ = height > kMaxReflectedValue ? kDefaultHeight : height;
    resetBitmap();
}

void HTMLCanvasElement::resetBitmap()
{
    if (context_)
        context_->resetToInitialState();
    halfFloatPixels_.clear();
    if (!surface_)
        return;
    bool sameSize = hasBitmap() && cairo_image_surface_get_width(surface_) == int(width_)
        && cairo_image_surface_get_height(surface_) == int(height_);
    if (sameSize) {
        // Keep the allocation; a reset bitmap is transparent (or, opaque, black) all over.
        cairo_surface_flush(surface_);
        std::memset(cairo_image_surface_get_data(surface_), 0,
                    std::size_t(cairo_image_surface_get_stride(surface_)) * height_);
        cairo_surface_mark_dirty(surface_);
        return;
    }
    cairo_surface_destroy(surface_);
    surface_ = nullptr;
}

CanvasRenderingContext2D* HTMLCanvasElement::getContext2d(const CanvasRenderingContext2DSettings& settings)
{
    if (!context_) {
        if (!settings.alpha && surface_) {
            cairo_surface_destroy(surface_);
            surface_ = nullptr;
        }
        opaque_ = !settings.alpha;
        colorType_ = settings.colorType;
        context_ = std::make_unique<CanvasRenderingContext2D>(*this, settings);
    }
    return context_.get();
}

bool HTMLCanvasElement::hasBitmap() const
{
    return width_ > 0 && height_ > 0 && width_ <= kMaxSide && height_ <= kMaxSide
        && static_cast<unsigned long>(width_) * height_ <= kMaxArea;
}

namespace {

HTMLCanvasElement::BitmapObserver bitmapObserver = nullptr;

} // namespace

void HTMLCanvasElement::setBitmapObserver(BitmapObserver observer)
{
    bitmapObserver = observer;
}

cairo_surface_t* HTMLCanvasElement::bitmap()
{
    if (surface_ || !hasBitmap())
        return surface_;
    surface_ = cairo_image_surface_create(opaque_ ? CAIRO_FORMAT_RGB24 : CAIRO_FORMAT_ARGB32, int(width_), int(height_));
    if (cairo_surface_status(surface_) != CAIRO_STATUS_SUCCESS) {
        cairo_surface_destroy(surface_);
        surface_ = nullptr;
    } else if (bitmapObserver) {
        bitmapObserver(std::size_t(cairo_image_surface_get_stride(surface_)) * height_);
    }
    return surface_;
}

std::string HTMLCanvasElement::encodedImage(std::string_view, std::optional<double>, PNGImageData* data)
{
    // Every type is written as PNG, which the standard allows for types one does not support.
    cairo_surface_t* surface = bitmap();
    return surface ? encodePNG(surface, data) : std::string();
}

std::string HTMLCanvasElement::toDataURL(std::string_view type, std::optional<double> quality, PNGImageData* data)
{
    std::string png = encodedImage(type, quality, data);
    return png.empty() ? "data:," : base64DataURL("image/png", png);
}

ExceptionOr<bool> HTMLCanvasElement::checkUsability() const
{
    if (width_ == 0 || height_ == 0)
        return DOMException{"InvalidStateError", "The image argument is a canvas element with a width or height of 0."};
    return true;
}
