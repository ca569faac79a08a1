#include "platform/web/canvas/CanvasRenderingContext2D.h"

#include "platform/web/canvas/PixelConversion.h"

#include <algorithm>
#include <cstdint>
#include <cstdlib>

namespace {

DOMException zeroSize() { return DOMException{"IndexSizeError", "The source width and height must be non-zero."}; }
DOMException tooLarge() { return DOMException{"RangeError", "Out of memory at ImageData creation."}; }

} // namespace

ExceptionOr<std::shared_ptr<ImageData>> CanvasRenderingContext2D::createImageData(int sw, int sh, const ImageDataSettings& settings)
{
    if (sw == 0 || sh == 0)
        return zeroSize();
    if (!ImageData::fits(std::llabs(sw), std::llabs(sh)))
        return tooLarge();
    return ImageData::create(unsigned(std::llabs(sw)), unsigned(std::llabs(sh)), settings);
}

ExceptionOr<std::shared_ptr<ImageData>> CanvasRenderingContext2D::createImageData(const ImageData& imageData)
{
    return ImageData::create(imageData.width(), imageData.height(), ImageDataSettings{imageData.colorSpace()});
}

ExceptionOr<std::shared_ptr<ImageData>> CanvasRenderingContext2D::getImageData(int sx, int sy, int sw, int sh,
                                                                              const ImageDataSettings& settings)
{
    if (sw == 0 || sh == 0)
        return zeroSize();
    long long x = sx, y = sy, width = sw, height = sh;
    if (width < 0)
        x += width, width = -width;
    if (height < 0)
        y += height, height = -height;
    if (!ImageData::fits(width, height))
        return tooLarge();
    auto result = ImageData::create(unsigned(width), unsigned(height), settings);
    if (result.isException())
        return result;
    ImageData& imageData = *result.value();

    cairo_surface_t* bitmap = canvas_.bitmap();
    if (!bitmap)
        return result;
    cairo_surface_flush(bitmap);
    const std::uint8_t* pixels = cairo_image_surface_get_data(bitmap);
    int stride = cairo_image_surface_get_stride(bitmap);
    bool opaque = cairo_image_surface_get_format(bitmap) == CAIRO_FORMAT_RGB24;
    long long canvasWidth = canvas_.width(), canvasHeight = canvas_.height();
    // Only the part inside the canvas is read; the rest stays transparent black.
    long long left = std::max(x, 0LL), right = std::min(x + width, canvasWidth);
    long long top = std::max(y, 0LL), bottom = std::min(y + height, canvasHeight);
    for (long long row = top; row < bottom; ++row) {
        auto* source = reinterpret_cast<const std::uint32_t*>(pixels + row * stride);
        std::uint8_t* out = imageData.data() + ((row - y) * width + (left - x)) * 4;
        for (long long column = left; column < right; ++column, out += 4)
            pixelToRGBA(source[column], opaque, out);
    }
    return result;
}

void CanvasRenderingContext2D::putImageData(const ImageData& imageData, int dx, int dy)
{
    putImageData(imageData, dx, dy, 0, 0, int(std::min<unsigned>(imageData.width(), 0x7fffffff)),
                 int(std::min<unsigned>(imageData.height(), 0x7fffffff)));
}

void CanvasRenderingContext2D::putImageData(const ImageData& imageData, int dx, int dy, int dirtyX, int dirtyY,
                                            int dirtyWidth, int dirtyHeight)
{
    long long x = dirtyX, y = dirtyY, width = dirtyWidth, height = dirtyHeight;
    if (width < 0)
        x += width, width = -width;
    if (height < 0)
        y += height, height = -height;
    if (x < 0)
        width += x, x = 0;
    if (y < 0)
        height += y, y = 0;
    long long dataWidth = imageData.width(), dataHeight = imageData.height();
    width = std::min(width, dataWidth - x);
    height = std::min(height, dataHeight - y);
    if (width <= 0 || height <= 0)
        return;

    cairo_surface_t* bitmap = canvas_.bitmap();
    if (!bitmap)
        return;
    cairo_surface_flush(bitmap);
    std::uint8_t* pixels = cairo_image_surface_get_data(bitmap);
    int stride = cairo_image_surface_get_stride(bitmap);
    long long canvasWidth = canvas_.width(), canvasHeight = canvas_.height();
    // The dirty rectangle in canvas pixels, cut to the canvas.
    long long left = std::max(dx + x, 0LL), right = std::min(dx + x + width, canvasWidth);
    long long top = std::max(dy + y, 0LL), bottom = std::min(dy + y + height, canvasHeight);
    for (long long row = top; row < bottom; ++row) {
        auto* target = reinterpret_cast<std::uint32_t*>(pixels + row * stride);
        const std::uint8_t* in = imageData.data() + ((row - dy) * dataWidth + (left - dx)) * 4;
        for (long long column = left; column < right; ++column, in += 4)
            target[column] = rgbaToPixel(in);
    }
    cairo_surface_mark_dirty(bitmap);
}
