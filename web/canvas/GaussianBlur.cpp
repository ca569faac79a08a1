#include "web/canvas/GaussianBlur.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <vector>

namespace {

// One pass over `count` samples `stride` apart: out[i] = average of in[i - before .. i + after].
void boxPass(const std::uint8_t* in, std::uint8_t* out, int count, int stride, int before, int after)
{
    int size = before + after + 1;
    std::uint32_t scale = (1u << 24) / std::uint32_t(size);
    std::uint32_t sum = 0;
    for (int i = 0; i < std::min(after, count); ++i)
        sum += in[i * stride];
    for (int i = 0; i < count; ++i) {
        int entering = i + after;
        if (entering < count)
            sum += in[entering * stride];
        int leaving = i - before - 1;
        if (leaving >= 0)
            sum -= in[leaving * stride];
        out[i * stride] = std::uint8_t(std::min<std::uint32_t>(255, (sum * scale + (1u << 23)) >> 24));
    }
}

void gaussianPass(const std::uint8_t* in, std::uint8_t* out, int count, int stride, const std::vector<std::uint32_t>& kernel)
{
    int radius = int(kernel.size() / 2);
    for (int i = 0; i < count; ++i) {
        std::uint64_t sum = 0;
        int from = std::max(0, i - radius), to = std::min(count - 1, i + radius);
        for (int j = from; j <= to; ++j)
            sum += std::uint64_t(in[j * stride]) * kernel[j - i + radius];
        out[i * stride] = std::uint8_t(std::min<std::uint64_t>(255, (sum + (1u << 15)) >> 16));
    }
}

// Applies `pass` along every row (horizontal) or column, through a scratch copy of the line.
template <typename Pass>
void forEachLine(std::uint8_t* pixels, int width, int height, int stride, int pixelStep, bool horizontal, Pass pass)
{
    int lines = horizontal ? height : width;
    int length = horizontal ? width : height;
    std::vector<std::uint8_t> a(length), b(length);
    for (int line = 0; line < lines; ++line) {
        std::uint8_t* start = horizontal ? pixels + line * stride : pixels + line * pixelStep;
        int step = horizontal ? pixelStep : stride;
        for (int i = 0; i < length; ++i)
            a[i] = start[i * step];
        pass(a.data(), b.data(), length);
        for (int i = 0; i < length; ++i)
            start[i * step] = a[i];
    }
}

// One direction of the blur over one channel.
void blurLines(std::uint8_t* pixels, int width, int height, int stride, int pixelStep, bool horizontal, double sigma)
{
    sigma = std::min(sigma, kMaxBlurSigma);
    if (!(sigma > 0))
        return;
    if (sigma < 2) {
        int radius = int(std::ceil(sigma * 3));
        std::vector<double> weights(2 * radius + 1);
        double total = 0;
        for (int i = -radius; i <= radius; ++i)
            total += weights[i + radius] = std::exp(-(i * i) / (2 * sigma * sigma));
        std::vector<std::uint32_t> kernel(weights.size());
        for (std::size_t i = 0; i < weights.size(); ++i)
            kernel[i] = std::uint32_t(std::lround(weights[i] / total * 65536));
        forEachLine(pixels, width, height, stride, pixelStep, horizontal, [&](std::uint8_t* line, std::uint8_t* scratch, int n) {
            gaussianPass(line, scratch, n, 1, kernel);
            std::copy(scratch, scratch + n, line);
        });
        return;
    }
    // Three box blurs approximate the Gaussian; an even box size is split into two
    // off-centre boxes and one of the next odd size.
    int d = int(std::floor(sigma * 3 * std::sqrt(2 * M_PI) / 4 + 0.5));
    forEachLine(pixels, width, height, stride, pixelStep, horizontal, [&](std::uint8_t* line, std::uint8_t* scratch, int n) {
        int half = d / 2;
        if (d % 2 == 1) {
            boxPass(line, scratch, n, 1, half, half);
            boxPass(scratch, line, n, 1, half, half);
            boxPass(line, scratch, n, 1, half, half);
        } else {
            boxPass(line, scratch, n, 1, half, half - 1);
            boxPass(scratch, line, n, 1, half - 1, half);
            boxPass(line, scratch, n, 1, half, half);
        }
        std::copy(scratch, scratch + n, line);
    });
}

} // namespace

void gaussianBlurAlpha(cairo_surface_t* surface, double sigma)
{
    if (cairo_image_surface_get_format(surface) != CAIRO_FORMAT_A8)
        return;
    gaussianBlurSurface(surface, sigma, sigma);
}

void gaussianBlurSurface(cairo_surface_t* surface, double sigmaX, double sigmaY)
{
    if (!(sigmaX > 0) && !(sigmaY > 0))
        return;
    cairo_surface_flush(surface);
    std::uint8_t* pixels = cairo_image_surface_get_data(surface);
    int width = cairo_image_surface_get_width(surface);
    int height = cairo_image_surface_get_height(surface);
    int stride = cairo_image_surface_get_stride(surface);
    cairo_format_t format = cairo_image_surface_get_format(surface);
    if (!pixels || width <= 0 || height <= 0 || (format != CAIRO_FORMAT_A8 && format != CAIRO_FORMAT_ARGB32))
        return;
    // Premultiplied ARGB blurs channel by channel, each byte a plane of its own.
    int channels = format == CAIRO_FORMAT_A8 ? 1 : 4;
    for (int channel = 0; channel < channels; ++channel) {
        blurLines(pixels + channel, width, height, stride, channels, true, sigmaX);
        blurLines(pixels + channel, width, height, stride, channels, false, sigmaY);
    }
    cairo_surface_mark_dirty(surface);
}
