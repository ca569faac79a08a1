#include "platform/web/css/CSSColor.h"

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
