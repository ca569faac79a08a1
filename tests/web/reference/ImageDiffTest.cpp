#include "ImageDiff.h"
#include "ReferenceCases.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <memory>

namespace {

using Surface = std::unique_ptr<cairo_surface_t, decltype(&cairo_surface_destroy)>;

Surface filled(int width, int height, std::uint32_t argb)
{
    Surface surface(cairo_image_surface_create(CAIRO_FORMAT_ARGB32, width, height), cairo_surface_destroy);
    auto* data = cairo_image_surface_get_data(surface.get());
    const int stride = cairo_image_surface_get_stride(surface.get());
    for (int y = 0; y < height; ++y)
        for (int x = 0; x < width; ++x)
            reinterpret_cast<std::uint32_t*>(data + y * stride)[x] = argb;
    cairo_surface_mark_dirty(surface.get());
    return surface;
}

void setPixel(cairo_surface_t* surface, int x, int y, std::uint32_t argb)
{
    cairo_surface_flush(surface);
    auto* data = cairo_image_surface_get_data(surface);
    reinterpret_cast<std::uint32_t*>(data + y * cairo_image_surface_get_stride(surface))[x] = argb;
    cairo_surface_mark_dirty(surface);
}

TEST(ImageDiff, CountsOnlyPixelsBeyondTheToleranceAmongPaintedOnes)
{
    auto reference = filled(10, 10, 0);
    auto ours = filled(10, 10, 0);
    for (int x = 0; x < 4; ++x) {
        setPixel(reference.get(), x, 0, 0xff102030);
        setPixel(ours.get(), x, 0, 0xff102030);
    }
    setPixel(ours.get(), 1, 0, 0xff102050); // off by 32 in blue
    setPixel(ours.get(), 2, 0, 0xff10203a); // off by 10
    setPixel(ours.get(), 5, 5, 0x80800000); // painted only by us

    const ImageDiff diff = compareImages(ours.get(), reference.get(), 16);
    EXPECT_TRUE(diff.sameSize);
    EXPECT_EQ(diff.painted, 5);
    EXPECT_EQ(diff.differing, 2);
    EXPECT_EQ(diff.largestDelta, 0x80);
    EXPECT_DOUBLE_EQ(diff.share(), 0.4);
    EXPECT_TRUE(diff.within(0.4));
    EXPECT_FALSE(diff.within(0.39));
    EXPECT_EQ(compareImages(ours.get(), reference.get(), 200).differing, 0);
}

// The strict measure ignores the case's tolerance: a pixel counts when a channel is off by more
// than 32, and a picture is close up to 1 % of such pixels, grossly different past 20 %.
TEST(ImageDiff, StrictShareJudgesEveryPictureAlike)
{
    auto reference = filled(10, 10, 0xff000000);
    auto ours = filled(10, 10, 0xff000000);
    setPixel(ours.get(), 0, 0, 0xff000020); // off by exactly 32: not counted
    setPixel(ours.get(), 1, 0, 0xff000021); // off by 33
    ImageDiff diff = compareImages(ours.get(), reference.get(), 100);
    EXPECT_EQ(diff.differing, 0);
    EXPECT_EQ(diff.strictlyDiffering, 1);
    EXPECT_DOUBLE_EQ(diff.strictShare(), 0.01);
    EXPECT_TRUE(diff.close());
    EXPECT_FALSE(diff.grosslyDifferent());

    setPixel(ours.get(), 2, 0, 0xffffffff);
    diff = compareImages(ours.get(), reference.get(), 100);
    EXPECT_FALSE(diff.close());
    EXPECT_FALSE(diff.grosslyDifferent());

    for (int x = 0; x < 18; ++x)
        setPixel(ours.get(), x % 10, 1 + x / 10, 0xffffffff);
    EXPECT_FALSE(compareImages(ours.get(), reference.get(), 100).grosslyDifferent()); // 20 %
    setPixel(ours.get(), 0, 3, 0xffffffff);
    EXPECT_TRUE(compareImages(ours.get(), reference.get(), 100).grosslyDifferent());  // 21 %
}

TEST(ImageDiff, PicturesOfDifferentSizesAreNeverClose)
{
    auto a = filled(3, 3, 0), b = filled(4, 3, 0);
    const ImageDiff diff = compareImages(a.get(), b.get(), 255);
    EXPECT_FALSE(diff.close());
    EXPECT_TRUE(diff.grosslyDifferent());
}

TEST(ImageDiff, EmptyPicturesMatchAndSizeOrFormatMismatchesNever)
{
    auto a = filled(3, 3, 0), b = filled(3, 3, 0);
    EXPECT_TRUE(compareImages(a.get(), b.get(), 0).within(0.0));

    auto wider = filled(4, 3, 0);
    const ImageDiff diff = compareImages(wider.get(), b.get(), 255);
    EXPECT_FALSE(diff.sameSize);
    EXPECT_FALSE(diff.within(1.0));
    EXPECT_NE(diff.describe().find("3x3"), std::string::npos);
    EXPECT_EQ(diffPicture(wider.get(), b.get(), 0), nullptr);

    Surface rgb(cairo_image_surface_create(CAIRO_FORMAT_RGB24, 3, 3), cairo_surface_destroy);
    EXPECT_FALSE(compareImages(rgb.get(), b.get(), 255).within(1.0));
    EXPECT_FALSE(compareImages(nullptr, b.get(), 255).within(1.0));
}

TEST(ImageDiff, DiffPictureMarksDifferencesInRed)
{
    auto reference = filled(2, 1, 0xff000000);
    auto ours = filled(2, 1, 0xff000000);
    setPixel(ours.get(), 1, 0, 0xffffffff);
    Surface diff(diffPicture(ours.get(), reference.get(), 8), cairo_surface_destroy);
    ASSERT_TRUE(diff);
    const auto* row = reinterpret_cast<const std::uint32_t*>(cairo_image_surface_get_data(diff.get()));
    EXPECT_EQ(row[1] & 0x00ffff, 0u);
    EXPECT_GE((row[1] >> 16) & 0xff, 200u);
    EXPECT_EQ(row[0] & 0xff, (row[0] >> 8) & 0xff); // grey where they agree
}

TEST(ReferenceCaseList, ParsesCasesAndSkipsMalformedLines)
{
    const auto cases = parseReferenceCases(
        "# header\n"
        "script-arcs\tdata/arcs.js\t-\t48\t0.03\t0123456789abcdef\n"
        "theme-x-plain\tthemes/X.js\t(40,55,!!0,!!0,[255,255,255])\t64\t0.12\tfedcba9876543210\n"
        "too\tfew\tfields\n"
        "bad-number\tx.js\t-\tlots\t0.1\t0\n"
        "\n");
    ASSERT_EQ(cases.size(), 2u);
    EXPECT_EQ(cases[0].picture, "script-arcs");
    EXPECT_TRUE(cases[0].arguments.empty());
    EXPECT_EQ(cases[0].channelTolerance, 48);
    EXPECT_DOUBLE_EQ(cases[0].allowedShare, 0.03);
    EXPECT_EQ(evaluationText(cases[0], "1+1"), "1+1");
    EXPECT_EQ(evaluationText(cases[1], "(c){return c}"),
              "(function(c){return c})(40,55,!!0,!!0,[255,255,255])");
    EXPECT_EQ(cases[1].sourceHash, "fedcba9876543210");
}

TEST(ReferenceCaseList, HashesLikeTheRegeneratingScript)
{
    EXPECT_EQ(fnv1aHex(""), "cbf29ce484222325");
    EXPECT_EQ(fnv1aHex("a"), "af63dc4c8601ec8c");
}

} // namespace
