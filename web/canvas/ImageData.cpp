#include "web/canvas/ImageData.h"

#include <new>

ImageData::ImageData(std::shared_ptr<std::uint8_t> data, unsigned width, unsigned height, PredefinedColorSpace colorSpace,
                     ImageDataPixelFormat pixelFormat)
    : data_(std::move(data)), width_(width), height_(height), colorSpace_(colorSpace), pixelFormat_(pixelFormat)
{
}

ExceptionOr<std::shared_ptr<ImageData>> ImageData::create(unsigned sw, unsigned sh, const ImageDataSettings& settings)
{
    if (sw == 0 || sh == 0)
        return DOMException{"IndexSizeError", "The source width and height must be non-zero."};
    if (!fits(sw, sh, settings.pixelFormat))
        return DOMException{"IndexSizeError", "The requested image size exceeds the supported range."};
    std::size_t bytes = std::size_t(sw) * sh * bytesPerPixel(settings.pixelFormat);
    auto* storage = new (std::nothrow) std::uint8_t[bytes]();
    if (!storage)
        return DOMException{"RangeError", "Out of memory at ImageData creation."};
    std::shared_ptr<std::uint8_t> data(storage, std::default_delete<std::uint8_t[]>());
    return std::make_shared<ImageData>(std::move(data), sw, sh, settings.colorSpace.value_or(PredefinedColorSpace::Srgb),
                                       settings.pixelFormat);
}

ExceptionOr<std::shared_ptr<ImageData>> ImageData::create(std::uint8_t* data, std::size_t length, unsigned sw,
                                                          std::optional<unsigned> sh, std::shared_ptr<void> keepAlive,
                                                          const ImageDataSettings& settings)
{
    if (length == 0 || length % 4 != 0)
        return DOMException{"InvalidStateError", "The input data length is not a non-zero multiple of 4."};
    std::size_t pixels = length / 4;
    if (sw == 0 || pixels % sw != 0)
        return DOMException{"IndexSizeError", "The input data length is not a multiple of (4 * width)."};
    std::size_t height = pixels / sw;
    if (sh && *sh != height)
        return DOMException{"IndexSizeError", "The input data length is not equal to (4 * width * height)."};
    if (height > 0xffffffffu)
        return DOMException{"RangeError", "The ImageData is too large."};
    std::shared_ptr<std::uint8_t> aliased(std::move(keepAlive), data);
    return std::make_shared<ImageData>(std::move(aliased), sw, unsigned(height),
                                       settings.colorSpace.value_or(PredefinedColorSpace::Srgb), settings.pixelFormat);
}
