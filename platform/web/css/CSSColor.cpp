#include "platform/web/css/CSSColor.h"

#include "platform/web/css/CSSNamedColors.h"
#include "platform/web/css/CSSScanner.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <cstdio>

namespace {

using Numeric = CSSScanner::Numeric;

std::uint8_t toByte(double value)
{
    if (!(value > 0)) // NaN included
        return 0;
    if (value >= 255)
        return 255;
    return std::uint8_t(std::lround(value));
}

int hexDigit(char c)
{
    if (c >= '0' && c <= '9')
        return c - '0';
    if (c >= 'a' && c <= 'f')
        return c - 'a' + 10;
    if (c >= 'A' && c <= 'F')
        return c - 'A' + 10;
    return -1;
}

std::optional<CSSColor> parseHex(std::string_view digits)
{
    std::array<int, 8> values{};
    if (digits.size() != 3 && digits.size() != 4 && digits.size() != 6 && digits.size() != 8)
        return {};
    for (std::size_t i = 0; i < digits.size(); ++i) {
        values[i] = hexDigit(digits[i]);
        if (values[i] < 0)
            return {};
    }
    if (digits.size() <= 4) {
        auto channel = [&](std::size_t i) { return std::uint8_t(values[i] * 17); };
        return CSSColor{channel(0), channel(1), channel(2), digits.size() == 4 ? channel(3) : std::uint8_t(255)};
    }
    auto channel = [&](std::size_t i) { return std::uint8_t(values[2 * i] * 16 + values[2 * i + 1]); };
    return CSSColor{channel(0), channel(1), channel(2), digits.size() == 8 ? channel(3) : std::uint8_t(255)};
}

// A component of a colour function: a number, percentage, angle or the keyword none.
struct Component {
    Numeric numeric;
    bool none = false;
};

std::optional<Component> parseComponent(CSSScanner& scanner)
{
    if (auto numeric = scanner.numeric())
        return Component{*numeric, false};
    std::size_t start = scanner.position();
    if (auto ident = scanner.identifier(); ident && *ident == "none")
        return Component{{}, true};
    scanner.rewind(start);
    return {};
}

// The arguments of rgb(), hsl() and hwb(): three components and an optional alpha, in legacy
// (commas) or modern (spaces, "/ alpha") syntax.
struct Arguments {
    std::array<Component, 3> channels;
    std::optional<Component> alpha;
    bool legacy = false;
};

std::optional<Arguments> parseArguments(CSSScanner& scanner, bool legacyAllowed)
{
    Arguments args;
    scanner.skipWhitespace();
    auto first = parseComponent(scanner);
    if (!first)
        return {};
    args.channels[0] = *first;
    scanner.skipWhitespace();
    args.legacy = legacyAllowed && !first->none && scanner.peek() == ',';
    for (std::size_t i = 1; i < 3; ++i) {
        if (args.legacy) {
            if (!scanner.consume(','))
                return {};
            scanner.skipWhitespace();
        }
        auto component = parseComponent(scanner);
        if (!component || (args.legacy && component->none))
            return {};
        args.channels[i] = *component;
        scanner.skipWhitespace();
    }
    if (args.legacy ? scanner.consume(',') : scanner.consume('/')) {
        scanner.skipWhitespace();
        args.alpha = parseComponent(scanner);
        if (!args.alpha || (args.legacy && args.alpha->none))
            return {};
        scanner.skipWhitespace();
    }
    if (!scanner.consume(')'))
        return {};
    return args;
}

// <alpha-value>: a number 0..1 or a percentage.
std::optional<std::uint8_t> resolveAlpha(const std::optional<Component>& alpha)
{
    if (!alpha)
        return 255;
    if (alpha->none)
        return 0;
    const Numeric& n = alpha->numeric;
    if (n.isNumber())
        return toByte(std::clamp(n.value, 0.0, 1.0) * 255);
    if (n.isPercentage())
        return toByte(std::clamp(n.value, 0.0, 100.0) / 100 * 255);
    return {};
}

// <hue>: a number of degrees or an angle.
std::optional<double> resolveHue(const Component& hue)
{
    if (hue.none)
        return 0.0;
    const Numeric& n = hue.numeric;
    if (n.isNumber())
        return n.value;
    if (n.type != Numeric::Type::Dimension)
        return {};
    if (n.unit == "deg")
        return n.value;
    if (n.unit == "rad")
        return n.value * 180 / M_PI;
    if (n.unit == "grad")
        return n.value * 0.9;
    if (n.unit == "turn")
        return n.value * 360;
    return {};
}

// Saturation, lightness, whiteness, blackness: a percentage, or in modern syntax also a number
// of per cent. Result in 0..1.
std::optional<double> resolveFraction(const Component& component, bool legacy)
{
    if (component.none)
        return 0.0;
    const Numeric& n = component.numeric;
    if (n.isPercentage() || (n.isNumber() && !legacy))
        return std::clamp(n.value, 0.0, 100.0) / 100;
    return {};
}

std::optional<CSSColor> parseRGB(CSSScanner& scanner)
{
    auto args = parseArguments(scanner, true);
    if (!args)
        return {};
    std::array<std::uint8_t, 3> channels{};
    for (std::size_t i = 0; i < 3; ++i) {
        const Component& c = args->channels[i];
        if (c.none)
            continue;
        if (c.numeric.isNumber())
            channels[i] = toByte(c.numeric.value);
        else if (c.numeric.isPercentage())
            channels[i] = toByte(c.numeric.value / 100 * 255);
        else
            return {};
        // Legacy syntax does not mix numbers and percentages.
        if (args->legacy && c.numeric.type != args->channels[0].numeric.type)
            return {};
    }
    auto alpha = resolveAlpha(args->alpha);
    if (!alpha)
        return {};
    return CSSColor{channels[0], channels[1], channels[2], *alpha};
}

// Hue in degrees, saturation and lightness in 0..1, to 0..255 channels.
std::array<double, 3> hslToRGB(double hue, double saturation, double lightness)
{
    hue = std::fmod(hue, 360);
    if (hue < 0)
        hue += 360;
    auto f = [&](double n) {
        double k = std::fmod(n + hue / 30, 12);
        double a = saturation * std::min(lightness, 1 - lightness);
        return (lightness - a * std::max(-1.0, std::min({k - 3, 9 - k, 1.0}))) * 255;
    };
    return {f(0), f(8), f(4)};
}

std::optional<CSSColor> parseHSL(CSSScanner& scanner)
{
    auto args = parseArguments(scanner, true);
    if (!args)
        return {};
    auto hue = resolveHue(args->channels[0]);
    auto saturation = resolveFraction(args->channels[1], args->legacy);
    auto lightness = resolveFraction(args->channels[2], args->legacy);
    auto alpha = resolveAlpha(args->alpha);
    if (!hue || !saturation || !lightness || !alpha || !std::isfinite(*hue))
        return {};
    auto rgb = hslToRGB(*hue, *saturation, *lightness);
    return CSSColor{toByte(rgb[0]), toByte(rgb[1]), toByte(rgb[2]), *alpha};
}

std::optional<CSSColor> parseHWB(CSSScanner& scanner)
{
    auto args = parseArguments(scanner, false);
    if (!args)
        return {};
    auto hue = resolveHue(args->channels[0]);
    auto white = resolveFraction(args->channels[1], false);
    auto black = resolveFraction(args->channels[2], false);
    auto alpha = resolveAlpha(args->alpha);
    if (!hue || !white || !black || !alpha || !std::isfinite(*hue))
        return {};
    std::array<double, 3> rgb;
    if (*white + *black >= 1) {
        double gray = *white / (*white + *black) * 255;
        rgb = {gray, gray, gray};
    } else {
        rgb = hslToRGB(*hue, 1, 0.5);
        for (double& channel : rgb)
            channel = channel * (1 - *white - *black) + *white * 255;
    }
    return CSSColor{toByte(rgb[0]), toByte(rgb[1]), toByte(rgb[2]), *alpha};
}

} // namespace

std::optional<CSSColor> parseCSSColor(std::string_view text)
{
    CSSScanner scanner(text);
    scanner.skipWhitespace();
    std::optional<CSSColor> color;
    if (scanner.consume('#')) {
        std::size_t start = scanner.position();
        std::size_t end = start;
        while (end < text.size() && hexDigit(text[end]) >= 0)
            ++end;
        color = parseHex(text.substr(start, end - start));
        scanner.rewind(end);
    } else if (auto function = scanner.functionName()) {
        if (*function == "rgb" || *function == "rgba")
            color = parseRGB(scanner);
        else if (*function == "hsl" || *function == "hsla")
            color = parseHSL(scanner);
        else if (*function == "hwb")
            color = parseHWB(scanner);
    } else if (auto name = scanner.identifier()) {
        if (*name == "transparent")
            color = CSSColor{0, 0, 0, 0};
        else if (*name == "currentcolor")
            color = CSSColor{0, 0, 0, 255};
        else
            color = namedCSSColor(*name);
    }
    scanner.skipWhitespace();
    if (!color || !scanner.atEnd())
        return {};
    return color;
}

std::string serializeCanvasColor(const CSSColor& color)
{
    char buffer[48];
    if (color.isOpaque()) {
        std::snprintf(buffer, sizeof buffer, "#%02x%02x%02x", color.red, color.green, color.blue);
        return buffer;
    }
    // The shortest of two or three decimals that gives the same 8-bit alpha back.
    double alpha = color.alpha / 255.0;
    double twoDecimals = std::round(alpha * 100) / 100;
    double rounded = std::lround(twoDecimals * 255) == color.alpha ? twoDecimals : std::round(alpha * 1000) / 1000;
    // to_chars, unlike printf, ignores the process locale's decimal separator.
    char alphaText[16];
    auto end = std::to_chars(alphaText, alphaText + sizeof alphaText, rounded, std::chars_format::fixed, 3).ptr;
    std::string_view trimmed(alphaText, end - alphaText);
    trimmed = trimmed.substr(0, trimmed.find_last_not_of('0') + 1);
    if (trimmed.back() == '.')
        trimmed.remove_suffix(1);
    std::snprintf(buffer, sizeof buffer, "rgba(%d, %d, %d, %.*s)", color.red, color.green, color.blue,
                  int(trimmed.size()), trimmed.data());
    return buffer;
}
