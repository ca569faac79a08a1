#pragma once

#include "web/geometry/DOMMatrixReadOnly.h"
#include "web/geometry/DOMPoint.h"

// The mutable matrix: setters and the *Self operations that change it in place and return it.
class DOMMatrix : public DOMMatrixReadOnly {
public:
    DOMMatrix() = default;
    DOMMatrix(const DOMMatrixReadOnly& other) : DOMMatrixReadOnly(other) {}
    DOMMatrix(double a, double b, double c, double d, double e, double f) : DOMMatrixReadOnly(a, b, c, d, e, f) {}

    static ExceptionOr<DOMMatrix> create(std::string_view transformList);
    static ExceptionOr<DOMMatrix> create(std::span<const double> numbers);
    static ExceptionOr<DOMMatrix> fromMatrix(const DOMMatrixInit& other);
    static ExceptionOr<DOMMatrix> fromFloat32Array(std::span<const float> numbers);
    static ExceptionOr<DOMMatrix> fromFloat64Array(std::span<const double> numbers);

    void setA(double value) { setM11(value); }
    void setB(double value) { setM12(value); }
    void setC(double value) { setM21(value); }
    void setD(double value) { setM22(value); }
    void setE(double value) { setM41(value); }
    void setF(double value) { setM42(value); }
    // Setting a 3D element to anything but its identity value makes the matrix 3D for good.
    void setM11(double value) { m_[0][0] = value; }
    void setM12(double value) { m_[1][0] = value; }
    void setM13(double value) { set3D(2, 0, value, 0); }
    void setM14(double value) { set3D(3, 0, value, 0); }
    void setM21(double value) { m_[0][1] = value; }
    void setM22(double value) { m_[1][1] = value; }
    void setM23(double value) { set3D(2, 1, value, 0); }
    void setM24(double value) { set3D(3, 1, value, 0); }
    void setM31(double value) { set3D(0, 2, value, 0); }
    void setM32(double value) { set3D(1, 2, value, 0); }
    void setM33(double value) { set3D(2, 2, value, 1); }
    void setM34(double value) { set3D(3, 2, value, 0); }
    void setM41(double value) { m_[0][3] = value; }
    void setM42(double value) { m_[1][3] = value; }
    void setM43(double value) { set3D(2, 3, value, 0); }
    void setM44(double value) { set3D(3, 3, value, 1); }

    ExceptionOr<void> multiplySelf(const DOMMatrixInit& other = {});
    ExceptionOr<void> preMultiplySelf(const DOMMatrixInit& other = {});
    void translateSelf(double tx = 0, double ty = 0, double tz = 0);
    void scaleSelf(double scaleX = 1, std::optional<double> scaleY = {}, double scaleZ = 1,
                   double originX = 0, double originY = 0, double originZ = 0);
    void scale3dSelf(double scale = 1, double originX = 0, double originY = 0, double originZ = 0);
    void rotateSelf(double rotX = 0, std::optional<double> rotY = {}, std::optional<double> rotZ = {});
    void rotateFromVectorSelf(double x = 0, double y = 0);
    void rotateAxisAngleSelf(double x = 0, double y = 0, double z = 0, double angle = 0);
    void skewXSelf(double sx = 0);
    void skewYSelf(double sy = 0);
    void invertSelf();
    // SyntaxError when the text is not a transform list; the matrix is then unchanged.
    ExceptionOr<void> setMatrixValue(std::string_view transformList);

private:
    void set3D(int row, int column, double value, double identityValue)
    {
        m_[row][column] = value;
        if (value != identityValue)
            is2D_ = false;
    }
};
