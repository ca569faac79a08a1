#pragma once

#include "web/css/CSSColor.h"

#include <array>
#include <memory>
#include <variant>
#include <vector>

// The filter primitives a canvas draws with, as SVG defines them. Both kinds of canvas filter
// come down to a chain of these: CSS filter functions (blur(), sepia(), drop-shadow(), ...)
// and CanvasFilter objects. Lengths are in canvas pixels; colours work in the canvas's own
// channels (sRGB for an sRGB canvas), unpremultiplied where SVG says so.

struct GaussianBlurPrimitive {
    double deviationX = 0;
    double deviationY = 0;
};

// Rows for red, green, blue and alpha, each over (r, g, b, a, 1).
struct ColorMatrixPrimitive {
    std::array<double, 20> matrix{};
    static ColorMatrixPrimitive identity();
    static ColorMatrixPrimitive saturate(double amount);
    static ColorMatrixPrimitive hueRotate(double degrees);
    static ColorMatrixPrimitive luminanceToAlpha();
    static ColorMatrixPrimitive grayscale(double amount);
    static ColorMatrixPrimitive sepia(double amount);
};

struct TransferFunction {
    enum class Type { Identity, Table, Discrete, Linear, Gamma };
    Type type = Type::Identity;
    std::vector<double> tableValues;
    double slope = 1;
    double intercept = 0;
    double amplitude = 1;
    double exponent = 1;
    double offset = 0;

    double apply(double value) const;
};

// Functions for red, green, blue and alpha.
struct ComponentTransferPrimitive {
    std::array<TransferFunction, 4> functions;
};

struct ConvolveMatrixPrimitive {
    enum class EdgeMode { Duplicate, Wrap, None };
    int orderX = 0;
    int orderY = 0;
    std::vector<double> kernel; // orderY rows of orderX
    double divisor = 0;         // 0: the kernel's sum, or 1 when that is 0
    double bias = 0;
    int targetX = 0;
    int targetY = 0;
    EdgeMode edgeMode = EdgeMode::Duplicate;
    bool preserveAlpha = false;
};

struct DropShadowPrimitive {
    double dx = 2;
    double dy = 2;
    double deviationX = 2;
    double deviationY = 2;
    CSSColorValue floodColor = CSSColorValue::opaqueBlack();
    double floodOpacity = 1;
};

struct TurbulencePrimitive {
    double baseFrequencyX = 0;
    double baseFrequencyY = 0;
    int numOctaves = 1;
    double seed = 0;
    bool stitchTiles = false;
    bool fractalNoise = false;
};

using FilterPrimitive = std::variant<GaussianBlurPrimitive, ColorMatrixPrimitive, ComponentTransferPrimitive,
                                     ConvolveMatrixPrimitive, DropShadowPrimitive, TurbulencePrimitive>;
// Primitives applied in order, each to the result of the one before. Empty: no filtering.
using FilterChain = std::vector<FilterPrimitive>;
