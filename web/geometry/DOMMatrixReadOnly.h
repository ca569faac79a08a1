#pragma once

#include "web/dom/ExceptionOr.h"
#include "web/geometry/DOMMatrixInit.h"
#include "web/geometry/DOMPointReadOnly.h"
#include "web/geometry/Matrix4x4.h"

#include <array>
#include <optional>
#include <span>
#include <string>
#include <string_view>

class DOMMatrix;

// A 4x4 transformation matrix with the Geometry Interfaces' 2D flag. Like DOMPoint it is a
// value: operations return new matrices, a script's wrapper holds its own copy.
//
// Storage is the usual column-vector convention, M[row][column]; the interface's mRC names the
// transposed element (m12 == b, the y coefficient of x), so mRC == M[C-1][R-1].
class DOMMatrixReadOnly {
public:
    DOMMatrixReadOnly() = default; // identity, 2D
    DOMMatrixReadOnly(double a, double b, double c, double d, double e, double f);

    // new DOMMatrixReadOnly(init) for a CSS transform list ("none", "translate(10px) rotate(45deg)",
    // ...); SyntaxError when it does not parse or uses relative lengths.
    static ExceptionOr<DOMMatrixReadOnly> create(std::string_view transformList);
    // new DOMMatrixReadOnly(init) for a sequence of 6 (2D) or 16 (3D) numbers; TypeError otherwise.
    static ExceptionOr<DOMMatrixReadOnly> create(std::span<const double> numbers);
    static ExceptionOr<DOMMatrixReadOnly> fromMatrix(const DOMMatrixInit& other);
    static ExceptionOr<DOMMatrixReadOnly> fromFloat32Array(std::span<const float> numbers);
    static ExceptionOr<DOMMatrixReadOnly> fromFloat64Array(std::span<const double> numbers);

    double a() const { return m_[0][0]; }
    double b() const { return m_[1][0]; }
    double c() const { return m_[0][1]; }
    double d() const { return m_[1][1]; }
    double e() const { return m_[0][3]; }
    double f() const { return m_[1][3]; }
    double m11() const { return m_[0][0]; }
    double m12() const { return m_[1][0]; }
    double m13() const { return m_[2][0]; }
    double m14() const { return m_[3][0]; }
    double m21() const { return m_[0][1]; }
    double m22() const { return m_[1][1]; }
    double m23() const { return m_[2][1]; }
    double m24() const { return m_[3][1]; }
    double m31() const { return m_[0][2]; }
    double m32() const { return m_[1][2]; }
    double m33() const { return m_[2][2]; }
    double m34() const { return m_[3][2]; }
    double m41() const { return m_[0][3]; }
    double m42() const { return m_[1][3]; }
    double m43() const { return m_[2][3]; }
    double m44() const { return m_[3][3]; }
    bool is2D() const { return is2D_; }
    bool isIdentity() const;

    DOMMatrix translate(double tx = 0, double ty = 0, double tz = 0) const;
    DOMMatrix scale(double scaleX = 1, std::optional<double> scaleY = {}, double scaleZ = 1,
                    double originX = 0, double originY = 0, double originZ = 0) const;
    DOMMatrix scaleNonUniform(double scaleX = 1, double scaleY = 1) const;
    DOMMatrix scale3d(double scale = 1, double originX = 0, double originY = 0, double originZ = 0) const;
    DOMMatrix rotate(double rotX = 0, std::optional<double> rotY = {}, std::optional<double> rotZ = {}) const;
    DOMMatrix rotateFromVector(double x = 0, double y = 0) const;
    DOMMatrix rotateAxisAngle(double x = 0, double y = 0, double z = 0, double angle = 0) const;
    DOMMatrix skewX(double sx = 0) const;
    DOMMatrix skewY(double sy = 0) const;
    ExceptionOr<DOMMatrix> multiply(const DOMMatrixInit& other = {}) const;
    DOMMatrix flipX() const;
    DOMMatrix flipY() const;
    DOMMatrix inverse() const;
    DOMPoint transformPoint(const DOMPointInit& point = {}) const;

    // Column by column: m11, m12, m13, m14, m21, ...
    std::array<float, 16> toFloat32Array() const;
    std::array<double, 16> toFloat64Array() const;
    // "matrix(a, b, c, d, e, f)" or "matrix3d(...)"; InvalidStateError when an element is not finite.
    ExceptionOr<std::string> toString() const;
    // Every member set (a..f and m11..m44, is2D); a binding adds isIdentity for toJSON().
    DOMMatrixInit toJSON() const;

    // Element access in column-vector convention for code that works with matrices directly.
    using Elements = Matrix4x4;
    double at(int row, int column) const { return m_[row][column]; }
    const Elements& elements() const { return m_; }

protected:
    static constexpr Elements kIdentity = {{{1, 0, 0, 0}, {0, 1, 0, 0}, {0, 0, 1, 0}, {0, 0, 0, 1}}};

    // this = this * other (other applied to a point first).
    void postMultiply(const Elements& other);
    // this = other * this.
    void preMultiply(const Elements& other);
    void translateInPlace(double tx, double ty, double tz);
    void scaleInPlace(double sx, double sy, double sz, double ox, double oy, double oz);
    void rotateInPlace(double rotX, std::optional<double> rotY, std::optional<double> rotZ);
    void rotateAxisAngleInPlace(double x, double y, double z, double angle);
    void invertInPlace();
    void setElementsFromInit(const DOMMatrixInit& init); // init already validated and fixed up

    Elements m_ = kIdentity;
    bool is2D_ = true;
};

// The standard's "validate and fix up" of the dictionaries: TypeError when members contradict
// each other; on success the 2D names a..f and m11.. agree and is2D is set.
ExceptionOr<void> validateAndFixup(DOMMatrix2DInit& init);
ExceptionOr<void> validateAndFixup(DOMMatrixInit& init);
