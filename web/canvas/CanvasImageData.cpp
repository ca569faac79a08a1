#include "web/canvas/CanvasRenderingContext2D.h"

#include "web/canvas/Float16.h"
#include "web/canvas/PixelConversion.h"
#include "web/canvas/RGBSpaceConversion.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <cmath>
#include <cstdlib>
#include <string>

namespace {

DOMException zeroSize() { return DOMException{"IndexSizeError", "The source width and height must be non-zero."}; }
DOMException tooLarge() { return DOMException{"RangeError", "Out of memory at ImageData creation."}; }
DOMException layersOpen(const char* operation)
{
    return DOMException{"InvalidStateError", std::string("`") + operation + "()` cannot be called with open layers."};
}

std::uint8_t toByte(float value)
{
    return std::uint8_t(std::lround(std::clamp(std::isnan(value) ? 0.0f : value, 0.0f, 1.0f) * 255));
}

// Image data of a context: in the canvas's colour space unless the script asked for another.
ImageDataSettings withDefaultSpace(ImageDataSettings settings, PredefinedColorSpace canvasSpace)
{
    if (!settings.colorSpace)
        settings.colorSpace = canvasSpace;
    return settings;
}

// One canvas pixel into image data at `index` (in pixels), converted to its space and format.
void storePixel(std::uint32_t pixel, bool opaque, const RGBSpaceConversion& conversion, ImageData& target, std::size_t index)
{
    std::uint8_t rgba[4];
    pixelToRGBA(pixel, opaque, rgba);
    if (target.pixelFormat() == ImageDataPixelFormat::RgbaUnorm8) {
        conversion.convertBytesInPlace(rgba);
        std::copy_n(rgba, 4, target.data() + index * 4);
        return;
    }
    auto rgb = conversion.convertBytes(rgba[0], rgba[1], rgba[2]);
    std::uint16_t* out = target.halves() + index * 4;
    for (int i = 0; i < 3; ++i)
        out[i] = floatToHalf(rgb[i]);
    out[3] = floatToHalf(rgba[3] / 255.0f);
}

// A float16 canvas's value for one pixel into image data at `index`, converted to its space
// and format: unclamped for half floats, clipped to the gamut for bytes.
void storeFloatPixel(const std::array<float, 4>& rgba, const RGBSpaceConversion& conversion, ImageData& target, std::size_t index)
{
    auto rgb = conversion.convert(rgba[0], rgba[1], rgba[2]);
    if (target.pixelFormat() == ImageDataPixelFormat::RgbaFloat16) {
        std::uint16_t* out = target.halves() + index * 4;
        for (int i = 0; i < 3; ++i)
            out[i] = floatToHalf(rgb[i]);
        out[3] = floatToHalf(rgba[3]);
        return;
    }
    std::uint8_t* out = target.data() + index * 4;
    for (int i = 0; i < 3; ++i)
        out[i] = toByte(rgb[i]);
    out[3] = toByte(rgba[3]);
}

// A pixel of image data at `index` as unpremultiplied floats in the canvas's space, beyond
// 0..1 where the canvas's gamut does not reach.
std::array<float, 4> floatPixel(const ImageData& source, std::size_t index, const RGBSpaceConversion& conversion)
{
    float rgba[4];
    if (source.pixelFormat() == ImageDataPixelFormat::RgbaUnorm8) {
        for (int i = 0; i < 4; ++i)
            rgba[i] = source.data()[index * 4 + i] / 255.0f;
    } else {
        for (int i = 0; i < 4; ++i)
            rgba[i] = halfToFloat(source.halves()[index * 4 + i]);
    }
    auto rgb = conversion.convert(rgba[0], rgba[1], rgba[2]);
    return {rgb[0], rgb[1], rgb[2], rgba[3]};
}

std::uint32_t floatsToPixel(const std::array<float, 4>& rgba)
{
    std::uint8_t bytes[4] = {toByte(rgba[0]), toByte(rgba[1]), toByte(rgba[2]), toByte(rgba[3])};
    return rgbaToPixel(bytes);
}

// A pixel of image data at `index` as a canvas pixel, converted to the canvas's space.
std::uint32_t loadPixel(const ImageData& source, std::size_t index, const RGBSpaceConversion& conversion)
{
    std::uint8_t rgba[4];
    if (source.pixelFormat() == ImageDataPixelFormat::RgbaUnorm8) {
        std::copy_n(source.data() + index * 4, 4, rgba);
        conversion.convertBytesInPlace(rgba);
        return rgbaToPixel(rgba);
    }
    return floatsToPixel(floatPixel(source, index, conversion));
}

} // namespace

ExceptionOr<std::shared_ptr<ImageData>> CanvasRenderingContext2D::createImageData(int sw, int sh, const ImageDataSettings& settings)
{
    if (sw == 0 || sh == 0)
        return zeroSize();
    if (!ImageData::fits(std::llabs(sw), std::llabs(sh), settings.pixelFormat))
        return tooLarge();
    return ImageData::create(unsigned(std::llabs(sw)), unsigned(std::llabs(sh)), withDefaultSpace(settings, settings_.colorSpace));
}

ExceptionOr<std::shared_ptr<ImageData>> CanvasRenderingContext2D::createImageData(const ImageData& imageData)
{
    return ImageData::create(imageData.width(), imageData.height(), ImageDataSettings{imageData.colorSpace(), imageData.pixelFormat()});
}

ExceptionOr<std::shared_ptr<ImageData>> CanvasRenderingContext2D::getImageData(int sx, int sy, int sw, int sh,
                                                                              const ImageDataSettings& settings)
{
    if (!layers_.empty())
        return layersOpen("getImageData");
    if (sw == 0 || sh == 0)
        return zeroSize();
    long long x = sx, y = sy, width = sw, height = sh;
    if (width < 0)
        x += width, width = -width;
    if (height < 0)
        y += height, height = -height;
    if (!ImageData::fits(width, height, settings.pixelFormat))
        return tooLarge();
    auto result = ImageData::create(unsigned(width), unsigned(height), withDefaultSpace(settings, settings_.colorSpace));
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
    RGBSpaceConversion conversion(settings_.colorSpace, imageData.colorSpace());
    const HalfFloatPixels* wide = canvas_.halfFloatPixels();
    if (wide && wide->empty())
        wide = nullptr;
    bool plain = !wide && conversion.isIdentity() && imageData.pixelFormat() == ImageDataPixelFormat::RgbaUnorm8;
    std::array<float, 4> value;
    for (long long row = top; row < bottom; ++row) {
        auto* source = reinterpret_cast<const std::uint32_t*>(pixels + row * stride);
        std::size_t index = std::size_t((row - y) * width + (left - x));
        if (plain) {
            std::uint8_t* out = imageData.data() + index * 4;
            for (long long column = left; column < right; ++column, out += 4)
                pixelToRGBA(source[column], opaque, out);
            continue;
        }
        for (long long column = left; column < right; ++column, ++index) {
            if (wide && wide->load(unsigned(column), unsigned(row), source[column], opaque, value))
                storeFloatPixel(value, conversion, imageData, index);
            else
                storePixel(source[column], opaque, conversion, imageData, index);
        }
    }
    return result;
}

ExceptionOr<void> CanvasRenderingContext2D::putImageData(const ImageData& imageData, int dx, int dy)
{
    return putImageData(imageData, dx, dy, 0, 0, int(std::min<unsigned>(imageData.width(), 0x7fffffff)),
                 int(std::min<unsigned>(imageData.height(), 0x7fffffff)));
}

ExceptionOr<void> CanvasRenderingContext2D::putImageData(const ImageData& imageData, int dx, int dy, int dirtyX, int dirtyY,
                                                         int dirtyWidth, int dirtyHeight)
{
    if (!layers_.empty())
        return layersOpen("putImageData");
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
        return {};

    cairo_surface_t* bitmap = canvas_.bitmap();
    if (!bitmap)
        return {};
    cairo_surface_flush(bitmap);
    std::uint8_t* pixels = cairo_image_surface_get_data(bitmap);
    int stride = cairo_image_surface_get_stride(bitmap);
    long long canvasWidth = canvas_.width(), canvasHeight = canvas_.height();
    // The dirty rectangle in canvas pixels, cut to the canvas.
    long long left = std::max(dx + x, 0LL), right = std::min(dx + x + width, canvasWidth);
    long long top = std::max(dy + y, 0LL), bottom = std::min(dy + y + height, canvasHeight);
    RGBSpaceConversion conversion(imageData.colorSpace(), settings_.colorSpace);
    // A float16 canvas keeps each value whole beside the bitmap's bytes.
    HalfFloatPixels* wide = canvas_.halfFloatPixels();
    bool plain = !wide && conversion.isIdentity() && imageData.pixelFormat() == ImageDataPixelFormat::RgbaUnorm8;
    for (long long row = top; row < bottom; ++row) {
        auto* target = reinterpret_cast<std::uint32_t*>(pixels + row * stride);
        std::size_t index = std::size_t((row - dy) * dataWidth + (left - dx));
        if (plain) {
            const std::uint8_t* in = imageData.data() + index * 4;
            for (long long column = left; column < right; ++column, in += 4)
                target[column] = rgbaToPixel(in);
            continue;
        }
        for (long long column = left; column < right; ++column, ++index) {
            if (!wide) {
                target[column] = loadPixel(imageData, index, conversion);
                continue;
            }
            std::array<float, 4> value = floatPixel(imageData, index, conversion);
            if (canvas_.isOpaque()) // what an opaque bitmap keeps of a translucent pixel
                value = {value[0] * value[3], value[1] * value[3], value[2] * value[3], 1.0f};
            target[column] = floatsToPixel(value);
            wide->store(unsigned(canvasWidth), unsigned(canvasHeight), unsigned(column), unsigned(row), value, target[column]);
        }
    }
    cairo_surface_mark_dirty(bitmap);
    return {};
}
