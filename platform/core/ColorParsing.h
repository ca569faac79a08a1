#pragma once

#include "UIColor.h"

#include <optional>
#include <string>
#include <string_view>

// Colours as hexadecimal text: "#" optional, RRGGBB or RRGGBBAA, either case when read,
// lower case when written.
namespace ColorParsing {

// Empty text gives no colour; any other text gives one (black when it holds no digits).
std::optional<UIColor> colorFromHexStringTD(std::string_view text);

std::optional<std::string> hexStringFromColor(const UIColor& color);
std::optional<std::string> hexStringFromColorAlpha(const UIColor& color, bool alpha);
std::optional<std::string> hexStringFromColorAlphaHash(const UIColor& color, bool alpha, bool hash);

// The platform scanner's hexadecimal read: leading white space skipped, optional "0x",
// stops at the first non-hex character, saturates at 0xFFFFFFFF; 0 when nothing is read.
unsigned scanHexInt(std::string_view text);

} // namespace ColorParsing
