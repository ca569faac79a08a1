#include "web/geometry/DOMMatrixReadOnly.h"

#include "web/css/CSSTransform.h"
#include "web/geometry/DOMMatrix.h"
#include "web/geometry/NumberToString.h"
#include "web/geometry/SinCosDegrees.h"

#include <cmath>

namespace {

using Elements = Matrix4x4;

DOMException typeError(const char* message) { return DOMException{"TypeError", message}; }

} // namespace

DOMMatrixReadOnly::DOMMatrixReadOnly(double a, double b, double c, double d, double e, double f)
{
    m_[0][0] = a;
    m_[1][0] = b;
    m_[0][1] = c;
    m_[1][1] = d;
    m_[0][3] = e;
    m_[1][3] = f;
}

ExceptionOr<DOMMatrixReadOnly> DOMMatrixReadOnly::create(std::string_view transformList)
{
    if (transformList.empty())
        return DOMMatrixReadOnly();
    auto parsed = parseCSSTransformList(transformList);
    if (!parsed)
        return DOMException{"SyntaxError", "Failed to parse the transform list."};
    DOMMatrixReadOnly matrix;
    matrix.m_ = parsed->m;
    matrix.is2D_ = parsed->is2D;
    return matrix;
}

ExceptionOr<DOMMatrixReadOnly> DOMMatrixReadOnly::create(std::span<const double> numbers)
{
    DOMMatrixReadOnly matrix;
    if (numbers.size() == 6) {
        matrix = DOMMatrixReadOnly(numbers[0], numbers[1], numbers[2], numbers[3], numbers[4], numbers[5]);
    } else if (numbers.size() == 16) {
        for (int column = 0; column < 4; ++column)
            for (int row = 0; row < 4; ++row)
                matrix.m_[row][column] = numbers[column * 4 + row];
        matrix.is2D_ = false;
    } else {
        return typeError("The sequence must contain 6 elements for a 2D matrix or 16 elements for a 3D matrix.");
    }
    return matrix;
}

ExceptionOr<DOMMatrixReadOnly> DOMMatrixReadOnly::fromMatrix(const DOMMatrixInit& other)
{
    DOMMatrixInit init = other;
    if (auto result = validateAndFixup(init); result.isException())
        return result.exception();
    DOMMatrixReadOnly matrix;
    matrix.setElementsFromInit(init);
    return matrix;
}

ExceptionOr<DOMMatrixReadOnly> DOMMatrixReadOnly::fromFloat32Array(std::span<const float> numbers)
{
    double values[16];
    if (numbers.size() != 6 && numbers.size() != 16)
        return typeError("The array must contain 6 elements for a 2D matrix or 16 elements for a 3D matrix.");
    for (std::size_t i = 0; i < numbers.size(); ++i)
        values[i] = numbers[i];
    return create(std::span<const double>(values, numbers.size()));
}

ExceptionOr<DOMMatrixReadOnly> DOMMatrixReadOnly::fromFloat64Array(std::span<const double> numbers)
{
    return create(numbers);
}

bool DOMMatrixReadOnly::isIdentity() const { return m_ == kIdentity; }

DOMMatrix DOMMatrixReadOnly::translate(double tx, double ty, double tz) const
{
    DOMMatrix result(*this);
    result.translateSelf(tx, ty, tz);
    return result;
}

DOMMatrix DOMMatrixReadOnly::scale(double scaleX, std::optional<double> scaleY, double scaleZ, double originX,
                                   double originY, double originZ) const
{
    DOMMatrix result(*this);
    result.scaleSelf(scaleX, scaleY, scaleZ, originX, originY, originZ);
    return result;
}

DOMMatrix DOMMatrixReadOnly::scaleNonUniform(double scaleX, double scaleY) const
{
    DOMMatrix result(*this);
    result.scaleSelf(scaleX, scaleY, 1, 0, 0, 0);
    return result;
}

DOMMatrix DOMMatrixReadOnly::scale3d(double scale, double originX, double originY, double originZ) const
{
    DOMMatrix result(*this);
    result.scale3dSelf(scale, originX, originY, originZ);
    return result;
}

DOMMatrix DOMMatrixReadOnly::rotate(double rotX, std::optional<double> rotY, std::optional<double> rotZ) const
{
    DOMMatrix result(*this);
    result.rotateSelf(rotX, rotY, rotZ);
    return result;
}

DOMMatrix DOMMatrixReadOnly::rotateFromVector(double x, double y) const
{
    DOMMatrix result(*this);
    result.rotateFromVectorSelf(x, y);
    return result;
}

DOMMatrix DOMMatrixReadOnly::rotateAxisAngle(double x, double y, double z, double angle) const
{
    DOMMatrix result(*this);
    result.rotateAxisAngleSelf(x, y, z, angle);
    return result;
}

DOMMatrix DOMMatrixReadOnly::skewX(double sx) const
{
    DOMMatrix result(*this);
    result.skewXSelf(sx);
    return result;
}

DOMMatrix DOMMatrixReadOnly::skewY(double sy) const
{
    DOMMatrix result(*this);
    result.skewYSelf(sy);
    return result;
}

ExceptionOr<DOMMatrix> DOMMatrixReadOnly::multiply(const DOMMatrixInit& other) const
{
    DOMMatrix result(*this);
    if (auto status = result.multiplySelf(other); status.isException())
        return status.exception();
    return result;
}

DOMMatrix DOMMatrixReadOnly::flipX() const
{
    DOMMatrix result(*this);
    Elements flip = kIdentity;
    flip[0][0] = -1;
    result.postMultiply(flip);
    return result;
}

DOMMatrix DOMMatrixReadOnly::flipY() const
{
    DOMMatrix result(*this);
    Elements flip = kIdentity;
    flip[1][1] = -1;
    result.postMultiply(flip);
    return result;
}

DOMMatrix DOMMatrixReadOnly::inverse() const
{
    DOMMatrix result(*this);
    result.invertSelf();
    return result;
}

DOMPoint DOMMatrixReadOnly::transformPoint(const DOMPointInit& point) const
{
    double in[4] = {point.x, point.y, point.z, point.w};
    double out[4];
    for (int row = 0; row < 4; ++row)
        out[row] = m_[row][0] * in[0] + m_[row][1] * in[1] + m_[row][2] * in[2] + m_[row][3] * in[3];
    return DOMPoint(out[0], out[1], out[2], out[3]);
}

std::array<float, 16> DOMMatrixReadOnly::toFloat32Array() const
{
    std::array<float, 16> result;
    for (int column = 0; column < 4; ++column)
        for (int row = 0; row < 4; ++row)
            result[column * 4 + row] = float(m_[row][column]);
    return result;
}

std::array<double, 16> DOMMatrixReadOnly::toFloat64Array() const
{
    std::array<double, 16> result;
    for (int column = 0; column < 4; ++column)
        for (int row = 0; row < 4; ++row)
            result[column * 4 + row] = m_[row][column];
    return result;
}

ExceptionOr<std::string> DOMMatrixReadOnly::toString() const
{
    auto values = toFloat64Array();
    for (double value : values) {
        if (!std::isfinite(value))
            return DOMException{"InvalidStateError", "Cannot serialize a matrix with non-finite values."};
    }
    std::string result;
    auto append = [&](std::initializer_list<double> list) {
        bool first = true;
        for (double value : list) {
            if (!first)
                result += ", ";
            result += numberToString(value);
            first = false;
        }
        result += ")";
    };
    if (is2D_) {
        result = "matrix(";
        append({a(), b(), c(), d(), e(), f()});
    } else {
        result = "matrix3d(";
        const auto& v = values;
        append({v[0], v[1], v[2], v[3], v[4], v[5], v[6], v[7], v[8], v[9], v[10], v[11], v[12], v[13], v[14], v[15]});
    }
    return result;
}

DOMMatrixInit DOMMatrixReadOnly::toJSON() const
{
    DOMMatrixInit init;
    init.a = init.m11 = m11();
    init.b = init.m12 = m12();
    init.c = init.m21 = m21();
    init.d = init.m22 = m22();
    init.e = init.m41 = m41();
    init.f = init.m42 = m42();
    init.m13 = m13(), init.m14 = m14();
    init.m23 = m23(), init.m24 = m24();
    init.m31 = m31(), init.m32 = m32(), init.m33 = m33(), init.m34 = m34();
    init.m43 = m43(), init.m44 = m44();
    init.is2D = is2D_;
    return init;
}

void DOMMatrixReadOnly::postMultiply(const Elements& other) { m_ = ::multiply(m_, other); }
void DOMMatrixReadOnly::preMultiply(const Elements& other) { m_ = ::multiply(other, m_); }

void DOMMatrixReadOnly::translateInPlace(double tx, double ty, double tz)
{
    Elements t = kIdentity;
    t[0][3] = tx;
    t[1][3] = ty;
    t[2][3] = tz;
    postMultiply(t);
    if (tz != 0)
        is2D_ = false;
}

void DOMMatrixReadOnly::scaleInPlace(double sx, double sy, double sz, double ox, double oy, double oz)
{
    translateInPlace(ox, oy, oz);
    Elements s = kIdentity;
    s[0][0] = sx;
    s[1][1] = sy;
    s[2][2] = sz;
    postMultiply(s);
    translateInPlace(-ox, -oy, -oz);
    if (sz != 1 || oz != 0)
        is2D_ = false;
}

void DOMMatrixReadOnly::rotateAxisAngleInPlace(double x, double y, double z, double angle)
{
    if (x != 0 || y != 0)
        is2D_ = false;
    if (auto r = rotationMatrix(x, y, z, angle))
        postMultiply(*r);
}

void DOMMatrixReadOnly::rotateInPlace(double rotX, std::optional<double> rotY, std::optional<double> rotZ)
{
    if (!rotY && !rotZ) {
        rotZ = rotX;
        rotX = 0;
        rotY = 0;
    }
    double y = rotY.value_or(0);
    double z = rotZ.value_or(0);
    if (rotX != 0 || y != 0)
        is2D_ = false;
    // A rotation about z alone keeps a 2D matrix 2D.
    bool keep2D = is2D_;
    rotateAxisAngleInPlace(0, 0, 1, z);
    rotateAxisAngleInPlace(0, 1, 0, y);
    rotateAxisAngleInPlace(1, 0, 0, rotX);
    is2D_ = keep2D;
}

void DOMMatrixReadOnly::setElementsFromInit(const DOMMatrixInit& init)
{
    m_ = kIdentity;
    m_[0][0] = *init.m11;
    m_[1][0] = *init.m12;
    m_[0][1] = *init.m21;
    m_[1][1] = *init.m22;
    m_[0][3] = *init.m41;
    m_[1][3] = *init.m42;
    is2D_ = init.is2D.value_or(true);
    if (!is2D_) {
        m_[2][0] = init.m13, m_[3][0] = init.m14;
        m_[2][1] = init.m23, m_[3][1] = init.m24;
        m_[0][2] = init.m31, m_[1][2] = init.m32, m_[2][2] = init.m33, m_[3][2] = init.m34;
        m_[2][3] = init.m43, m_[3][3] = init.m44;
    }
}
