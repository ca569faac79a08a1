#include "web/geometry/DOMMatrixReadOnly.h"

#include <cmath>

namespace {

// SameValueZero: NaN equals NaN, 0 equals -0.
bool sameValueZero(double a, double b) { return a == b || (std::isnan(a) && std::isnan(b)); }

DOMException typeError(const char* message) { return DOMException{"TypeError", message}; }

} // namespace

ExceptionOr<void> validateAndFixup(DOMMatrix2DInit& init)
{
    struct Pair {
        std::optional<double>& shortName;
        std::optional<double>& longName;
        double fallback;
    };
    Pair pairs[] = {{init.a, init.m11, 1}, {init.b, init.m12, 0}, {init.c, init.m21, 0},
                    {init.d, init.m22, 1}, {init.e, init.m41, 0}, {init.f, init.m42, 0}};
    for (auto& pair : pairs) {
        if (pair.shortName && pair.longName && !sameValueZero(*pair.shortName, *pair.longName))
            return typeError("A matrix member and its alias disagree.");
    }
    for (auto& pair : pairs) {
        if (!pair.longName)
            pair.longName = pair.shortName.value_or(pair.fallback);
        pair.shortName = pair.longName;
    }
    return {};
}

ExceptionOr<void> validateAndFixup(DOMMatrixInit& init)
{
    if (auto result = validateAndFixup(static_cast<DOMMatrix2DInit&>(init)); result.isException())
        return result;
    bool only2D = init.m13 == 0 && init.m14 == 0 && init.m23 == 0 && init.m24 == 0 && init.m31 == 0
        && init.m32 == 0 && init.m34 == 0 && init.m43 == 0 && init.m33 == 1 && init.m44 == 1;
    if (init.is2D.value_or(false) && !only2D)
        return typeError("A 2D matrix cannot have 3D members.");
    if (!init.is2D)
        init.is2D = only2D;
    return {};
}
