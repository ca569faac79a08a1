#include "web/css/CSSFilter.h"

#include "web/css/CSSScanner.h"
#include "web/css/CSSUnits.h"

#include <algorithm>
#include <cmath>
#include <string>
#include <utility>

namespace {

using Numeric = CSSScanner::Numeric;
using Kind = CSSFilterFunction::Kind;

// CSS pixels per unit; font-relative units as for a 16px font, viewport units as for a
// viewport of 0 (a canvas has none).
std::optional<double> pixelsPerUnit(std::string_view unit)
{
    if (auto absolute = pixelsPerAbsoluteLengthUnit(unit))
        return absolute;
    static constexpr std::pair<std::string_view, double> kRelative[] = {
        {"em", 16}, {"rem", 16}, {"ex", 8}, {"ch", 8}, {"lh", 19.2}, {"vw", 0}, {"vh", 0}, {"vmin", 0}, {"vmax", 0}};
    for (const auto& [name, factor] : kRelative) {
        if (unit == name)
            return factor;
    }
    return {};
}

std::optional<double> length(const Numeric& n)
{
    return dimensionOrZero(n, pixelsPerUnit);
}

std::optional<double> angle(const Numeric& n)
{
    return dimensionOrZero(n, degreesPerAngleUnit);
}

bool parseDropShadow(CSSScanner& scanner, CSSFilterFunction& function)
{
    std::vector<double> lengths;
    bool lengthsDone = false;
    while (true) {
        scanner.skipWhitespace();
        if (scanner.consume(')'))
            break;
        std::size_t at = scanner.position();
        if (auto n = scanner.numeric()) {
            auto value = length(*n);
            if (lengthsDone || lengths.size() == 3 || !value || (lengths.size() == 2 && *value < 0))
                return false;
            lengths.push_back(*value);
            continue;
        }
        scanner.rewind(at);
        if (function.color)
            return false;
        function.color = css_color_detail::consumeColor(scanner, CSSColorValue::opaqueBlack());
        if (!function.color)
            return false;
        lengthsDone = !lengths.empty();
    }
    if (lengths.size() < 2)
        return false;
    function.offsetX = lengths[0];
    function.offsetY = lengths[1];
    function.blur = lengths.size() == 3 ? lengths[2] : 0;
    return true;
}

std::optional<Kind> functionKind(const std::string& name)
{
    static constexpr std::pair<std::string_view, Kind> kFunctions[] = {
        {"blur", Kind::Blur},         {"brightness", Kind::Brightness}, {"contrast", Kind::Contrast},
        {"drop-shadow", Kind::DropShadow}, {"grayscale", Kind::Grayscale}, {"hue-rotate", Kind::HueRotate},
        {"invert", Kind::Invert},     {"opacity", Kind::Opacity},       {"saturate", Kind::Saturate},
        {"sepia", Kind::Sepia},       {"url", Kind::Url}};
    for (const auto& [text, kind] : kFunctions) {
        if (name == text)
            return kind;
    }
    return {};
}

std::optional<CSSFilterFunction> parseFunction(const std::string& name, CSSScanner& scanner)
{
    auto kind = functionKind(name);
    if (!kind)
        return {};
    CSSFilterFunction function;
    function.kind = *kind;
    if (*kind == Kind::DropShadow)
        return parseDropShadow(scanner, function) ? std::optional(function) : std::nullopt;
    if (*kind == Kind::Url) {
        std::size_t start = scanner.position();
        while (!scanner.atEnd() && scanner.peek() != ')')
            scanner.rewind(scanner.position() + 1);
        function.url = std::string(scanner.text().substr(start, scanner.position() - start));
        return scanner.consume(')') ? std::optional(function) : std::nullopt;
    }
    // An omitted argument: no blur, no rotation, else the whole effect.
    function.amount = *kind == Kind::Blur || *kind == Kind::HueRotate ? 0 : 1;
    scanner.skipWhitespace();
    if (scanner.consume(')'))
        return function;
    auto n = scanner.numeric();
    if (!n)
        return {};
    std::optional<double> value;
    if (*kind == Kind::Blur) {
        value = length(*n);
        if (value && *value < 0)
            return {};
    } else if (*kind == Kind::HueRotate) {
        value = angle(*n);
    } else if ((n->isNumber() || n->isPercentage()) && n->value >= 0) {
        value = n->isPercentage() ? n->value / 100 : n->value;
        // These cannot do more than all of their effect.
        bool capped = *kind == Kind::Grayscale || *kind == Kind::Invert || *kind == Kind::Opacity || *kind == Kind::Sepia;
        if (capped)
            value = std::min(*value, 1.0);
    }
    scanner.skipWhitespace();
    if (!value || !std::isfinite(*value) || !scanner.consume(')'))
        return {};
    function.amount = *value;
    return function;
}

} // namespace

std::optional<std::vector<CSSFilterFunction>> parseCSSFilter(std::string_view text)
{
    CSSScanner scanner(text);
    scanner.skipWhitespace();
    if (scanner.atEnd())
        return {};
    if (scanner.consumeOnlyKeyword("none"))
        return std::vector<CSSFilterFunction>();
    std::vector<CSSFilterFunction> functions;
    while (!scanner.atEnd()) {
        auto name = scanner.functionName();
        if (!name)
            return {};
        auto function = parseFunction(*name, scanner);
        if (!function)
            return {};
        functions.push_back(std::move(*function));
        scanner.skipWhitespace();
    }
    return functions;
}
