#include "UIImage.h"

#include <cmath>
#include <cstring>
#include <fstream>
#include <iterator>

namespace {

std::shared_ptr<cairo_surface_t> adopt(cairo_surface_t* surface)
{
    if (!surface)
        return nullptr;
    if (cairo_surface_status(surface) != CAIRO_STATUS_SUCCESS) {
        cairo_surface_destroy(surface);
        return nullptr;
    }
    return std::shared_ptr<cairo_surface_t>(surface, cairo_surface_destroy);
}

std::uint32_t bigEndian32(const std::uint8_t* p)
{
    return (std::uint32_t{p[0]} << 24) | (std::uint32_t{p[1]} << 16) | (std::uint32_t{p[2]} << 8) | p[3];
}

// Reads the size from the header so that a hostile file cannot make the decoder allocate
// an enormous bitmap.
bool hasAcceptablePNGHeader(const std::uint8_t* data, std::size_t size)
{
    static const std::uint8_t signature[8] = {0x89, 'P', 'N', 'G', '\r', '\n', 0x1A, '\n'};
    if (size < 33 || std::memcmp(data, signature, 8) != 0 || std::memcmp(data + 12, "IHDR", 4) != 0)
        return false;
    std::uint32_t width = bigEndian32(data + 16);
    std::uint32_t height = bigEndian32(data + 20);
    return width > 0 && height > 0 && width <= UIImage::kMaxPixelsPerSide && height <= UIImage::kMaxPixelsPerSide &&
           static_cast<long>(width) * height <= UIImage::kMaxPixels;
}

struct ReadCursor {
    const std::uint8_t* data;
    std::size_t remaining;
};

cairo_status_t readFromCursor(void* closure, unsigned char* out, unsigned int length)
{
    auto* cursor = static_cast<ReadCursor*>(closure);
    if (length > cursor->remaining)
        return CAIRO_STATUS_READ_ERROR;
    std::memcpy(out, cursor->data, length);
    cursor->data += length;
    cursor->remaining -= length;
    return CAIRO_STATUS_SUCCESS;
}

cairo_status_t appendToVector(void* closure, const unsigned char* data, unsigned int length)
{
    auto* out = static_cast<std::vector<std::uint8_t>*>(closure);
    out->insert(out->end(), data, data + length);
    return CAIRO_STATUS_SUCCESS;
}

// Cairo hands back RGB24 for opaque PNGs; images are ARGB32 throughout.
cairo_surface_t* asARGB32(cairo_surface_t* surface)
{
    if (cairo_image_surface_get_format(surface) == CAIRO_FORMAT_ARGB32)
        return surface;
    int width = cairo_image_surface_get_width(surface);
    int height = cairo_image_surface_get_height(surface);
    cairo_surface_t* converted = cairo_image_surface_create(CAIRO_FORMAT_ARGB32, width, height);
    cairo_t* cr = cairo_create(converted);
    cairo_set_source_surface(cr, surface, 0, 0);
    cairo_paint(cr);
    cairo_destroy(cr);
    cairo_surface_destroy(surface);
    return converted;
}

} // namespace

UIImage::UIImage(cairo_surface_t* surface, double scale)
    : surface_(adopt(surface)), scale_(std::isfinite(scale) && scale > 0 ? scale : 1.0)
{
}

UIImage UIImage::imageWithDataScale(const std::uint8_t* data, std::size_t size, double scale)
{
    if (!data || !hasAcceptablePNGHeader(data, size))
        return {};
    ReadCursor cursor{data, size};
    cairo_surface_t* surface = cairo_image_surface_create_from_png_stream(readFromCursor, &cursor);
    if (cairo_surface_status(surface) != CAIRO_STATUS_SUCCESS) {
        cairo_surface_destroy(surface);
        return {};
    }
    return UIImage(asARGB32(surface), scale);
}

UIImage UIImage::imageWithContentsOfFile(const std::string& path, double scale)
{
    std::ifstream in(path, std::ios::binary);
    if (!in)
        return {};
    std::vector<std::uint8_t> bytes((std::istreambuf_iterator<char>(in)), std::istreambuf_iterator<char>());
    return imageWithDataScale(bytes, scale);
}

CGSize UIImage::size() const
{
    if (isNil())
        return {};
    return {pixelWidth() / scale_, pixelHeight() / scale_};
}

int UIImage::pixelWidth() const
{
    return surface_ ? cairo_image_surface_get_width(surface_.get()) : 0;
}

int UIImage::pixelHeight() const
{
    return surface_ ? cairo_image_surface_get_height(surface_.get()) : 0;
}

std::vector<std::uint8_t> UIImage::pngData() const
{
    std::vector<std::uint8_t> out;
    if (surface_)
        cairo_surface_write_to_png_stream(surface_.get(), appendToVector, &out);
    return out;
}

bool UIImage::writePNG(const std::string& path) const
{
    return surface_ && cairo_surface_write_to_png(surface_.get(), path.c_str()) == CAIRO_STATUS_SUCCESS;
}
