#pragma once

#include <string_view>

// Whether `text` is a CSS <filter-value-list> or "none", as the canvas filter attribute
// accepts it: blur(), brightness(), contrast(), drop-shadow(), grayscale(), hue-rotate(),
// invert(), opacity(), saturate(), sepia() and url() references.
bool isValidCSSFilter(std::string_view text);
