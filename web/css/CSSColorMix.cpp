// color-mix(): two colours interpolated in a chosen space, premultiplied by alpha.
#include "web/css/CSSCalc.h"
#include "web/css/CSSColor.h"
#include "web/css/CSSScanner.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace css_color_detail {

namespace {

enum class HueMethod { Shorter, Longer, Increasing, Decreasing };

struct MixSpace {
    CSSColorSpace space;
    HueMethod hue = HueMethod::Shorter;
};

std::optional<MixSpace> consumeMixSpace(CSSScanner& scanner)
{
    scanner.skipWhitespace();
    auto in = scanner.identifier();
    if (!in || *in != "in" || !scanner.skipWhitespace())
        return {};
    auto name = scanner.identifier();
    if (!name)
        return {};
    std::optional<CSSColorSpace> space = colorFunctionSpace(*name);
    static constexpr std::pair<std::string_view, CSSColorSpace> kOthers[] = {
        {"lab", CSSColorSpace::Lab}, {"lch", CSSColorSpace::LCH}, {"oklab", CSSColorSpace::OKLab},
        {"oklch", CSSColorSpace::OKLCH}, {"hsl", CSSColorSpace::HSL}, {"hwb", CSSColorSpace::HWB}};
    for (const auto& [other, value] : kOthers) {
        if (*name == other)
            space = value;
    }
    if (!space)
        return {};
    MixSpace mix{*space};
    std::size_t start = scanner.position();
    scanner.skipWhitespace();
    if (auto method = scanner.identifier(); method && hueIndex(*space) >= 0) {
        static constexpr std::pair<std::string_view, HueMethod> kMethods[] = {
            {"shorter", HueMethod::Shorter}, {"longer", HueMethod::Longer},
            {"increasing", HueMethod::Increasing}, {"decreasing", HueMethod::Decreasing}};
        auto found = std::find_if(std::begin(kMethods), std::end(kMethods), [&](const auto& m) { return m.first == *method; });
        scanner.skipWhitespace();
        auto hue = scanner.identifier();
        if (found == std::end(kMethods) || !hue || *hue != "hue")
            return {};
        mix.hue = found->second;
    } else {
        scanner.rewind(start);
    }
    return mix;
}

struct MixItem {
    CSSColorValue color;
    std::optional<double> percentage;
};

std::optional<double> consumePercentage(CSSScanner& scanner)
{
    scanner.skipWhitespace();
    std::size_t start = scanner.position();
    std::optional<double> value;
    if (auto calc = consumeCalc(scanner, {}); calc && calc->type == CalcValue::Type::Percentage)
        value = calc->value;
    else if (auto numeric = scanner.numeric(); numeric && numeric->isPercentage())
        value = numeric->value;
    if (!value || *value < 0 || *value > 100) {
        scanner.rewind(start);
        return {};
    }
    return value;
}

std::optional<MixItem> consumeMixItem(CSSScanner& scanner, const CSSColorValue& currentColor)
{
    MixItem item;
    item.percentage = consumePercentage(scanner);
    scanner.skipWhitespace();
    auto color = consumeColor(scanner, currentColor);
    if (!color)
        return {};
    item.color = *color;
    if (!item.percentage)
        item.percentage = consumePercentage(scanner);
    return item;
}

// A colour's components in the interpolation space; keeps its missing components when no
// conversion was needed.
CSSColorValue toMixSpace(const CSSColorValue& color, CSSColorSpace space)
{
    if (color.space == space && !color.legacy)
        return color;
    auto values = color.in(space);
    CSSColorValue converted;
    converted.space = space;
    converted.legacy = false;
    converted.components = {values[0], values[1], values[2]};
    converted.alpha = values[3];
    converted.missing = color.missing & 8;
    return converted;
}

void fixHues(double& a, double& b, HueMethod method)
{
    a = std::fmod(a, 360), b = std::fmod(b, 360);
    if (a < 0)
        a += 360;
    if (b < 0)
        b += 360;
    double d = b - a;
    switch (method) {
    case HueMethod::Shorter:
        if (d > 180)
            a += 360;
        else if (d < -180)
            b += 360;
        break;
    case HueMethod::Longer:
        if (d > 0 && d < 180)
            a += 360;
        else if (d > -180 && d <= 0)
            b += 360;
        break;
    case HueMethod::Increasing:
        if (d < 0)
            b += 360;
        break;
    case HueMethod::Decreasing:
        if (d > 0)
            a += 360;
        break;
    }
}

CSSColorValue mix(const MixSpace& space, const MixItem& first, const MixItem& second)
{
    double p1, p2;
    if (!first.percentage && !second.percentage)
        p1 = p2 = 50;
    else if (!second.percentage)
        p1 = *first.percentage, p2 = 100 - p1;
    else if (!first.percentage)
        p2 = *second.percentage, p1 = 100 - p2;
    else
        p1 = *first.percentage, p2 = *second.percentage;
    double total = p1 + p2;
    double alphaMultiplier = total < 100 ? total / 100 : 1;
    double w1 = total > 0 ? p1 / total : 0.5, w2 = total > 0 ? p2 / total : 0.5;

    CSSColorValue a = toMixSpace(first.color, space.space), b = toMixSpace(second.color, space.space);
    CSSColorValue result;
    result.space = space.space;
    result.legacy = false;
    // A missing component takes the other colour's value.
    for (int i = 0; i < 4; ++i) {
        bool missingA = a.isMissing(i), missingB = b.isMissing(i);
        double& va = i < 3 ? a.components[i] : a.alpha;
        double& vb = i < 3 ? b.components[i] : b.alpha;
        if (missingA && missingB)
            result.missing |= std::uint8_t(1 << i);
        else if (missingA)
            va = vb;
        else if (missingB)
            vb = va;
    }
    int hue = hueIndex(space.space);
    if (hue >= 0)
        fixHues(a.components[hue], b.components[hue], space.hue);
    double alpha = a.alpha * w1 + b.alpha * w2;
    for (int i = 0; i < 3; ++i) {
        if (i == hue) {
            double h = std::fmod(a.components[i] * w1 + b.components[i] * w2, 360);
            result.components[i] = h < 0 ? h + 360 : h;
            continue;
        }
        double mixed = a.components[i] * a.alpha * w1 + b.components[i] * b.alpha * w2;
        result.components[i] = alpha != 0 ? mixed / alpha : mixed;
    }
    result.alpha = alpha * alphaMultiplier;
    if (result.isMissing(3))
        result.alpha = 0;
    if (space.space == CSSColorSpace::HSL || space.space == CSSColorSpace::HWB) {
        auto rgb = result.in(CSSColorSpace::SRGB);
        result.components = {rgb[0], rgb[1], rgb[2]};
        result.space = CSSColorSpace::SRGB;
        result.missing &= 8;
    }
    return result;
}

} // namespace

std::optional<CSSColorValue> consumeColorMix(CSSScanner& scanner, const CSSColorValue& currentColor)
{
    std::size_t start = scanner.position();
    auto fail = [&]() -> std::optional<CSSColorValue> {
        scanner.rewind(start);
        return {};
    };
    auto space = consumeMixSpace(scanner);
    scanner.skipWhitespace();
    if (!space || !scanner.consume(','))
        return fail();
    auto first = consumeMixItem(scanner, currentColor);
    scanner.skipWhitespace();
    if (!first || !scanner.consume(','))
        return fail();
    auto second = consumeMixItem(scanner, currentColor);
    scanner.skipWhitespace();
    if (!second || !scanner.consume(')'))
        return fail();
    return mix(*space, *first, *second);
}

} // namespace css_color_detail
