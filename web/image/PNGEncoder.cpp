#include "web/image/PNGEncoder.h"

#include "web/canvas/PixelConversion.h"
#include "web/image/FastDeflate.h"

#include <zlib.h>

#include <cstdint>
#include <cstring>
#include <vector>

namespace {

void appendBigEndian(std::string& out, std::uint32_t value)
{
    char bytes[4] = {char(value >> 24), char(value >> 16), char(value >> 8), char(value)};
    out.append(bytes, 4);
}

void appendChunk(std::string& out, const char* type, const unsigned char* data, std::size_t size)
{
    appendBigEndian(out, std::uint32_t(size));
    std::size_t start = out.size();
    out.append(type, 4);
    out.append(reinterpret_cast<const char*>(data), size);
    uLong crc = crc32(0, reinterpret_cast<const Bytef*>(out.data() + start), uInt(size + 4));
    appendBigEndian(out, std::uint32_t(crc));
}

} // namespace

std::string encodePNG(cairo_surface_t* surface, PNGImageData* data)
{
    if (!surface || cairo_surface_get_type(surface) != CAIRO_SURFACE_TYPE_IMAGE)
        return {};
    cairo_format_t format = cairo_image_surface_get_format(surface);
    if (format != CAIRO_FORMAT_ARGB32 && format != CAIRO_FORMAT_RGB24)
        return {};
    cairo_surface_flush(surface);
    const unsigned char* pixels = cairo_image_surface_get_data(surface);
    int width = cairo_image_surface_get_width(surface);
    int height = cairo_image_surface_get_height(surface);
    int stride = cairo_image_surface_get_stride(surface);
    if (!pixels || width <= 0 || height <= 0)
        return {};
    bool opaque = format == CAIRO_FORMAT_RGB24;

    // Unfiltered scanlines: runs of equal pixels are what the deflate finds, and a decoder has
    // nothing to undo.
    PNGImageData image{width, height, {}, {}};
    std::size_t rowSize = 1 + std::size_t(width) * 4;
    image.rows.resize(rowSize * height);
    // An RGB24 surface's top byte is unused: its pixels are opaque, and never stand for the
    // decoded file themselves.
    const std::uint32_t opaqueBits = opaque ? 0xff000000u : 0;
    bool roundTrips = !opaque;
    for (int y = 0; y < height; ++y) {
        unsigned char* row = image.rows.data() + rowSize * y;
        row[0] = 0;
        auto* source = reinterpret_cast<const std::uint32_t*>(pixels + std::size_t(stride) * y);
        for (int x = 0; x < width; ++x)
            roundTrips &= pixelToRGBARoundTrips(source[x] | opaqueBits, row + 1 + 4 * x);
    }
    std::string png = encodePNG(image);
    if (data) {
        if (roundTrips) {
            image.premultiplied.reserve(std::size_t(width) * height);
            for (int y = 0; y < height; ++y) {
                auto* source = reinterpret_cast<const std::uint32_t*>(pixels + std::size_t(stride) * y);
                image.premultiplied.insert(image.premultiplied.end(), source, source + width);
            }
        }
        *data = std::move(image);
    }
    return png;
}

std::string encodePNG(const PNGImageData& data)
{
    int width = data.width, height = data.height;
    const std::vector<unsigned char>& raw = data.rows;
    if (width <= 0 || height <= 0 || raw.size() != (1 + std::size_t(width) * 4) * std::size_t(height))
        return {};
    std::string png;
    png.reserve(raw.size() / 4 + 256);
    png.append("\x89PNG\r\n\x1a\n", 8);
    unsigned char header[13];
    auto put32 = [](unsigned char* at, std::uint32_t v) {
        at[0] = static_cast<unsigned char>(v >> 24), at[1] = static_cast<unsigned char>(v >> 16);
        at[2] = static_cast<unsigned char>(v >> 8), at[3] = static_cast<unsigned char>(v);
    };
    put32(header, std::uint32_t(width));
    put32(header + 4, std::uint32_t(height));
    header[8] = 8;  // bits per channel
    header[9] = 6;  // RGBA
    header[10] = 0; // deflate
    header[11] = 0; // adaptive filtering
    header[12] = 0; // no interlace
    appendChunk(png, "IHDR", header, sizeof header);
    // The image data chunk is compressed in place: length, type, zlib stream, CRC.
    std::size_t lengthAt = png.size();
    appendBigEndian(png, 0);
    png.append("IDAT", 4);
    appendZlibOfScanlines(png, raw.data(), std::size_t(width), std::size_t(height));
    std::size_t dataSize = png.size() - lengthAt - 8;
    for (int i = 0; i < 4; ++i)
        png[lengthAt + i] = char(dataSize >> (24 - 8 * i));
    uLong crc = crc32(0, reinterpret_cast<const Bytef*>(png.data() + lengthAt + 4), uInt(dataSize + 4));
    appendBigEndian(png, std::uint32_t(crc));
    appendChunk(png, "IEND", nullptr, 0);
    return png;
}

cairo_surface_t* decodedPNGSurface(const PNGImageData& data)
{
    std::size_t rowSize = 1 + std::size_t(data.width) * 4;
    if (data.width <= 0 || data.height <= 0 || data.rows.size() != rowSize * std::size_t(data.height))
        return nullptr;
    cairo_surface_t* surface = cairo_image_surface_create(CAIRO_FORMAT_ARGB32, data.width, data.height);
    if (cairo_surface_status(surface) != CAIRO_STATUS_SUCCESS) {
        cairo_surface_destroy(surface);
        return nullptr;
    }
    unsigned char* pixels = cairo_image_surface_get_data(surface);
    int stride = cairo_image_surface_get_stride(surface);
    if (data.premultiplied.size() == std::size_t(data.width) * std::size_t(data.height)) {
        for (int y = 0; y < data.height; ++y)
            std::memcpy(pixels + std::size_t(stride) * std::size_t(y), data.premultiplied.data() + std::size_t(data.width) * y,
                        4 * std::size_t(data.width));
        cairo_surface_mark_dirty(surface);
        return surface;
    }
    for (int y = 0; y < data.height; ++y) {
        const unsigned char* row = data.rows.data() + rowSize * std::size_t(y);
        if (*row++ != 0) {
            cairo_surface_destroy(surface);
            return nullptr;
        }
        auto* target = reinterpret_cast<std::uint32_t*>(pixels + std::size_t(stride) * std::size_t(y));
        for (int x = 0; x < data.width; ++x)
            target[x] = rgbaToPixel(row + 4 * x);
    }
    cairo_surface_mark_dirty(surface);
    return surface;
}
