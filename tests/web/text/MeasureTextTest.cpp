#include "web/text/CanvasText.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <string>

namespace {

constexpr double kTolerance = 0.01;

struct Case {
    const char* font;
    const char* text;
    CanvasTextBaseline baseline;
    CanvasTextAlign align;
    CanvasDirection direction;
    double letterSpacing;
    CanvasFontKerning kerning;
    // width, actualBoundingBoxLeft, actualBoundingBoxRight, fontBoundingBoxAscent,
    // fontBoundingBoxDescent, actualBoundingBoxAscent, actualBoundingBoxDescent,
    // hangingBaseline, alphabeticBaseline, ideographicBaseline
    double expected[10];
};

using B = CanvasTextBaseline;
using A = CanvasTextAlign;
using D = CanvasDirection;
using K = CanvasFontKerning;

// measureText() results of the reference browser with the project's font configuration and
// Liberation Sans as its standard font.
const Case kCases[] = {
    // The built-in preview script's level text.
    {"17.3333px Helvetica Neue", "55", B::Middle, A::Center, D::Inherit, 0, K::Auto,
     {19.2742, 9.6371, 9, 11.2266, 8.7734, 7.2266, 5.7734, 8.0266, -4.7734, -8.7734}},
    {"17.3333px Helvetica Neue", "100", B::Middle, A::Center, D::Inherit, 0, K::Auto,
     {28.9113, 13.4556, 13.8185, 11.2266, 8.7734, 8.2266, 5.7734, 8.0266, -4.7734, -8.7734}},
    {"13px Helvetica Neue", "7", B::Middle, A::Center, D::Inherit, 0, K::Auto,
     {7.23, 3.615, 3.385, 8.4219, 6.5781, 5.4219, 3.5781, 6.0219, -3.5781, -6.5781}},
    {"26px -apple-system", "55", B::Middle, A::Center, D::Inherit, 0, K::Auto,
     {28.9199, 13.46, 14, 16.8281, 13.1719, 10.8281, 8.1719, 12.0281, -7.1719, -13.1719}},
    // Every baseline.
    {"10px sans-serif", "Hello", B::Alphabetic, A::Start, D::Inherit, 0, K::Auto,
     {22.7881, 0, 23.2266, 9, 2, 8, 1, 7.2, 0, -2}},
    {"10px sans-serif", "Hello", B::Top, A::Start, D::Inherit, 0, K::Auto,
     {22.7881, 0, 23.2266, 1.25, 9.75, 0.25, 8.75, -0.55, -7.75, -9.75}},
    {"10px sans-serif", "Hello", B::Hanging, A::Start, D::Inherit, 0, K::Auto,
     {22.7881, 0, 23.2266, 1.8, 9.2, 0.8, 8.2, 0, -7.2, -9.2}},
    {"10px sans-serif", "Hello", B::Middle, A::Start, D::Inherit, 0, K::Auto,
     {22.7881, 0, 23.2266, 6.25, 4.75, 5.25, 3.75, 4.45, -2.75, -4.75}},
    {"10px sans-serif", "Hello", B::Ideographic, A::Start, D::Inherit, 0, K::Auto,
     {22.7881, 0, 23.2266, 11, 0, 10, -1, 9.2, 2, 0}},
    {"10px sans-serif", "Hello", B::Bottom, A::Start, D::Inherit, 0, K::Auto,
     {22.7881, 0, 23.2266, 11.25, -0.25, 10.25, -1.25, 9.45, 2.25, 0.25}},
    // Alignment and direction.
    {"10px sans-serif", "Hello", B::Alphabetic, A::Right, D::Inherit, 0, K::Auto,
     {22.7881, 22.7881, 0.4385, 9, 2, 8, 1, 7.2, 0, -2}},
    {"10px sans-serif", "Hello", B::Alphabetic, A::End, D::Rtl, 0, K::Auto,
     {22.7881, 0, 23.2266, 9, 2, 8, 1, 7.2, 0, -2}},
    {"16px sans-serif", "abc \u05e9\u05dc\u05d5\u05dd 123", B::Alphabetic, A::Start, D::Rtl, 0, K::Auto,
     {96.7891, 95.7891, 0, 14, 3, 12, 1, 11.2, 0, -3}},
    // Other families and styles, made-up bold for a fallback face, made-up small capitals.
    {"20px serif", "Wg", B::Alphabetic, A::Start, D::Inherit, 0, K::Auto, {28.877, 0, 28.877, 18, 4, 14, 5, 14.4, 0, -4}},
    {"20px Foo", "Hello", B::Alphabetic, A::Start, D::Inherit, 0, K::Auto,
     {45.5762, -1, 45.4531, 18, 4, 15, 1, 14.4, 0, -4}},
    {"13px monospace", "Wg", B::Alphabetic, A::Start, D::Inherit, 0, K::Auto,
     {15.6025, 0, 14.8013, 11, 4, 9, 3, 8.8, 0, -4}},
    {"bold 16px Arial", "Hello", B::Alphabetic, A::Start, D::Inherit, 0, K::Auto,
     {39.1172, -1, 39.3438, 14, 3, 12, 1, 11.2, 0, -3}},
    {"italic 12px Helvetica", "Hello", B::Alphabetic, A::Start, D::Inherit, 0, K::Auto,
     {27.3457, 0, 27.6719, 11, 3, 9, 1, 8.8, 0, -3}},
    {"bold 16px Arial", "\u05e9\u05dc\u05d5\u05dd", B::Alphabetic, A::Start, D::Inherit, 0, K::Auto,
     {35.4062, -1, 36.0703, 14, 3, 12, 1, 11.2, 0, -3}},
    {"small-caps 18px sans-serif", "Hg5", B::Alphabetic, A::Start, D::Inherit, 0, K::Auto,
     {33.1216, -1, 33.1108, 16, 4, 13, 1, 12.8, 0, -4}},
    // Kerning, spacing, white space.
    {"17px sans-serif", "AVAVAVAV", B::Alphabetic, A::Start, D::Inherit, 0, K::Auto,
     {81.8789, 0, 82.54, 15, 4, 12, 0, 12, 0, -4}},
    {"17px sans-serif", "AVAVAVAV", B::Alphabetic, A::Start, D::Inherit, 0, K::None,
     {90.7109, 0, 91.3721, 15, 4, 12, 0, 12, 0, -4}},
    {"10px sans-serif", "Hello", B::Alphabetic, A::Start, D::Inherit, 2, K::Auto,
     {32.7881, 0, 31.2266, 9, 2, 8, 1, 7.2, 0, -2}},
    // Words are shaped apart: no kerning between a space and the letter after it.
    {"16px Helvetica Neue", "start Ag", B::Alphabetic, A::Start, D::Inherit, 0, K::Auto,
     {55.1328, 0, 54.2344, 14, 3, 12, 4, 11.2, 0, -3}},
    {"10px sans-serif", "a\tb\nc", B::Alphabetic, A::Start, D::Inherit, 0, K::Auto,
     {21.6797, 0, 21.6797, 9, 2, 8, 1, 7.2, 0, -2}},
    // Tiny and large sizes.
    {"3px sans-serif", "Hello", B::Alphabetic, A::Start, D::Inherit, 0, K::Auto,
     {6.8364, 0, 7.168, 2.7158, 0.6357, 3, 1, 2.1727, 0, -0.6357}},
    {"300.5px sans-serif", "Hg", B::Alphabetic, A::Start, D::Inherit, 0, K::Auto,
     {384.1353, -23.4766, 367.2615, 272, 64, 211.2891, 65.7344, 217.6, 0, -64}},
    // Latin text in a right-to-left paragraph stays in reading order.
    {"10px sans-serif", "Hello", B::Alphabetic, A::Start, D::Rtl, 0, K::Auto,
     {22.7881, 22.7881, 0.4385, 9, 2, 8, 1, 7.2, 0, -2}},
};

TEST(MeasureTextTest, MatchesTheReferenceBrowser)
{
    for (const Case& c : kCases) {
        CanvasTextStyle style;
        style.font = *parseCanvasFont(c.font);
        style.baseline = c.baseline;
        style.align = c.align;
        style.direction = c.direction;
        style.letterSpacing = c.letterSpacing;
        style.kerning = c.kerning;
        const TextMetrics m = measureText(c.text, style);
        const double actual[10] = {m.width, m.actualBoundingBoxLeft, m.actualBoundingBoxRight,
                                   m.fontBoundingBoxAscent, m.fontBoundingBoxDescent, m.actualBoundingBoxAscent,
                                   m.actualBoundingBoxDescent, m.hangingBaseline, m.alphabeticBaseline,
                                   m.ideographicBaseline};
        for (int i = 0; i < 10; ++i)
            EXPECT_NEAR(actual[i], c.expected[i], kTolerance) << c.font << " \"" << c.text << "\" field " << i;
    }
}

TEST(MeasureTextTest, EmBoxSpansTheFontSize)
{
    for (double size : {10.0, 13.0, 17.3333, 64.0}) {
        CanvasTextStyle style;
        style.font.size = size;
        for (auto baseline : {B::Top, B::Middle, B::Alphabetic, B::Bottom}) {
            style.baseline = baseline;
            const TextMetrics m = measureText("x", style);
            EXPECT_NEAR(m.emHeightAscent + m.emHeightDescent, size, 1.0 / 64);
        }
        style.baseline = B::Top;
        EXPECT_EQ(measureText("x", style).emHeightAscent, 0);
        style.baseline = B::Bottom;
        EXPECT_EQ(measureText("x", style).emHeightDescent, 0);
        style.baseline = B::Middle;
        const TextMetrics middle = measureText("x", style);
        EXPECT_EQ(middle.emHeightAscent, middle.emHeightDescent);
    }
}

TEST(MeasureTextTest, EmptyAndUnusualTextMeasures)
{
    CanvasTextStyle style;
    EXPECT_EQ(measureText("", style).width, 0);
    EXPECT_EQ(measureText("", style).fontBoundingBoxAscent, 9);
    // Broken UTF-8 reads as replacement characters, each as wide as a proper one.
    EXPECT_NEAR(measureText("\xff\xfe", style).width, 2 * measureText("\xef\xbf\xbd", style).width, 1e-9);
    EXPECT_NEAR(measureText("\xe2\x82", style).width, measureText("\xef\xbf\xbd", style).width, 1e-9);
    // A zero-sized font has no extent.
    style.font.size = 0;
    EXPECT_EQ(measureText("Hello", style).width, 0);
    // Word spacing widens spaces only.
    style.font.size = 10;
    const double plain = measureText("a b c", style).width;
    style.wordSpacing = 3;
    EXPECT_NEAR(measureText("a b c", style).width, plain + 6, 1e-9);
}

} // namespace
