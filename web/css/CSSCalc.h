#pragma once

#include "web/css/CSSScanner.h"

#include <optional>
#include <span>
#include <string_view>
#include <utility>

// calc() as colour functions use it: sums, products and parentheses over numbers,
// percentages, angles and, in relative colours, the channel keywords of the origin colour.
struct CalcValue {
    enum class Type { Number, Percentage, Angle };
    double value = 0; // angles in degrees
    Type type = Type::Number;
};

// Channel keywords ("r", "alpha", ...) and the numbers they stand for.
using CalcKeywords = std::span<const std::pair<std::string_view, double>>;

// A calc() function at the scanner. Nothing, with the scanner where it was, when there is no
// calc() there or it does not make sense (mixed types, unknown keywords, a missing ")").
std::optional<CalcValue> consumeCalc(CSSScanner& scanner, CalcKeywords keywords);
