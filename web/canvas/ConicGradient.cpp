#include "web/canvas/ConicGradient.h"

#include "web/canvas/CanvasGradient.h"

#include <cmath>
#include <cstdint>

namespace {

// The colour at `t` in 0..1, interpolated without premultiplying as canvas gradients are,
// premultiplied for the surface.
std::uint32_t colorAt(const std::vector<CanvasGradient::DeviceStop>& stops, double t)
{
    const CanvasGradient::DeviceStop* before = &stops.front();
    const CanvasGradient::DeviceStop* after = nullptr;
    for (const auto& stop : stops) {
        if (stop.offset <= t) {
            before = &stop;
        } else {
            after = &stop;
            break;
        }
    }
    double r = before->color.red, g = before->color.green, b = before->color.blue, a = before->color.alpha;
    if (after && t >= before->offset && after->offset > before->offset) {
        double f = (t - before->offset) / (after->offset - before->offset);
        r += (after->color.red - r) * f;
        g += (after->color.green - g) * f;
        b += (after->color.blue - b) * f;
        a += (after->color.alpha - a) * f;
    } else if (after && t < before->offset) {
        r = after->color.red, g = after->color.green, b = after->color.blue, a = after->color.alpha;
    }
    auto premultiplied = [&](double c) { return std::uint32_t(std::lround(c * a / 255)); };
    return std::uint32_t(std::lround(a)) << 24 | premultiplied(r) << 16 | premultiplied(g) << 8 | premultiplied(b);
}

} // namespace

cairo_surface_t* renderConicGradient(const CanvasGradient& gradient, const AffineTransform& ctm, const CanvasDeviceRect& rect,
                                     CSSColorSpace space)
{
    auto inverse = ctm.inverse();
    if (!inverse || rect.width <= 0 || rect.height <= 0 || gradient.colorStops().empty())
        return nullptr;
    cairo_surface_t* surface = cairo_image_surface_create(CAIRO_FORMAT_ARGB32, rect.width, rect.height);
    if (cairo_surface_status(surface) != CAIRO_STATUS_SUCCESS) {
        cairo_surface_destroy(surface);
        return nullptr;
    }
    const auto& geometry = gradient.geometry();
    double startAngle = geometry[0], centreX = geometry[1], centreY = geometry[2];
    const auto& stops = gradient.deviceStops(space);
    auto* data = cairo_image_surface_get_data(surface);
    int stride = cairo_image_surface_get_stride(surface);
    for (int row = 0; row < rect.height; ++row) {
        auto* pixels = reinterpret_cast<std::uint32_t*>(data + row * stride);
        for (int column = 0; column < rect.width; ++column) {
            double x = rect.x + column + 0.5, y = rect.y + row + 0.5;
            inverse->map(x, y);
            double turns = (std::atan2(y - centreY, x - centreX) - startAngle) / (2 * M_PI);
            turns -= std::floor(turns);
            pixels[column] = colorAt(stops, turns);
        }
    }
    cairo_surface_mark_dirty(surface);
    return surface;
}
