#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

// The CSS properties an element's style knows here: the ones that reach a canvas (its colour for
// currentColor, its font for relative font sizes) and the few the page's markup and scripts set
// on elements. Declarations of any other property are dropped, as browsers drop properties
// they do not support.
enum class CSSPropertyID {
    Color,
    FontStyle,
    FontVariant,
    FontWeight,
    FontStretch,
    FontSize,
    LineHeight,
    FontFamily,
    Width,
    Height,
    Display,
    Direction,
    Visibility,
    Position,
    LetterSpacing,
    WordSpacing,
    TextAlign,
    // One to four lengths (top, right, bottom, left as CSS repeats them); no longhands here.
    Margin,
    Padding,
    UnicodeBidi,
};

inline constexpr std::size_t kCSSPropertyCount = std::size_t(CSSPropertyID::UnicodeBidi) + 1;

// "font-size" for FontSize.
std::string_view cssPropertyName(CSSPropertyID id);
// The property an ASCII case-insensitive name stands for.
std::optional<CSSPropertyID> cssPropertyID(std::string_view name);

// A value of the property as a declaration keeps it (keywords in lower case, colours as
// "rgb(...)"/"rgba(...)", lengths as written), or nothing when it is not valid for the property.
// The CSS-wide keywords (inherit, initial, unset, revert) are valid everywhere.
std::optional<std::string> parseCSSPropertyValue(CSSPropertyID id, std::string_view text);

// The 'font' shorthand: its longhands in order (style, variant, weight, stretch, size, line
// height, family), the ones it does not name reset to their initial values; nothing when invalid.
using CSSLonghands = std::vector<std::pair<CSSPropertyID, std::string>>;
std::optional<CSSLonghands> parseFontShorthand(std::string_view text);
// The shorthand's text from its longhands' values (in the order above).
std::string serializeFontShorthand(const std::vector<std::string>& longhands);
// The longhands of 'font', in the order of parseFontShorthand.
const std::vector<CSSPropertyID>& fontLonghands();

bool isCSSWideKeyword(std::string_view value);

// A CSS length or percentage as written: "12px", "1.5em", "50%", "0".
struct CSSLength {
    double value = 0;
    std::string unit; // lower case; "%" for percentages, "" for a plain number
};
std::optional<CSSLength> parseCSSLength(std::string_view text);

// `text` without the white space CSS allows around it (space, tab, newline, return, form feed).
std::string_view trimCSSWhitespace(std::string_view text);
