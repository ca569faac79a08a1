#pragma once

#include "web/css/CSSColor.h"

#include <optional>
#include <string_view>

// The CSS named colours and the system colours (in their light-scheme values), looked up by a
// lower-case name. "transparent" and "currentcolor" are not here: they are keywords.
std::optional<CSSColor> namedCSSColor(std::string_view lowerCaseName);
