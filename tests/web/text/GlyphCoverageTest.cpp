// Filled glyphs have their coverage adjusted to the lightness of their paint, as the reference
// browser's glyph masks do: the classes of lightness, the tables, and where text uses them.
#include "web/text/GlyphCoverage.h"

#include "../canvas/CanvasTestSupport.h"
#include "web/canvas/CanvasGradient.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

TEST(GlyphCoverage, ColoursFallIntoEightClassesOfLightness)
{
    EXPECT_EQ(glyphLightnessClass(0, 0, 0), 0);
    EXPECT_EQ(glyphLightnessClass(0x1f, 0x1f, 0x1f), 0);
    EXPECT_EQ(glyphLightnessClass(0x20, 0x20, 0x20), 1);
    EXPECT_EQ(glyphLightnessClass(0xdf, 0xdf, 0xdf), 6);
    EXPECT_EQ(glyphLightnessClass(0xe0, 0xe0, 0xe0), 7);
    EXPECT_EQ(glyphLightnessClass(255, 255, 255), 7);
    // Green weighs most and blue least: pure blue is as dark as black, pure green light.
    EXPECT_EQ(glyphLightnessClass(0, 0, 255), 0);
    EXPECT_EQ(glyphLightnessClass(255, 0, 0), 1);
    EXPECT_EQ(glyphLightnessClass(0, 255, 0), 5);
    EXPECT_EQ(glyphLightnessClass(255, 255, 0), 7);
}

TEST(GlyphCoverage, TablesKeepTheEndsAndOrderAndLightenLightText)
{
    for (int lightness = 0; lightness < kGlyphLightnessClasses; ++lightness) {
        const GlyphCoverageTable& table = glyphCoverageTable(lightness);
        EXPECT_EQ(table[0], 0) << lightness;
        EXPECT_EQ(table[255], 255) << lightness;
        for (int i = 1; i < 256; ++i)
            ASSERT_GE(table[i], table[i - 1]) << lightness << " at " << i;
        // Each class's edges are at least as heavy as the darker class's.
        if (lightness > 0) {
            for (int i = 0; i < 256; ++i)
                ASSERT_GE(table[i] + 1, glyphCoverageTable(lightness - 1)[i]) << lightness << " at " << i;
        }
    }
    // Values read off the reference's pictures: half coverage comes out a little lighter for
    // black text and darker for white, a quarter much darker for white.
    EXPECT_NEAR(glyphCoverageTable(0)[128], 125, 2);
    EXPECT_NEAR(glyphCoverageTable(0)[192], 187, 2);
    EXPECT_NEAR(glyphCoverageTable(7)[64], 80, 2);
    EXPECT_NEAR(glyphCoverageTable(7)[128], 143, 2);
    EXPECT_NEAR(glyphCoverageTable(4)[128], 134, 2);
    // Out of range classes are clamped.
    EXPECT_EQ(&glyphCoverageTable(-3), &glyphCoverageTable(0));
    EXPECT_EQ(&glyphCoverageTable(99), &glyphCoverageTable(7));
}

// The alpha of every pixel of "H" filled with `style` at `size` pixels, after `prepare`.
std::vector<int> alphaOfText(const std::string& style, int size, const char* operation = nullptr)
{
    const int width = size * 2, height = size * 2;
    TestCanvas canvas(width, height);
    if (operation) {
        canvas->fillRect(0, 0, width, height);
        canvas->setGlobalCompositeOperation(operation);
    }
    canvas->setFont(std::to_string(size) + "px Helvetica");
    if (style == "gradient") {
        auto gradient = canvas->createLinearGradient(0, 0, width, 0).value();
        EXPECT_FALSE(gradient->addColorStop(0, "#000").isException());
        EXPECT_FALSE(gradient->addColorStop(1, "#fff").isException());
        canvas->setFillStyle(gradient);
    } else {
        canvas->setFillStyle(style);
    }
    canvas->fillText("H", size / 4.0, size * 1.5);
    std::vector<int> alpha;
    auto data = canvas->getImageData(0, 0, width, height);
    EXPECT_FALSE(data.isException());
    if (data.isException())
        return alpha;
    for (int i = 0; i < width * height; ++i)
        alpha.push_back(data.value()->data()[i * 4 + 3]);
    return alpha;
}

TEST(GlyphCoverage, FilledTextEdgesFollowThePaintsLightness)
{
    const std::vector<int> black = alphaOfText("#000000", 40), white = alphaOfText("#ffffff", 40);
    ASSERT_EQ(black.size(), white.size());
    int heavier = 0;
    for (std::size_t i = 0; i < black.size(); ++i) {
        ASSERT_GE(white[i], black[i]) << i;
        if (black[i] == 0 || black[i] == 255) {
            ASSERT_EQ(white[i], black[i]) << i;  // the same outline, only its edges differ
        }
        heavier += white[i] > black[i] + 4;
    }
    EXPECT_GT(heavier, 10);

    // Gradients and patterns take the middle grey's table.
    EXPECT_EQ(alphaOfText("gradient", 40), alphaOfText("#888888", 40));
    EXPECT_NE(alphaOfText("gradient", 40), black);

    // Past the largest glyph mask, text is a plain path in any colour.
    EXPECT_EQ(alphaOfText("#000000", 300), alphaOfText("#ffffff", 300));
}

TEST(GlyphCoverage, TextCutOutOfAShapeCutsWithTheSameEdges)
{
    const std::vector<int> drawn = alphaOfText("#ffffff", 30);
    const std::vector<int> cut = alphaOfText("#ffffff", 30, "destination-out");
    ASSERT_EQ(drawn.size(), cut.size());
    for (std::size_t i = 0; i < drawn.size(); ++i)
        ASSERT_NEAR(cut[i], 255 - drawn[i], 1) << i;
}

} // namespace
