#include "web/dom/CSSProperty.h"

#include "web/css/CSSColor.h"
#include "web/css/CSSScanner.h"
#include "web/geometry/NumberToString.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace {

constexpr std::array<std::string_view, kCSSPropertyCount> kNames = {
    "color", "font-style", "font-variant", "font-weight", "font-stretch", "font-size", "line-height", "font-family",
    "width", "height", "display", "direction", "visibility", "position", "letter-spacing", "word-spacing",
    "text-align", "margin", "padding", "unicode-bidi",
};

std::string lower(std::string_view text)
{
    std::string out(text);
    for (char& c : out)
        c = char(std::tolower(static_cast<unsigned char>(c)));
    return out;
}

bool isLengthUnit(std::string_view unit)
{
    static constexpr std::string_view kUnits[] = {"px", "em", "rem", "ex", "rex", "ch", "rch", "ic", "ric", "cap",
                                                  "rcap", "lh", "rlh", "pt", "pc", "in", "cm", "mm", "q",
                                                  "vw", "vh", "vmin", "vmax"};
    return std::find(std::begin(kUnits), std::end(kUnits), unit) != std::end(kUnits);
}

bool oneOf(std::string_view value, std::initializer_list<std::string_view> keywords)
{
    return std::find(keywords.begin(), keywords.end(), value) != keywords.end();
}

std::string lengthText(const CSSLength& length) { return numberToString(length.value) + length.unit; }

// A length (or, with `percent`, a percentage) that is not negative, in its kept form.
std::optional<std::string> nonNegativeLength(std::string_view text, bool percent)
{
    auto length = parseCSSLength(text);
    if (!length || length->value < 0 || (length->unit == "%" && !percent) || (length->unit.empty() && length->value != 0))
        return {};
    return lengthText(*length);
}

std::optional<std::string> fontSize(std::string_view value)
{
    if (oneOf(value, {"xx-small", "x-small", "small", "medium", "large", "x-large", "xx-large", "xxx-large", "larger",
                      "smaller"}))
        return std::string(value);
    return nonNegativeLength(value, true);
}

std::optional<std::string> lineHeight(std::string_view value)
{
    if (value == "normal")
        return std::string(value);
    auto length = parseCSSLength(value);
    if (!length || length->value < 0)
        return {};
    return lengthText(*length);
}

std::optional<std::string> fontWeight(std::string_view value)
{
    if (oneOf(value, {"normal", "bold", "bolder", "lighter"}))
        return std::string(value);
    auto length = parseCSSLength(value);
    if (!length || !length->unit.empty() || length->value < 1 || length->value > 1000)
        return {};
    return numberToString(length->value);
}

std::optional<std::string> fontStretch(std::string_view value)
{
    if (oneOf(value, {"normal", "ultra-condensed", "extra-condensed", "condensed", "semi-condensed", "semi-expanded",
                      "expanded", "extra-expanded", "ultra-expanded"}))
        return std::string(value);
    auto length = parseCSSLength(value);
    if (!length || length->unit != "%" || length->value < 0)
        return {};
    return lengthText(*length);
}

std::optional<std::string> fontStyle(std::string_view value)
{
    if (oneOf(value, {"normal", "italic", "oblique"}))
        return std::string(value);
    if (value.starts_with("oblique ")) {
        auto angle = parseCSSLength(value.substr(8));
        if (angle && angle->unit == "deg" && std::abs(angle->value) <= 90)
            return "oblique " + lengthText(*angle);
    }
    return {};
}

// A family list: comma-separated names, each a quoted string or a run of identifiers.
std::optional<std::string> fontFamily(std::string_view text)
{
    std::string out;
    std::size_t i = 0;
    while (true) {
        while (i < text.size() && std::isspace(static_cast<unsigned char>(text[i])))
            ++i;
        std::size_t start = i;
        if (i < text.size() && (text[i] == '"' || text[i] == '\'')) {
            std::size_t close = text.find(text[i], i + 1);
            if (close == std::string_view::npos)
                return {};
            i = close + 1;
        } else {
            while (i < text.size() && text[i] != ',')
                ++i;
        }
        std::string_view family = trimCSSWhitespace(text.substr(start, i - start));
        bool quoted = !family.empty() && (family[0] == '"' || family[0] == '\'');
        if (family.empty() || (!quoted && family.find_first_of("\"'!;{}()/") != std::string_view::npos))
            return {};
        out += (out.empty() ? "" : ", ") + std::string(family);
        while (i < text.size() && std::isspace(static_cast<unsigned char>(text[i])))
            ++i;
        if (i >= text.size())
            return out;
        if (text[i] != ',')
            return {};
        ++i;
    }
}

// margin and padding: one to four lengths or percentages (margins may be negative or auto).
std::optional<std::string> boxEdges(std::string_view value, bool margin)
{
    std::string out;
    std::size_t count = 0, i = 0;
    while (i < value.size()) {
        while (i < value.size() && value[i] == ' ')
            ++i;
        std::size_t start = i;
        while (i < value.size() && value[i] != ' ')
            ++i;
        if (start == i)
            break;
        std::string_view part = value.substr(start, i - start);
        std::string kept;
        if (margin && part == "auto") {
            kept = "auto";
        } else {
            auto length = parseCSSLength(part);
            if (!length || (length->unit.empty() && length->value != 0) || (!margin && length->value < 0))
                return {};
            kept = lengthText(*length);
        }
        if (++count > 4)
            return {};
        out += (out.empty() ? "" : " ") + kept;
    }
    if (count == 0)
        return {};
    return out;
}

std::optional<std::string> color(std::string_view value)
{
    if (lower(value) == "currentcolor")
        return std::string("currentcolor");
    auto parsed = parseCSSColor(value);
    if (!parsed)
        return {};
    std::string rgb = std::to_string(parsed->red) + ", " + std::to_string(parsed->green) + ", " + std::to_string(parsed->blue);
    if (parsed->isOpaque())
        return "rgb(" + rgb + ")";
    return "rgba(" + rgb + ", " + numberToString(std::round(parsed->alpha / 255.0 * 1000) / 1000) + ")";
}

} // namespace

std::string_view cssPropertyName(CSSPropertyID id) { return kNames[std::size_t(id)]; }

std::optional<CSSPropertyID> cssPropertyID(std::string_view name)
{
    std::string key = lower(trimCSSWhitespace(name));
    for (std::size_t i = 0; i < kNames.size(); ++i)
        if (kNames[i] == key)
            return CSSPropertyID(i);
    return {};
}

bool isCSSWideKeyword(std::string_view value) { return oneOf(value, {"inherit", "initial", "unset", "revert"}); }

std::optional<CSSLength> parseCSSLength(std::string_view text)
{
    CSSScanner scanner(text);
    scanner.skipWhitespace();
    auto numeric = scanner.numeric();
    scanner.skipWhitespace();
    if (!numeric || !scanner.atEnd() || !std::isfinite(numeric->value))
        return {};
    if (numeric->isPercentage())
        return CSSLength{numeric->value, "%"};
    if (numeric->isNumber())
        return CSSLength{numeric->value, ""};
    if (!isLengthUnit(numeric->unit) && numeric->unit != "deg")
        return {};
    return CSSLength{numeric->value, numeric->unit};
}

std::optional<std::string> parseCSSPropertyValue(CSSPropertyID id, std::string_view text)
{
    std::string_view trimmed = trimCSSWhitespace(text);
    std::string value = lower(trimmed);
    if (value.empty())
        return {};
    if (isCSSWideKeyword(value))
        return value;
    switch (id) {
    case CSSPropertyID::Color:
        return color(trimmed);
    case CSSPropertyID::FontStyle:
        return fontStyle(value);
    case CSSPropertyID::FontVariant:
        return oneOf(value, {"normal", "small-caps"}) ? std::optional(value) : std::nullopt;
    case CSSPropertyID::FontWeight:
        return fontWeight(value);
    case CSSPropertyID::FontStretch:
        return fontStretch(value);
    case CSSPropertyID::FontSize:
        return fontSize(value);
    case CSSPropertyID::LineHeight:
        return lineHeight(value);
    case CSSPropertyID::FontFamily:
        return fontFamily(trimmed);
    case CSSPropertyID::Width:
    case CSSPropertyID::Height:
        return value == "auto" ? std::optional(value) : nonNegativeLength(value, true);
    case CSSPropertyID::Display:
        return oneOf(value, {"none", "block", "inline", "inline-block", "flex", "inline-flex", "grid", "inline-grid",
                             "contents", "flow-root", "table", "list-item"})
            ? std::optional(value)
            : std::nullopt;
    case CSSPropertyID::Direction:
        return oneOf(value, {"ltr", "rtl"}) ? std::optional(value) : std::nullopt;
    case CSSPropertyID::Visibility:
        return oneOf(value, {"visible", "hidden", "collapse"}) ? std::optional(value) : std::nullopt;
    case CSSPropertyID::Position:
        return oneOf(value, {"static", "relative", "absolute", "fixed", "sticky"}) ? std::optional(value) : std::nullopt;
    case CSSPropertyID::TextAlign:
        return oneOf(value, {"left", "right", "center", "justify", "start", "end"}) ? std::optional(value) : std::nullopt;
    case CSSPropertyID::UnicodeBidi:
        return oneOf(value, {"normal", "embed", "isolate", "bidi-override", "isolate-override", "plaintext"})
            ? std::optional(value)
            : std::nullopt;
    case CSSPropertyID::Margin:
    case CSSPropertyID::Padding: {
        std::string spaced = value;
        for (char& c : spaced)
            if (std::isspace(static_cast<unsigned char>(c)))
                c = ' ';
        return boxEdges(spaced, id == CSSPropertyID::Margin);
    }
    case CSSPropertyID::LetterSpacing:
    case CSSPropertyID::WordSpacing: {
        if (value == "normal")
            return value;
        auto length = parseCSSLength(value);
        if (!length || length->unit == "%" || (length->unit.empty() && length->value != 0))
            return {};
        return lengthText(*length);
    }
    }
    return {};
}

const std::vector<CSSPropertyID>& fontLonghands()
{
    static const std::vector<CSSPropertyID> longhands = {
        CSSPropertyID::FontStyle, CSSPropertyID::FontVariant, CSSPropertyID::FontWeight, CSSPropertyID::FontStretch,
        CSSPropertyID::FontSize,  CSSPropertyID::LineHeight,  CSSPropertyID::FontFamily,
    };
    return longhands;
}

// [style || variant || weight || stretch]? size [/ line-height]? family
std::optional<CSSLonghands> parseFontShorthand(std::string_view text)
{
    std::string_view trimmed = trimCSSWhitespace(text);
    std::string keyword = lower(trimmed);
    if (isCSSWideKeyword(keyword)) {
        CSSLonghands all;
        for (CSSPropertyID id : fontLonghands())
            all.emplace_back(id, keyword);
        return all;
    }
    std::vector<std::string> values = {"normal", "normal", "normal", "normal", "", "normal", ""};
    std::size_t i = 0;
    auto nextWord = [&] {
        while (i < trimmed.size() && std::isspace(static_cast<unsigned char>(trimmed[i])))
            ++i;
        std::size_t start = i;
        while (i < trimmed.size() && !std::isspace(static_cast<unsigned char>(trimmed[i])) && trimmed[i] != '/')
            ++i;
        return trimmed.substr(start, i - start);
    };
    bool seen[4] = {};
    while (i < trimmed.size()) {
        std::string word = lower(nextWord());
        if (word.empty())
            return {};
        if (word == "normal")
            continue;
        bool matched = false;
        for (int k = 0; k < 4 && !matched; ++k) {
            // In the shorthand the stretch is a keyword: a percentage there is the size.
            if (seen[k] || (k == 3 && word.ends_with('%')))
                continue;
            if (auto value = parseCSSPropertyValue(fontLonghands()[std::size_t(k)], word); value && !isCSSWideKeyword(*value)) {
                values[std::size_t(k)] = *value;
                seen[k] = matched = true;
            }
        }
        if (matched)
            continue;
        auto size = fontSize(word);
        if (!size)
            return {};
        values[4] = *size;
        while (i < trimmed.size() && std::isspace(static_cast<unsigned char>(trimmed[i])))
            ++i;
        if (i < trimmed.size() && trimmed[i] == '/') {
            ++i;
            auto height = lineHeight(lower(nextWord()));
            if (!height)
                return {};
            values[5] = *height;
        }
        auto family = fontFamily(trimmed.substr(i));
        if (!family)
            return {};
        values[6] = *family;
        CSSLonghands longhands;
        for (std::size_t k = 0; k < values.size(); ++k)
            longhands.emplace_back(fontLonghands()[k], values[k]);
        return longhands;
    }
    return {};
}

std::string serializeFontShorthand(const std::vector<std::string>& longhands)
{
    std::string out;
    for (std::size_t k = 0; k < 4 && k < longhands.size(); ++k)
        if (longhands[k] != "normal")
            out += longhands[k] + " ";
    if (longhands.size() < 7)
        return out;
    out += longhands[4];
    if (longhands[5] != "normal")
        out += " / " + longhands[5];
    return out + " " + longhands[6];
}

std::string_view trimCSSWhitespace(std::string_view text)
{
    constexpr std::string_view kSpace = " \t\n\r\f";
    std::size_t start = text.find_first_not_of(kSpace);
    if (start == std::string_view::npos)
        return {};
    return text.substr(start, text.find_last_not_of(kSpace) - start + 1);
}
