#include "ColourTestSupport.h"

#include "colour/CPColorMapView.h"

#include "platform/core/UIScreen.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstdlib>
#include <limits>

namespace {

class ColorMapImage : public testing::Test {
protected:
    void SetUp() override
    {
        savedScale_ = UIScreen::mainScreen().scale();
        UIScreen::mainScreen().setScale(2);
    }
    void TearDown() override { UIScreen::mainScreen().setScale(savedScale_); }

    static UIImage map(CGSize size, double tile, double limit)
    {
        return CPColorMapView::colorMapImageWithSizeTileSizeSaturationUpperLimit(size, tile, limit);
    }

private:
    double savedScale_ = 2;
};

void expectPixel(const Pixel& pixel, int red, int green, int blue, int tolerance = 1)
{
    EXPECT_LE(std::abs(pixel.red - red), tolerance) << pixel.red;
    EXPECT_LE(std::abs(pixel.green - green), tolerance) << pixel.green;
    EXPECT_LE(std::abs(pixel.blue - blue), tolerance) << pixel.blue;
    EXPECT_EQ(pixel.alpha, 255);
}

TEST_F(ColorMapImage, HueRunsAcrossAndTheBottomRowIsWhiteAtLimitOne)
{
    // 4 columns of 10 points, 3 rows, at scale 2.
    UIImage image = map({40, 30}, 10, 1);
    ASSERT_FALSE(image.isNil());
    EXPECT_EQ(image.pixelWidth(), 80);
    EXPECT_EQ(image.pixelHeight(), 60);
    EXPECT_EQ(image.scale(), 2);

    expectPixel(pixelAt(image, 0, 0), 255, 0, 0);     // top left: red, fully saturated
    expectPixel(pixelAt(image, 19, 19), 255, 0, 0);   // the whole first tile
    expectPixel(pixelAt(image, 20, 0), 128, 255, 0);  // hue 1/4
    expectPixel(pixelAt(image, 79, 0), 128, 0, 255);  // top right: hue 3/4
    expectPixel(pixelAt(image, 0, 59), 255, 255, 255);  // bottom left
    expectPixel(pixelAt(image, 79, 59), 255, 255, 255); // bottom right
    expectPixel(pixelAt(image, 0, 20), 255, 128, 128);  // middle row: half washed out
}

TEST_F(ColorMapImage, TheLimitStopsTheWashingOut)
{
    UIImage image = map({40, 30}, 10, 0.5);
    ASSERT_FALSE(image.isNil());
    expectPixel(pixelAt(image, 0, 0), 255, 0, 0);
    expectPixel(pixelAt(image, 0, 59), 255, 128, 128);
}

TEST_F(ColorMapImage, OnlyWholeTilesAreDrawn)
{
    UIImage image = map({45.5, 39.9}, 10, 1);
    ASSERT_FALSE(image.isNil());
    EXPECT_EQ(image.size(), (CGSize{40, 30}));
}

TEST_F(ColorMapImage, ASingleRowStaysFullySaturated)
{
    UIImage image = map({40, 10}, 10, 1);
    ASSERT_FALSE(image.isNil());
    expectPixel(pixelAt(image, 0, 19), 255, 0, 0);
}

TEST_F(ColorMapImage, NoImageForLessThanOneTileOrABadTileSize)
{
    const double nan = std::numeric_limits<double>::quiet_NaN();
    const double inf = std::numeric_limits<double>::infinity();
    EXPECT_TRUE(map({9.9, 30}, 10, 1).isNil());
    EXPECT_TRUE(map({40, 9.9}, 10, 1).isNil());
    EXPECT_TRUE(map({0, 0}, 10, 1).isNil());
    EXPECT_TRUE(map({-40, 30}, 10, 1).isNil());
    EXPECT_TRUE(map({40, 30}, 0, 1).isNil());
    EXPECT_TRUE(map({40, 30}, -1, 1).isNil());
    EXPECT_TRUE(map({40, 30}, nan, 1).isNil());
    EXPECT_TRUE(map({nan, 30}, 1, 1).isNil());
    EXPECT_TRUE(map({inf, inf}, 1, 1).isNil());
    EXPECT_TRUE(CPColorMapView::backgroundImageWithSizeTileSize({9.9, 30}, 10).isNil());
}

TEST_F(ColorMapImage, TilesThinnerThanAPixelGiveNoImageRatherThanAnEndlessDrawing)
{
    EXPECT_TRUE(map({100, 100}, 1e-9, 1).isNil());
    EXPECT_TRUE(map({1e12, 1e12}, 1, 1).isNil());
}

TEST_F(ColorMapImage, ALimitOutsideZeroToOneIsClamped)
{
    expectPixel(pixelAt(map({40, 30}, 10, 7), 0, 59), 255, 255, 255);
    expectPixel(pixelAt(map({40, 30}, 10, -3), 0, 59), 255, 0, 0);
    expectPixel(pixelAt(map({40, 30}, 10, std::numeric_limits<double>::quiet_NaN()), 0, 59), 255, 0, 0);
}

TEST_F(ColorMapImage, TheBackgroundIsBlackUnderEveryTile)
{
    UIImage background = CPColorMapView::backgroundImageWithSizeTileSize({45, 35}, 10);
    ASSERT_FALSE(background.isNil());
    EXPECT_EQ(background.size(), (CGSize{40, 30}));
    for (int y = 0; y < background.pixelHeight(); y += 7)
        for (int x = 0; x < background.pixelWidth(); x += 7)
            expectPixel(pixelAt(background, x, y), 0, 0, 0, 0);
}

} // namespace
