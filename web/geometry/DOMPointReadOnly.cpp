#include "web/geometry/DOMPointReadOnly.h"

#include "web/geometry/DOMMatrix.h"

ExceptionOr<DOMPoint> DOMPointReadOnly::matrixTransform(const DOMMatrixInit& matrix) const
{
    auto m = DOMMatrixReadOnly::fromMatrix(matrix);
    if (m.isException())
        return m.exception();
    return m.value().transformPoint(toJSON());
}
