#pragma once

#include "web/css/CSSScanner.h"

#include <optional>
#include <string_view>

// The fixed conversions of CSS units, for every parser that meets them. Units are given in
// lower case; relative lengths (em, vw, ...) are left to the callers, which know what they
// refer to.

// deg, rad, grad and turn, in degrees.
std::optional<double> degreesPerAngleUnit(std::string_view unit);

// px, in, cm, mm, q, pt and pc, in CSS pixels (96 to the inch).
std::optional<double> pixelsPerAbsoluteLengthUnit(std::string_view unit);

// A dimension converted by `perUnit`, where a unitless zero is zero (as lengths and angles in
// filters and transforms may be written).
std::optional<double> dimensionOrZero(const CSSScanner::Numeric& n, std::optional<double> (*perUnit)(std::string_view));
