#pragma once

#include <string>

// A double as ECMAScript's Number::toString writes it ("1", "0.5", "1e+21", "NaN"), which is
// how DOMMatrix.toString() prints its elements.
std::string numberToString(double value);
