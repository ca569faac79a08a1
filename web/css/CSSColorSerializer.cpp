#include "web/css/CSSColor.h"

#include <charconv>
#include <cmath>
#include <cstdio>
#include <string>

namespace {

// A number as browsers write colour components: six significant digits, without trailing
// zeros, in exponent form only for very small or large magnitudes.
std::string formatComponent(double value)
{
    if (!std::isfinite(value))
        return value > 0 ? "infinity" : value < 0 ? "-infinity" : "0";
    char buffer[64];
    std::snprintf(buffer, sizeof buffer, "%.5e", value);
    double rounded = std::strtod(buffer, nullptr);
    if (rounded == 0)
        return "0";
    int exponent = int(std::floor(std::log10(std::fabs(rounded))));
    if (exponent < -6 || exponent >= 21) {
        // "1.00000e-7": mantissa kept whole, exponent without padding.
        std::string text = buffer;
        std::size_t e = text.find('e');
        int power = std::atoi(text.c_str() + e + 1);
        return text.substr(0, e) + "e" + (power > 0 ? "+" : "") + std::to_string(power);
    }
    std::snprintf(buffer, sizeof buffer, "%.*f", std::max(0, 5 - exponent), rounded);
    std::string text = buffer;
    if (text.find('.') != std::string::npos) {
        text.erase(text.find_last_not_of('0') + 1);
        if (text.back() == '.')
            text.pop_back();
    }
    return text == "-0" ? "0" : text;
}

std::string_view functionName(CSSColorSpace space)
{
    switch (space) {
    case CSSColorSpace::Lab: return "lab";
    case CSSColorSpace::LCH: return "lch";
    case CSSColorSpace::OKLab: return "oklab";
    case CSSColorSpace::OKLCH: return "oklch";
    default: return "";
    }
}

} // namespace

std::string serializeCanvasColor(const CSSColor& color)
{
    char buffer[48];
    if (color.isOpaque()) {
        std::snprintf(buffer, sizeof buffer, "#%02x%02x%02x", color.red, color.green, color.blue);
        return buffer;
    }
    // The shortest of two or three decimals that gives the same 8-bit alpha back.
    double alpha = color.alpha / 255.0;
    double twoDecimals = std::round(alpha * 100) / 100;
    double rounded = std::lround(twoDecimals * 255) == color.alpha ? twoDecimals : std::round(alpha * 1000) / 1000;
    // to_chars, unlike printf, ignores the process locale's decimal separator.
    char alphaText[16];
    auto end = std::to_chars(alphaText, alphaText + sizeof alphaText, rounded, std::chars_format::fixed, 3).ptr;
    std::string_view trimmed(alphaText, end - alphaText);
    trimmed = trimmed.substr(0, trimmed.find_last_not_of('0') + 1);
    if (trimmed.back() == '.')
        trimmed.remove_suffix(1);
    std::snprintf(buffer, sizeof buffer, "rgba(%d, %d, %d, %.*s)", color.red, color.green, color.blue,
                  int(trimmed.size()), trimmed.data());
    return buffer;
}

std::string serializeCanvasColor(const CSSColorValue& color)
{
    if (color.legacy)
        return serializeCanvasColor(color.toSRGB8());
    std::string text;
    if (isColorFunctionSpace(color.space)) {
        text = "color(";
        text += colorFunctionName(color.space);
        text += ' ';
    } else {
        text = functionName(color.space);
        text += '(';
    }
    for (int i = 0; i < 3; ++i) {
        if (i > 0)
            text += ' ';
        text += color.isMissing(i) ? "none" : formatComponent(color.components[i]);
    }
    if (color.isMissing(3))
        text += " / none";
    else if (color.alpha != 1)
        text += " / " + formatComponent(color.alpha);
    text += ')';
    return text;
}
