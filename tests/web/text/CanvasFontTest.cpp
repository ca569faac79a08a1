#include "web/text/CanvasFont.h"

#include <gtest/gtest.h>

#include <string>

namespace {

struct Case {
    const char* text;
    const char* serialization;  // null: the text is not a font
};

// What the reference browser's font getter returns after setting each text.
constexpr Case kShorthands[] = {
    {"10px sans-serif", "10px sans-serif"},
    {"italic bold 12px Arial, sans-serif", "italic bold 12px Arial, sans-serif"},
    {"12px Helvetica Neue", "12px \"Helvetica Neue\""},
    {"12px 'Helvetica Neue'", "12px \"Helvetica Neue\""},
    {"12px  A ,  B", "12px A, B"},
    {"oblique 12px a", "italic 12px a"},
    {"oblique 14deg 12px a", "italic 12px a"},
    {"oblique 20deg 12px a", "12px a"},
    {"oblique 91deg 12px a", nullptr},
    {"700 12px a", "bold 12px a"},
    {"600 12px a", "600 12px a"},
    {"100.5 12px a", "100 12px a"},
    {"1000 12px a", "1000 12px a"},
    {"1001 12px a", nullptr},
    {"0 12px a", nullptr},
    {"bold small-caps italic 12px a", "italic bold small-caps 12px a"},
    {"italic small-caps bold condensed 12px a", "italic bold small-caps 12px a"},
    {"normal normal normal normal 12px a", "12px a"},
    {"normal normal normal normal normal 12px a", nullptr},
    {"bold bold 12px a", nullptr},
    {"BOLD 12PX A", "bold 12px A"},
    {"12pt a", "16px a"},
    {"1in a", "96px a"},
    {"1pc a", "16px a"},
    {"10mm a", "37.7953px a"},
    {"1q a", "0.944882px a"},
    {"2em a", "20px a"},
    {"50% a", "5px a"},
    {"1rem a", "16px a"},
    {"1ex a", "5.2832px a"},
    {"1ch a", "5.56152px a"},
    {"1ic a", "10px a"},
    {"1cap a", "6.87988px a"},
    {"1lh a", "11px a"},
    {"2rlh a", "36px a"},
    {"2rex a", "16.9063px a"},
    {"10vw a", "128px a"},
    {"1cqh a", "7.2px a"},
    {"2lh/100 a", "22px a"},
    {"small a", "13px a"},
    {"xx-large a", "32px a"},
    {"xxx-large a", "48px a"},
    {"larger a", "12px a"},
    {"smaller a", "8.33333px a"},
    {"12.345678px a", "12.3457px a"},
    {"1e-7px a", "1.00000e-7px a"},
    {"1e10px a", "10000px a"},
    {"-1px a", nullptr},
    {"0 a", "0px a"},
    {"12px/2 a", "12px a"},
    {"1.5em/2 a", "15px a"},
    {"12px/ a", nullptr},
    {"12px Serif", "12px serif"},
    {"12px SANS-SERIF", "12px sans-serif"},
    {"12px \"sans-serif\"", "12px \"sans-serif\""},
    {"12px --a", "12px \"--a\""},
    {"12px \"a\\\"b\"", "12px \"a\\\"b\""},
    {"12px \"\"", "12px \"\""},
    {"12px a /* note */", "12px a"},
    {"12px\ta", "12px a"},
    {"caption", "16px Arial"},
    {"status-bar", "16px Arial"},
    {"inherit", nullptr},
    {"initial", nullptr},
    {"12px inherit", nullptr},
    {"12px", nullptr},
    {"a", nullptr},
    {"", nullptr},
    {"12px a,", nullptr},
    {"12px ,a", nullptr},
    {"12px 3a", nullptr},
    {"12px a.b", nullptr},
    {"12px .SF UI Text", nullptr},
    {"12px \".SF UI Text\"", "12px \".SF UI Text\""},
};

TEST(CanvasFontTest, ParsesAndSerializesLikeTheReferenceBrowser)
{
    for (const Case& c : kShorthands) {
        const auto font = parseCanvasFont(c.text);
        if (!c.serialization) {
            EXPECT_FALSE(font) << c.text << " gave " << font->serialization();
            continue;
        }
        ASSERT_TRUE(font) << c.text;
        EXPECT_EQ(font->serialization(), c.serialization) << c.text;
        // What the getter returns reads back as the same font.
        const auto again = parseCanvasFont(font->serialization());
        ASSERT_TRUE(again) << c.text;
        EXPECT_EQ(again->serialization(), font->serialization()) << c.text;
    }
}

TEST(CanvasFontTest, RelativeSizesReferToTheCanvasElementsFont)
{
    CanvasFontBasis basis;
    basis.fontSize = 30;
    basis.lineHeight = 40;
    basis.rootFontSize = 20;
    EXPECT_EQ(parseCanvasFont("2em serif", basis)->serialization(), "60px serif");
    EXPECT_EQ(parseCanvasFont("50% serif", basis)->serialization(), "15px serif");
    EXPECT_EQ(parseCanvasFont("larger serif", basis)->serialization(), "36px serif");
    // The line height in the shorthand is dropped; lh is the element's.
    EXPECT_EQ(parseCanvasFont("2lh/100 serif", basis)->serialization(), "80px serif");
    EXPECT_EQ(parseCanvasFont("1rem serif", basis)->serialization(), "20px serif");
    // Units of the element's font come from its families.
    basis.families = {"Liberation Mono", "monospace"};
    EXPECT_EQ(parseCanvasFont("1ch serif", basis)->serialization(), "18.0029px serif");
    // The same text in another basis is another font.
    EXPECT_EQ(parseCanvasFont("2em serif")->serialization(), "20px serif");
    EXPECT_EQ(parseCanvasFont("12px serif", basis)->serialization(), "12px serif");
}

TEST(CanvasFontTest, KeepsEachField)
{
    const auto font = parseCanvasFont("italic small-caps 300 expanded 14px/20px Foo Bar, 'Baz', monospace");
    ASSERT_TRUE(font);
    EXPECT_EQ(font->style, CanvasFontStyle::Italic);
    EXPECT_EQ(font->variant, CanvasFontVariant::SmallCaps);
    EXPECT_EQ(font->weight, 300);
    EXPECT_EQ(font->stretch, 125);
    EXPECT_EQ(font->size, 14);
    ASSERT_EQ(font->families.size(), 3u);
    EXPECT_EQ(font->families[0], (CanvasFontFamily{"Foo Bar", false}));
    EXPECT_EQ(font->families[1], (CanvasFontFamily{"Baz", false}));
    EXPECT_EQ(font->families[2], (CanvasFontFamily{"monospace", true}));
}

TEST(CanvasFontTest, DefaultIsTenPixelSansSerif)
{
    EXPECT_EQ(defaultCanvasFont().serialization(), "10px sans-serif");
    EXPECT_EQ(parseCanvasFont("10px sans-serif"), defaultCanvasFont());
}

TEST(CanvasFontTest, CacheKeysTellFontsApart)
{
    const auto a = parseCanvasFont("12px a");
    const auto b = parseCanvasFont("13px a");
    const auto quoted = parseCanvasFont("12px 'serif'");
    const auto generic = parseCanvasFont("12px serif");
    ASSERT_TRUE(a && b && quoted && generic);
    EXPECT_NE(a->cacheKey(), b->cacheKey());
    EXPECT_EQ(a->cacheKey(false), b->cacheKey(false));
    EXPECT_NE(quoted->cacheKey(), generic->cacheKey());
}

TEST(CanvasFontTest, SurvivesHostileText)
{
    EXPECT_FALSE(parseCanvasFont(std::string(1 << 20, 'a')));
    EXPECT_TRUE(parseCanvasFont("12px " + std::string(100000, 'a')));
    const auto broken = parseCanvasFont(std::string("12px \xff\xfe", 7));
    ASSERT_TRUE(broken);
    EXPECT_EQ(broken->serialization(), "12px \xff\xfe");
    EXPECT_FALSE(parseCanvasFont("12px \"unterminated\nstring\""));
    EXPECT_FALSE(parseCanvasFont(std::string("12px a\0b", 8)));
    EXPECT_FALSE(parseCanvasFont("calc(1px"));
    EXPECT_TRUE(parseCanvasFont("99999999999999999999999999999999999px a"));
    EXPECT_EQ(parseCanvasFont("1e400px a")->size, 10000);
    EXPECT_EQ(parseCanvasFont("1e-400px a")->size, 0);
    // Thousands of different fonts: each parses, none is confused with another.
    for (int i = 0; i < 5000; ++i) {
        const auto font = parseCanvasFont(std::to_string(i) + "px f" + std::to_string(i));
        ASSERT_TRUE(font);
        ASSERT_EQ(font->size, std::min(i, 10000));
        ASSERT_EQ(font->families[0].name, "f" + std::to_string(i));
    }
}

} // namespace
