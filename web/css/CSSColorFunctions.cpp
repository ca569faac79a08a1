// The modern colour functions: color(), lab(), lch(), oklab(), oklch(), and the relative
// syntax of these and of rgb(), hsl() and hwb().
#include "web/css/CSSCalc.h"
#include "web/css/CSSColor.h"
#include "web/css/CSSScanner.h"
#include "web/css/CSSUnits.h"

#include <algorithm>
#include <cmath>
#include <string>
#include <utility>
#include <vector>

namespace css_color_detail {

namespace {

// How a channel reads numbers and percentages.
struct ChannelSpec {
    std::string_view keyword;
    bool hue = false;
    double numberScale = 1;  // a number means number * numberScale
    double percentScale = 1; // a percentage means value * percentScale
    double low = -INFINITY;  // parsed values are clamped to [low, high]
    double high = INFINITY;
};

struct FunctionSpec {
    CSSColorSpace space;
    std::array<ChannelSpec, 3> channels;
};

constexpr ChannelSpec kUnitChannel(std::string_view keyword) { return {keyword, false, 1, 0.01}; }

FunctionSpec functionSpec(std::string_view name, CSSColorSpace colorSpace)
{
    if (name == "rgb" || name == "rgba")
        return {CSSColorSpace::SRGB, {{{"r", false, 1 / 255.0, 0.01}, {"g", false, 1 / 255.0, 0.01}, {"b", false, 1 / 255.0, 0.01}}}};
    if (name == "hsl" || name == "hsla")
        return {CSSColorSpace::HSL, {{{"h", true}, {"s", false, 1, 1}, {"l", false, 1, 1}}}};
    if (name == "hwb")
        return {CSSColorSpace::HWB, {{{"h", true}, {"w", false, 1, 1}, {"b", false, 1, 1}}}};
    if (name == "lab")
        return {CSSColorSpace::Lab, {{{"l", false, 1, 1, 0, 100}, {"a", false, 1, 1.25}, {"b", false, 1, 1.25}}}};
    if (name == "lch")
        return {CSSColorSpace::LCH, {{{"l", false, 1, 1, 0, 100}, {"c", false, 1, 1.5, 0}, {"h", true}}}};
    if (name == "oklab")
        return {CSSColorSpace::OKLab, {{{"l", false, 1, 0.01, 0, 1}, {"a", false, 1, 0.004}, {"b", false, 1, 0.004}}}};
    if (name == "oklch")
        return {CSSColorSpace::OKLCH, {{{"l", false, 1, 0.01, 0, 1}, {"c", false, 1, 0.004, 0}, {"h", true}}}};
    bool xyz = colorSpace == CSSColorSpace::XYZD50 || colorSpace == CSSColorSpace::XYZD65;
    if (xyz)
        return {colorSpace, {{kUnitChannel("x"), kUnitChannel("y"), kUnitChannel("z")}}};
    return {colorSpace, {{kUnitChannel("r"), kUnitChannel("g"), kUnitChannel("b")}}};
}

// A channel as written: none, or a value of some type.
struct Channel {
    bool none = false;
    CalcValue value;
};

std::optional<Channel> consumeChannel(CSSScanner& scanner, CalcKeywords keywords)
{
    scanner.skipWhitespace();
    if (auto calc = consumeCalc(scanner, keywords))
        return Channel{false, *calc};
    if (auto numeric = scanner.numeric()) {
        using Type = CSSScanner::Numeric::Type;
        if (numeric->type == Type::Number)
            return Channel{false, {numeric->value, CalcValue::Type::Number}};
        if (numeric->type == Type::Percentage)
            return Channel{false, {numeric->value, CalcValue::Type::Percentage}};
        auto degrees = degreesPerAngleUnit(numeric->unit);
        if (!degrees)
            return {};
        return Channel{false, {numeric->value * *degrees, CalcValue::Type::Angle}};
    }
    std::size_t start = scanner.position();
    if (auto name = scanner.identifier()) {
        if (*name == "none")
            return Channel{true, {}};
        for (const auto& [keyword, value] : keywords) {
            if (*name == keyword)
                return Channel{false, {value, CalcValue::Type::Number}};
        }
    }
    scanner.rewind(start);
    return {};
}

std::optional<double> resolveChannel(const Channel& channel, const ChannelSpec& spec)
{
    const CalcValue& v = channel.value;
    double value;
    if (spec.hue) {
        if (v.type == CalcValue::Type::Percentage)
            return {};
        value = v.value;
    } else if (v.type == CalcValue::Type::Number) {
        value = v.value * spec.numberScale;
    } else if (v.type == CalcValue::Type::Percentage) {
        value = v.value * spec.percentScale;
    } else {
        return {};
    }
    if (!std::isfinite(value))
        return {};
    return std::clamp(value, spec.low, spec.high);
}

std::optional<double> resolveAlpha(const Channel& channel)
{
    const CalcValue& v = channel.value;
    double value = v.type == CalcValue::Type::Number ? v.value : v.type == CalcValue::Type::Percentage ? v.value / 100 : NAN;
    if (std::isnan(value))
        return {};
    return std::clamp(value, 0.0, 1.0);
}

// The channel keywords of an origin colour, in the units the function's channels use.
std::vector<std::pair<std::string_view, double>> originKeywords(const CSSColorValue& origin, const FunctionSpec& spec)
{
    auto values = origin.in(spec.space);
    std::vector<std::pair<std::string_view, double>> keywords;
    for (int i = 0; i < 3; ++i)
        keywords.emplace_back(spec.channels[i].keyword, values[i] / spec.channels[i].numberScale);
    keywords.emplace_back("alpha", values[3]);
    return keywords;
}

} // namespace

std::optional<CSSColorValue> consumeModernColorFunction(std::string_view name, CSSScanner& scanner,
                                                        const CSSColorValue& currentColor)
{
    static constexpr std::string_view kFunctions[] = {"rgb", "rgba", "hsl", "hsla", "hwb", "lab", "lch", "oklab", "oklch", "color"};
    if (std::find(std::begin(kFunctions), std::end(kFunctions), name) == std::end(kFunctions))
        return {};
    scanner.skipWhitespace();
    std::optional<CSSColorValue> origin;
    std::size_t afterParen = scanner.position();
    if (auto from = scanner.identifier(); from && *from == "from") {
        scanner.skipWhitespace();
        origin = consumeColor(scanner, currentColor);
        if (!origin)
            return {};
    } else {
        scanner.rewind(afterParen);
    }
    CSSColorSpace colorSpace = CSSColorSpace::SRGB;
    if (name == "color") {
        scanner.skipWhitespace();
        auto spaceName = scanner.identifier();
        auto space = spaceName ? colorFunctionSpace(*spaceName) : std::nullopt;
        if (!space)
            return {};
        colorSpace = *space;
    }
    FunctionSpec spec = functionSpec(name, colorSpace);
    std::vector<std::pair<std::string_view, double>> keywords;
    if (origin)
        keywords = originKeywords(*origin, spec);

    CSSColorValue color;
    color.space = spec.space;
    color.legacy = false;
    for (int i = 0; i < 3; ++i) {
        auto channel = consumeChannel(scanner, keywords);
        if (!channel)
            return {};
        if (channel->none) {
            color.missing |= std::uint8_t(1 << i);
            continue;
        }
        auto value = resolveChannel(*channel, spec.channels[i]);
        if (!value)
            return {};
        color.components[i] = *value;
    }
    scanner.skipWhitespace();
    if (scanner.consume('/')) {
        auto channel = consumeChannel(scanner, keywords);
        if (!channel)
            return {};
        if (channel->none) {
            color.missing |= 8;
        } else {
            auto alpha = resolveAlpha(*channel);
            if (!alpha)
                return {};
            color.alpha = *alpha;
        }
        scanner.skipWhitespace();
    } else if (origin) {
        color.alpha = origin->isMissing(3) ? 0 : origin->alpha;
    }
    if (!scanner.consume(')'))
        return {};
    if (spec.space == CSSColorSpace::HSL || spec.space == CSSColorSpace::HWB) {
        // Relative hsl() and hwb() colours are sRGB colours.
        auto rgb = color.in(CSSColorSpace::SRGB);
        color.components = {rgb[0], rgb[1], rgb[2]};
        color.space = CSSColorSpace::SRGB;
        color.missing &= 8;
    }
    return color;
}

} // namespace css_color_detail
