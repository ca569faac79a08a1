#pragma once

#include <algorithm>
#include <array>
#include <bit>
#include <cstdint>
#include <cstring>

// Conversions between Cairo's premultiplied ARGB32 pixels and the unpremultiplied RGBA bytes
// of ImageData and PNG files, rounding as browsers do.

// round(channel * alpha / 255), halves up: (channel * alpha * 2 + 255) / 510, in the shifts
// that give the same for every channel and alpha.
inline std::uint8_t premultiply(std::uint8_t channel, std::uint8_t alpha)
{
    unsigned t = unsigned(channel) * alpha + 128;
    return std::uint8_t((t + (t >> 8)) >> 8);
}

// floor(2^32 / (2 * alpha)) + 1 for every alpha: multiplied by a numerator below 2^17 and
// shifted down by 32 bits, it divides by 2 * alpha exactly (numerator times divisor < 2^32).
inline constexpr auto kUnpremultiplyReciprocals = [] {
    std::array<std::uint64_t, 256> reciprocals{};
    for (unsigned alpha = 1; alpha < 256; ++alpha)
        reciprocals[alpha] = (std::uint64_t(1) << 32) / (2 * alpha) + 1;
    return reciprocals;
}();

// round(channel * 255 / alpha), as (channel * 510 + alpha) / (2 * alpha), without dividing.
inline std::uint8_t unpremultiply(std::uint8_t channel, std::uint8_t alpha)
{
    if (alpha == 0)
        return 0;
    std::uint64_t numerator = unsigned(channel) * 255 * 2 + alpha;
    unsigned value = unsigned((numerator * kUnpremultiplyReciprocals[alpha]) >> 32);
    return std::uint8_t(value > 255 ? 255 : value);
}

inline void storeRGBA(std::uint8_t* rgba, std::uint8_t r, std::uint8_t g, std::uint8_t b, std::uint8_t a)
{
    if constexpr (std::endian::native == std::endian::little) {
        // One store: four byte stores cost the loop that fills a row more than the pixels.
        std::uint32_t bytes = std::uint32_t(r) | std::uint32_t(g) << 8 | std::uint32_t(b) << 16 | std::uint32_t(a) << 24;
        std::memcpy(rgba, &bytes, 4);
    } else {
        rgba[0] = r, rgba[1] = g, rgba[2] = b, rgba[3] = a;
    }
}

// One ARGB32 pixel to RGBA bytes, and whether premultiplying the bytes gives the pixel back:
// always, unless a channel is above the alpha, which no drawing makes.
inline bool pixelToRGBARoundTrips(std::uint32_t pixel, std::uint8_t* rgba)
{
    std::uint8_t a = std::uint8_t(pixel >> 24);
    std::uint8_t r = std::uint8_t(pixel >> 16), g = std::uint8_t(pixel >> 8), b = std::uint8_t(pixel);
    bool roundTrips = true;
    if (a == 0) {
        roundTrips = pixel == 0;
        r = g = b = 0;
    } else if (a != 255) {
        roundTrips = std::max({r, g, b}) <= a;
        r = unpremultiply(r, a), g = unpremultiply(g, a), b = unpremultiply(b, a);
    }
    storeRGBA(rgba, r, g, b, a);
    return roundTrips;
}

// One pixel of a Cairo surface to RGBA bytes; `opaque` for RGB24 surfaces, whose top byte is
// unused.
inline void pixelToRGBA(std::uint32_t pixel, bool opaque, std::uint8_t* rgba)
{
    pixelToRGBARoundTrips(opaque ? pixel | 0xff000000u : pixel, rgba);
}

inline std::uint32_t rgbaToPixel(const std::uint8_t* rgba)
{
    std::uint8_t a = rgba[3];
    if (a == 255)
        return 0xff000000u | std::uint32_t(rgba[0]) << 16 | std::uint32_t(rgba[1]) << 8 | rgba[2];
    if (a == 0)
        return 0;
    return std::uint32_t(a) << 24 | std::uint32_t(premultiply(rgba[0], a)) << 16 | std::uint32_t(premultiply(rgba[1], a)) << 8
        | premultiply(rgba[2], a);
}
