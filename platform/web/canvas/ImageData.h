#pragma once

#include "platform/web/canvas/PredefinedColorSpace.h"
#include "platform/web/dom/ExceptionOr.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>

struct ImageDataSettings {
    PredefinedColorSpace colorSpace = PredefinedColorSpace::Srgb;
};

// Unpremultiplied RGBA bytes, row by row. The bytes never move, so a binding can expose them
// as a Uint8ClampedArray without copying; sharedData() keeps them alive for as long as that
// array lives.
class ImageData {
public:
    // Larger pixel arrays than this are refused, as script engines refuse such typed arrays.
    static constexpr std::size_t kMaxBytes = std::size_t(1) << 31;
    // (Divides rather than multiplies: two sides of 2^31 would overflow the product to 0.)
    static bool fits(std::uint64_t width, std::uint64_t height)
    {
        return width == 0 || height == 0 || (width <= kMaxBytes / 4 && height <= kMaxBytes / 4 / width);
    }

    // new ImageData(sw, sh): zeroed. IndexSizeError when a side is zero or the size is beyond
    // kMaxBytes (as browsers report it for the constructor), RangeError when the memory cannot
    // be had.
    static ExceptionOr<std::shared_ptr<ImageData>> create(unsigned sw, unsigned sh, const ImageDataSettings& settings = {});
    // new ImageData(data, sw [, sh]) over bytes someone else owns; `keepAlive` is held as long
    // as this object. InvalidStateError when the length is zero or not a multiple of 4,
    // IndexSizeError when it does not divide into rows of sw pixels or disagrees with sh.
    static ExceptionOr<std::shared_ptr<ImageData>> create(std::uint8_t* data, std::size_t length, unsigned sw,
                                                          std::optional<unsigned> sh, std::shared_ptr<void> keepAlive,
                                                          const ImageDataSettings& settings = {});

    unsigned width() const { return width_; }
    unsigned height() const { return height_; }
    std::uint8_t* data() const { return data_.get(); }
    std::size_t dataLength() const { return std::size_t(width_) * height_ * 4; }
    const std::shared_ptr<std::uint8_t>& sharedData() const { return data_; }
    PredefinedColorSpace colorSpace() const { return colorSpace_; }

    ImageData(std::shared_ptr<std::uint8_t> data, unsigned width, unsigned height, PredefinedColorSpace colorSpace);

private:
    std::shared_ptr<std::uint8_t> data_;
    unsigned width_;
    unsigned height_;
    PredefinedColorSpace colorSpace_;
};
