#include "web/css/CSSColor.h"

#include "web/css/CSSCalc.h"
#include "web/css/CSSNamedColors.h"
#include "web/css/CSSScanner.h"
#include "web/css/CSSUnits.h"

#include <algorithm>
#include <array>
#include <cmath>

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
    if (auto calc = consumeCalc(scanner, {})) {
        Numeric numeric;
        numeric.value = calc->value;
        if (calc->type == CalcValue::Type::Percentage) {
            numeric.type = Numeric::Type::Percentage;
        } else if (calc->type == CalcValue::Type::Angle) {
            numeric.type = Numeric::Type::Dimension;
            numeric.unit = "deg";
        }
        return Component{numeric, false};
    }
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
    auto factor = degreesPerAngleUnit(n.unit);
    if (!factor)
        return {};
    return n.value * *factor;
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

bool followsFrom(CSSScanner& scanner)
{
    std::size_t start = scanner.position();
    scanner.skipWhitespace();
    auto ident = scanner.identifier();
    scanner.rewind(start);
    return ident && *ident == "from";
}

} // namespace

namespace css_color_detail {

std::optional<CSSColorValue> consumeColor(CSSScanner& scanner, const CSSColorValue& currentColor)
{
    std::size_t start = scanner.position();
    std::optional<CSSColor> legacy;
    if (scanner.consume('#')) {
        std::size_t digits = scanner.position();
        std::size_t end = digits;
        while (hexDigit(scanner.peekAt(end)) >= 0)
            ++end;
        legacy = parseHex(scanner.text().substr(digits, end - digits));
        scanner.rewind(end);
    } else if (auto function = scanner.functionName()) {
        bool legacyFunction = *function == "rgb" || *function == "rgba" || *function == "hsl" || *function == "hsla"
            || *function == "hwb";
        if (legacyFunction && !followsFrom(scanner)) {
            if (*function == "rgb" || *function == "rgba")
                legacy = parseRGB(scanner);
            else if (*function == "hsl" || *function == "hsla")
                legacy = parseHSL(scanner);
            else
                legacy = parseHWB(scanner);
        } else if (*function == "color-mix") {
            return consumeColorMix(scanner, currentColor);
        } else {
            auto color = consumeModernColorFunction(*function, scanner, currentColor);
            if (!color)
                scanner.rewind(start);
            return color;
        }
    } else if (auto name = scanner.identifier()) {
        if (*name == "transparent")
            legacy = CSSColor{0, 0, 0, 0};
        else if (*name == "currentcolor")
            return currentColor;
        else
            legacy = namedCSSColor(*name);
    }
    if (!legacy) {
        scanner.rewind(start);
        return {};
    }
    return CSSColorValue::fromLegacy(*legacy);
}

} // namespace css_color_detail

std::optional<CSSColorValue> parseCSSColorValue(std::string_view text, const CSSColorValue& currentColor)
{
    CSSScanner scanner(text);
    scanner.skipWhitespace();
    auto color = css_color_detail::consumeColor(scanner, currentColor);
    scanner.skipWhitespace();
    if (!color || !scanner.atEnd())
        return {};
    return color;
}

std::optional<CSSColor> parseCSSColor(std::string_view text)
{
    auto color = parseCSSColorValue(text);
    if (!color)
        return {};
    return color->toSRGB8();
}

CSSColorValue CSSColorValue::fromLegacy(const CSSColor& color)
{
    CSSColorValue value;
    value.components = {color.red / 255.0, color.green / 255.0, color.blue / 255.0};
    value.alpha = color.alpha / 255.0;
    return value;
}

std::array<double, 4> CSSColorValue::in(CSSColorSpace target) const
{
    ColorComponents c = components;
    for (int i = 0; i < 3; ++i) {
        if (isMissing(i))
            c[i] = 0;
    }
    ColorComponents converted = convertColor(c, space, target);
    return {converted[0], converted[1], converted[2], isMissing(3) ? 0.0 : alpha};
}

CSSColor CSSColorValue::toBytesIn(CSSColorSpace target) const
{
    auto c = in(target);
    auto byte = [](double v) { return toByte(std::clamp(v, 0.0, 1.0) * 255); };
    return CSSColor{byte(c[0]), byte(c[1]), byte(c[2]), byte(c[3])};
}

CSSColor CSSColorValue::toSRGB8() const { return toBytesIn(CSSColorSpace::SRGB); }
