#pragma once

#include "web/canvas/PredefinedColorSpace.h"
#include "web/dom/ExceptionOr.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string_view>

// How an ImageData stores a channel: a byte (Uint8ClampedArray) or a half float (Float16Array).
enum class ImageDataPixelFormat { RgbaUnorm8, RgbaFloat16 };

inline std::optional<ImageDataPixelFormat> parseImageDataPixelFormat(std::string_view text)
{
    if (text == "rgba-unorm8")
        return ImageDataPixelFormat::RgbaUnorm8;
    if (text == "rgba-float16")
        return ImageDataPixelFormat::RgbaFloat16;
    return {};
}

inline std::string_view toString(ImageDataPixelFormat format)
{
    return format == ImageDataPixelFormat::RgbaFloat16 ? "rgba-float16" : "rgba-unorm8";
}

struct ImageDataSettings {
    // Unset: sRGB for the constructor, the canvas's own space for a context's image data.
    std::optional<PredefinedColorSpace> colorSpace;
    ImageDataPixelFormat pixelFormat = ImageDataPixelFormat::RgbaUnorm8;
};

// Unpremultiplied RGBA, row by row: bytes, or half floats for RgbaFloat16. The storage never
// moves, so a binding can expose it as a typed array without copying; sharedData() keeps it
// alive for as long as that array lives.
class ImageData {
public:
    // Larger pixel arrays than this are refused, as script engines refuse such typed arrays.
    static constexpr std::size_t kMaxBytes = std::size_t(1) << 31;
    // (Divides rather than multiplies: two sides of 2^31 would overflow the product to 0.)
    static bool fits(std::uint64_t width, std::uint64_t height, ImageDataPixelFormat format = ImageDataPixelFormat::RgbaUnorm8)
    {
        std::uint64_t pixels = kMaxBytes / bytesPerPixel(format);
        return width == 0 || height == 0 || (width <= pixels && height <= pixels / width);
    }

    // new ImageData(sw, sh): zeroed. IndexSizeError when a side is zero or the size is beyond
    // kMaxBytes (as browsers report it for the constructor), RangeError when the memory cannot
    // be had.
    static ExceptionOr<std::shared_ptr<ImageData>> create(unsigned sw, unsigned sh, const ImageDataSettings& settings = {});
    // new ImageData(data, sw [, sh]) over storage someone else owns (`length` channels of the
    // settings' pixel format); `keepAlive` is held as long as this object. InvalidStateError
    // when the length is zero or not a multiple of 4,
    // IndexSizeError when it does not divide into rows of sw pixels or disagrees with sh.
    static ExceptionOr<std::shared_ptr<ImageData>> create(std::uint8_t* data, std::size_t length, unsigned sw,
                                                          std::optional<unsigned> sh, std::shared_ptr<void> keepAlive,
                                                          const ImageDataSettings& settings = {});

    unsigned width() const { return width_; }
    unsigned height() const { return height_; }
    // The storage: bytes, or (RgbaFloat16) native-endian half floats.
    std::uint8_t* data() const { return data_.get(); }
    std::uint16_t* halves() const { return reinterpret_cast<std::uint16_t*>(data_.get()); }
    // In bytes.
    std::size_t dataLength() const { return std::size_t(width_) * height_ * bytesPerPixel(pixelFormat_); }
    const std::shared_ptr<std::uint8_t>& sharedData() const { return data_; }
    PredefinedColorSpace colorSpace() const { return colorSpace_; }
    ImageDataPixelFormat pixelFormat() const { return pixelFormat_; }
    static std::size_t bytesPerPixel(ImageDataPixelFormat format) { return format == ImageDataPixelFormat::RgbaFloat16 ? 8 : 4; }

    ImageData(std::shared_ptr<std::uint8_t> data, unsigned width, unsigned height, PredefinedColorSpace colorSpace,
              ImageDataPixelFormat pixelFormat = ImageDataPixelFormat::RgbaUnorm8);

private:
    std::shared_ptr<std::uint8_t> data_;
    unsigned width_;
    unsigned height_;
    PredefinedColorSpace colorSpace_;
    ImageDataPixelFormat pixelFormat_;
};
