#include "web/css/CSSColor.h"

#include <gtest/gtest.h>

#include <string>

namespace {

struct ColorCase {
    const char* text;
    const char* serialized; // nullptr: not a colour
};

// Expected values are what Chromium's fillStyle getter reports for the same text.
const ColorCase kCases[] = {
    {"red", "#ff0000"},
    {" red ", "#ff0000"},
    {"RED", "#ff0000"},
    {"rebeccapurple", "#663399"},
    {"transparent", "rgba(0, 0, 0, 0)"},
    {"currentColor", "#000000"},
    {"ThreeDDarkShadow", "#000000"},
    {"Highlight", "rgba(0, 65, 198, 0.8)"},
    {"#FFF", "#ffffff"},
    {"#abcd", "rgba(170, 187, 204, 0.867)"},
    {"#12345678", "rgba(18, 52, 86, 0.47)"},
    {"#fffff", nullptr},
    {"#12345g", nullptr},
    {"rgb(255, 0, 0)", "#ff0000"},
    {"RGB(1,2,3)", "#010203"},
    {"rgb( 0 , 0 , 0 )", "#000000"},
    {"rgb(/**/1,2,3/**/)", "#010203"},
    {"rgb(300, -5, 20)", "#ff0014"},
    {"rgb(127.5, 0, 0)", "#800000"},
    {"rgb(127.4, 0, 0)", "#7f0000"},
    {"rgb(0.5, 1.5, 2.5)", "#010203"},
    {"rgb(1e2, 0, +10)", "#64000a"},
    {"rgb(10% 20% 30%)", "#1a334d"},
    {"rgb(10%, 20, 30)", nullptr},
    {"rgb(0,0,0,)", nullptr},
    {"rgb(0, 0, 0) extra", nullptr},
    {"rgba(0,0,0,0.45)", "rgba(0, 0, 0, 0.45)"},
    {"rgba(1,2,3,0.3)", "rgba(1, 2, 3, 0.3)"},
    {"rgba(0,0,0,0.002)", "rgba(0, 0, 0, 0.004)"},
    {"rgba(0,0,0,0.999)", "#000000"},
    {"rgba(0,0,0,-1)", "rgba(0, 0, 0, 0)"},
    {"rgba(255, 0, 0, 50%)", "rgba(255, 0, 0, 0.5)"},
    {"rgb(255 0 0 / 50%)", "rgba(255, 0, 0, 0.5)"},
    {"rgb(0 0 0 / -50%)", "rgba(0, 0, 0, 0)"},
    {"rgb(1 2 3 / none)", "rgba(1, 2, 3, 0)"},
    {"rgb(none 0 0)", "#000000"},
    {"rgb(255 0 0 0.5)", nullptr},
    {"hsl(120, 100%, 25%)", "#008000"},
    {"hsl(120deg, 100%, 50%)", "#00ff00"},
    {"hsl(-120, 100%, 50%)", "#0000ff"},
    {"hsl(480, 100%, 50%)", "#00ff00"},
    {"hsl(0.5turn, 100%, 50%)", "#00ffff"},
    {"hsl(3.14159rad, 100%, 50%)", "#00ffff"},
    {"hsl(200grad, 100%, 50%)", "#00ffff"},
    {"hsl(60, 100%, 37.5%)", "#bfbf00"},
    {"hsl(120 50 50)", "#40bf40"},
    {"hsl(120, 100, 50)", nullptr},
    {"hsl(120, 100%, 50%, 2)", "#00ff00"},
    {"hsla(120 100% 50% / 0.2)", "rgba(0, 255, 0, 0.2)"},
    {"hsl(none 100% 50%)", "#ff0000"},
    {"hwb(120 20% 30%)", "#33b333"},
    {"hwb(0, 0%, 0%)", nullptr},
    {"inherit", nullptr},
    {"", nullptr},
    {"red;", nullptr},
};

TEST(CSSColor, ParsesAndSerializesAsChromiumDoes)
{
    for (const auto& c : kCases) {
        auto color = parseCSSColor(c.text);
        if (!c.serialized) {
            EXPECT_FALSE(color.has_value()) << "'" << c.text << "' parsed";
            continue;
        }
        ASSERT_TRUE(color.has_value()) << "'" << c.text << "' did not parse";
        EXPECT_EQ(serializeCanvasColor(*color), c.serialized) << "for '" << c.text << "'";
    }
}

TEST(CSSColor, AlphaKeepsTwoDecimalsOnlyWhenTheyRoundTrip)
{
    // Every 8-bit alpha serializes to a value that parses back to the same byte.
    for (int alpha = 0; alpha < 255; ++alpha) {
        std::string text = serializeCanvasColor(CSSColor{1, 2, 3, std::uint8_t(alpha)});
        auto back = parseCSSColor(text);
        ASSERT_TRUE(back.has_value()) << text;
        EXPECT_EQ(back->alpha, alpha) << text;
    }
}

} // namespace

namespace {

// Colours beyond legacy sRGB keep their space; expected texts are Chromium's fillStyle values.
const ColorCase kModernCases[] = {
    {"color(display-p3 1 0 0 / 0.5)", "color(display-p3 1 0 0 / 0.5)"},
    {"color(srgb 0.123456789 50% 1.5)", "color(srgb 0.123457 0.5 1.5)"},
    {"color(xyz 0.5 0.5 0.5)", "color(xyz-d65 0.5 0.5 0.5)"},
    {"color(srgb none 0 0)", "color(srgb none 0 0)"},
    {"color(srgb 1e-7 0.2 0.3)", "color(srgb 1.00000e-7 0.2 0.3)"},
    {"color(srgb 0.000001 0.2 0.3)", "color(srgb 0.000001 0.2 0.3)"},
    {"color(unknown 1 0 0)", nullptr},
    {"color(srgb 1 0)", nullptr},
    {"lab(50% 20 30 / 50%)", "lab(50 20 30 / 0.5)"},
    {"lab(150 0 0)", "lab(100 0 0)"},
    {"oklch(0.5 0.2 30deg)", "oklch(0.5 0.2 30)"},
    {"oklab(0.5, 0.1, 0.1)", nullptr},
    {"rgb(from red g r b)", "color(srgb 0 1 0)"},
    {"rgb(from red 300 -10 b)", "color(srgb 1.17647 -0.0392157 0)"},
    {"rgb(from rgba(10 20 30 / 0.5) r g b)", "color(srgb 0.0392157 0.0784314 0.117647 / 0.501961)"},
    {"rgb(from red calc(r / 2) g b / 0.5)", "color(srgb 0.5 0 0 / 0.5)"},
    {"rgb(from red r g b / calc(alpha / 3))", "color(srgb 1 0 0 / 0.333333)"},
    {"hsl(from red calc(h + 120) s l)", "color(srgb 0 1 0)"},
    {"lab(from red l a b)", "lab(54.2905 80.8049 69.891)"},
    {"color(from color(srgb 0.25 0.5 0.75 / 0.5) srgb r g b / alpha)", "color(srgb 0.25 0.5 0.75 / 0.5)"},
    {"rgb(from red calc(h) g b)", nullptr},
    {"rgb(from red r g)", nullptr},
    {"rgb(from nonsense r g b)", nullptr},
    {"rgb(calc(100 + 155), 0, 0)", "#ff0000"},
    {"color-mix(in srgb, red, blue)", "color(srgb 0.5 0 0.5)"},
    {"color-mix(in srgb, red 30%, blue)", "color(srgb 0.3 0 0.7)"},
    {"color-mix(in srgb, 30% red, blue)", "color(srgb 0.3 0 0.7)"},
    {"color-mix(in hsl, red, blue)", "color(srgb 1 0 1)"},
    {"color-mix(in srgb, red, transparent)", "color(srgb 1 0 0 / 0.5)"},
    {"color-mix(in srgb, rgba(255,0,0,0.5), blue)", "color(srgb 0.334204 0 0.665796 / 0.75098)"},
    {"color-mix(in srgb, red 0%, blue 0%)", "color(srgb 0.5 0 0.5 / 0)"},
    {"color-mix(in srgb, red 20%, blue 30%)", "color(srgb 0.4 0 0.6 / 0.5)"},
    {"color-mix(in oklch longer hue, red, blue)", "oklch(0.539985 0.285449 146.643)"},
    {"color-mix(in srgb, red, color(srgb 1 0 0))", "color(srgb 1 0 0)"},
    {"color-mix(in srgb, red 120%, blue)", nullptr},
    {"color-mix(in srgb longer hue, red, blue)", nullptr},
    {"color-mix(srgb, red, blue)", nullptr},
    {"color-mix(in srgb, red)", nullptr},
};

TEST(CSSColor, ModernFunctionsKeepTheirSpace)
{
    for (const auto& c : kModernCases) {
        auto color = parseCSSColorValue(c.text);
        if (!c.serialized) {
            EXPECT_FALSE(color.has_value()) << "'" << c.text << "' parsed";
            continue;
        }
        ASSERT_TRUE(color.has_value()) << "'" << c.text << "' did not parse";
        EXPECT_EQ(serializeCanvasColor(*color), c.serialized) << "for '" << c.text << "'";
    }
}

TEST(CSSColor, ConvertsBetweenSpacesAsBrowsersDraw)
{
    // 8-bit values Chromium draws for these colours on sRGB and Display P3 canvases.
    auto p3Red = parseCSSColorValue("color(display-p3 1 0 0)");
    ASSERT_TRUE(p3Red);
    EXPECT_EQ(p3Red->toSRGB8(), (CSSColor{255, 0, 0, 255}));
    EXPECT_EQ(p3Red->toBytesIn(CSSColorSpace::DisplayP3), (CSSColor{255, 0, 0, 255}));
    auto srgb = parseCSSColorValue("rgb(50, 100, 150)");
    EXPECT_EQ(srgb->toBytesIn(CSSColorSpace::DisplayP3), (CSSColor{62, 99, 146, 255}));
    EXPECT_EQ(parseCSSColorValue("#f00")->toBytesIn(CSSColorSpace::DisplayP3), (CSSColor{234, 51, 35, 255}));
    EXPECT_EQ(parseCSSColorValue("lab(50 20 30)")->toSRGB8(), (CSSColor{161, 105, 69, 255}));
    EXPECT_EQ(parseCSSColorValue("color(srgb 0.5 0 0.5)")->toSRGB8(), (CSSColor{128, 0, 128, 255}));
    // Round trips through every space stay put.
    ColorComponents sample{0.2, 0.6, 0.9};
    for (int s = 0; s <= int(CSSColorSpace::HWB); ++s) {
        auto space = CSSColorSpace(s);
        auto back = convertColor(convertColor(sample, CSSColorSpace::SRGB, space), space, CSSColorSpace::SRGB);
        for (int i = 0; i < 3; ++i)
            EXPECT_NEAR(back[i], sample[i], 1e-6) << "through space " << s;
    }
}

TEST(CSSColor, CurrentColorAndHostileInput)
{
    auto magenta = *parseCSSColorValue("magenta");
    EXPECT_EQ(serializeCanvasColor(*parseCSSColorValue("rgb(from currentcolor g r b)", magenta)), "color(srgb 0 1 1)");
    EXPECT_EQ(serializeCanvasColor(*parseCSSColorValue("color-mix(in srgb, currentColor, blue)", magenta)),
              "color(srgb 0.5 0 1)");
    EXPECT_EQ(serializeCanvasColor(*parseCSSColorValue("currentcolor", magenta)), "#ff00ff");
    // Deep nesting is refused rather than recursed into without end.
    std::string nested;
    for (int i = 0; i < 2000; ++i)
        nested += "calc(";
    nested = "rgb(from red " + nested + "1" + std::string(2000, ')') + " g b)";
    EXPECT_FALSE(parseCSSColorValue(nested).has_value());
    EXPECT_FALSE(parseCSSColorValue("rgb(from red calc(1/0) g b)").has_value());
    EXPECT_FALSE(parseCSSColorValue("color-mix(in srgb, red, color-mix(in srgb, blue").has_value());
}

} // namespace
