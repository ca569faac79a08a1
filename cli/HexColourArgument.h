#pragma once

#include "platform/core/UIColor.h"

#include <optional>
#include <string>

// A colour given on the command line: 6 hex digits (RRGGBB) or 8 (RRGGBBAA), "#" optional.
// Anything else is refused; *eightDigits tells which form was given.
std::optional<UIColor> parseHexColourArgument(const std::string& text, bool* eightDigits = nullptr);
