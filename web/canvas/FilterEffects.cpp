#include "web/canvas/FilterEffects.h"

#include "web/canvas/CairoMapping.h"
#include "web/canvas/GaussianBlur.h"

#include <algorithm>
#include <cmath>
#include <cstdint>

namespace {

struct Pixels {
    std::uint32_t* row(int y) const { return reinterpret_cast<std::uint32_t*>(data + std::ptrdiff_t(y) * stride); }
    std::uint8_t* data;
    int width;
    int height;
    int stride;
};

Pixels pixelsOf(cairo_surface_t* surface)
{
    cairo_surface_flush(surface);
    return {cairo_image_surface_get_data(surface), cairo_image_surface_get_width(surface),
            cairo_image_surface_get_height(surface), cairo_image_surface_get_stride(surface)};
}

// Applies `f` to every pixel as unpremultiplied floats in 0..1 and stores the clamped result
// premultiplied again. Transparent pixels stay so when `keepsTransparent`.
template <typename F>
void mapUnpremultiplied(cairo_surface_t* surface, bool keepsTransparent, F f)
{
    Pixels p = pixelsOf(surface);
    if (!p.data)
        return;
    for (int y = 0; y < p.height; ++y) {
        std::uint32_t* row = p.row(y);
        for (int x = 0; x < p.width; ++x) {
            std::uint32_t pixel = row[x];
            double a = (pixel >> 24) / 255.0;
            if (a == 0 && keepsTransparent)
                continue;
            double unpremultiply = a > 0 ? 1 / (a * 255) : 0;
            std::array<double, 4> c = {((pixel >> 16) & 0xff) * unpremultiply, ((pixel >> 8) & 0xff) * unpremultiply,
                                       (pixel & 0xff) * unpremultiply, a};
            f(c);
            double alpha = std::clamp(c[3], 0.0, 1.0);
            auto channel = [&](double v) { return std::uint32_t(std::lround(std::clamp(v, 0.0, 1.0) * alpha * 255)); };
            row[x] = std::uint32_t(std::lround(alpha * 255)) << 24 | channel(c[0]) << 16 | channel(c[1]) << 8 | channel(c[2]);
        }
    }
    cairo_surface_mark_dirty(surface);
}

void applyColorMatrix(cairo_surface_t* surface, const ColorMatrixPrimitive& primitive)
{
    const auto& m = primitive.matrix;
    mapUnpremultiplied(surface, m[19] <= 0, [&](std::array<double, 4>& c) {
        std::array<double, 4> in = c;
        for (int row = 0; row < 4; ++row) {
            const double* r = &m[row * 5];
            c[row] = r[0] * in[0] + r[1] * in[1] + r[2] * in[2] + r[3] * in[3] + r[4];
        }
    });
}

void applyComponentTransfer(cairo_surface_t* surface, const ComponentTransferPrimitive& primitive)
{
    const auto& f = primitive.functions;
    mapUnpremultiplied(surface, f[3].apply(0) <= 0, [&](std::array<double, 4>& c) {
        for (int i = 0; i < 4; ++i)
            c[i] = f[i].apply(c[i]);
    });
}

// The input over its shadow: its alpha blurred, filled with the flood colour, moved.
void applyDropShadow(cairo_surface_t* surface, const DropShadowPrimitive& shadow, CSSColorSpace colorSpace)
{
    int width = cairo_image_surface_get_width(surface), height = cairo_image_surface_get_height(surface);
    cairo_surface_t* alpha = cairo_image_surface_create(CAIRO_FORMAT_A8, width, height);
    cairo_surface_t* result = cairo_image_surface_create(CAIRO_FORMAT_ARGB32, width, height);
    if (cairo_surface_status(alpha) == CAIRO_STATUS_SUCCESS && cairo_surface_status(result) == CAIRO_STATUS_SUCCESS) {
        cairo_t* cr = cairo_create(alpha);
        cairo_set_source_surface(cr, surface, 0, 0);
        cairo_set_operator(cr, CAIRO_OPERATOR_SOURCE);
        cairo_paint(cr);
        cairo_destroy(cr);
        gaussianBlurSurface(alpha, std::max(0.0, shadow.deviationX), std::max(0.0, shadow.deviationY));

        cr = cairo_create(result);
        CSSColor flood = shadow.floodColor.toBytesIn(colorSpace);
        set_cairo_source_color(cr, flood, std::clamp(shadow.floodOpacity, 0.0, 1.0));
        cairo_mask_surface(cr, alpha, shadow.dx, shadow.dy);
        cairo_set_source_surface(cr, surface, 0, 0);
        cairo_paint(cr);
        cairo_destroy(cr);

        cr = cairo_create(surface);
        cairo_set_operator(cr, CAIRO_OPERATOR_SOURCE);
        cairo_set_source_surface(cr, result, 0, 0);
        cairo_paint(cr);
        cairo_destroy(cr);
    }
    cairo_surface_destroy(alpha);
    cairo_surface_destroy(result);
}

int reachOf(const FilterPrimitive& primitive)
{
    auto spread = [](double deviation) { return deviation > 0 ? std::ceil(std::min(deviation, kMaxBlurSigma) * 3) + 1 : 0.0; };
    double reach = 0;
    if (auto* blur = std::get_if<GaussianBlurPrimitive>(&primitive)) {
        reach = std::max(spread(blur->deviationX), spread(blur->deviationY));
    } else if (auto* shadow = std::get_if<DropShadowPrimitive>(&primitive)) {
        reach = std::max(std::fabs(shadow->dx), std::fabs(shadow->dy)) + 1
            + std::max(spread(shadow->deviationX), spread(shadow->deviationY));
    } else if (auto* convolve = std::get_if<ConvolveMatrixPrimitive>(&primitive)) {
        reach = std::max(convolve->orderX, convolve->orderY);
    }
    return int(std::min(reach, double(kMaxFilterReach)));
}

} // namespace

int filterReach(const FilterChain& chain)
{
    int reach = 0;
    for (const auto& primitive : chain)
        reach = std::min(kMaxFilterReach, reach + reachOf(primitive));
    return reach;
}

bool filterFillsRegion(const FilterChain& chain)
{
    for (const auto& primitive : chain) {
        if (std::holds_alternative<TurbulencePrimitive>(primitive))
            return true;
        if (auto* matrix = std::get_if<ColorMatrixPrimitive>(&primitive); matrix && matrix->matrix[19] > 0)
            return true;
        if (auto* transfer = std::get_if<ComponentTransferPrimitive>(&primitive); transfer && transfer->functions[3].apply(0) > 0)
            return true;
        if (auto* convolve = std::get_if<ConvolveMatrixPrimitive>(&primitive); convolve && convolve->bias > 0)
            return true;
    }
    return false;
}

void applyFilterChain(cairo_surface_t* surface, const CanvasDeviceRect& area, const FilterChain& chain, CSSColorSpace colorSpace)
{
    if (cairo_surface_status(surface) != CAIRO_STATUS_SUCCESS || cairo_image_surface_get_format(surface) != CAIRO_FORMAT_ARGB32)
        return;
    // The primitives work in the surface's own pixels; Cairo would otherwise shift every copy
    // by the offset that places the surface on the canvas.
    double offsetX, offsetY;
    cairo_surface_get_device_offset(surface, &offsetX, &offsetY);
    cairo_surface_set_device_offset(surface, 0, 0);
    for (const auto& primitive : chain) {
        if (auto* blur = std::get_if<GaussianBlurPrimitive>(&primitive))
            gaussianBlurSurface(surface, std::max(0.0, blur->deviationX), std::max(0.0, blur->deviationY));
        else if (auto* matrix = std::get_if<ColorMatrixPrimitive>(&primitive))
            applyColorMatrix(surface, *matrix);
        else if (auto* transfer = std::get_if<ComponentTransferPrimitive>(&primitive))
            applyComponentTransfer(surface, *transfer);
        else if (auto* convolve = std::get_if<ConvolveMatrixPrimitive>(&primitive))
            applyConvolveMatrix(surface, *convolve);
        else if (auto* shadow = std::get_if<DropShadowPrimitive>(&primitive))
            applyDropShadow(surface, *shadow, colorSpace);
        else if (auto* turbulence = std::get_if<TurbulencePrimitive>(&primitive))
            renderTurbulence(surface, area, *turbulence);
    }
    cairo_surface_set_device_offset(surface, offsetX, offsetY);
}
