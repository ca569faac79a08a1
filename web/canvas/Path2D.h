#pragma once

#include "web/canvas/CanvasPath.h"
#include "web/geometry/DOMMatrixInit.h"

#include <string_view>

// A path object a script builds once and fills, strokes or clips with later; its points are
// in its own space and take the context's transform only when used.
class Path2D : public CanvasPath {
public:
    Path2D() = default;
    // The copy draws as its source does, except that it is never a lone line (isLoneLine()):
    // browsers fill a copied line like any path with no area.
    Path2D(const Path2D& other) : CanvasPath(other) { forgetLoneLine(); }
    // SVG path data; drawing stops at the first error, as SVG renders a path up to the error.
    explicit Path2D(std::string_view svgPathData);

    // TypeError when the matrix dictionary is inconsistent; a non-finite matrix adds nothing.
    ExceptionOr<void> addPath(const Path2D& path, const DOMMatrix2DInit& transform = {});
};
