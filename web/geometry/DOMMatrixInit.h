#pragma once

#include <optional>

// The DOMMatrix2DInit and DOMMatrixInit dictionaries. Members a..f and m11..m42 are optional
// because the standard's "validate and fix up" needs to know which ones the script gave; the
// 3D members carry their defaults.
struct DOMMatrix2DInit {
    std::optional<double> a, b, c, d, e, f;
    std::optional<double> m11, m12, m21, m22, m41, m42;
};

struct DOMMatrixInit : DOMMatrix2DInit {
    double m13 = 0, m14 = 0;
    double m23 = 0, m24 = 0;
    double m31 = 0, m32 = 0, m33 = 1, m34 = 0;
    double m43 = 0, m44 = 1;
    std::optional<bool> is2D;
};
