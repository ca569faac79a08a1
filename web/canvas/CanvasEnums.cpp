#include "web/canvas/CanvasEnums.h"

#include <array>
#include <utility>

namespace {

template <typename Enum, std::size_t N>
std::optional<Enum> lookUp(const std::array<std::string_view, N>& names, std::string_view text)
{
    for (std::size_t i = 0; i < N; ++i) {
        if (names[i] == text)
            return Enum(i);
    }
    return {};
}

constexpr std::array<std::string_view, 2> kFillRules = {"nonzero", "evenodd"};
constexpr std::array<std::string_view, 3> kLineCaps = {"butt", "round", "square"};
constexpr std::array<std::string_view, 3> kLineJoins = {"round", "bevel", "miter"};
constexpr std::array<std::string_view, 3> kSmoothingQualities = {"low", "medium", "high"};
constexpr std::array<std::string_view, 27> kCompositeOperations = {
    "source-over", "source-in", "source-out", "source-atop",
    "destination-over", "destination-in", "destination-out", "destination-atop",
    "lighter", "copy", "xor", "clear",
    "multiply", "screen", "overlay", "darken", "lighten", "color-dodge", "color-burn", "hard-light", "soft-light",
    "difference", "exclusion", "hue", "saturation", "color", "luminosity",
};

} // namespace

std::optional<CanvasFillRule> parseCanvasFillRule(std::string_view text) { return lookUp<CanvasFillRule>(kFillRules, text); }
std::optional<CanvasLineCap> parseCanvasLineCap(std::string_view text) { return lookUp<CanvasLineCap>(kLineCaps, text); }
std::optional<CanvasLineJoin> parseCanvasLineJoin(std::string_view text) { return lookUp<CanvasLineJoin>(kLineJoins, text); }
std::optional<ImageSmoothingQuality> parseImageSmoothingQuality(std::string_view text)
{
    return lookUp<ImageSmoothingQuality>(kSmoothingQualities, text);
}
std::optional<CanvasCompositeOperation> parseCanvasCompositeOperation(std::string_view text)
{
    return lookUp<CanvasCompositeOperation>(kCompositeOperations, text);
}

std::string_view toString(CanvasFillRule value) { return kFillRules[std::size_t(value)]; }
std::string_view toString(CanvasLineCap value) { return kLineCaps[std::size_t(value)]; }
std::string_view toString(CanvasLineJoin value) { return kLineJoins[std::size_t(value)]; }
std::string_view toString(ImageSmoothingQuality value) { return kSmoothingQualities[std::size_t(value)]; }
std::string_view toString(CanvasCompositeOperation value) { return kCompositeOperations[std::size_t(value)]; }
