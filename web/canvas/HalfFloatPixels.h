#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <memory>

// What a float16 canvas keeps beyond its 8-bit bitmap (Cairo here draws in bytes only): the
// half-float value of each pixel putImageData wrote, colours beyond the gamut and steps finer
// than 1/255 included. Each value remembers the bitmap pixel it was written as; once drawing
// changes that pixel, the bitmap's own value holds again. Values are unpremultiplied RGBA in
// the canvas's colour space.
class HalfFloatPixels {
public:
    // Forgets every value (the bitmap was cleared or resized).
    void clear();
    // Keeps `rgba` for (x, y) of a width x height bitmap, whose pixel there is now
    // `bitmapPixel`. Fully transparent values are not kept: the bitmap holds them exactly.
    // Without the memory for it, nothing is kept and the bitmap's bytes are what one reads.
    void store(unsigned width, unsigned height, unsigned x, unsigned y, const std::array<float, 4>& rgba,
               std::uint32_t bitmapPixel);
    // The value kept for (x, y), if any and if the bitmap still holds the pixel it was
    // written as; `opaque` bitmaps ignore the unused top byte.
    bool load(unsigned x, unsigned y, std::uint32_t bitmapPixel, bool opaque, std::array<float, 4>& rgba) const;
    bool empty() const { return !halves_; }

private:
    unsigned width_ = 0;
    unsigned height_ = 0;
    std::unique_ptr<std::uint16_t[]> halves_; // 4 per pixel; a NaN alpha marks "none"
    std::unique_ptr<std::uint32_t[]> written_; // the bitmap pixel each value was written as
};
