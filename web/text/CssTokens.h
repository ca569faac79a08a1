#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

// The few CSS tokens a font shorthand or a spacing length is made of.
struct CssToken {
    enum Type { Ident, String, Number, Percentage, Dimension, Slash, Comma };
    Type type = Ident;
    std::string text;  // identifier, string contents or unit, unescaped
    double number = 0;
    bool integer = false;  // a number written without a fraction or exponent
};

// Splits `text` into tokens, dropping white space and comments. Gives nothing for text that
// holds anything else (functions, brackets, stray delimiters, a string broken by a newline).
std::optional<std::vector<CssToken>> tokenizeCss(std::string_view text);

// ASCII lower case, as CSS keywords and units compare.
std::string asciiLower(std::string_view);

// Whether `name` can be written as one CSS identifier, without quotes.
bool isCssIdentifier(std::string_view name);

// Serializes `text` as a CSS string in double quotes.
std::string serializeCssString(std::string_view text);

// The units one font gives relative lengths, in CSS pixels: its size, x-height, the advances of
// the digit zero and of the ideograph for water, its capital height and its line height.
struct CssFontUnits {
    double em = 16, ex = 8, ch = 8, ic = 16, cap = 11.2, lh = 19.2;
};

// What relative lengths refer to, in CSS pixels: a font's units (em, ex, ...), the root
// element's (rem, rex, ...) and the viewport's. Percentages refer to `em`.
struct CssLengthBase {
    CssFontUnits font;
    CssFontUnits root;
    double viewportWidth = 0, viewportHeight = 0;
};

struct CanvasFont;

// The units of a canvas font; `lineHeight` when the font's line height is not its normal one.
CssFontUnits fontUnitsOf(const CanvasFont& font, std::optional<double> lineHeight = std::nullopt);

// Lengths relative to a canvas font, as canvas spacing has them: the root units are the font's
// too, and there is no viewport (its units are zero).
CssLengthBase lengthBaseOf(const CanvasFont& font);

// Six significant digits, trailing zeros dropped, as browsers print a font's size.
std::string formatCssNumber(double value);

// The value of a length token in CSS pixels, or nothing when the token is not a length.
// A unitless zero counts as a length only where `unitlessZero` says so.
std::optional<double> cssLengthInPixels(const CssToken& token, const CssLengthBase& base, bool unitlessZero = true);
