#pragma once

#include "web/canvas/CanvasDrawingState.h"
#include "web/canvas/FlattenedPath.h"
#include "web/text/GlyphCoverage.h"

#include <cairo.h>

#include <array>
#include <optional>
#include <span>
#include <variant>

// A shape to paint: a path and whether it is filled or stroked.
struct CanvasShape {
    std::span<const cairo_path_data_t> path;
    // The path is in user space (a Path2D) rather than device space (the current default path).
    bool inUserSpace = false;
    bool stroke = false;
    cairo_fill_rule_t fillRule = CAIRO_FILL_RULE_WINDING;
    // Glyph outlines from a font, made to be filled by summing their windings.
    bool glyphs = false;
    // For glyphs drawn as the reference draws its glyph masks: what their coverage becomes.
    const GlyphCoverageTable* coverageTable = nullptr;
};

// An image painted into a shape (drawImage): `surface` seen through `patternMatrix`, which
// maps user space to the surface's pixels.
struct CanvasImagePaint {
    cairo_surface_t* surface = nullptr;
    cairo_matrix_t patternMatrix;
    cairo_filter_t filter = CAIRO_FILTER_BILINEAR;
    cairo_extend_t extend = CAIRO_EXTEND_PAD;
};

using CanvasPaintSource = std::variant<const CanvasPaintStyle*, CanvasImagePaint>;

// Device pixels a layer covers.
struct CanvasDeviceRect {
    int x = 0;
    int y = 0;
    int width = 0;
    int height = 0;
};

// A closed rectangle path over device pixels.
std::array<cairo_path_data_t, 9> deviceRectanglePath(const CanvasDeviceRect& rect);

// The canvas drawing model on one Cairo context: filter, shadow, global alpha and compositing
// operator around the painting of a shape. The context's clip is already on `cr`.
class CanvasPainter {
public:
    // `area`: the device pixels the target surface holds (the canvas, or a layer reaching
    // beyond it); `colorSpace`: what its channels mean (sRGB or Display P3).
    CanvasPainter(cairo_t* cr, const CanvasDrawingState& state, const CanvasDeviceRect& area,
                  CSSColorSpace colorSpace = CSSColorSpace::SRGB)
        : cr_(cr), state_(state), canvasRect_(area), colorSpace_(colorSpace) {}

    void paint(const CanvasShape& shape, const CanvasPaintSource& source);
    // clearRect: transparent black under the shape, ignoring alpha, shadows and operator.
    void clear(const CanvasShape& shape);
    // A drawing that covers nothing yet still composites, as a fillRect of zero width or
    // text without glyphs does in browsers.
    void compositeNothing();

    // Whether the state draws shadows at all.
    static bool drawsShadow(const CanvasDrawingState& state);

private:
    // With a filter: the shape alone is drawn into an image, filtered, and the result painted
    // like any image (shadow, alpha, operator, clip).
    void paintFiltered(const CanvasShape& shape, const CanvasPaintSource& source);
    void paintShadow(const CanvasShape& shape, const CanvasPaintSource& source);
    // Paints the shape with its source on `cr` with the current operator, `alpha` applied.
    void drawShape(cairo_t* cr, const CanvasShape& shape, const CanvasPaintSource& source, double alpha,
                   const CanvasDeviceRect& bounds) const;
    // The shape's path in device space, ready for Cairo.
    std::span<const cairo_path_data_t> devicePath(const CanvasShape& shape, std::vector<cairo_path_data_t>& storage) const;
    // Makes a device-space path the context's path, the transform its matrix.
    void setPath(cairo_t* cr, std::span<const cairo_path_data_t> data) const;
    void setStrokeStyle(cairo_t* cr) const;
    // Sets the source; false when it paints nothing at all.
    bool setSource(cairo_t* cr, const CanvasPaintSource& source, double alpha, const CanvasDeviceRect& bounds) const;
    void fillOrStroke(cairo_t* cr, const CanvasShape& shape, std::span<const cairo_path_data_t> data) const;
    bool paintByCoverage(cairo_t* cr, const CanvasShape& shape, const FlattenedPath& path) const;
    bool hasDashes() const;

    cairo_t* cr_;
    const CanvasDrawingState& state_;
    CanvasDeviceRect canvasRect_;
    CSSColorSpace colorSpace_;
    // Where the shape being painted lies, when known (fills).
    std::optional<CanvasDeviceRect> shapeBounds_;
};
