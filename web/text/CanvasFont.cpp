#include "web/text/CanvasFont.h"

#include "web/text/CssTokens.h"
#include "web/text/FontSelector.h"
#include "web/text/LruCache.h"
#include "web/css/CSSUnits.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <cstring>

namespace {

// The root element's font size, which rem refers to, and the largest size a font may have.
constexpr double kRootFontSize = 16;
constexpr double kMaximumFontSize = 10000;
// Canvas text is measured without a page around it; viewport units in a font use this one.
constexpr double kViewportWidth = 1280, kViewportHeight = 720;

constexpr std::array<const char*, 13> kGenericFamilyNames{
    "serif", "sans-serif", "monospace", "cursive", "fantasy", "system-ui", "ui-serif",
    "ui-sans-serif", "ui-monospace", "ui-rounded", "math", "emoji", "fangsong"};

bool isCssWideKeyword(const std::string& lower)
{
    return lower == "inherit" || lower == "initial" || lower == "unset" || lower == "revert"
        || lower == "revert-layer" || lower == "default";
}

bool isGenericFamily(const std::string& lower)
{
    return std::any_of(kGenericFamilyNames.begin(), kGenericFamilyNames.end(),
                       [&](const char* name) { return lower == name; });
}

std::optional<double> absoluteSizeKeyword(const std::string& lower)
{
    static constexpr std::pair<const char*, double> kSizes[] = {
        {"xx-small", 9}, {"x-small", 10}, {"small", 13}, {"medium", 16}, {"large", 18},
        {"x-large", 24}, {"xx-large", 32}, {"xxx-large", 48}};
    for (auto [name, size] : kSizes) {
        if (lower == name)
            return size;
    }
    return std::nullopt;
}

std::optional<double> stretchKeyword(const std::string& lower)
{
    static constexpr std::pair<const char*, double> kStretches[] = {
        {"ultra-condensed", 50}, {"extra-condensed", 62.5}, {"condensed", 75},
        {"semi-condensed", 87.5}, {"semi-expanded", 112.5}, {"expanded", 125},
        {"extra-expanded", 150}, {"ultra-expanded", 200}};
    for (auto [name, stretch] : kStretches) {
        if (lower == name)
            return stretch;
    }
    return std::nullopt;
}

std::optional<double> angleInDegrees(const CssToken& token)
{
    if (token.type != CssToken::Dimension)
        return std::nullopt;
    auto degrees = degreesPerAngleUnit(token.text);
    if (!degrees)
        return std::nullopt;
    return token.number * *degrees;
}

} // namespace

std::string formatCssNumber(double value)
{
    if (value == 0 || !std::isfinite(value))
        return "0";
    char buffer[64];
    std::snprintf(buffer, sizeof buffer, "%.5e", value);
    const int exponent = std::atoi(std::strchr(buffer, 'e') + 1);
    if (exponent < -6) {
        std::string text(buffer);
        const auto e = text.find('e');
        return text.substr(0, e + 1) + std::to_string(exponent);
    }
    // Halves round away from zero, as browsers print them (printf would round them to even).
    const int digits = std::max(0, 5 - exponent);
    const double scale = std::pow(10.0, digits);
    std::snprintf(buffer, sizeof buffer, "%.*f", digits, std::round(value * scale) / scale);
    std::string text(buffer);
    if (text.find('.') != std::string::npos) {
        text.erase(text.find_last_not_of('0') + 1);
        if (text.back() == '.')
            text.pop_back();
    }
    return text;
}

namespace {

// A family of a basis as a canvas font names it: generic keywords are generic families.
CanvasFontFamily basisFamily(const std::string& name)
{
    const std::string lower = asciiLower(name);
    if (isGenericFamily(lower))
        return {lower, true};
    return {name, false};
}

class FontShorthandParser {
public:
    FontShorthandParser(std::vector<CssToken> tokens, const CanvasFontBasis& basis)
        : t_(std::move(tokens)), basis_(basis)
    {
    }

    std::optional<CanvasFont> parse()
    {
        if (t_.size() == 1 && t_[0].type == CssToken::Ident) {
            const std::string word = asciiLower(t_[0].text);
            // System fonts compute to the platform's user-interface font.
            if (word == "caption" || word == "icon" || word == "menu" || word == "message-box"
                || word == "small-caption" || word == "status-bar") {
                CanvasFont font;
                font.size = kRootFontSize;
                font.families = {{"Arial", false}};
                return font;
            }
        }
        CanvasFont font;
        if (!prefix(font) || !size(font) || !lineHeight() || !families(font))
            return std::nullopt;
        return font;
    }

private:
    bool atEnd() const { return i_ >= t_.size(); }

    // Up to four of style, variant, weight and stretch, each at most once, "normal" for any.
    bool prefix(CanvasFont& font)
    {
        bool style = false, variant = false, weight = false, stretch = false;
        font.obliqueAngle = 14;
        for (int count = 0; count < 4 && !atEnd(); ++count) {
            const CssToken& token = t_[i_];
            if (token.type == CssToken::Number) {
                if (weight || token.number < 1 || token.number > 1000)
                    return true;  // the size check rejects it
                font.weight = static_cast<int>(token.number);
                weight = true;
                ++i_;
                continue;
            }
            if (token.type != CssToken::Ident)
                return true;
            const std::string word = asciiLower(token.text);
            if (word == "normal") {
                ++i_;
            } else if (!style && (word == "italic" || word == "oblique")) {
                font.style = word == "italic" ? CanvasFontStyle::Italic : CanvasFontStyle::Oblique;
                style = true;
                ++i_;
                if (word == "oblique" && !atEnd()) {
                    if (auto angle = angleInDegrees(t_[i_])) {
                        if (std::abs(*angle) > 90)
                            return false;
                        font.obliqueAngle = *angle;
                        if (*angle == 0)
                            font.style = CanvasFontStyle::Normal;
                        ++i_;
                    }
                }
            } else if (!variant && word == "small-caps") {
                font.variant = CanvasFontVariant::SmallCaps;
                variant = true;
                ++i_;
            } else if (!weight && (word == "bold" || word == "bolder" || word == "lighter")) {
                // Relative weights refer to the normal weight the canvas starts from.
                font.weight = word == "lighter" ? 100 : 700;
                weight = true;
                ++i_;
            } else if (auto value = stretchKeyword(word); value && !stretch) {
                font.stretch = *value;
                stretch = true;
                ++i_;
            } else {
                return true;  // the size, or something the size check rejects
            }
        }
        return true;
    }

    bool size(CanvasFont& font)
    {
        if (atEnd())
            return false;
        const CssToken& token = t_[i_++];
        std::optional<double> px;
        if (token.type == CssToken::Ident) {
            const std::string word = asciiLower(token.text);
            if (word == "larger")
                px = basis_.fontSize * 1.2;
            else if (word == "smaller")
                px = basis_.fontSize / 1.2;
            else
                px = absoluteSizeKeyword(word);
        } else {
            px = cssLengthInPixels(token, lengthBase());
        }
        if (!px || *px < 0 || std::isnan(*px))
            return false;
        font.size = std::min(*px, kMaximumFontSize);
        return true;
    }

    bool lineHeight()
    {
        if (atEnd() || t_[i_].type != CssToken::Slash)
            return true;
        ++i_;
        if (atEnd())
            return false;
        const CssToken& token = t_[i_++];
        if (token.type == CssToken::Ident)
            return asciiLower(token.text) == "normal";
        if (token.type == CssToken::Number || token.type == CssToken::Percentage)
            return token.number >= 0;
        return token.type == CssToken::Dimension && cssLengthInPixels(token, CssLengthBase{}).value_or(-1) >= 0;
    }

    bool families(CanvasFont& font)
    {
        font.families.clear();
        while (true) {
            if (atEnd())
                return false;
            if (t_[i_].type == CssToken::String) {
                font.families.push_back({t_[i_++].text, false});
            } else {
                std::string name;
                std::size_t words = 0;
                for (; !atEnd() && t_[i_].type == CssToken::Ident; ++i_, ++words) {
                    if (isCssWideKeyword(asciiLower(t_[i_].text)))
                        return false;
                    if (words)
                        name += ' ';
                    name += t_[i_].text;
                }
                if (!words)
                    return false;
                const std::string lower = asciiLower(name);
                if (words == 1 && isGenericFamily(lower))
                    font.families.push_back({lower, true});
                else
                    font.families.push_back({name, false});
            }
            if (atEnd())
                return true;
            if (t_[i_++].type != CssToken::Comma)
                return false;
        }
    }

    // Relative sizes refer to the element's font and the root element's, and to a viewport.
    CssLengthBase lengthBase() const
    {
        CanvasFont parent;
        parent.size = basis_.fontSize;
        if (!basis_.families.empty()) {
            parent.families.clear();
            for (const std::string& name : basis_.families)
                parent.families.push_back(basisFamily(name));
        }
        CanvasFont root;
        root.size = basis_.rootFontSize;
        CssLengthBase base;
        base.font = fontUnitsOf(parent, basis_.lineHeight);
        base.root = fontUnitsOf(root, basis_.rootLineHeight);
        base.viewportWidth = kViewportWidth;
        base.viewportHeight = kViewportHeight;
        return base;
    }

    std::vector<CssToken> t_;
    const CanvasFontBasis& basis_;
    std::size_t i_ = 0;
};

} // namespace

std::optional<double> cssLengthInPixels(const CssToken& token, const CssLengthBase& base, bool unitlessZero)
{
    if (token.type == CssToken::Percentage)
        return base.font.em * token.number / 100;
    if (token.type == CssToken::Number && token.number == 0 && unitlessZero)
        return 0.0;
    if (token.type != CssToken::Dimension)
        return std::nullopt;
    const std::string unit = asciiLower(token.text);
    const double n = token.number;
    if (auto pixels = pixelsPerAbsoluteLengthUnit(unit))
        return n * *pixels;
    const CssFontUnits& f = base.font;
    const CssFontUnits& r = base.root;
    const double width = base.viewportWidth / 100, height = base.viewportHeight / 100;
    const std::pair<const char*, double> relative[] = {
        {"em", f.em}, {"ex", f.ex}, {"ch", f.ch}, {"ic", f.ic}, {"cap", f.cap}, {"lh", f.lh},
        {"rem", r.em}, {"rex", r.ex}, {"rch", r.ch}, {"ric", r.ic}, {"rcap", r.cap}, {"rlh", r.lh},
        {"vw", width}, {"vh", height}, {"vi", width}, {"vb", height},
        {"vmin", std::min(width, height)}, {"vmax", std::max(width, height)}};
    for (auto [name, pixels] : relative) {
        if (unit == name)
            return n * pixels;
    }
    // The small, large and dynamic viewports are the one viewport here, and container units
    // without a container refer to it as well.
    for (const char* prefix : {"sv", "lv", "dv", "cq"}) {
        if (unit.size() > 2 && unit.compare(0, 2, prefix) == 0) {
            const std::string axis = unit.substr(2);
            const std::pair<const char*, double> viewport[] = {
                {"w", width}, {"h", height}, {"i", width}, {"b", height},
                {"min", std::min(width, height)}, {"max", std::max(width, height)}};
            for (auto [name, pixels] : viewport) {
                if (axis == name)
                    return n * pixels;
            }
        }
    }
    return std::nullopt;
}

CssFontUnits fontUnitsOf(const CanvasFont& font, std::optional<double> lineHeight)
{
    CssFontUnits units;
    const double size = font.size;
    units.em = units.ic = size;
    units.ex = units.ch = size / 2;
    units.cap = size * 0.7;
    units.lh = lineHeight.value_or(size * 1.2);
    if (FontFace* face = FontSelector::shared().fontSet(font).primary()) {
        units.ex = face->xHeight() * size;
        units.ch = face->advance(face->glyphFor('0')) * size;
        units.cap = face->capHeight() * size;
        // The ideograph for water, when the font has it.
        if (std::uint32_t water = face->glyphFor(0x6C34))
            units.ic = face->advance(water) * size;
        // A normal line is the ascent, descent and line gap, each rounded to whole pixels.
        if (!lineHeight)
            units.lh = std::round(face->ascent() * size) + std::round(face->descent() * size)
                + std::round(face->lineGap() * size);
    }
    return units;
}

CssLengthBase lengthBaseOf(const CanvasFont& font)
{
    CssLengthBase base;
    base.font = base.root = fontUnitsOf(font);
    return base;
}

std::string CanvasFont::serialization() const
{
    std::string out;
    // Only the slant of the plain keywords has a name to print.
    if (style == CanvasFontStyle::Italic || (style == CanvasFontStyle::Oblique && obliqueAngle == 14))
        out += "italic ";
    if (weight == 700)
        out += "bold ";
    else if (weight != 400)
        out += std::to_string(weight) + ' ';
    if (variant == CanvasFontVariant::SmallCaps)
        out += "small-caps ";
    out += formatCssNumber(size) + "px";
    for (std::size_t i = 0; i < families.size(); ++i) {
        out += i ? ", " : " ";
        const CanvasFontFamily& family = families[i];
        const std::string lower = asciiLower(family.name);
        const bool plain = isCssIdentifier(family.name) && family.name.rfind("--", 0) != 0 && !isGenericFamily(lower)
            && !isCssWideKeyword(lower);
        if (family.generic || plain)
            out += family.name;
        else
            out += serializeCssString(family.name);
    }
    return out;
}

std::string CanvasFont::cacheKey(bool withSize) const
{
    // Every text drawn looks its faces up by this key: the shortest text that reads back as
    // the same double names a number as surely as seventeen digits, at a fraction of printf's
    // cost.
    char buffer[128];
    char* end = buffer + sizeof buffer;
    char* at = buffer;
    auto put = [&](double value) { at = std::to_chars(at, end, value).ptr; };
    if (withSize)
        put(size);
    *at++ = '|';
    for (int number : {static_cast<int>(style), static_cast<int>(variant), weight})
        at = std::to_chars(at, end, number).ptr;
    *at++ = '|';
    put(stretch);
    *at++ = '|';
    put(style == CanvasFontStyle::Oblique ? obliqueAngle : 0.0);
    *at++ = '|';
    std::string key(buffer, at);
    for (const auto& family : families) {
        key += family.generic ? '*' : '=';
        key += family.name;
        key += '\x1f';
    }
    return key;
}

std::optional<CanvasFont> parseCanvasFont(std::string_view text, const CanvasFontBasis& basis)
{
    // Scripts set the same few fonts over and over; long texts are never worth keeping.
    constexpr std::size_t kCachedLength = 256;
    static LruCache<std::string, std::optional<CanvasFont>> cache(512);
    const bool cacheable = text.size() <= kCachedLength;
    std::string key;
    if (cacheable) {
        key = text;
        // The same text means another size in another basis.
        if (!(basis == CanvasFontBasis{})) {
            char numbers[128];
            std::snprintf(numbers, sizeof numbers, "\x1f%.17g|%.17g|%.17g|%.17g", basis.fontSize,
                          basis.lineHeight.value_or(-1), basis.rootFontSize, basis.rootLineHeight.value_or(-1));
            key += numbers;
            for (const std::string& family : basis.families)
                key += '|' + family;
        }
        if (auto* cached = cache.find(key))
            return *cached;
    }
    std::optional<CanvasFont> font;
    if (auto tokens = tokenizeCss(text))
        font = FontShorthandParser(std::move(*tokens), basis).parse();
    if (cacheable)
        cache.insert(std::move(key), font);
    return font;
}

CanvasFont defaultCanvasFont()
{
    return CanvasFont{};
}
