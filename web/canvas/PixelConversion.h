#pragma once

#include <cstdint>

// Conversions between Cairo's premultiplied ARGB32 pixels and the unpremultiplied RGBA bytes
// of ImageData and PNG files, rounding as browsers do.

inline std::uint8_t premultiply(std::uint8_t channel, std::uint8_t alpha)
{
    return std::uint8_t((unsigned(channel) * alpha * 2 + 255) / 510);
}

inline std::uint8_t unpremultiply(std::uint8_t channel, std::uint8_t alpha)
{
    if (alpha == 0)
        return 0;
    unsigned value = (unsigned(channel) * 255 * 2 + alpha) / (2u * alpha);
    return std::uint8_t(value > 255 ? 255 : value);
}

// One pixel of a Cairo surface to RGBA bytes; `opaque` for RGB24 surfaces, whose top byte is
// unused.
inline void pixelToRGBA(std::uint32_t pixel, bool opaque, std::uint8_t* rgba)
{
    std::uint8_t a = opaque ? 255 : std::uint8_t(pixel >> 24);
    std::uint8_t r = std::uint8_t(pixel >> 16), g = std::uint8_t(pixel >> 8), b = std::uint8_t(pixel);
    if (a == 255) {
        rgba[0] = r, rgba[1] = g, rgba[2] = b, rgba[3] = 255;
    } else if (a == 0) {
        rgba[0] = rgba[1] = rgba[2] = rgba[3] = 0;
    } else {
        rgba[0] = unpremultiply(r, a), rgba[1] = unpremultiply(g, a), rgba[2] = unpremultiply(b, a), rgba[3] = a;
    }
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
