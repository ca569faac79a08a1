#include "UIImageColored.h"

#include "UIGraphics.h"

UIImage changeImageColor(const UIImage& image, const UIColor& color)
{
    if (image.isNil())
        return {};
    CGSize size = image.size();
    UIGraphicsImageContext context(size, false, 0);
    cairo_t* cr = context.context();
    if (!cr)
        return {};
    CGRect rect = CGRectMake(0, 0, size.width, size.height);
    cairo_translate(cr, 0, size.height);
    cairo_scale(cr, 1, -1);
    cairo_set_operator(cr, CAIRO_OPERATOR_OVER);
    CGContextDrawImage(cr, rect, image);

    // Filling the rectangle clipped to the image's alpha: the colour covers every visible
    // pixel, and the original shows only where the image is partly transparent.
    cairo_pattern_t* mask = imagePatternForRect(rect, image);
    cairo_set_source_rgba(cr, color.red(), color.green(), color.blue(), color.alpha());
    cairo_mask(cr, mask);
    cairo_pattern_destroy(mask);
    return context.takeImage();
}
