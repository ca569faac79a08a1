// feTurbulence: Perlin noise summed over octaves, with the lattice, gradients and random
// numbers SVG prescribes so that a seed draws the same noise everywhere.
#include "web/canvas/FilterEffects.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>

namespace {

constexpr int kLatticeSize = 0x100;
constexpr int kLatticeMask = 0xff;
constexpr int kPerlinOffset = 0x1000;

// The Park-Miller "minimal standard" generator.
constexpr long kRandomModulus = 2147483647;
constexpr long kRandomMultiplier = 16807;
constexpr long kRandomQuotient = 127773; // modulus / multiplier
constexpr long kRandomRemainder = 2836;  // modulus % multiplier

long nextRandom(long seed)
{
    long result = kRandomMultiplier * (seed % kRandomQuotient) - kRandomRemainder * (seed / kRandomQuotient);
    return result <= 0 ? result + kRandomModulus : result;
}

long initialSeed(double seed)
{
    double truncated = std::trunc(std::clamp(seed, -1e15, 1e15));
    long value = long(std::fmod(truncated, double(kRandomModulus - 1)));
    if (value <= 0)
        value = -(value % (kRandomModulus - 1)) + 1;
    return std::min(value, kRandomModulus - 1);
}

struct Stitch {
    int width, height;
    int wrapX, wrapY;
};

class Noise {
public:
    explicit Noise(double seedValue)
    {
        long seed = initialSeed(seedValue);
        for (int channel = 0; channel < 4; ++channel) {
            for (int i = 0; i < kLatticeSize; ++i) {
                selector_[i] = i;
                auto& g = gradient_[channel][i];
                for (double& component : g) {
                    seed = nextRandom(seed);
                    component = double((seed % (2 * kLatticeSize)) - kLatticeSize) / kLatticeSize;
                }
                double length = std::sqrt(g[0] * g[0] + g[1] * g[1]);
                if (length > 0)
                    g[0] /= length, g[1] /= length;
            }
        }
        for (int i = kLatticeSize - 1; i > 0; --i) {
            seed = nextRandom(seed);
            std::swap(selector_[i], selector_[seed % kLatticeSize]);
        }
        for (int i = 0; i < kLatticeSize + 2; ++i) {
            selector_[kLatticeSize + i] = selector_[i];
            for (int channel = 0; channel < 4; ++channel)
                gradient_[channel][kLatticeSize + i] = gradient_[channel][i];
        }
    }

    double noise2(int channel, double x, double y, const Stitch* stitch) const
    {
        auto setup = [](double v, int& b0, int& b1, double& r0, double& r1) {
            double t = v + kPerlinOffset;
            b0 = int(t) & kLatticeMask;
            b1 = (b0 + 1) & kLatticeMask;
            r0 = t - std::floor(t);
            r1 = r0 - 1;
        };
        int bx0, bx1, by0, by1;
        double rx0, rx1, ry0, ry1;
        setup(x, bx0, bx1, rx0, rx1);
        setup(y, by0, by1, ry0, ry1);
        if (stitch) {
            if (bx0 >= stitch->wrapX)
                bx0 -= stitch->width;
            if (bx1 >= stitch->wrapX)
                bx1 -= stitch->width;
            if (by0 >= stitch->wrapY)
                by0 -= stitch->height;
            if (by1 >= stitch->wrapY)
                by1 -= stitch->height;
        }
        bx0 &= kLatticeMask, bx1 &= kLatticeMask, by0 &= kLatticeMask, by1 &= kLatticeMask;
        int i = selector_[bx0], j = selector_[bx1];
        int b00 = selector_[i + by0], b10 = selector_[j + by0], b01 = selector_[i + by1], b11 = selector_[j + by1];
        auto curve = [](double t) { return t * t * (3 - 2 * t); };
        auto lerp = [](double t, double a, double b) { return a + t * (b - a); };
        const auto& g = gradient_[channel];
        double sx = curve(rx0), sy = curve(ry0);
        double a = lerp(sx, rx0 * g[b00][0] + ry0 * g[b00][1], rx1 * g[b10][0] + ry0 * g[b10][1]);
        double b = lerp(sx, rx0 * g[b01][0] + ry1 * g[b01][1], rx1 * g[b11][0] + ry1 * g[b11][1]);
        return lerp(sy, a, b);
    }

private:
    std::array<int, kLatticeSize + kLatticeSize + 2> selector_{};
    std::array<std::array<std::array<double, 2>, kLatticeSize + kLatticeSize + 2>, 4> gradient_{};
};

} // namespace

void renderTurbulence(cairo_surface_t* surface, const CanvasDeviceRect& area, const TurbulencePrimitive& p)
{
    cairo_surface_flush(surface);
    int width = cairo_image_surface_get_width(surface), height = cairo_image_surface_get_height(surface);
    int stride = cairo_image_surface_get_stride(surface);
    std::uint8_t* data = cairo_image_surface_get_data(surface);
    if (!data)
        return;
    // Octaves past a dozen change no 8-bit channel; they would only cost time.
    int octaves = std::clamp(p.numOctaves, 0, 12);
    // And on huge areas fewer, so that one call stays within a fraction of a second.
    while (octaves > 1 && double(width) * height * octaves > (1 << 25))
        --octaves;
    double frequencyX = p.baseFrequencyX, frequencyY = p.baseFrequencyY;
    Stitch stitch{};
    if (p.stitchTiles) {
        // Frequencies nudged so that a whole number of cells spans the tile (the filter area).
        auto adjust = [](double frequency, int size) {
            if (frequency == 0 || size <= 0)
                return frequency;
            double low = std::floor(size * frequency) / size, high = std::ceil(size * frequency) / size;
            return low > 0 && frequency / low < high / frequency ? low : high;
        };
        frequencyX = adjust(frequencyX, area.width);
        frequencyY = adjust(frequencyY, area.height);
        stitch.width = int(area.width * frequencyX + 0.5);
        stitch.height = int(area.height * frequencyY + 0.5);
        stitch.wrapX = int(area.x * frequencyX + kPerlinOffset + stitch.width);
        stitch.wrapY = int(area.y * frequencyY + kPerlinOffset + stitch.height);
    }
    Noise noise(p.seed);
    for (int row = 0; row < height; ++row) {
        auto* pixels = reinterpret_cast<std::uint32_t*>(data + std::ptrdiff_t(row) * stride);
        for (int column = 0; column < width; ++column) {
            std::array<double, 4> value{};
            for (int channel = 0; channel < 4; ++channel) {
                double x = (area.x + column) * frequencyX, y = (area.y + row) * frequencyY;
                double sum = 0, ratio = 1;
                Stitch s = stitch;
                for (int octave = 0; octave < octaves; ++octave) {
                    double n = noise.noise2(channel, x, y, p.stitchTiles ? &s : nullptr);
                    sum += (p.fractalNoise ? n : std::fabs(n)) / ratio;
                    x *= 2, y *= 2, ratio *= 2;
                    if (p.stitchTiles) {
                        s.width *= 2, s.wrapX = 2 * s.wrapX - kPerlinOffset;
                        s.height *= 2, s.wrapY = 2 * s.wrapY - kPerlinOffset;
                    }
                }
                value[channel] = std::clamp(p.fractalNoise ? (sum + 1) / 2 : sum, 0.0, 1.0);
            }
            double alpha = value[3];
            auto channel = [&](double v) { return std::uint32_t(std::lround(v * alpha * 255)); };
            pixels[column] = std::uint32_t(std::lround(alpha * 255)) << 24 | channel(value[0]) << 16 | channel(value[1]) << 8
                | channel(value[2]);
        }
    }
    cairo_surface_mark_dirty(surface);
}
