#pragma once

#include "platform/core/UIImage.h"

#include <cstdint>
#include <cstring>

// One pixel of an image as Cairo keeps it: premultiplied ARGB in a native-endian word.
inline std::uint32_t pixel(const UIImage& image, int x, int y)
{
    cairo_surface_t* surface = image.CGImage();
    cairo_surface_flush(surface);
    const unsigned char* row = cairo_image_surface_get_data(surface) + y * cairo_image_surface_get_stride(surface);
    std::uint32_t value;
    std::memcpy(&value, row + x * 4, 4);
    return value;
}

inline bool samePixels(const UIImage& a, const UIImage& b)
{
    if (a.pixelWidth() != b.pixelWidth() || a.pixelHeight() != b.pixelHeight())
        return false;
    for (int y = 0; y < a.pixelHeight(); ++y)
        for (int x = 0; x < a.pixelWidth(); ++x)
            if (pixel(a, x, y) != pixel(b, x, y))
                return false;
    return true;
}
