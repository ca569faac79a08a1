#include "web/dom/ComputedStyle.h"

#include "web/dom/Element.h"
#include "web/geometry/NumberToString.h"
#include "web/css/CSSUnits.h"

#include <algorithm>
#include <cmath>

namespace {

// What relative lengths on one element are measured against.
struct LengthBasis {
    double em;
    double rem;
    double lh;
    double rlh;
};

// "normal" line height, for the lh unit: about what common fonts give.
constexpr double kNormalLineHeight = 1.2;

double pixels(const CSSLength& length, const LengthBasis& basis)
{
    const double v = length.value;
    const std::string& u = length.unit;
    if (u == "px" || u.empty())
        return v;
    if (u == "em" || u == "ic")
        return v * basis.em;
    if (u == "rem" || u == "ric")
        return v * basis.rem;
    if (u == "ex" || u == "ch")
        return v * basis.em / 2;
    if (u == "rex" || u == "rch")
        return v * basis.rem / 2;
    if (u == "cap")
        return v * basis.em * 0.7;
    if (u == "rcap")
        return v * basis.rem * 0.7;
    if (u == "lh")
        return v * basis.lh;
    if (u == "rlh")
        return v * basis.rlh;
    if (auto pixels = pixelsPerAbsoluteLengthUnit(u))
        return v * *pixels;
    return 0; // viewport units: there is no viewport
}

double lineHeightOf(const ComputedStyle& style)
{
    return style.lineHeightPixels().value_or(style.fontSize * kNormalLineHeight);
}

std::optional<double> keywordFontSize(std::string_view keyword)
{
    static constexpr std::pair<std::string_view, double> kSizes[] = {
        {"xx-small", 9}, {"x-small", 10}, {"small", 13},     {"medium", 16},
        {"large", 18},   {"x-large", 24}, {"xx-large", 32}, {"xxx-large", 48},
    };
    for (const auto& [name, size] : kSizes)
        if (name == keyword)
            return size;
    return {};
}

double fontWeightValue(const std::string& value, double parent)
{
    if (value == "normal")
        return 400;
    if (value == "bold")
        return 700;
    if (value == "bolder")
        return parent < 350 ? 400 : parent < 550 ? 700 : 900;
    if (value == "lighter")
        return parent < 550 ? 100 : parent < 750 ? 400 : 700;
    return std::strtod(value.c_str(), nullptr);
}

std::string defaultDisplay(const Element& element)
{
    if (!element.isHTML())
        return "inline";
    static constexpr std::string_view kBlocks[] = {
        "html", "body", "div", "p", "ul", "ol", "dl", "dd", "dt", "h1", "h2", "h3", "h4", "h5", "h6", "section",
        "article", "header", "footer", "nav", "main", "aside", "figure", "figcaption", "form", "pre", "blockquote",
        "address", "details", "summary", "fieldset", "hr", "legend", "center"};
    static constexpr std::string_view kHidden[] = {"head", "script", "style", "title", "meta", "link", "template",
                                                   "base", "noscript"};
    const std::string& name = element.localName();
    if (std::find(std::begin(kBlocks), std::end(kBlocks), name) != std::end(kBlocks))
        return "block";
    if (std::find(std::begin(kHidden), std::end(kHidden), name) != std::end(kHidden))
        return "none";
    if (name == "li")
        return "list-item";
    return "inline";
}

// The value a declaration gives, with the CSS-wide keywords resolved: nothing means "take the
// parent's" (inherit) and "initial" means the initial value.
enum class Keyword { None, Inherit, Initial };
Keyword wideKeyword(const std::string& value, bool inherited)
{
    if (value == "inherit")
        return Keyword::Inherit;
    if (value == "initial")
        return Keyword::Initial;
    if (value == "unset" || value == "revert")
        return inherited ? Keyword::Inherit : Keyword::Initial;
    return Keyword::None;
}

void applyFontSize(ComputedStyle& style, const std::string& value, const ComputedStyle& parent, const LengthBasis& basis)
{
    switch (wideKeyword(value, true)) {
    case Keyword::Inherit:
        style.fontSize = parent.fontSize;
        return;
    case Keyword::Initial:
        style.fontSize = 16;
        return;
    case Keyword::None:
        break;
    }
    if (auto size = keywordFontSize(value))
        style.fontSize = *size;
    else if (value == "larger")
        style.fontSize = parent.fontSize * 1.2;
    else if (value == "smaller")
        style.fontSize = parent.fontSize / 1.2;
    else if (auto length = parseCSSLength(value))
        style.fontSize = length->unit == "%" ? parent.fontSize * length->value / 100 : pixels(*length, basis);
}

void applyLineHeight(ComputedStyle& style, const std::string& value, const ComputedStyle& parent, const LengthBasis& basis)
{
    switch (wideKeyword(value, true)) {
    case Keyword::Inherit:
        style.lineHeightKind = parent.lineHeightKind;
        style.lineHeightValue = parent.lineHeightValue;
        return;
    case Keyword::Initial:
        style.lineHeightKind = ComputedStyle::LineHeight::Normal;
        return;
    case Keyword::None:
        break;
    }
    auto length = parseCSSLength(value);
    if (value == "normal" || !length) {
        style.lineHeightKind = ComputedStyle::LineHeight::Normal;
    } else if (length->unit.empty()) {
        style.lineHeightKind = ComputedStyle::LineHeight::Number;
        style.lineHeightValue = length->value;
    } else {
        style.lineHeightKind = ComputedStyle::LineHeight::Length;
        style.lineHeightValue = length->unit == "%" ? style.fontSize * length->value / 100 : pixels(*length, basis);
    }
}

// "8px", "1em 0", "1px 2px 3px 4px": top, right, bottom, left as CSS repeats them.
std::array<double, 4> boxEdges(const std::string& value, const LengthBasis& basis)
{
    std::vector<double> sides;
    std::size_t i = 0;
    while (i < value.size()) {
        std::size_t end = value.find(' ', i);
        if (end == std::string::npos)
            end = value.size();
        auto length = parseCSSLength(value.substr(i, end - i));
        sides.push_back(length && length->unit != "%" ? pixels(*length, basis) : 0);
        i = end + 1;
    }
    while (sides.size() < 4)
        sides.push_back(sides.size() == 3 ? sides[1] : sides[0]);
    return {sides[0], sides[1], sides[2], sides[3]};
}

std::string serializeEdges(const std::array<double, 4>& edges)
{
    if (edges[0] == edges[1] && edges[1] == edges[2] && edges[2] == edges[3])
        return numberToString(edges[0]) + "px";
    std::string out;
    for (double edge : edges) {
        if (!out.empty())
            out += ' ';
        out += numberToString(edge);
        out += "px";
    }
    return out;
}

// One element's style from its inline declarations over its parent's.
ComputedStyle cascade(const Element& element, const ComputedStyle& parent, const ComputedStyle* root)
{
    static const ComputedStyle kInitial;
    ComputedStyle style = kInitial;
    // Inherited properties start as the parent's.
    style.color = parent.color;
    style.fontSize = parent.fontSize;
    style.lineHeightKind = parent.lineHeightKind;
    style.lineHeightValue = parent.lineHeightValue;
    style.fontFamily = parent.fontFamily;
    style.fontStyle = parent.fontStyle;
    style.fontVariant = parent.fontVariant;
    style.fontWeight = parent.fontWeight;
    style.fontStretch = parent.fontStretch;
    style.direction = parent.direction;
    style.visibility = parent.visibility;
    style.letterSpacing = parent.letterSpacing;
    style.wordSpacing = parent.wordSpacing;
    style.textAlign = parent.textAlign;
    style.display = defaultDisplay(element);

    const InlineStyle& declared = element.inlineStyle();
    // The root's font-size resolves rem against the initial size, everyone else's against the root's.
    double rootFontSize = root ? root->fontSize : kInitial.fontSize;
    double rootLineHeight = root ? lineHeightOf(*root) : kInitial.fontSize * kNormalLineHeight;
    if (auto value = declared.value(CSSPropertyID::FontSize))
        applyFontSize(style, *value, parent, {parent.fontSize, rootFontSize, lineHeightOf(parent), rootLineHeight});
    if (!root)
        rootFontSize = style.fontSize;
    LengthBasis basis{style.fontSize, rootFontSize, lineHeightOf(parent), rootLineHeight};
    if (auto value = declared.value(CSSPropertyID::LineHeight))
        applyLineHeight(style, *value, parent, basis);
    if (!root)
        rootLineHeight = lineHeightOf(style);
    basis = {style.fontSize, rootFontSize, lineHeightOf(style), rootLineHeight};

    // The margins the browser's own style sheet gives.
    if (element.isHTML() && element.localName() == "body")
        style.margin = {8, 8, 8, 8};
    else if (element.isHTML() && element.localName() == "p")
        style.margin = {style.fontSize, 0, style.fontSize, 0};

    for (const auto& [property, value] : declared.declarations()) {
        bool inherited = property != CSSPropertyID::Width && property != CSSPropertyID::Height && property != CSSPropertyID::Display
            && property != CSSPropertyID::Position && property != CSSPropertyID::Margin && property != CSSPropertyID::Padding
            && property != CSSPropertyID::UnicodeBidi;
        Keyword keyword = wideKeyword(value, inherited);
        // The parent's or the initial value of the property, as text where it is kept as text.
        auto pick = [&](std::string ComputedStyle::*member) {
            style.*member = keyword == Keyword::Inherit ? parent.*member
                : keyword == Keyword::Initial          ? kInitial.*member
                                                       : value;
        };
        switch (property) {
        case CSSPropertyID::Color:
            if (keyword == Keyword::Initial)
                style.color = kInitial.color;
            else if (keyword == Keyword::None && value != "currentcolor")
                style.color = parseCSSColor(value).value_or(parent.color);
            break;
        case CSSPropertyID::FontWeight:
            style.fontWeight = keyword == Keyword::Inherit ? parent.fontWeight
                : keyword == Keyword::Initial              ? kInitial.fontWeight
                                                           : fontWeightValue(value, parent.fontWeight);
            break;
        case CSSPropertyID::FontStretch:
            pick(&ComputedStyle::fontStretch);
            if (keyword == Keyword::None && value == "normal")
                style.fontStretch = "100%";
            break;
        case CSSPropertyID::FontStyle: pick(&ComputedStyle::fontStyle); break;
        case CSSPropertyID::FontVariant: pick(&ComputedStyle::fontVariant); break;
        case CSSPropertyID::FontFamily: pick(&ComputedStyle::fontFamily); break;
        case CSSPropertyID::Display: pick(&ComputedStyle::display); break;
        case CSSPropertyID::Direction: pick(&ComputedStyle::direction); break;
        case CSSPropertyID::Visibility: pick(&ComputedStyle::visibility); break;
        case CSSPropertyID::Position: pick(&ComputedStyle::position); break;
        case CSSPropertyID::Width:
        case CSSPropertyID::Height:
        case CSSPropertyID::LetterSpacing:
        case CSSPropertyID::WordSpacing: {
            std::string ComputedStyle::*member = property == CSSPropertyID::Width ? &ComputedStyle::width
                : property == CSSPropertyID::Height                                ? &ComputedStyle::height
                : property == CSSPropertyID::LetterSpacing                         ? &ComputedStyle::letterSpacing
                                                                              : &ComputedStyle::wordSpacing;
            pick(member);
            auto length = parseCSSLength(style.*member);
            if (keyword == Keyword::None && length && length->unit != "%")
                style.*member = numberToString(pixels(*length, basis)) + "px";
            break;
        }
        case CSSPropertyID::TextAlign: pick(&ComputedStyle::textAlign); break;
        case CSSPropertyID::UnicodeBidi: pick(&ComputedStyle::unicodeBidi); break;
        case CSSPropertyID::Margin:
        case CSSPropertyID::Padding: {
            std::array<double, 4> ComputedStyle::*member = property == CSSPropertyID::Margin ? &ComputedStyle::margin
                                                                                             : &ComputedStyle::padding;
            if (keyword != Keyword::None)
                style.*member = keyword == Keyword::Inherit ? parent.*member : kInitial.*member;
            else
                style.*member = boxEdges(value, basis);
            break;
        }
        case CSSPropertyID::FontSize:
        case CSSPropertyID::LineHeight:
            break; // done above
        }
    }
    return style;
}

std::string serializeColor(const CSSColor& color)
{
    std::string rgb = std::to_string(color.red) + ", " + std::to_string(color.green) + ", " + std::to_string(color.blue);
    if (color.isOpaque())
        return "rgb(" + rgb + ")";
    return "rgba(" + rgb + ", " + numberToString(std::round(color.alpha / 255.0 * 1000) / 1000) + ")";
}

std::string px(double value) { return numberToString(value) + "px"; }

} // namespace

std::optional<double> ComputedStyle::lineHeightPixels() const
{
    switch (lineHeightKind) {
    case LineHeight::Normal:
        return {};
    case LineHeight::Number:
        return lineHeightValue * fontSize;
    case LineHeight::Length:
        return lineHeightValue;
    }
    return {};
}

std::string ComputedStyle::propertyValue(std::string_view name) const
{
    std::string key(name);
    std::transform(key.begin(), key.end(), key.begin(), [](unsigned char c) { return std::tolower(c); });
    if (key == "font") {
        std::string lineHeight = lineHeightKind == LineHeight::Normal ? "normal" : propertyValue("line-height");
        return serializeFontShorthand({fontStyle, fontVariant, fontWeight == 400 ? "normal" : numberToString(fontWeight),
                                       fontStretch == "100%" ? "normal" : fontStretch, px(fontSize), lineHeight,
                                       fontFamily});
    }
    auto id = cssPropertyID(key);
    if (!id)
        return "";
    switch (*id) {
    case CSSPropertyID::Color: return serializeColor(color);
    case CSSPropertyID::FontStyle: return fontStyle;
    case CSSPropertyID::FontVariant: return fontVariant;
    case CSSPropertyID::FontWeight: return numberToString(fontWeight);
    case CSSPropertyID::FontStretch: return fontStretch;
    case CSSPropertyID::FontSize: return px(fontSize);
    case CSSPropertyID::LineHeight:
        // The resolved value: pixels, also for a multiplier.
        return lineHeightKind == LineHeight::Normal ? "normal" : px(*lineHeightPixels());
    case CSSPropertyID::FontFamily: return fontFamily;
    case CSSPropertyID::Width: return width;
    case CSSPropertyID::Height: return height;
    case CSSPropertyID::Display: return display;
    case CSSPropertyID::Direction: return direction;
    case CSSPropertyID::Visibility: return visibility;
    case CSSPropertyID::Position: return position;
    case CSSPropertyID::LetterSpacing: return letterSpacing;
    case CSSPropertyID::WordSpacing: return wordSpacing;
    case CSSPropertyID::TextAlign: return textAlign;
    case CSSPropertyID::Margin: return serializeEdges(margin);
    case CSSPropertyID::Padding: return serializeEdges(padding);
    case CSSPropertyID::UnicodeBidi: return unicodeBidi;
    }
    return "";
}

ComputedStyle computeStyle(const Element& element)
{
    static const ComputedStyle kInitial;
    if (!element.isConnected())
        return kInitial;
    // From the root down; the chain is walked without recursion, however deep the tree.
    std::vector<const Element*> chain;
    for (const Element* e = &element; e;) {
        chain.push_back(e);
        auto parent = e->parent();
        e = parent.get(); // the tree keeps every ancestor alive
    }
    ComputedStyle parent = kInitial;
    ComputedStyle root;
    for (auto it = chain.rbegin(); it != chain.rend(); ++it) {
        bool isRoot = it == chain.rbegin();
        parent = cascade(**it, parent, isRoot ? nullptr : &root);
        if (isRoot)
            root = parent;
    }
    return parent;
}

std::vector<std::string> splitFontFamilies(std::string_view list)
{
    std::vector<std::string> families;
    std::string current;
    char quote = 0;
    auto flush = [&] {
        std::size_t start = current.find_first_not_of(" \t\n\r\f");
        std::size_t end = current.find_last_not_of(" \t\n\r\f");
        if (start != std::string::npos)
            families.push_back(current.substr(start, end - start + 1));
        current.clear();
    };
    for (char c : list) {
        if (quote) {
            if (c == quote)
                quote = 0;
            else
                current += c;
        } else if (c == '"' || c == '\'') {
            quote = c;
        } else if (c == ',') {
            flush();
        } else {
            current += c;
        }
    }
    flush();
    return families;
}
