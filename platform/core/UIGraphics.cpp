#include "UIGraphics.h"

#include "UIScreen.h"

#include <cmath>

namespace {

int pixelCount(double points, double scale)
{
    double pixels = points * scale;
    if (!std::isfinite(pixels) || pixels <= 0)
        return 0;
    // A size that is a whole number of pixels up to rounding noise is not grown by one.
    return static_cast<int>(std::ceil(pixels - 1e-6));
}

} // namespace

UIGraphicsImageContext::UIGraphicsImageContext(CGSize size, bool opaque, double scale)
    : scale_(scale > 0 ? scale : UIScreen::mainScreen().scale())
{
    int width = pixelCount(size.width, scale_);
    int height = pixelCount(size.height, scale_);
    if (width <= 0 || height <= 0 || width > UIImage::kMaxPixelsPerSide || height > UIImage::kMaxPixelsPerSide)
        return;
    surface_ = cairo_image_surface_create(CAIRO_FORMAT_ARGB32, width, height);
    cr_ = cairo_create(surface_);
    if (opaque) {
        cairo_set_source_rgb(cr_, 0, 0, 0);
        cairo_paint(cr_);
    }
    cairo_scale(cr_, scale_, scale_);
}

UIGraphicsImageContext::~UIGraphicsImageContext()
{
    if (cr_)
        cairo_destroy(cr_);
    if (surface_)
        cairo_surface_destroy(surface_);
}

UIImage UIGraphicsImageContext::takeImage()
{
    if (!surface_)
        return {};
    cairo_destroy(cr_);
    cr_ = nullptr;
    cairo_surface_flush(surface_);
    cairo_surface_t* surface = surface_;
    surface_ = nullptr;
    return UIImage(surface, scale_);
}

cairo_pattern_t* imagePatternForRect(CGRect rect, const UIImage& image)
{
    cairo_pattern_t* pattern = cairo_pattern_create_for_surface(image.CGImage());
    // Pattern space is the bitmap's pixels; user space is the rectangle, bitmap row 0 at its
    // bottom edge.
    cairo_matrix_t matrix;
    cairo_matrix_init_translate(&matrix, 0, image.pixelHeight());
    cairo_matrix_scale(&matrix, image.pixelWidth() / rect.size.width, -image.pixelHeight() / rect.size.height);
    cairo_matrix_translate(&matrix, -rect.origin.x, -rect.origin.y);
    cairo_pattern_set_matrix(pattern, &matrix);
    return pattern;
}

void CGContextDrawImage(cairo_t* cr, CGRect rect, const UIImage& image)
{
    if (!cr || image.isNil() || rect.size.width <= 0 || rect.size.height <= 0)
        return;
    cairo_pattern_t* pattern = imagePatternForRect(rect, image);
    cairo_save(cr);
    cairo_set_source(cr, pattern);
    cairo_rectangle(cr, rect.origin.x, rect.origin.y, rect.size.width, rect.size.height);
    cairo_fill(cr);
    cairo_restore(cr);
    cairo_pattern_destroy(pattern);
}
