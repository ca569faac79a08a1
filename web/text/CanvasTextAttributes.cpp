#include "web/text/CanvasText.h"

#include "web/text/CssTokens.h"

#include <cmath>

// The text attributes of a canvas context as scripts read and write them.

namespace {

template <typename Enum, std::size_t N>
std::optional<Enum> lookup(const std::pair<std::string_view, Enum> (&names)[N], std::string_view text)
{
    for (const auto& [name, value] : names) {
        if (name == text)
            return value;
    }
    return std::nullopt;
}

template <typename Enum, std::size_t N>
std::string_view nameOf(const std::pair<std::string_view, Enum> (&names)[N], Enum value)
{
    for (const auto& [name, candidate] : names) {
        if (candidate == value)
            return name;
    }
    return names[0].first;
}

const std::pair<std::string_view, CanvasTextAlign> kAligns[] = {
    {"start", CanvasTextAlign::Start}, {"end", CanvasTextAlign::End}, {"left", CanvasTextAlign::Left},
    {"right", CanvasTextAlign::Right}, {"center", CanvasTextAlign::Center}};
const std::pair<std::string_view, CanvasTextBaseline> kBaselines[] = {
    {"alphabetic", CanvasTextBaseline::Alphabetic}, {"top", CanvasTextBaseline::Top},
    {"hanging", CanvasTextBaseline::Hanging}, {"middle", CanvasTextBaseline::Middle},
    {"ideographic", CanvasTextBaseline::Ideographic}, {"bottom", CanvasTextBaseline::Bottom}};
const std::pair<std::string_view, CanvasDirection> kDirections[] = {
    {"inherit", CanvasDirection::Inherit}, {"ltr", CanvasDirection::Ltr}, {"rtl", CanvasDirection::Rtl}};
const std::pair<std::string_view, CanvasFontKerning> kKernings[] = {
    {"auto", CanvasFontKerning::Auto}, {"normal", CanvasFontKerning::Normal}, {"none", CanvasFontKerning::None}};

} // namespace

std::optional<CanvasTextAlign> parseCanvasTextAlign(std::string_view text)
{
    return lookup(kAligns, text);
}
std::optional<CanvasTextBaseline> parseCanvasTextBaseline(std::string_view text)
{
    return lookup(kBaselines, text);
}
std::optional<CanvasDirection> parseCanvasDirection(std::string_view text)
{
    return lookup(kDirections, text);
}
std::optional<CanvasFontKerning> parseCanvasFontKerning(std::string_view text)
{
    return lookup(kKernings, text);
}
std::string_view toString(CanvasTextAlign value)
{
    return nameOf(kAligns, value);
}
std::string_view toString(CanvasTextBaseline value)
{
    return nameOf(kBaselines, value);
}
std::string_view toString(CanvasDirection value)
{
    return nameOf(kDirections, value);
}
std::string_view toString(CanvasFontKerning value)
{
    return nameOf(kKernings, value);
}

std::optional<double> parseCanvasSpacing(std::string_view text, const CanvasFont& font)
{
    // One length, nothing around it: no white space, no percentage, no unitless zero.
    auto tokens = tokenizeCss(text);
    if (!tokens || tokens->size() != 1 || (*tokens)[0].type != CssToken::Dimension || text.empty()
        || text.front() == ' ' || text.back() == ' ' || text.find_first_of("\t\n\r\f/") != std::string_view::npos)
        return std::nullopt;
    // Spacing has no viewport nor line to refer to; rem, like em, refers to the font.
    CssLengthBase base = lengthBaseOf(font);
    base.font.lh = base.root.lh = 0;
    auto px = cssLengthInPixels((*tokens)[0], base, false);
    if (!px || !std::isfinite(*px))
        return std::nullopt;
    return *px;
}

std::string serializeCanvasSpacing(std::string_view text)
{
    auto tokens = tokenizeCss(text);
    if (!tokens || tokens->size() != 1 || (*tokens)[0].type != CssToken::Dimension)
        return "0px";
    return formatCssNumber((*tokens)[0].number) + (*tokens)[0].text;
}
