#include "platform/web/canvas/CanvasRenderingContext2D.h"

#include "platform/web/canvas/CanvasGradient.h"
#include "platform/web/canvas/CanvasPattern.h"
#include "platform/web/canvas/Path2D.h"

const std::shared_ptr<const CanvasTextDrawingState>& CanvasTextDrawingState::initial()
{
    static const auto state = std::make_shared<const CanvasTextDrawingState>();
    return state;
}

CanvasRenderingContext2D::CanvasRenderingContext2D(HTMLCanvasElement& canvas, const CanvasRenderingContext2DSettings& settings)
    : canvas_(canvas), settings_(settings) {}
CanvasRenderingContext2D::~CanvasRenderingContext2D() { releaseCairo(); }
void CanvasRenderingContext2D::save() {}
void CanvasRenderingContext2D::restore() {}
void CanvasRenderingContext2D::reset() {}
void CanvasRenderingContext2D::scale(double, double) {}
void CanvasRenderingContext2D::rotate(double) {}
void CanvasRenderingContext2D::translate(double, double) {}
void CanvasRenderingContext2D::transform(double, double, double, double, double, double) {}
DOMMatrix CanvasRenderingContext2D::getTransform() const { return {}; }
void CanvasRenderingContext2D::setTransform(double, double, double, double, double, double) {}
ExceptionOr<void> CanvasRenderingContext2D::setTransform(const DOMMatrix2DInit&) { return {}; }
void CanvasRenderingContext2D::resetTransform() {}
void CanvasRenderingContext2D::setGlobalAlpha(double) {}
std::string_view CanvasRenderingContext2D::globalCompositeOperation() const { return toString(state_.globalCompositeOperation); }
void CanvasRenderingContext2D::setGlobalCompositeOperation(std::string_view) {}
std::string_view CanvasRenderingContext2D::imageSmoothingQuality() const { return toString(state_.imageSmoothingQuality); }
void CanvasRenderingContext2D::setImageSmoothingQuality(std::string_view) {}
CanvasStyle CanvasRenderingContext2D::strokeStyle() const { return std::string("#000000"); }
void CanvasRenderingContext2D::setStrokeStyle(const CanvasStyle&) {}
CanvasStyle CanvasRenderingContext2D::fillStyle() const { return std::string("#000000"); }
void CanvasRenderingContext2D::setFillStyle(const CanvasStyle&) {}
ExceptionOr<std::shared_ptr<CanvasGradient>> CanvasRenderingContext2D::createLinearGradient(double x0, double y0, double x1, double y1)
{
    return CanvasGradient::createLinear(x0, y0, x1, y1);
}
ExceptionOr<std::shared_ptr<CanvasGradient>> CanvasRenderingContext2D::createRadialGradient(double x0, double y0, double r0, double x1, double y1, double r1)
{
    return CanvasGradient::createRadial(x0, y0, r0, x1, y1, r1);
}
ExceptionOr<std::shared_ptr<CanvasGradient>> CanvasRenderingContext2D::createConicGradient(double a, double x, double y)
{
    return CanvasGradient::createConic(a, x, y);
}
ExceptionOr<std::shared_ptr<CanvasPattern>> CanvasRenderingContext2D::createPattern(CanvasImageSource& image, std::string_view repetition)
{
    return CanvasPattern::create(image, repetition);
}
void CanvasRenderingContext2D::setShadowOffsetX(double) {}
void CanvasRenderingContext2D::setShadowOffsetY(double) {}
void CanvasRenderingContext2D::setShadowBlur(double) {}
std::string CanvasRenderingContext2D::shadowColor() const { return "rgba(0, 0, 0, 0)"; }
void CanvasRenderingContext2D::setShadowColor(std::string_view) {}
void CanvasRenderingContext2D::setFilter(std::string_view) {}
void CanvasRenderingContext2D::clearRect(double, double, double, double) {}
void CanvasRenderingContext2D::fillRect(double, double, double, double) {}
void CanvasRenderingContext2D::strokeRect(double, double, double, double) {}
void CanvasRenderingContext2D::beginPath() { clearPath(); }
void CanvasRenderingContext2D::fill(CanvasFillRule) {}
void CanvasRenderingContext2D::fill(const Path2D&, CanvasFillRule) {}
void CanvasRenderingContext2D::stroke() {}
void CanvasRenderingContext2D::stroke(const Path2D&) {}
void CanvasRenderingContext2D::clip(CanvasFillRule) {}
void CanvasRenderingContext2D::clip(const Path2D&, CanvasFillRule) {}
bool CanvasRenderingContext2D::isPointInPath(double, double, CanvasFillRule) { return false; }
bool CanvasRenderingContext2D::isPointInPath(const Path2D&, double, double, CanvasFillRule) { return false; }
bool CanvasRenderingContext2D::isPointInStroke(double, double) { return false; }
bool CanvasRenderingContext2D::isPointInStroke(const Path2D&, double, double) { return false; }
void CanvasRenderingContext2D::fillText(std::string_view, double, double, std::optional<double>) {}
void CanvasRenderingContext2D::strokeText(std::string_view, double, double, std::optional<double>) {}
TextMetrics CanvasRenderingContext2D::measureText(std::string_view) { return {}; }
ExceptionOr<void> CanvasRenderingContext2D::drawImage(CanvasImageSource&, double, double) { return {}; }
ExceptionOr<void> CanvasRenderingContext2D::drawImage(CanvasImageSource&, double, double, double, double) { return {}; }
ExceptionOr<void> CanvasRenderingContext2D::drawImage(CanvasImageSource&, double, double, double, double, double, double, double, double) { return {}; }
ExceptionOr<std::shared_ptr<ImageData>> CanvasRenderingContext2D::createImageData(int sw, int sh, const ImageDataSettings& settings)
{
    return ImageData::create(unsigned(sw), unsigned(sh), settings);
}
ExceptionOr<std::shared_ptr<ImageData>> CanvasRenderingContext2D::createImageData(const ImageData& imageData)
{
    return ImageData::create(imageData.width(), imageData.height());
}
ExceptionOr<std::shared_ptr<ImageData>> CanvasRenderingContext2D::getImageData(int, int, int sw, int sh, const ImageDataSettings& settings)
{
    return ImageData::create(unsigned(sw), unsigned(sh), settings);
}
void CanvasRenderingContext2D::putImageData(const ImageData&, int, int) {}
void CanvasRenderingContext2D::putImageData(const ImageData&, int, int, int, int, int, int) {}
void CanvasRenderingContext2D::setLineWidth(double) {}
std::string_view CanvasRenderingContext2D::lineCap() const { return toString(state_.lineCap); }
void CanvasRenderingContext2D::setLineCap(std::string_view) {}
std::string_view CanvasRenderingContext2D::lineJoin() const { return toString(state_.lineJoin); }
void CanvasRenderingContext2D::setLineJoin(std::string_view) {}
void CanvasRenderingContext2D::setMiterLimit(double) {}
void CanvasRenderingContext2D::setLineDash(std::span<const double>) {}
void CanvasRenderingContext2D::setLineDashOffset(double) {}
std::string CanvasRenderingContext2D::font() const { return state_.text->style.font.serialization(); }
void CanvasRenderingContext2D::setFont(std::string_view) {}
std::string_view CanvasRenderingContext2D::textAlign() const { return toString(state_.text->style.align); }
void CanvasRenderingContext2D::setTextAlign(std::string_view) {}
std::string_view CanvasRenderingContext2D::textBaseline() const { return toString(state_.text->style.baseline); }
void CanvasRenderingContext2D::setTextBaseline(std::string_view) {}
std::string_view CanvasRenderingContext2D::direction() const { return toString(state_.text->style.direction); }
void CanvasRenderingContext2D::setDirection(std::string_view) {}
std::string CanvasRenderingContext2D::letterSpacing() const { return state_.text->letterSpacing; }
void CanvasRenderingContext2D::setLetterSpacing(std::string_view) {}
std::string_view CanvasRenderingContext2D::fontKerning() const { return toString(state_.text->style.kerning); }
void CanvasRenderingContext2D::setFontKerning(std::string_view) {}
std::string_view CanvasRenderingContext2D::fontStretch() const { return state_.text->fontStretch; }
void CanvasRenderingContext2D::setFontStretch(std::string_view) {}
std::string_view CanvasRenderingContext2D::fontVariantCaps() const { return state_.text->fontVariantCaps; }
void CanvasRenderingContext2D::setFontVariantCaps(std::string_view) {}
std::string_view CanvasRenderingContext2D::textRendering() const { return state_.text->textRendering; }
void CanvasRenderingContext2D::setTextRendering(std::string_view) {}
std::string CanvasRenderingContext2D::wordSpacing() const { return state_.text->wordSpacing; }
void CanvasRenderingContext2D::setWordSpacing(std::string_view) {}
void CanvasRenderingContext2D::resetToInitialState() {}
cairo_t* CanvasRenderingContext2D::cairo() { return cairo_; }
void CanvasRenderingContext2D::releaseCairo()
{
    if (cairo_)
        cairo_destroy(cairo_);
    cairo_ = nullptr;
}
