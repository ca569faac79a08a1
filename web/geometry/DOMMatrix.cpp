#include "web/geometry/DOMMatrix.h"

#include "web/css/CSSTransform.h"

#include <cmath>

namespace {

constexpr double kRadiansPerDegree = M_PI / 180;

template <typename Result>
ExceptionOr<DOMMatrix> toMutable(Result result)
{
    if (result.isException())
        return result.exception();
    return DOMMatrix(result.value());
}

} // namespace

ExceptionOr<DOMMatrix> DOMMatrix::create(std::string_view transformList) { return toMutable(DOMMatrixReadOnly::create(transformList)); }
ExceptionOr<DOMMatrix> DOMMatrix::create(std::span<const double> numbers) { return toMutable(DOMMatrixReadOnly::create(numbers)); }
ExceptionOr<DOMMatrix> DOMMatrix::fromMatrix(const DOMMatrixInit& other) { return toMutable(DOMMatrixReadOnly::fromMatrix(other)); }
ExceptionOr<DOMMatrix> DOMMatrix::fromFloat32Array(std::span<const float> numbers)
{
    return toMutable(DOMMatrixReadOnly::fromFloat32Array(numbers));
}
ExceptionOr<DOMMatrix> DOMMatrix::fromFloat64Array(std::span<const double> numbers)
{
    return toMutable(DOMMatrixReadOnly::fromFloat64Array(numbers));
}

ExceptionOr<void> DOMMatrix::multiplySelf(const DOMMatrixInit& other)
{
    auto matrix = DOMMatrixReadOnly::fromMatrix(other);
    if (matrix.isException())
        return matrix.exception();
    postMultiply(matrix.value().elements());
    if (!matrix.value().is2D())
        is2D_ = false;
    return {};
}

ExceptionOr<void> DOMMatrix::preMultiplySelf(const DOMMatrixInit& other)
{
    auto matrix = DOMMatrixReadOnly::fromMatrix(other);
    if (matrix.isException())
        return matrix.exception();
    preMultiply(matrix.value().elements());
    if (!matrix.value().is2D())
        is2D_ = false;
    return {};
}

void DOMMatrix::translateSelf(double tx, double ty, double tz) { translateInPlace(tx, ty, tz); }

void DOMMatrix::scaleSelf(double scaleX, std::optional<double> scaleY, double scaleZ, double originX, double originY, double originZ)
{
    scaleInPlace(scaleX, scaleY.value_or(scaleX), scaleZ, originX, originY, originZ);
}

void DOMMatrix::scale3dSelf(double scale, double originX, double originY, double originZ)
{
    scaleInPlace(scale, scale, scale, originX, originY, originZ);
    if (scale != 1)
        is2D_ = false;
}

void DOMMatrix::rotateSelf(double rotX, std::optional<double> rotY, std::optional<double> rotZ)
{
    rotateInPlace(rotX, rotY, rotZ);
}

void DOMMatrix::rotateFromVectorSelf(double x, double y)
{
    double angle = (x == 0 && y == 0) ? 0 : std::atan2(y, x) * (180 / M_PI);
    rotateAxisAngleInPlace(0, 0, 1, angle);
}

void DOMMatrix::rotateAxisAngleSelf(double x, double y, double z, double angle) { rotateAxisAngleInPlace(x, y, z, angle); }

void DOMMatrix::skewXSelf(double sx)
{
    Elements skew = kIdentity;
    skew[0][1] = std::tan(sx * kRadiansPerDegree);
    postMultiply(skew);
}

void DOMMatrix::skewYSelf(double sy)
{
    Elements skew = kIdentity;
    skew[1][0] = std::tan(sy * kRadiansPerDegree);
    postMultiply(skew);
}

void DOMMatrix::invertSelf() { invertInPlace(); }

ExceptionOr<void> DOMMatrix::setMatrixValue(std::string_view transformList)
{
    auto parsed = DOMMatrixReadOnly::create(transformList);
    if (parsed.isException())
        return parsed.exception();
    static_cast<DOMMatrixReadOnly&>(*this) = parsed.value();
    return {};
}
