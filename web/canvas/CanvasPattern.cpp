#include "web/canvas/CanvasPattern.h"

#include "web/canvas/CanvasImageSource.h"
#include "web/geometry/DOMMatrixReadOnly.h"

#include <cmath>
#include <cstring>

namespace {

// A private copy of the image's pixels, so later drawing on the source leaves the pattern be.
cairo_surface_t* snapshot(cairo_surface_t* source)
{
    cairo_surface_flush(source);
    int width = cairo_image_surface_get_width(source);
    int height = cairo_image_surface_get_height(source);
    cairo_format_t format = cairo_image_surface_get_format(source);
    cairo_surface_t* copy = cairo_image_surface_create(format, width, height);
    if (cairo_surface_status(copy) != CAIRO_STATUS_SUCCESS) {
        cairo_surface_destroy(copy);
        return nullptr;
    }
    int stride = cairo_image_surface_get_stride(source);
    if (stride == cairo_image_surface_get_stride(copy))
        std::memcpy(cairo_image_surface_get_data(copy), cairo_image_surface_get_data(source), std::size_t(stride) * height);
    cairo_surface_mark_dirty(copy);
    return copy;
}

} // namespace

CanvasPattern::CanvasPattern(cairo_surface_t* snapshot, CanvasPatternRepetition repetition)
    : surface_(snapshot), repetition_(repetition)
{
}

CanvasPattern::~CanvasPattern()
{
    if (surface_)
        cairo_surface_destroy(surface_);
    if (bandSurface_)
        cairo_surface_destroy(bandSurface_);
}

cairo_surface_t* CanvasPattern::bandSurface() const
{
    if (bandSurface_)
        return bandSurface_;
    bool rows = repetition_ == CanvasPatternRepetition::RepeatX;
    int width = this->width() + (rows ? 0 : 2 * kBandMargin);
    int height = this->height() + (rows ? 2 * kBandMargin : 0);
    bandSurface_ = cairo_image_surface_create(CAIRO_FORMAT_ARGB32, width, height);
    cairo_t* cr = cairo_create(bandSurface_);
    cairo_set_source_surface(cr, surface_, rows ? 0 : kBandMargin, rows ? kBandMargin : 0);
    cairo_paint(cr);
    cairo_destroy(cr);
    return bandSurface_;
}

ExceptionOr<std::shared_ptr<CanvasPattern>> CanvasPattern::create(CanvasImageSource& image, std::string_view repetition)
{
    auto usable = image.checkUsability();
    if (usable.isException())
        return usable.exception();
    if (!usable.value())
        return std::shared_ptr<CanvasPattern>();
    CanvasPatternRepetition kind;
    if (repetition.empty() || repetition == "repeat")
        kind = CanvasPatternRepetition::Repeat;
    else if (repetition == "repeat-x")
        kind = CanvasPatternRepetition::RepeatX;
    else if (repetition == "repeat-y")
        kind = CanvasPatternRepetition::RepeatY;
    else if (repetition == "no-repeat")
        kind = CanvasPatternRepetition::NoRepeat;
    else
        return DOMException{"SyntaxError", "The provided repetition is not one of 'repeat', 'repeat-x', 'repeat-y' or 'no-repeat'."};
    cairo_surface_t* source = image.imageSurface();
    cairo_surface_t* copy = source ? snapshot(source) : nullptr;
    if (!copy) {
        // No pixels to copy (a canvas too large to have a bitmap): a transparent pattern.
        copy = cairo_image_surface_create(CAIRO_FORMAT_ARGB32, 1, 1);
    }
    return std::make_shared<CanvasPattern>(copy, kind);
}

ExceptionOr<void> CanvasPattern::setTransform(const DOMMatrix2DInit& transform)
{
    DOMMatrix2DInit init = transform;
    if (auto result = validateAndFixup(init); result.isException())
        return result;
    AffineTransform matrix{*init.m11, *init.m12, *init.m21, *init.m22, *init.m41, *init.m42};
    if (matrix.isFinite())
        transform_ = matrix;
    return {};
}

int CanvasPattern::width() const { return surface_ ? cairo_image_surface_get_width(surface_) : 0; }
int CanvasPattern::height() const { return surface_ ? cairo_image_surface_get_height(surface_) : 0; }
