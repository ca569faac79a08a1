#include "web/geometry/NumberToString.h"

#include <charconv>
#include <cmath>
#include <cstdlib>

std::string numberToString(double value)
{
    if (std::isnan(value))
        return "NaN";
    if (std::isinf(value))
        return value > 0 ? "Infinity" : "-Infinity";
    if (value == 0)
        return "0";

    // Shortest round-tripping digits in scientific form: d[.ddd]e[+-]x.
    char buffer[64];
    auto end = std::to_chars(buffer, buffer + sizeof buffer, std::fabs(value), std::chars_format::scientific).ptr;
    std::string_view text(buffer, end - buffer);
    std::size_t e = text.find('e');
    std::string digits;
    for (char c : text.substr(0, e)) {
        if (c != '.')
            digits.push_back(c);
    }
    int n = std::atoi(std::string(text.substr(e + 1)).c_str()) + 1; // decimal point position
    int k = int(digits.size());

    std::string result = value < 0 ? "-" : "";
    if (k <= n && n <= 21) {
        result += digits + std::string(n - k, '0');
    } else if (0 < n && n <= 21) {
        result += digits.substr(0, n) + "." + digits.substr(n);
    } else if (-6 < n && n <= 0) {
        result += "0." + std::string(-n, '0') + digits;
    } else {
        result += digits.substr(0, 1);
        if (k > 1)
            result += "." + digits.substr(1);
        result += n - 1 >= 0 ? "e+" : "e-";
        result += std::to_string(std::abs(n - 1));
    }
    return result;
}
