#include "UIImageFlipping.h"

#include "UIGraphics.h"

UIImage flippedImageByAxis(const UIImage& image, int axis)
{
    if (image.isNil())
        return {};
    CGSize size = image.size();
    UIGraphicsImageContext context(size, false, image.scale());
    cairo_t* cr = context.context();
    if (!cr)
        return {};
    // The bitmap draws upside down (see CGContextDrawImage), so axis 0 needs no transform at
    // all and axis 1 undoes the vertical turn while mirroring horizontally.
    if (axis == 2) {
        cairo_translate(cr, size.width, 0);
        cairo_scale(cr, -1, 1);
    } else if (axis == 1) {
        cairo_translate(cr, 0, size.height);
        cairo_scale(cr, 1, -1);
        cairo_translate(cr, size.width, 0);
        cairo_scale(cr, -1, 1);
    }
    CGContextDrawImage(cr, CGRectMake(0, 0, size.width, size.height), image);
    return context.takeImage();
}
