#include "UIImageCoreGraphics.h"

#include "UIGraphics.h"

UIImage cp_imageWithSizeRenderer(CGSize size, const UIImageRenderer& renderer)
{
    return cp_imageWithSizeOpaqueRenderer(size, false, renderer);
}

UIImage cp_imageWithSizeOpaqueRenderer(CGSize size, bool opaque, const UIImageRenderer& renderer)
{
    UIGraphicsImageContext context(size, opaque, 0);
    if (context.context() && renderer)
        renderer(context.context(), CGRectMake(0, 0, size.width, size.height));
    return context.takeImage();
}
