#include "web/text/CanvasText.h"

#include <cairo.h>
#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <string>
#include <vector>

namespace {

struct Extents {
    double left = 0, top = 0, right = 0, bottom = 0;
    bool empty() const { return right <= left || bottom <= top; }
};

class TextPathTest : public ::testing::Test {
protected:
    void SetUp() override
    {
        surface_ = cairo_image_surface_create(CAIRO_FORMAT_A8, 200, 100);
        cr_ = cairo_create(surface_);
    }
    void TearDown() override
    {
        cairo_destroy(cr_);
        cairo_surface_destroy(surface_);
    }

    Extents draw(std::string_view text, double x, double y, const CanvasTextStyle& style,
                 std::optional<double> maxWidth = std::nullopt, TextPathUse use = TextPathUse::Outline)
    {
        cairo_new_path(cr_);
        appendTextPath(cr_, text, x, y, style, maxWidth, use);
        Extents e;
        cairo_path_extents(cr_, &e.left, &e.top, &e.right, &e.bottom);
        return e;
    }

    int pathElements()
    {
        cairo_path_t* path = cairo_copy_path(cr_);
        const int n = path->num_data;
        cairo_path_destroy(path);
        return n;
    }

    cairo_surface_t* surface_ = nullptr;
    cairo_t* cr_ = nullptr;
};

CanvasTextStyle styleOf(const char* font, CanvasTextAlign align = CanvasTextAlign::Start,
                        CanvasTextBaseline baseline = CanvasTextBaseline::Alphabetic)
{
    CanvasTextStyle style;
    style.font = *parseCanvasFont(font);
    style.align = align;
    style.baseline = baseline;
    return style;
}

// The outlines sit inside the ink box measureText reports (which is rounded out to whole
// pixels), whatever the alignment and baseline.
TEST_F(TextPathTest, OutlinesSitWhereMeasureTextSaysTheInkIs)
{
    using A = CanvasTextAlign;
    using B = CanvasTextBaseline;
    for (A align : {A::Start, A::End, A::Left, A::Right, A::Center}) {
        for (B baseline : {B::Top, B::Hanging, B::Middle, B::Alphabetic, B::Ideographic, B::Bottom}) {
            const CanvasTextStyle style = styleOf("17.3333px Helvetica Neue", align, baseline);
            const TextMetrics m = measureText("Hg55", style);
            const Extents e = draw("Hg55", 100, 50, style);
            const std::string where = std::string(toString(align)) + " " + std::string(toString(baseline));
            // Glyphs snap to a quarter pixel across and a whole pixel down.
            EXPECT_GE(e.left, 100 - m.actualBoundingBoxLeft - 0.25) << where;
            EXPECT_LE(e.left, 100 - m.actualBoundingBoxLeft + 1.25) << where;
            EXPECT_LE(e.right, 100 + m.actualBoundingBoxRight + 0.25) << where;
            EXPECT_GE(e.right, 100 + m.actualBoundingBoxRight - 1.25) << where;
            EXPECT_GE(e.top, 50 - m.actualBoundingBoxAscent - 0.5) << where;
            EXPECT_LE(e.top, 50 - m.actualBoundingBoxAscent + 1.5) << where;
            EXPECT_LE(e.bottom, 50 + m.actualBoundingBoxDescent + 0.5) << where;
        }
    }
}

TEST_F(TextPathTest, PreviewLevelIsCentredOnTheCanvasCentre)
{
    // The built-in script at height 26: the level "55" centred at (7, 7) in a 8.67px font...
    // and at height 52 at (14, 14) in a 17.33px font. Both ways the digits straddle the centre.
    for (auto [size, centre] : {std::pair{8.66667, 7.0}, std::pair{17.3333, 14.0}}) {
        CanvasTextStyle style = styleOf("10px Helvetica Neue", CanvasTextAlign::Center, CanvasTextBaseline::Middle);
        style.font.size = size;
        const Extents e = draw("55", centre, centre, style);
        EXPECT_NEAR((e.left + e.right) / 2, centre, 0.5);
        EXPECT_NEAR((e.top + e.bottom) / 2, centre, 1.0);
    }
}

TEST_F(TextPathTest, MaxWidthSqueezesWideText)
{
    const CanvasTextStyle style = styleOf("20px sans-serif", CanvasTextAlign::Center);
    const Extents wide = draw("Squeeze me", 100, 50, style);
    const Extents squeezed = draw("Squeeze me", 100, 50, style, 40.0);
    EXPECT_LE(squeezed.right - squeezed.left, 41);
    EXPECT_GE(squeezed.right - squeezed.left, 35);
    EXPECT_NEAR((squeezed.left + squeezed.right) / 2, (wide.left + wide.right) / 2, 1);
    EXPECT_NEAR(squeezed.top, wide.top, 0.01);
    // Room enough: drawn as without a limit.
    const Extents roomy = draw("Squeeze me", 100, 50, style, 500.0);
    EXPECT_DOUBLE_EQ(roomy.left, wide.left);
    EXPECT_DOUBLE_EQ(roomy.right, wide.right);
}

TEST_F(TextPathTest, NothingIsAddedForUnusableArguments)
{
    const CanvasTextStyle style = styleOf("20px sans-serif");
    const double nan = std::numeric_limits<double>::quiet_NaN();
    const double inf = std::numeric_limits<double>::infinity();
    for (std::optional<double> maxWidth : {std::optional<double>(0.0), std::optional<double>(-5.0),
                                           std::optional<double>(nan), std::optional<double>(inf)}) {
        draw("Hello", 10, 50, style, maxWidth);
        EXPECT_EQ(pathElements(), 0);
    }
    draw("Hello", nan, 50, style);
    EXPECT_EQ(pathElements(), 0);
    draw("Hello", 10, inf, style);
    EXPECT_EQ(pathElements(), 0);
    draw("", 10, 50, style);
    EXPECT_EQ(pathElements(), 0);
    draw("   ", 10, 50, style);
    EXPECT_EQ(pathElements(), 0);
}

TEST_F(TextPathTest, AddsToThePathInUserSpace)
{
    const CanvasTextStyle style = styleOf("20px sans-serif");
    const Extents plain = draw("H", 10, 40, style);
    cairo_new_path(cr_);
    cairo_rectangle(cr_, 0, 0, 1, 1);
    const int before = pathElements();
    appendTextPath(cr_, "H", 10, 40, style, std::nullopt);
    EXPECT_GT(pathElements(), before);

    // Under a scale the outline scales with it: the same user-space box.
    cairo_save(cr_);
    cairo_scale(cr_, 2, 2);
    const Extents scaled = draw("H", 10, 40, style);
    cairo_restore(cr_);
    EXPECT_NEAR(scaled.left, plain.left, 0.25);
    EXPECT_NEAR(scaled.right, plain.right, 0.25);
    EXPECT_NEAR(scaled.bottom, plain.bottom, 0.5);
    cairo_matrix_t m;
    cairo_get_matrix(cr_, &m);
    EXPECT_EQ(m.xx, 1);
}

// Filled glyphs have the ends of their lines and curves, and so their flat tops and bottoms and
// the flat ends of their curves, on the quarter pixels where the reference's pictures have
// them; outlines to stroke keep the font's shape, and so does text turned off the pixel grid,
// where the steps would not be horizontal.
TEST_F(TextPathTest, FilledGlyphsTakeQuarterPixelStepsAndStrokedOnesDoNot)
{
    auto onQuarter = [](double v) { return std::abs(v * 4 - std::round(v * 4)) < 1e-6; };
    // Flat-topped, and round with its top and bottom at ends of curves.
    for (const char* text : {"H", "O"}) {
        int moved = 0;
        for (double size = 10; size <= 60; size += 1.5) {
            const CanvasTextStyle style = styleOf((std::to_string(size) + "px Helvetica").c_str());
            const std::string where = std::string(text) + " at " + std::to_string(size) + "px";
            const Extents outline = draw(text, 10, 70, style);
            const Extents filled = draw(text, 10, 70, style, std::nullopt, TextPathUse::Fill);
            EXPECT_TRUE(onQuarter(filled.top)) << where << ": " << filled.top;
            EXPECT_TRUE(onQuarter(filled.bottom)) << where << ": " << filled.bottom;
            EXPECT_LE(std::abs(filled.top - outline.top), 0.125 + 1.0 / 64) << where;
            EXPECT_LE(std::abs(filled.bottom - outline.bottom), 0.125 + 1.0 / 64) << where;
            EXPECT_NEAR(filled.left, outline.left, 1e-9) << where;
            EXPECT_NEAR(filled.right, outline.right, 1e-9) << where;
            moved += filled.top != outline.top;

            // Doubled, the steps are quarters of device pixels: eighths of user ones.
            cairo_save(cr_);
            cairo_scale(cr_, 2, 2);
            const Extents scaled = draw(text, 10, 35, style, std::nullopt, TextPathUse::Fill);
            cairo_restore(cr_);
            EXPECT_TRUE(onQuarter(scaled.top * 2)) << where << ": " << scaled.top;

            cairo_save(cr_);
            cairo_rotate(cr_, 0.3);
            const Extents turnedOutline = draw(text, 10, 35, style);
            const Extents turnedFill = draw(text, 10, 35, style, std::nullopt, TextPathUse::Fill);
            cairo_restore(cr_);
            EXPECT_DOUBLE_EQ(turnedFill.top, turnedOutline.top) << where;
        }
        EXPECT_GT(moved, 10) << text;
    }
}

TEST_F(TextPathTest, WhiteSpaceBecomesSpaces)
{
    const CanvasTextStyle style = styleOf("20px sans-serif");
    const Extents spaced = draw("a b", 10, 50, style);
    for (const char* text : {"a\tb", "a\nb", "a\rb", "a\fb"}) {
        const Extents e = draw(text, 10, 50, style);
        EXPECT_DOUBLE_EQ(e.right, spaced.right) << text;
    }
}

// Hebrew is written right to left: the first letter is drawn rightmost.
TEST_F(TextPathTest, RightToLeftTextIsDrawnInVisualOrder)
{
    const CanvasTextStyle style = styleOf("20px sans-serif", CanvasTextAlign::Left);
    const Extents word = draw("\u05e9\u05dc\u05d5\u05dd", 10, 50, style);  // shin lamed vav final-mem
    const Extents shin = draw("\u05e9", 10, 50, styleOf("20px sans-serif", CanvasTextAlign::Left));
    const Extents mem = draw("\u05dd", 10, 50, styleOf("20px sans-serif", CanvasTextAlign::Left));
    const double shinWidth = measureText("\u05e9", style).width;
    const double wordWidth = measureText("\u05e9\u05dc\u05d5\u05dd", style).width;
    // Final mem starts the line; shin ends it.
    EXPECT_NEAR(word.left, mem.left, 0.3);
    EXPECT_NEAR(word.right, shin.right + (wordWidth - shinWidth), 0.3);
}

TEST_F(TextPathTest, MissingGlyphsComeFromAnotherFont)
{
    // Arabic is not in Liberation Sans; a fallback face draws real letters with curves,
    // not the missing-glyph box of straight lines.
    const CanvasTextStyle style = styleOf("20px Helvetica Neue");
    draw("\u0645\u0631\u062d\u0628\u0627", 10, 50, style);
    cairo_path_t* path = cairo_copy_path(cr_);
    int curves = 0;
    for (int i = 0; i < path->num_data; i += path->data[i].header.length)
        curves += path->data[i].header.type == CAIRO_PATH_CURVE_TO;
    cairo_path_destroy(path);
    EXPECT_GT(curves, 10);
}

TEST_F(TextPathTest, SurvivesHostileInput)
{
    CanvasTextStyle style = styleOf("20px sans-serif");
    std::string junk;
    for (int i = 0; i < 200000; ++i)
        junk += static_cast<char>((i * 7919) % 256);
    draw(junk, 10, 50, style, 100.0);
    measureText(junk, style);
    draw(std::string("a\0b", 3), 10, 50, style);
    for (double size : {0.0, 1e-9, 0.3, 10000.0}) {
        style.font.size = size;
        draw("Hg", 10, 50, style);
        const TextMetrics m = measureText("Hg", style);
        EXPECT_TRUE(std::isfinite(m.width) && std::isfinite(m.actualBoundingBoxAscent)) << size;
    }
    // Spacing, positions or a transform far beyond any canvas leave the context usable.
    style.font.size = 20;
    style.letterSpacing = 1e300;
    draw("Hg", 10, 50, style);
    style.letterSpacing = 0;
    draw("Hg", 1e200, -1e200, style);
    cairo_save(cr_);
    cairo_scale(cr_, 1e9, 1e9);
    draw("Hg", 10, 50, style);
    cairo_restore(cr_);
    EXPECT_EQ(cairo_status(cr_), CAIRO_STATUS_SUCCESS);
    // Thousands of different texts and fonts keep working (the caches evict, not grow).
    for (int i = 0; i < 3000; ++i) {
        style.font = *parseCanvasFont(std::to_string(8 + i % 50) + "px f" + std::to_string(i) + ", sans-serif");
        draw("Level " + std::to_string(i), 10, 50, style);
        ASSERT_GT(pathElements(), 0) << i;
    }
}

} // namespace
