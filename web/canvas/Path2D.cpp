#include "web/canvas/Path2D.h"

#include "web/geometry/DOMMatrixReadOnly.h"
#include "web/svg/SVGPathParser.h"

Path2D::Path2D(std::string_view svgPathData)
{
    appendSVGPathData(*this, svgPathData);
    forgetLoneLine();
}

ExceptionOr<void> Path2D::addPath(const Path2D& path, const DOMMatrix2DInit& transform)
{
    DOMMatrix2DInit init = transform;
    if (auto result = validateAndFixup(init); result.isException())
        return result;
    AffineTransform matrix{*init.m11, *init.m12, *init.m21, *init.m22, *init.m41, *init.m42};
    if (!matrix.isFinite())
        return {};
    appendPath(path, matrix);
    return {};
}
