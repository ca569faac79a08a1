#include "ImageDiff.h"

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <sstream>

namespace {

struct PixelAccess {
    explicit PixelAccess(cairo_surface_t* surface)
        : data(cairo_image_surface_get_data(surface)),
          stride(cairo_image_surface_get_stride(surface)),
          width(cairo_image_surface_get_width(surface)),
          height(cairo_image_surface_get_height(surface))
    {
        cairo_surface_flush(surface);
    }
    std::uint32_t at(int x, int y) const
    {
        return *reinterpret_cast<const std::uint32_t*>(data + std::ptrdiff_t(y) * stride + x * 4);
    }
    const unsigned char* data;
    int stride, width, height;
};

int channelDelta(std::uint32_t a, std::uint32_t b)
{
    int largest = 0;
    for (int shift = 0; shift < 32; shift += 8) {
        const int delta = std::abs(int((a >> shift) & 0xff) - int((b >> shift) & 0xff));
        largest = std::max(largest, delta);
    }
    return largest;
}

bool usable(cairo_surface_t* surface)
{
    return surface && cairo_surface_status(surface) == CAIRO_STATUS_SUCCESS
        && cairo_surface_get_type(surface) == CAIRO_SURFACE_TYPE_IMAGE
        && cairo_image_surface_get_format(surface) == CAIRO_FORMAT_ARGB32;
}

} // namespace

std::string ImageDiff::describe() const
{
    std::ostringstream text;
    if (!sameSize) {
        text << "sizes differ (reference " << width << "x" << height << ")";
        return text.str();
    }
    text << differing << " of " << painted << " painted pixels differ (" << share() * 100.0
         << "%), " << strictShare() * 100.0 << "% by more than " << kStrictChannelTolerance
         << ", largest channel difference " << largestDelta;
    return text.str();
}

ImageDiff compareImages(cairo_surface_t* ours, cairo_surface_t* reference, int channelTolerance)
{
    ImageDiff diff;
    if (!usable(ours) || !usable(reference))
        return diff;
    const PixelAccess a(ours), b(reference);
    diff.width = b.width;
    diff.height = b.height;
    diff.sameSize = a.width == b.width && a.height == b.height;
    if (!diff.sameSize)
        return diff;
    for (int y = 0; y < b.height; ++y) {
        for (int x = 0; x < b.width; ++x) {
            const std::uint32_t pa = a.at(x, y), pb = b.at(x, y);
            if ((pa | pb) >> 24 == 0)
                continue;
            ++diff.painted;
            const int delta = channelDelta(pa, pb);
            diff.largestDelta = std::max(diff.largestDelta, delta);
            if (delta > channelTolerance)
                ++diff.differing;
            if (delta > kStrictChannelTolerance)
                ++diff.strictlyDiffering;
        }
    }
    return diff;
}

cairo_surface_t* diffPicture(cairo_surface_t* ours, cairo_surface_t* reference, int channelTolerance)
{
    if (!usable(ours) || !usable(reference))
        return nullptr;
    const PixelAccess a(ours), b(reference);
    if (a.width != b.width || a.height != b.height)
        return nullptr;
    cairo_surface_t* out = cairo_image_surface_create(CAIRO_FORMAT_ARGB32, b.width, b.height);
    unsigned char* data = cairo_image_surface_get_data(out);
    const int stride = cairo_image_surface_get_stride(out);
    for (int y = 0; y < b.height; ++y) {
        auto* row = reinterpret_cast<std::uint32_t*>(data + std::ptrdiff_t(y) * stride);
        for (int x = 0; x < b.width; ++x) {
            const std::uint32_t pa = a.at(x, y), pb = b.at(x, y);
            const int delta = channelDelta(pa, pb);
            if (delta > channelTolerance) {
                const std::uint32_t red = 128 + std::min(127, delta / 2);
                row[x] = 0xff000000u | (red << 16);
            } else {
                const std::uint32_t grey = 255 - ((pb >> 24) & 0xff) / 4;
                row[x] = 0xff000000u | (grey << 16) | (grey << 8) | grey;
            }
        }
    }
    cairo_surface_mark_dirty(out);
    return out;
}
