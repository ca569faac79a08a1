#include "ThemeScriptCall.h"

#include "platform/core/UnicodeSpace.h"

#include <algorithm>
#include <charconv>
#include <cstdio>
#include <vector>

namespace {

// The characters a name may start with: the class [A-z] matched without regard to case
// takes in the six characters between "Z" and "a" as well, plus the two non-ASCII letters
// whose case folding lands in a-z (long s and the Kelvin sign).
constexpr std::string_view kLongS = "\xC5\xBF";
constexpr std::string_view kKelvin = "\xE2\x84\xAA";

std::size_t nameStartLength(std::string_view text)
{
    if (text.empty())
        return 0;
    char c = text.front();
    if (c >= 'A' && c <= 'z')
        return 1;
    if (text.starts_with(kLongS))
        return kLongS.size();
    if (text.starts_with(kKelvin))
        return kKelvin.size();
    return 0;
}

// [a-z0-9] without regard to case: letters and digits, but none of [ \ ] ^ _ `.
std::size_t letterOrDigitLength(std::string_view text)
{
    if (text.empty())
        return 0;
    char c = text.front();
    if ((c >= '0' && c <= '9') || (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z'))
        return 1;
    return nameStartLength(text) > 1 ? nameStartLength(text) : 0;
}

std::size_t skipSpaces(std::string_view text, std::size_t at)
{
    while (std::size_t n = unicodeSpaceLength(text.substr(at)))
        at += n;
    return at;
}

// Length of the parameter list starting at the "(" at `open`, or 0 when none starts there.
std::size_t parameterListLengthAt(std::string_view text, std::size_t open)
{
    std::size_t at = open + 1;
    for (;;) {
        at = skipSpaces(text, at);
        std::size_t first = nameStartLength(text.substr(at));
        if (!first)
            return 0;
        // A name is [A-z]+[a-z0-9]*: once a digit has come, [ \ ] ^ _ ` may not follow.
        at += first;
        while (std::size_t n = nameStartLength(text.substr(at)))
            at += n;
        while (std::size_t n = letterOrDigitLength(text.substr(at)))
            at += n;
        at = skipSpaces(text, at);
        if (at >= text.size())
            return 0;
        if (text[at] == ')')
            return at + 1 - open;
        if (text[at] != ',')
            return 0;
        ++at;
    }
}

} // namespace

std::optional<std::string_view> themeScriptParameterList(std::string_view script)
{
    for (std::size_t open = script.find('('); open != std::string_view::npos; open = script.find('(', open + 1))
        if (std::size_t length = parameterListLengthAt(script, open))
            return script.substr(open, length);
    return std::nullopt;
}

bool usesLongCallForm(std::string_view parameterList)
{
    return std::count(parameterList.begin(), parameterList.end(), ',') > 4;
}

std::string themeScriptCallText(std::string_view script, bool longForm, const ThemeCallArguments& a)
{
    char arguments[256];
    if (longForm)
        std::snprintf(arguments, sizeof arguments, ")(%0.0f,%i,!!%i,!!%i,!!%i,[%i,%i,%i],[%i,%i,%i,%.2f])",
                      static_cast<double>(a.pixelHeight), a.level, a.charging, a.low, a.lowPowerMode, a.color[0],
                      a.color[1], a.color[2], a.baseColor[0], a.baseColor[1], a.baseColor[2], a.baseAlpha);
    else
        std::snprintf(arguments, sizeof arguments, ")(%0.0f,%i,!!%i,!!%i,[%i,%i,%i])",
                      static_cast<double>(a.pixelHeight), a.level, a.charging, a.low, a.color[0], a.color[1],
                      a.color[2]);
    std::string call;
    call.reserve(script.size() + 9 + std::char_traits<char>::length(arguments));
    call += "(function";
    call += script;
    call += arguments;
    return call;
}

namespace {

// The number a decimal literal ("-"? digits, then "." and digits or nothing) stands for, as a
// script reads it: the nearest double, which from_chars finds too.
std::optional<double> literalValue(const char* format, double value)
{
    char text[400];
    int length = std::snprintf(text, sizeof text, format, value);
    if (length <= 0 || length >= int(sizeof text))
        return std::nullopt;
    std::string_view literal(text, std::size_t(length));
    std::size_t at = literal.starts_with('-') ? 1 : 0;
    std::size_t digits = at;
    while (digits < literal.size() && literal[digits] >= '0' && literal[digits] <= '9')
        ++digits;
    if (digits == at)
        return std::nullopt;
    if (digits < literal.size()) {
        std::size_t fraction = digits + 1;
        if (literal[digits] != '.' || fraction == literal.size())
            return std::nullopt;
        for (std::size_t i = fraction; i < literal.size(); ++i)
            if (literal[i] < '0' || literal[i] > '9')
                return std::nullopt;
    }
    double parsed = 0;
    auto [end, error] = std::from_chars(literal.data(), literal.data() + literal.size(), parsed);
    if (error != std::errc() || end != literal.data() + literal.size())
        return std::nullopt;
    return parsed;
}

} // namespace

std::optional<std::vector<ThemeCallValue>> themeScriptCallValues(bool longForm, const ThemeCallArguments& a)
{
    std::optional<double> height = literalValue("%0.0f", static_cast<double>(a.pixelHeight));
    if (!height)
        return std::nullopt;
    std::vector<ThemeCallValue> values{*height, double(a.level), a.charging, a.low};
    if (longForm)
        values.push_back(a.lowPowerMode);
    values.push_back(std::vector<double>{double(a.color[0]), double(a.color[1]), double(a.color[2])});
    if (longForm) {
        std::optional<double> alpha = literalValue("%.2f", a.baseAlpha);
        if (!alpha)
            return std::nullopt;
        values.push_back(std::vector<double>{double(a.baseColor[0]), double(a.baseColor[1]), double(a.baseColor[2]), *alpha});
    }
    return values;
}
