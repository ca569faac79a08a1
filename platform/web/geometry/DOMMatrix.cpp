#include "platform/web/geometry/DOMMatrix.h"

ExceptionOr<DOMMatrix> DOMMatrix::create(std::string_view) { return DOMMatrix(); }
ExceptionOr<DOMMatrix> DOMMatrix::create(std::span<const double>) { return DOMMatrix(); }
ExceptionOr<DOMMatrix> DOMMatrix::fromMatrix(const DOMMatrixInit&) { return DOMMatrix(); }
ExceptionOr<DOMMatrix> DOMMatrix::fromFloat32Array(std::span<const float>) { return DOMMatrix(); }
ExceptionOr<DOMMatrix> DOMMatrix::fromFloat64Array(std::span<const double>) { return DOMMatrix(); }
ExceptionOr<void> DOMMatrix::multiplySelf(const DOMMatrixInit&) { return {}; }
ExceptionOr<void> DOMMatrix::preMultiplySelf(const DOMMatrixInit&) { return {}; }
void DOMMatrix::translateSelf(double, double, double) {}
void DOMMatrix::scaleSelf(double, std::optional<double>, double, double, double, double) {}
void DOMMatrix::scale3dSelf(double, double, double, double) {}
void DOMMatrix::rotateSelf(double, std::optional<double>, std::optional<double>) {}
void DOMMatrix::rotateFromVectorSelf(double, double) {}
void DOMMatrix::rotateAxisAngleSelf(double, double, double, double) {}
void DOMMatrix::skewXSelf(double) {}
void DOMMatrix::skewYSelf(double) {}
void DOMMatrix::invertSelf() {}
ExceptionOr<void> DOMMatrix::setMatrixValue(std::string_view) { return {}; }
