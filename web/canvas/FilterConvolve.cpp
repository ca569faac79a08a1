#include "web/canvas/FilterEffects.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstring>
#include <vector>

namespace {

void clear(cairo_surface_t* surface)
{
    cairo_surface_flush(surface);
    std::memset(cairo_image_surface_get_data(surface), 0,
                std::size_t(cairo_image_surface_get_stride(surface)) * cairo_image_surface_get_height(surface));
    cairo_surface_mark_dirty(surface);
}

int wrapIndex(int i, int size)
{
    int m = i % size;
    return m < 0 ? m + size : m;
}

} // namespace

void applyConvolveMatrix(cairo_surface_t* surface, const ConvolveMatrixPrimitive& p)
{
    // A kernel without cells or a target outside it is an error, and errors draw nothing.
    bool valid = p.orderX > 0 && p.orderY > 0 && p.kernel.size() == std::size_t(p.orderX) * std::size_t(p.orderY)
        && p.targetX >= 0 && p.targetX < p.orderX && p.targetY >= 0 && p.targetY < p.orderY;
    if (!valid) {
        clear(surface);
        return;
    }
    cairo_surface_flush(surface);
    int width = cairo_image_surface_get_width(surface), height = cairo_image_surface_get_height(surface);
    int stride = cairo_image_surface_get_stride(surface);
    std::uint8_t* data = cairo_image_surface_get_data(surface);
    if (!data || width <= 0 || height <= 0)
        return;
    // A native call cannot be interrupted: a kernel that would take seconds draws nothing.
    constexpr double kMaxCost = 1 << 27;
    if (double(p.orderX) * p.orderY * width * height > kMaxCost) {
        clear(surface);
        return;
    }

    // Channels as floats: premultiplied, or unpremultiplied colour when alpha is preserved.
    std::vector<float> in(std::size_t(width) * height * 4);
    for (int y = 0; y < height; ++y) {
        auto* row = reinterpret_cast<const std::uint32_t*>(data + std::ptrdiff_t(y) * stride);
        for (int x = 0; x < width; ++x) {
            std::uint32_t pixel = row[x];
            float a = float(pixel >> 24);
            float scale = p.preserveAlpha ? (a > 0 ? 1 / a : 0) : 1 / 255.0f;
            float* out = &in[(std::size_t(y) * width + x) * 4];
            out[0] = float((pixel >> 16) & 0xff) * scale;
            out[1] = float((pixel >> 8) & 0xff) * scale;
            out[2] = float(pixel & 0xff) * scale;
            out[3] = a / 255;
        }
    }
    double sum = 0;
    for (double k : p.kernel)
        sum += k;
    double divisor = p.divisor != 0 && std::isfinite(p.divisor) ? p.divisor : (sum != 0 ? sum : 1);
    int channels = p.preserveAlpha ? 3 : 4;
    auto sample = [&](int x, int y, int channel) -> float {
        if (x < 0 || x >= width || y < 0 || y >= height) {
            if (p.edgeMode == ConvolveMatrixPrimitive::EdgeMode::None)
                return 0;
            if (p.edgeMode == ConvolveMatrixPrimitive::EdgeMode::Wrap) {
                x = wrapIndex(x, width), y = wrapIndex(y, height);
            } else {
                x = std::clamp(x, 0, width - 1), y = std::clamp(y, 0, height - 1);
            }
        }
        return in[(std::size_t(y) * width + x) * 4 + channel];
    };
    for (int y = 0; y < height; ++y) {
        auto* row = reinterpret_cast<std::uint32_t*>(data + std::ptrdiff_t(y) * stride);
        for (int x = 0; x < width; ++x) {
            std::array<double, 4> result{};
            for (int c = 0; c < channels; ++c) {
                double total = 0;
                // The kernel is applied turned half a turn, as convolution is.
                for (int i = 0; i < p.orderY; ++i) {
                    for (int j = 0; j < p.orderX; ++j) {
                        double k = p.kernel[std::size_t(p.orderY - 1 - i) * p.orderX + std::size_t(p.orderX - 1 - j)];
                        if (k != 0)
                            total += k * sample(x - p.targetX + j, y - p.targetY + i, c);
                    }
                }
                result[c] = std::clamp(total / divisor + p.bias, 0.0, 1.0);
            }
            double alpha = p.preserveAlpha ? in[(std::size_t(y) * width + x) * 4 + 3] : result[3];
            auto channel = [&](double v) {
                double premultiplied = p.preserveAlpha ? v * alpha : std::min(v, alpha);
                return std::uint32_t(std::lround(premultiplied * 255));
            };
            row[x] = std::uint32_t(std::lround(alpha * 255)) << 24 | channel(result[0]) << 16 | channel(result[1]) << 8
                | channel(result[2]);
        }
    }
    cairo_surface_mark_dirty(surface);
}
