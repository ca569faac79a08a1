#include "HexColourArgument.h"

#include "platform/core/ColorParsing.h"

#include <cctype>

std::optional<UIColor> parseHexColourArgument(const std::string& text, bool* eightDigits)
{
    std::string digits = text.starts_with('#') ? text.substr(1) : text;
    if (digits.size() != 6 && digits.size() != 8)
        return std::nullopt;
    for (unsigned char c : digits)
        if (!std::isxdigit(c))
            return std::nullopt;
    if (eightDigits)
        *eightDigits = digits.size() == 8;
    return ColorParsing::colorFromHexStringTD(text);
}
