#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

// The canvas's keyword values. Attributes ignore keywords they do not know; a fill rule is a
// method argument, where an unknown keyword is a TypeError the binding raises when
// parseCanvasFillRule gives nothing.

enum class CanvasFillRule : std::uint8_t { Nonzero, Evenodd };
enum class CanvasLineCap : std::uint8_t { Butt, Round, Square };
enum class CanvasLineJoin : std::uint8_t { Round, Bevel, Miter };
enum class ImageSmoothingQuality : std::uint8_t { Low, Medium, High };

// globalCompositeOperation: the Porter-Duff operators and blend modes a canvas accepts.
enum class CanvasCompositeOperation : std::uint8_t {
    SourceOver, SourceIn, SourceOut, SourceAtop,
    DestinationOver, DestinationIn, DestinationOut, DestinationAtop,
    Lighter, Copy, Xor, Clear,
    Multiply, Screen, Overlay, Darken, Lighten, ColorDodge, ColorBurn, HardLight, SoftLight,
    Difference, Exclusion, Hue, Saturation, Color, Luminosity,
};

std::optional<CanvasFillRule> parseCanvasFillRule(std::string_view text);
std::optional<CanvasLineCap> parseCanvasLineCap(std::string_view text);
std::optional<CanvasLineJoin> parseCanvasLineJoin(std::string_view text);
std::optional<ImageSmoothingQuality> parseImageSmoothingQuality(std::string_view text);
std::optional<CanvasCompositeOperation> parseCanvasCompositeOperation(std::string_view text);

std::string_view toString(CanvasFillRule value);
std::string_view toString(CanvasLineCap value);
std::string_view toString(CanvasLineJoin value);
std::string_view toString(ImageSmoothingQuality value);
std::string_view toString(CanvasCompositeOperation value);
