#include "support/ImagePixels.h"
#include "platform/core/UIImage.h"
#include "platform/core/UIImageColored.h"
#include "platform/core/UIImageCoreGraphics.h"
#include "platform/core/UIImageFlipping.h"
#include "platform/core/UIScreen.h"

#include <gtest/gtest.h>

#include <cstring>

namespace {


// A 3 x 2 pixel image whose pixels are all different, so every mirror shows.
UIImage asymmetricImage(double scale)
{
    cairo_surface_t* surface = cairo_image_surface_create(CAIRO_FORMAT_ARGB32, 3, 2);
    cairo_surface_flush(surface);
    unsigned char* data = cairo_image_surface_get_data(surface);
    int stride = cairo_image_surface_get_stride(surface);
    for (int y = 0; y < 2; ++y)
        for (int x = 0; x < 3; ++x) {
            std::uint32_t value = 0xFF000000u | static_cast<std::uint32_t>((y * 3 + x + 1) * 40);
            std::memcpy(data + y * stride + x * 4, &value, 4);
        }
    cairo_surface_mark_dirty(surface);
    return UIImage(surface, scale);
}


class ImageOperations : public ::testing::Test {
protected:
    void SetUp() override { UIScreen::mainScreen().setScale(2); }
    void TearDown() override { UIScreen::mainScreen().setScale(2); }
};

} // namespace

TEST_F(ImageOperations, AxisZeroTurnsUpsideDownAxisOneMirrorsAxisTwoDoesBoth)
{
    UIImage image = asymmetricImage(2);
    UIImage upsideDown = flippedImageByAxis(image, 0);
    UIImage mirrored = flippedImageByAxis(image, 1);
    UIImage halfTurn = flippedImageByAxis(image, 2);
    for (int y = 0; y < 2; ++y)
        for (int x = 0; x < 3; ++x) {
            EXPECT_EQ(pixel(upsideDown, x, y), pixel(image, x, 1 - y));
            EXPECT_EQ(pixel(mirrored, x, y), pixel(image, 2 - x, y));
            EXPECT_EQ(pixel(halfTurn, x, y), pixel(image, 2 - x, 1 - y));
        }
}

TEST_F(ImageOperations, FlippingTwiceGivesTheImageBackAndUnknownAxesActAsZero)
{
    UIImage image = asymmetricImage(2);
    for (int axis : {0, 1, 2})
        EXPECT_TRUE(samePixels(flippedImageByAxis(flippedImageByAxis(image, axis), axis), image)) << axis;
    EXPECT_TRUE(samePixels(flippedImageByAxis(image, 3), flippedImageByAxis(image, 0)));
    EXPECT_TRUE(samePixels(flippedImageByAxis(image, -1), flippedImageByAxis(image, 0)));
}

TEST_F(ImageOperations, FlippingKeepsScaleAndSize)
{
    UIImage flipped = flippedImageByAxis(asymmetricImage(2), 1);
    EXPECT_EQ(flipped.scale(), 2);
    EXPECT_EQ(flipped.size(), (CGSize{1.5, 1}));
    EXPECT_TRUE(flippedImageByAxis(UIImage(), 1).isNil());
}

TEST_F(ImageOperations, RecolouringPaintsVisiblePixelsAtTheScreenScale)
{
    UIImage twoX = cp_imageWithSizeRenderer({10, 10}, [](cairo_t* cr, CGRect) {
        cairo_set_source_rgba(cr, 0, 0, 1, 1);
        cairo_rectangle(cr, 0, 0, 10, 5); // top half opaque blue, bottom half empty
        cairo_fill(cr);
    });
    ASSERT_EQ(twoX.scale(), 2);
    UIScreen::mainScreen().setScale(3);
    UIImage red = changeImageColor(twoX, UIColor::colorWithRedGreenBlueAlpha(1, 0, 0, 1));
    EXPECT_EQ(red.scale(), 3);
    EXPECT_EQ(red.size(), twoX.size());
    EXPECT_EQ(pixel(red, red.pixelWidth() / 2, 2), 0xFFFF0000u); // upright: the top half is red
    EXPECT_EQ(pixel(red, red.pixelWidth() / 2, red.pixelHeight() - 2), 0u);
}

TEST_F(ImageOperations, RecolouringKeepsTransparency)
{
    UIImage empty = cp_imageWithSizeRenderer({4, 4}, [](cairo_t*, CGRect) {});
    UIImage recoloured = changeImageColor(empty, UIColor::whiteColor());
    for (int y = 0; y < recoloured.pixelHeight(); ++y)
        for (int x = 0; x < recoloured.pixelWidth(); ++x)
            EXPECT_EQ(pixel(recoloured, x, y), 0u);

    UIImage half = cp_imageWithSizeRenderer({1, 1}, [](cairo_t* cr, CGRect rect) {
        cairo_set_source_rgba(cr, 0, 1, 0, 0.5);
        cairo_rectangle(cr, rect.origin.x, rect.origin.y, rect.size.width, rect.size.height);
        cairo_fill(cr);
    });
    std::uint32_t blended = pixel(changeImageColor(half, UIColor::colorWithRedGreenBlueAlpha(1, 0, 0, 1)), 0, 0);
    EXPECT_NEAR(static_cast<int>(blended >> 24), 191, 2); // red over half green, masked by half alpha
    EXPECT_GT(static_cast<int>((blended >> 16) & 0xFF), 120);
}

TEST_F(ImageOperations, DrawingRoutineGetsTheRectangleInPoints)
{
    CGRect seen{};
    UIImage image = cp_imageWithSizeOpaqueRenderer({20, 10}, true, [&](cairo_t*, CGRect rect) { seen = rect; });
    EXPECT_EQ(seen, CGRectMake(0, 0, 20, 10));
    EXPECT_EQ(image.pixelWidth(), 40);
    EXPECT_EQ(image.pixelHeight(), 20);
    EXPECT_EQ(pixel(image, 0, 0) >> 24, 0xFFu); // opaque
    EXPECT_TRUE(cp_imageWithSizeRenderer({0, 10}, [](cairo_t*, CGRect) {}).isNil());
}

TEST_F(ImageOperations, DecodesOnlySensiblePNGData)
{
    UIImage image = asymmetricImage(1);
    std::vector<std::uint8_t> png = image.pngData();
    UIImage decoded = UIImage::imageWithDataScale(png, 3);
    ASSERT_FALSE(decoded.isNil());
    EXPECT_EQ(decoded.scale(), 3);
    EXPECT_TRUE(samePixels(decoded, image));

    std::vector<std::uint8_t> truncated(png.begin(), png.begin() + static_cast<long>(png.size() / 2));
    EXPECT_TRUE(UIImage::imageWithDataScale(truncated, 1).isNil());
    std::vector<std::uint8_t> garbage(500, 0x5A);
    EXPECT_TRUE(UIImage::imageWithDataScale(garbage, 1).isNil());

    std::vector<std::uint8_t> huge = png; // claim 100000 x 100000 pixels in the header
    huge[16] = 0, huge[17] = 1, huge[18] = 0x86, huge[19] = 0xA0;
    huge[20] = 0, huge[21] = 1, huge[22] = 0x86, huge[23] = 0xA0;
    EXPECT_TRUE(UIImage::imageWithDataScale(huge, 1).isNil());
}
