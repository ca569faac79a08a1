#pragma once

#include <cstddef>
#include <optional>
#include <string_view>

// Where the decimal number written at `at` ends: an optional sign, digits, a fraction, an
// exponent (an "e" without digits after it is not part of the number). Nothing when no digit
// comes. CSS wants a digit after the point; SVG path data also takes "5." (`bareFraction`).
inline std::optional<std::size_t> decimalNumberEnd(std::string_view text, std::size_t at, bool bareFraction)
{
    auto isDigit = [&](std::size_t i) { return i < text.size() && text[i] >= '0' && text[i] <= '9'; };
    std::size_t i = at;
    if (i < text.size() && (text[i] == '+' || text[i] == '-'))
        ++i;
    std::size_t integer = i;
    while (isDigit(i))
        ++i;
    bool any = i > integer;
    if (i < text.size() && text[i] == '.' && (isDigit(i + 1) || (bareFraction && any))) {
        ++i;
        while (isDigit(i)) {
            ++i;
            any = true;
        }
    }
    if (!any)
        return std::nullopt;
    if (i < text.size() && (text[i] == 'e' || text[i] == 'E')) {
        std::size_t j = i + 1;
        if (j < text.size() && (text[j] == '+' || text[j] == '-'))
            ++j;
        if (isDigit(j)) {
            while (isDigit(j))
                ++j;
            i = j;
        }
    }
    return i;
}
