#include "platform/web/geometry/DOMMatrixReadOnly.h"

#include "platform/web/geometry/DOMMatrix.h"

DOMMatrixReadOnly::DOMMatrixReadOnly(double a, double b, double c, double d, double e, double f)
{
    m_[0][0] = a;
    m_[1][0] = b;
    m_[0][1] = c;
    m_[1][1] = d;
    m_[0][3] = e;
    m_[1][3] = f;
}

ExceptionOr<DOMMatrixReadOnly> DOMMatrixReadOnly::create(std::string_view) { return DOMMatrixReadOnly(); }
ExceptionOr<DOMMatrixReadOnly> DOMMatrixReadOnly::create(std::span<const double>) { return DOMMatrixReadOnly(); }
ExceptionOr<DOMMatrixReadOnly> DOMMatrixReadOnly::fromMatrix(const DOMMatrixInit&) { return DOMMatrixReadOnly(); }
ExceptionOr<DOMMatrixReadOnly> DOMMatrixReadOnly::fromFloat32Array(std::span<const float>) { return DOMMatrixReadOnly(); }
ExceptionOr<DOMMatrixReadOnly> DOMMatrixReadOnly::fromFloat64Array(std::span<const double>) { return DOMMatrixReadOnly(); }
bool DOMMatrixReadOnly::isIdentity() const { return m_ == kIdentity; }
DOMMatrix DOMMatrixReadOnly::translate(double, double, double) const { return *this; }
DOMMatrix DOMMatrixReadOnly::scale(double, std::optional<double>, double, double, double, double) const { return *this; }
DOMMatrix DOMMatrixReadOnly::scaleNonUniform(double, double) const { return *this; }
DOMMatrix DOMMatrixReadOnly::scale3d(double, double, double, double) const { return *this; }
DOMMatrix DOMMatrixReadOnly::rotate(double, std::optional<double>, std::optional<double>) const { return *this; }
DOMMatrix DOMMatrixReadOnly::rotateFromVector(double, double) const { return *this; }
DOMMatrix DOMMatrixReadOnly::rotateAxisAngle(double, double, double, double) const { return *this; }
DOMMatrix DOMMatrixReadOnly::skewX(double) const { return *this; }
DOMMatrix DOMMatrixReadOnly::skewY(double) const { return *this; }
ExceptionOr<DOMMatrix> DOMMatrixReadOnly::multiply(const DOMMatrixInit&) const { return DOMMatrix(*this); }
DOMMatrix DOMMatrixReadOnly::flipX() const { return *this; }
DOMMatrix DOMMatrixReadOnly::flipY() const { return *this; }
DOMMatrix DOMMatrixReadOnly::inverse() const { return *this; }
DOMPoint DOMMatrixReadOnly::transformPoint(const DOMPointInit& p) const { return DOMPoint::fromPoint(p); }
std::array<float, 16> DOMMatrixReadOnly::toFloat32Array() const { return {}; }
std::array<double, 16> DOMMatrixReadOnly::toFloat64Array() const { return {}; }
ExceptionOr<std::string> DOMMatrixReadOnly::toString() const { return std::string(); }
DOMMatrixInit DOMMatrixReadOnly::toJSON() const { return {}; }
void DOMMatrixReadOnly::postMultiply(const Elements&) {}
void DOMMatrixReadOnly::preMultiply(const Elements&) {}
void DOMMatrixReadOnly::translateInPlace(double, double, double) {}
void DOMMatrixReadOnly::scaleInPlace(double, double, double, double, double, double) {}
void DOMMatrixReadOnly::rotateInPlace(double, std::optional<double>, std::optional<double>) {}
void DOMMatrixReadOnly::rotateAxisAngleInPlace(double, double, double, double) {}
void DOMMatrixReadOnly::invertInPlace() {}
void DOMMatrixReadOnly::setElementsFromInit(const DOMMatrixInit&) {}
ExceptionOr<void> validateAndFixup(DOMMatrix2DInit&) { return {}; }
ExceptionOr<void> validateAndFixup(DOMMatrixInit&) { return {}; }
