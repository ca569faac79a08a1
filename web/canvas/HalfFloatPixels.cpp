#include "web/canvas/HalfFloatPixels.h"

#include "web/canvas/Float16.h"

#include <algorithm>
#include <cmath>
#include <new>

namespace {

constexpr std::uint16_t kNone = 0x7e00; // a quiet NaN, which stored alphas never are

} // namespace

void HalfFloatPixels::clear()
{
    halves_.reset();
    written_.reset();
    width_ = height_ = 0;
}

void HalfFloatPixels::store(unsigned width, unsigned height, unsigned x, unsigned y, const std::array<float, 4>& rgba,
                            std::uint32_t bitmapPixel)
{
    if (x >= width || y >= height)
        return;
    if (width != width_ || height != height_ || !halves_) {
        clear();
        std::size_t pixels = std::size_t(width) * height;
        halves_.reset(new (std::nothrow) std::uint16_t[pixels * 4]);
        written_.reset(new (std::nothrow) std::uint32_t[pixels]);
        if (!halves_ || !written_) {
            clear();
            return;
        }
        for (std::size_t i = 0; i < pixels; ++i)
            halves_[i * 4 + 3] = kNone;
        width_ = width, height_ = height;
    }
    std::size_t index = std::size_t(y) * width_ + x;
    std::uint16_t* out = halves_.get() + index * 4;
    float alpha = std::isnan(rgba[3]) ? 0.0f : std::clamp(rgba[3], 0.0f, 1.0f);
    if (alpha == 0) {
        out[3] = kNone;
        return;
    }
    for (int i = 0; i < 3; ++i)
        out[i] = floatToHalf(std::isnan(rgba[i]) ? 0.0f : rgba[i]);
    out[3] = floatToHalf(alpha);
    written_[index] = bitmapPixel;
}

bool HalfFloatPixels::load(unsigned x, unsigned y, std::uint32_t bitmapPixel, bool opaque, std::array<float, 4>& rgba) const
{
    if (!halves_ || x >= width_ || y >= height_)
        return false;
    std::size_t index = std::size_t(y) * width_ + x;
    const std::uint16_t* in = halves_.get() + index * 4;
    if (in[3] == kNone)
        return false;
    std::uint32_t mask = opaque ? 0x00ffffffu : 0xffffffffu;
    if ((written_[index] & mask) != (bitmapPixel & mask))
        return false;
    for (int i = 0; i < 4; ++i)
        rgba[i] = halfToFloat(in[i]);
    return true;
}
