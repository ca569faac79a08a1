#pragma once

#include "web/canvas/AffineTransform.h"
#include "web/dom/ExceptionOr.h"
#include "web/geometry/DOMMatrixInit.h"

#include <cairo.h>

#include <memory>
#include <string_view>

class CanvasImageSource;

enum class CanvasPatternRepetition { Repeat, RepeatX, RepeatY, NoRepeat };

// A pattern made by createPattern: a snapshot of the image taken at creation, so later
// drawing on the source does not change it.
class CanvasPattern {
public:
    // createPattern(image, repetition): "" and "repeat" repeat both ways; any other text than
    // "repeat-x", "repeat-y" and "no-repeat" is a SyntaxError; a source of zero size an
    // InvalidStateError. A null pointer means the script gets null (nothing to draw).
    static ExceptionOr<std::shared_ptr<CanvasPattern>> create(CanvasImageSource& image, std::string_view repetition);
    ~CanvasPattern();

    // TypeError when the matrix dictionary is inconsistent; a non-finite matrix is ignored.
    ExceptionOr<void> setTransform(const DOMMatrix2DInit& transform = {});

    CanvasPatternRepetition repetition() const { return repetition_; }
    const AffineTransform& transform() const { return transform_; }
    // The snapshot (premultiplied ARGB32).
    cairo_surface_t* surface() const { return surface_; }
    // Patterns that repeat one way only are drawn from the snapshot with transparent margins
    // of this many pixels across the other way, so that filtering at the band's edges fades
    // out instead of wrapping round.
    static constexpr int kBandMargin = 2;
    // The snapshot with those margins (made on first use); the image starts at kBandMargin.
    cairo_surface_t* bandSurface() const;
    int width() const;
    int height() const;

    CanvasPattern(cairo_surface_t* snapshot, CanvasPatternRepetition repetition);

private:
    cairo_surface_t* surface_;
    mutable cairo_surface_t* bandSurface_ = nullptr;
    CanvasPatternRepetition repetition_;
    AffineTransform transform_;
};
