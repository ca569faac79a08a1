#include "ColorParsing.h"

#include "UnicodeSpace.h"

#include <climits>
#include <cmath>
#include <cstdio>

namespace ColorParsing {
namespace {

// Length in UTF-16 code units, the unit the platform's strings count in.
std::size_t utf16Length(std::string_view text)
{
    std::size_t length = 0;
    for (unsigned char byte : text) {
        if ((byte & 0xC0) == 0x80)
            continue;          // continuation byte
        length += byte >= 0xF0 ? 2 : 1; // four-byte sequences are surrogate pairs
    }
    return length;
}

std::size_t utf8SequenceLength(unsigned char lead)
{
    return lead < 0x80 ? 1 : lead >= 0xF0 ? 4 : lead >= 0xE0 ? 3 : lead >= 0xC0 ? 2 : 1;
}

bool isHexDigit(char c)
{
    return (c >= '0' && c <= '9') || (c >= 'a' && c <= 'f') || (c >= 'A' && c <= 'F');
}

unsigned hexDigitValue(char c)
{
    if (c >= '0' && c <= '9') return static_cast<unsigned>(c - '0');
    if (c >= 'a' && c <= 'f') return static_cast<unsigned>(c - 'a' + 10);
    return static_cast<unsigned>(c - 'A' + 10);
}

// Converts a component times 255 to an int as the phone's processor does: truncating toward
// zero and saturating, NaN giving 0.
int truncatedChannel(double component)
{
    double product = component * 255.0;
    if (std::isnan(product))
        return 0;
    if (product >= 2147483647.0)
        return INT_MAX;
    if (product <= -2147483648.0)
        return INT_MIN;
    return static_cast<int>(product);
}

} // namespace

unsigned scanHexInt(std::string_view text)
{
    text = skipUnicodeSpaces(text);
    if (text.size() > 2 && text[0] == '0' && (text[1] == 'x' || text[1] == 'X') && isHexDigit(text[2]))
        text.remove_prefix(2);
    unsigned long long value = 0;
    for (char c : text) {
        if (!isHexDigit(c))
            break;
        value = value * 16 + hexDigitValue(c);
        if (value > 0xFFFFFFFFull)
            value = 0x100000000ull; // stays saturated while the remaining digits are consumed
    }
    return value > 0xFFFFFFFFull ? 0xFFFFFFFFu : static_cast<unsigned>(value);
}

std::optional<UIColor> colorFromHexStringTD(std::string_view text)
{
    if (text.empty())
        return std::nullopt;

    // A "#" anywhere is taken to be the leading one: reading starts at index 1.
    bool hasHash = text.find('#') != std::string_view::npos;
    unsigned value = 0;
    if (hasHash) {
        std::size_t first = utf8SequenceLength(static_cast<unsigned char>(text.front()));
        // Index 1 of a string that starts with a surrogate pair is its low half, where the
        // scanner finds no digit.
        if (first < 4 && first <= text.size())
            value = scanHexInt(text.substr(first));
    } else {
        value = scanHexInt(text);
    }

    std::size_t length = utf16Length(text) - (hasHash ? 1 : 0);
    unsigned red, green, blue, alpha;
    if (length < 7) {
        red = (value >> 16) & 0xFF;
        green = (value >> 8) & 0xFF;
        blue = value & 0xFF;
        alpha = 255;
    } else {
        red = (value >> 24) & 0xFF;
        green = (value >> 16) & 0xFF;
        blue = (value >> 8) & 0xFF;
        alpha = value & 0xFF;
    }
    return UIColor::colorWithRedGreenBlueAlpha(red / 255.0, green / 255.0, blue / 255.0, alpha / 255.0);
}

std::optional<std::string> hexStringFromColor(const UIColor& color)
{
    return hexStringFromColorAlphaHash(color, false, false);
}

std::optional<std::string> hexStringFromColorAlpha(const UIColor& color, bool alpha)
{
    return hexStringFromColorAlphaHash(color, alpha, false);
}

std::optional<std::string> hexStringFromColorAlphaHash(const UIColor& color, bool alpha, bool hash)
{
    double r, g, b, a;
    if (!color.getRedGreenBlueAlpha(&r, &g, &b, &a)) {
        double white;
        if (!color.getWhiteAlpha(&white, &a))
            return std::nullopt;
        r = g = b = white;
    }
    // Negative channels print as the eight hex digits of their 32-bit pattern, as "%02x" does.
    auto channel = [](double component) { return static_cast<unsigned>(truncatedChannel(component)); };
    char buffer[64];
    const char* prefix = hash ? "#" : "";
    if (alpha)
        std::snprintf(buffer, sizeof buffer, "%s%02x%02x%02x%02x", prefix, channel(r), channel(g), channel(b), channel(a));
    else
        std::snprintf(buffer, sizeof buffer, "%s%02x%02x%02x", prefix, channel(r), channel(g), channel(b));
    return std::string(buffer);
}

} // namespace ColorParsing
