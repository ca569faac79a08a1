#pragma once

#include <array>
#include <optional>
#include <string_view>

// A CSS <transform-list> ("none" included) reduced to one matrix, for DOMMatrix's string
// constructor and setMatrixValue. Lengths must be absolute (px, or units convertible to px);
// relative lengths and anything unparsable give nothing.
struct CSSTransformMatrix {
    std::array<std::array<double, 4>, 4> m; // column-vector convention, M[row][column]
    bool is2D = true;
};
std::optional<CSSTransformMatrix> parseCSSTransformList(std::string_view text);
