#include "CanvasTestSupport.h"

#include "web/canvas/CanvasGradient.h"
#include "web/canvas/CanvasPattern.h"
#include "web/canvas/GaussianBlur.h"
#include "web/canvas/Path2D.h"

#include <cmath>
#include <numeric>

namespace {

// Expected pixels here are Chromium's for the same calls, unless a comment says otherwise.

TEST(GaussianBlur, KeepsTheTotalAndStaysSymmetric)
{
    for (double sigma : {0.5, 1.0, 3.0, 10.0}) {
        cairo_surface_t* surface = cairo_image_surface_create(CAIRO_FORMAT_A8, 101, 101);
        unsigned char* data = cairo_image_surface_get_data(surface);
        int stride = cairo_image_surface_get_stride(surface);
        data[50 * stride + 50] = 255;
        for (int y = 45; y < 56; ++y)
            data[y * stride + 20] = 200; // a short line
        cairo_surface_mark_dirty(surface);
        gaussianBlurAlpha(surface, sigma);
        long total = 0;
        for (int y = 0; y < 101; ++y)
            for (int x = 0; x < 101; ++x)
                total += data[y * stride + x];
        // Energy is kept up to rounding of each pass.
        EXPECT_NEAR(total, 255 + 11 * 200, 101 * 101 * 0.5 + 50) << sigma;
        EXPECT_EQ(data[50 * stride + 47], data[50 * stride + 53]) << sigma;
        EXPECT_EQ(data[47 * stride + 50], data[53 * stride + 50]) << sigma;
        cairo_surface_destroy(surface);
    }
}

TEST(CanvasEffects, ShadowsComeWithEveryKindOfDrawing)
{
    TestCanvas source(10, 10);
    source->setFillStyle(std::string("red"));
    source->fillRect(0, 0, 10, 10);

    TestCanvas canvas(100, 20);
    canvas->setShadowColor("lime");
    canvas->setShadowOffsetY(10);
    canvas->setFillStyle(std::string("red"));
    canvas->setStrokeStyle(std::string("red"));
    canvas->fillRect(0, -10, 10, 10);
    canvas->setLineWidth(10);
    canvas->beginPath();
    canvas->moveTo(15, -5);
    canvas->lineTo(25, -5);
    canvas->stroke();
    ASSERT_FALSE(canvas->drawImage(*source.element, 30, -10).isException());
    Path2D path("M 45 -10 h 10 v 10 h -10 z");
    canvas->fill(path);
    canvas->setFont("40px sans-serif");
    canvas->fillText("I", 60, -2);
    for (int x : {5, 20, 35, 50})
        EXPECT_EQ(pixelAt(canvas, x, 5), kLime) << x;
    bool textShadow = false;
    for (int x = 60; x < 80; ++x)
        textShadow = textShadow || pixelAt(canvas, x, 2) == kLime;
    EXPECT_TRUE(textShadow);
}

TEST(CanvasEffects, BlurredShadowsMoveByWholePixels)
{
    // Chromium rounds a blurred shadow's offset; an unblurred one keeps its fraction.
    struct Case {
        double offset, blur;
        int alphaAt30;
    };
    for (Case c : {Case{0.3, 0, 77}, Case{0.5, 2, 174}, Case{0.7, 2, 174}, Case{0.3, 2, 82}}) {
        TestCanvas canvas(60, 10);
        canvas->setShadowColor("black");
        canvas->setShadowBlur(c.blur);
        canvas->setShadowOffsetX(c.offset);
        canvas->setFillStyle(std::string("red"));
        canvas->fillRect(10, 0, 20, 10);
        EXPECT_NEAR(pixelAt(canvas, 30, 5)[3], c.alphaAt30, c.blur > 0 ? 30 : 2) << c.offset << " " << c.blur;
    }
}

TEST(CanvasEffects, BlendModesLeaveWhatTheShadowDoesNotCover)
{
    // A shadowed stroke in saturation mode must not touch the pixels between its lines.
    TestCanvas canvas(100, 50);
    canvas->setFillStyle(std::string("rgba(0, 255, 255, 0.5)"));
    canvas->fillRect(0, 0, 100, 50);
    canvas->setGlobalCompositeOperation("saturation");
    canvas->setGlobalAlpha(0.6);
    canvas->setFillStyle(std::string("rgba(255, 0, 127, 0.75)"));
    canvas->fillRect(20, 10, 60, 30);
    RGBA before = pixelAt(canvas, 50, 25);
    EXPECT_TRUE(near(before, RGBA{{79, 176, 215, 185}}, 3)) << before;
    canvas->setShadowColor("#00f");
    canvas->setShadowOffsetX(10);
    canvas->setShadowOffsetY(5);
    canvas->setLineWidth(6);
    canvas->strokeRect(30, 15, 30, 20);
    EXPECT_EQ(pixelAt(canvas, 50, 25), before);

    // "clear" with a shadow clears everything (within the clip), as in Chromium.
    canvas->setGlobalCompositeOperation("clear");
    canvas->fillRect(0, 0, 1, 1);
    EXPECT_EQ(pixelAt(canvas, 90, 45), kTransparent);
}

TEST(CanvasEffects, ConicGradientsTurnClockwiseFromTheStartAngle)
{
    TestCanvas canvas(100, 50);
    auto gradient = canvas->createConicGradient(0, 50, 25).releaseValue();
    ASSERT_FALSE(gradient->addColorStop(0, "#f00").isException());
    ASSERT_FALSE(gradient->addColorStop(0.25, "#0f0").isException());
    ASSERT_FALSE(gradient->addColorStop(0.5, "#00f").isException());
    ASSERT_FALSE(gradient->addColorStop(0.75, "#ff0").isException());
    ASSERT_FALSE(gradient->addColorStop(1, "#f00").isException());
    canvas->setFillStyle(gradient);
    canvas->fillRect(0, 0, 100, 50);
    EXPECT_TRUE(near(pixelAt(canvas, 90, 25), RGBA{{255, 2, 0, 255}}, 4)) << pixelAt(canvas, 90, 25);  // right: start
    EXPECT_TRUE(near(pixelAt(canvas, 50, 45), RGBA{{3, 252, 0, 255}}, 4)) << pixelAt(canvas, 50, 45);  // below: a quarter
    EXPECT_TRUE(near(pixelAt(canvas, 10, 25), RGBA{{0, 2, 253, 255}}, 4)) << pixelAt(canvas, 10, 25);  // left: a half
    EXPECT_TRUE(near(pixelAt(canvas, 50, 5), RGBA{{255, 252, 0, 255}}, 4)) << pixelAt(canvas, 50, 5); // above
}

TEST(CanvasEffects, OneWayPatternsFadeAtTheirBandEdges)
{
    TestCanvas tile(4, 4);
    tile->setFillStyle(std::string("#0f0"));
    tile->fillRect(0, 0, 4, 4);
    TestCanvas canvas(20, 20);
    auto pattern = canvas->createPattern(*tile.element, "repeat-x").releaseValue();
    DOMMatrix2DInit transform;
    transform.a = 2;
    transform.d = 2;
    transform.f = 6.5;
    ASSERT_FALSE(pattern->setTransform(transform).isException());
    canvas->setFillStyle(pattern);
    canvas->fillRect(0, 0, 20, 20);
    // The band covers rows 6.5 to 14.5: full inside, partial on its edges, none beyond,
    // and no wrapped-round colour from the far side of the tile.
    EXPECT_EQ(pixelAt(canvas, 10, 10), kLime);
    int top = pixelAt(canvas, 10, 6)[3], bottom = pixelAt(canvas, 10, 14)[3];
    EXPECT_GT(top, 0);
    EXPECT_LT(top, 255);
    EXPECT_GT(bottom, 0);
    EXPECT_LT(bottom, 255);
    EXPECT_EQ(pixelAt(canvas, 10, 3), kTransparent);
    EXPECT_EQ(pixelAt(canvas, 10, 17), kTransparent);
}

TEST(CanvasEffects, GlobalAlphaFadesImagesAndPatternsOnce)
{
    TestCanvas source(10, 10);
    source->setFillStyle(std::string("#00f"));
    source->fillRect(0, 0, 10, 10);
    TestCanvas canvas(30, 10);
    canvas->setGlobalAlpha(0.5);
    ASSERT_FALSE(canvas->drawImage(*source.element, 0, 0).isException());
    canvas->setFillStyle(canvas->createPattern(*source.element, "repeat").releaseValue());
    canvas->fillRect(10, 0, 10, 10);
    auto gradient = canvas->createLinearGradient(20, 0, 30, 0).releaseValue();
    ASSERT_FALSE(gradient->addColorStop(0, "#00f").isException());
    canvas->setFillStyle(gradient);
    canvas->fillRect(20, 0, 10, 10);
    for (int x : {5, 15, 25})
        EXPECT_EQ(pixelAt(canvas, x, 5), (RGBA{{0, 0, 255, 128}})) << x;
}

TEST(CanvasEffects, TextFollowsStylesAndItsLimits)
{
    TestCanvas canvas(100, 40);
    canvas->setFont("30px sans-serif");
    canvas->setFillStyle(std::string("#0000ff"));
    canvas->fillText("MM", 5, 30, 0.0); // a zero maxWidth draws nothing
    canvas->fillText("MM", 5, 30, -1.0);
    canvas->fillText("MM", NAN, 30);
    EXPECT_EQ(canvas.element->toDataURL(), TestCanvas(100, 40).element->toDataURL());
    canvas->fillText("MM", 5, 30);
    int blue = 0;
    for (int x = 0; x < 100; ++x)
        blue += pixelAt(canvas, x, 20) == kBlue;
    EXPECT_GT(blue, 4);
    // Squeezed into 10 pixels, nothing lands far right.
    TestCanvas squeezed(100, 40);
    squeezed->setFont("30px sans-serif");
    squeezed->fillText("MMMM", 0, 30, 10.0);
    for (int x = 15; x < 100; ++x)
        ASSERT_EQ(pixelAt(squeezed, x, 20)[3], 0) << x;
    EXPECT_GT(canvas->measureText("MM").width, 20);
}

} // namespace
