#include "CanvasTestSupport.h"

#include "web/canvas/CanvasGradient.h"
#include "web/canvas/CanvasPattern.h"

#include <cmath>
#include <vector>

namespace {

// Expected pixels in this file are what Chromium draws for the same calls.

TEST(CanvasDrawing, SolidColoursRoundAsChromiumDoes)
{
    struct Case {
        const char* color;
        double globalAlpha;
        RGBA expected;
    };
    for (auto c : {Case{"rgba(255,255,255,0.3)", 1, RGBA{{255, 255, 255, 77}}}, Case{"rgba(76,217,100,0.3)", 1, RGBA{{76, 219, 99, 77}}},
                   Case{"rgba(100,150,200,0.5)", 1, RGBA{{100, 149, 199, 128}}}, Case{"rgba(10,200,30,0.7)", 1, RGBA{{10, 199, 30, 179}}},
                   Case{"rgba(10,200,30,0.7)", 0.5, RGBA{{11, 201, 31, 90}}}}) {
        TestCanvas canvas(1, 1);
        canvas->setFillStyle(std::string(c.color));
        canvas->setGlobalAlpha(c.globalAlpha);
        canvas->fillRect(0, 0, 1, 1);
        EXPECT_EQ(pixelAt(canvas, 0, 0), c.expected) << c.color << " at " << c.globalAlpha;
    }
}

TEST(CanvasDrawing, CompositingOperatorsCoverTheWholeClipWhenTheyMust)
{
    // A translucent orange square, then a translucent blue one overlapping it half way with
    // each operator; pixels: orange only, both, blue only.
    struct Case {
        const char* op;
        RGBA orange, both, blue;
    };
    const Case cases[] = {
        {"source-over", {200, 100, 50, 153}, {65, 147, 185, 225}, {30, 160, 219, 179}},
        {"source-in", {0, 0, 0, 0}, {31, 160, 219, 107}, {0, 0, 0, 0}},
        {"source-out", {0, 0, 0, 0}, {28, 159, 220, 72}, {30, 160, 219, 179}},
        {"destination-in", {0, 0, 0, 0}, {200, 100, 50, 107}, {0, 0, 0, 0}},
        {"destination-atop", {0, 0, 0, 0}, {132, 124, 118, 179}, {30, 160, 219, 179}},
        {"copy", {0, 0, 0, 0}, {30, 160, 219, 179}, {30, 160, 219, 179}},
        {"xor", {200, 100, 50, 153}, {96, 137, 155, 117}, {30, 160, 219, 179}},
        {"lighter", {200, 100, 50, 153}, {141, 172, 184, 255}, {30, 160, 219, 179}},
        {"clear", {200, 100, 50, 153}, {0, 0, 0, 0}, {0, 0, 0, 0}},
        {"multiply", {200, 100, 50, 153}, {61, 101, 101, 224}, {30, 160, 219, 179}},
        {"hue", {200, 100, 50, 153}, {73, 143, 175, 225}, {30, 160, 219, 179}},
    };
    for (const auto& c : cases) {
        TestCanvas canvas(3, 1);
        canvas->setFillStyle(std::string("rgba(200,100,50,0.6)"));
        canvas->fillRect(0, 0, 2, 1);
        canvas->setGlobalCompositeOperation(c.op);
        canvas->setFillStyle(std::string("rgba(30,160,220,0.7)"));
        canvas->fillRect(1, 0, 2, 1);
        EXPECT_TRUE(near(pixelAt(canvas, 0, 0), c.orange)) << c.op;
        EXPECT_TRUE(near(pixelAt(canvas, 1, 0), c.both)) << c.op;
        EXPECT_TRUE(near(pixelAt(canvas, 2, 0), c.blue)) << c.op;
    }
}

TEST(CanvasDrawing, FillRulesAndClipping)
{
    TestCanvas canvas(40, 20);
    canvas->rect(0, 0, 20, 20);
    canvas->rect(5, 5, 10, 10);
    canvas->fill(CanvasFillRule::Evenodd);
    EXPECT_EQ(pixelAt(canvas, 10, 10), kTransparent);
    EXPECT_EQ(pixelAt(canvas, 2, 2), kBlack);

    canvas->beginPath();
    canvas->rect(20, 0, 10, 20);
    canvas->clip();
    canvas->beginPath();
    canvas->rect(25, 0, 15, 20);
    canvas->clip(); // clips intersect
    canvas->setFillStyle(std::string("red"));
    canvas->fillRect(0, 0, 40, 20);
    EXPECT_EQ(pixelAt(canvas, 22, 10), kTransparent);
    EXPECT_EQ(pixelAt(canvas, 27, 10), kRed);
    EXPECT_EQ(pixelAt(canvas, 35, 10), kTransparent);
    EXPECT_EQ(pixelAt(canvas, 2, 2), kBlack);
    // clearRect respects the clip as well.
    canvas->clearRect(0, 0, 40, 20);
    EXPECT_EQ(pixelAt(canvas, 27, 10), kTransparent);
    EXPECT_EQ(pixelAt(canvas, 2, 2), kBlack);
}

TEST(CanvasDrawing, ShadowsAppearOnlyWithColourAndBlurOrOffset)
{
    TestCanvas canvas(30, 10);
    canvas->setFillStyle(std::string("red"));
    canvas->setShadowOffsetX(15);
    canvas->fillRect(0, 0, 10, 10); // transparent shadow colour: no shadow
    EXPECT_EQ(pixelAt(canvas, 20, 5), kTransparent);
    canvas->setShadowColor("rgba(0,0,255,0.5)");
    canvas->fillRect(0, 0, 10, 10);
    EXPECT_EQ(pixelAt(canvas, 5, 5), kRed);
    EXPECT_EQ(pixelAt(canvas, 20, 5), (RGBA{{0, 0, 255, 128}}));
    EXPECT_EQ(pixelAt(canvas, 12, 5), kTransparent);

    // Offsets are in device pixels whatever the transform.
    TestCanvas scaled(30, 10);
    scaled->scale(2, 2);
    scaled->setShadowColor("lime");
    scaled->setShadowOffsetX(10);
    scaled->setFillStyle(std::string("red"));
    scaled->fillRect(0, 0, 5, 5);
    EXPECT_EQ(pixelAt(scaled, 12, 2), kLime);
    EXPECT_EQ(pixelAt(scaled, 21, 2), kTransparent);

    // A blur of 4 spreads a Gaussian of deviation 2 across the edge.
    TestCanvas blurred(30, 10);
    blurred->setShadowBlur(4);
    blurred->setShadowColor("black");
    blurred->fillRect(10, 2, 10, 6);
    const int chromium[] = {0, 0, 0, 0, 0, 2, 11, 26, 53, 87};
    for (int x = 0; x < 10; ++x)
        EXPECT_NEAR(pixelAt(blurred, x, 5)[3], chromium[x], 2) << x;

    // A shape drawn outside the canvas casts its shadow in.
    TestCanvas outside(20, 10);
    outside->setShadowColor("black");
    outside->setShadowOffsetX(30);
    outside->fillRect(-25, 0, 10, 10);
    EXPECT_EQ(pixelAt(outside, 10, 5), kBlack);
}

TEST(CanvasDrawing, StrokesDropZeroLengthSegments)
{
    TestCanvas canvas(20, 20);
    canvas->setLineWidth(10);
    canvas->setLineCap("round");
    canvas->moveTo(10, 10);
    canvas->lineTo(10, 10);
    canvas->stroke();
    canvas->beginPath();
    canvas->moveTo(5, 5);
    canvas->closePath();
    canvas->stroke();
    EXPECT_EQ(pixelAt(canvas, 10, 10), kTransparent);
    EXPECT_EQ(pixelAt(canvas, 5, 5), kTransparent);
    // A flat rectangle strokes as a line with no caps.
    canvas->setLineCap("square");
    canvas->strokeRect(5, 15, 10, 0);
    EXPECT_EQ(pixelAt(canvas, 10, 15), kBlack);
    EXPECT_EQ(pixelAt(canvas, 3, 15), kTransparent);
}

TEST(CanvasDrawing, HugeCoordinatesStillDraw)
{
    TestCanvas canvas(100, 60);
    canvas->setFillStyle(std::string("green"));
    canvas->fillRect(-1e10, -1e10, 2e10, 3e10);
    EXPECT_EQ(pixelAt(canvas, 50, 30), kGreen);
    canvas->setFillStyle(std::string("red"));
    canvas->moveTo(50, 30);
    canvas->lineTo(1e9, 30);
    canvas->lineTo(1e9, 1e9);
    canvas->closePath();
    canvas->fill();
    EXPECT_EQ(pixelAt(canvas, 90, 50), kRed);
    EXPECT_EQ(pixelAt(canvas, 60, 50), kGreen);
    canvas->beginPath();
    canvas->moveTo(-1e8, 5);
    canvas->lineTo(1e8, 5);
    canvas->setLineWidth(4);
    canvas->stroke();
    EXPECT_EQ(pixelAt(canvas, 10, 5), kBlack);
}

TEST(CanvasDrawing, GradientsAndPatterns)
{
    TestCanvas canvas(100, 20);
    auto gradient = canvas->createLinearGradient(0, 0, 100, 0).releaseValue();
    ASSERT_FALSE(gradient->addColorStop(0, "red").isException());
    ASSERT_FALSE(gradient->addColorStop(0.5, "rgba(0,0,255,0)").isException());
    ASSERT_FALSE(gradient->addColorStop(1, "lime").isException());
    canvas->setFillStyle(gradient);
    canvas->fillRect(0, 0, 100, 20);
    // Colours interpolate unpremultiplied, so the fade keeps its hue.
    EXPECT_TRUE(near(pixelAt(canvas, 24, 10), RGBA{{129, 0, 124, 130}}, 4)) << pixelAt(canvas, 24, 10);
    EXPECT_LE(pixelAt(canvas, 50, 10)[3], 3);

    // A gradient whose two points meet paints nothing.
    auto point = canvas->createLinearGradient(5, 5, 5, 5).releaseValue();
    ASSERT_FALSE(point->addColorStop(0, "blue").isException());
    canvas->setFillStyle(point);
    canvas->fillRect(0, 0, 100, 20);
    EXPECT_TRUE(near(pixelAt(canvas, 24, 10), RGBA{{129, 0, 124, 130}}, 4));

    TestCanvas tile(2, 2);
    tile->setFillStyle(std::string("blue"));
    tile->fillRect(0, 0, 1, 1);
    EXPECT_EQ(canvas->createPattern(*tile.element, "repeat-z").exception().name, "SyntaxError");
    TestCanvas empty(0, 5);
    EXPECT_EQ(canvas->createPattern(*empty.element, "repeat").exception().name, "InvalidStateError");
    auto pattern = canvas->createPattern(*tile.element, "repeat-x").releaseValue();
    ASSERT_TRUE(pattern);
    // The pattern keeps the tile as it was.
    tile->fillRect(0, 0, 2, 2);
    TestCanvas target(10, 10);
    target->setFillStyle(pattern);
    target->fillRect(0, 0, 10, 10);
    EXPECT_EQ(pixelAt(target, 4, 0), kBlue);
    EXPECT_EQ(pixelAt(target, 5, 0), kTransparent);
    EXPECT_EQ(pixelAt(target, 4, 4), kTransparent); // repeat-x: one row of tiles only
    DOMMatrix2DInit shift;
    shift.f = 4;
    ASSERT_FALSE(pattern->setTransform(shift).isException());
    target->clearRect(0, 0, 10, 10);
    target->fillRect(0, 0, 10, 10);
    EXPECT_EQ(pixelAt(target, 4, 4), kBlue);
    EXPECT_EQ(pixelAt(target, 4, 0), kTransparent);
}

TEST(CanvasDrawing, DrawImageClipsTheSourceRectangle)
{
    TestCanvas source(20, 20);
    source->setFillStyle(std::string("red"));
    source->fillRect(0, 0, 10, 20);
    source->setFillStyle(std::string("lime"));
    source->fillRect(10, 0, 10, 20);

    // Half of the source rectangle lies left of the image: the destination shrinks with it.
    TestCanvas canvas(40, 20);
    ASSERT_FALSE(canvas->drawImage(*source.element, -10, 0, 20, 20, 0, 0, 40, 20).isException());
    EXPECT_EQ(pixelAt(canvas, 5, 10), kTransparent);
    EXPECT_EQ(pixelAt(canvas, 25, 10), kRed);
    // Negative sizes describe the same rectangles, not mirror images.
    TestCanvas flipped(20, 20);
    ASSERT_FALSE(flipped->drawImage(*source.element, 20, 0, -20, 20, 0, 0, 20, 20).isException());
    EXPECT_EQ(pixelAt(flipped, 2, 10), kRed);
    // Filtering reads past the source rectangle, as in Chromium: the scaled-up red half takes
    // some green at its right edge, while the image's own left edge just repeats.
    TestCanvas zoomed(40, 20);
    ASSERT_FALSE(zoomed->drawImage(*source.element, 0, 0, 10, 20, 0, 0, 40, 20).isException());
    EXPECT_TRUE(near(pixelAt(zoomed, 39, 10), RGBA{{159, 96, 0, 255}}, 8)) << pixelAt(zoomed, 39, 10);
    EXPECT_EQ(pixelAt(zoomed, 0, 10), kRed);

    // Cut on two sides and scaled by 2.5 without smoothing: the part kept starts at (50, 50)
    // and its pixels stay 2.5 wide; a destination pixel whose centre falls exactly on a source
    // pixel's edge takes the pixel before it, as in browsers.
    TestCanvas framed(20, 20);
    framed->setFillStyle(std::string("blue"));
    framed->fillRect(0, 0, 20, 20);
    framed->setFillStyle(std::string("black"));
    framed->fillRect(5, 5, 10, 10);
    TestCanvas scaled(90, 90);
    scaled->setImageSmoothingEnabled(false);
    ASSERT_FALSE(scaled->drawImage(*framed.element, -8, -8, 20, 20, 30, 30, 50, 50).isException());
    EXPECT_EQ(pixelAt(scaled, 49, 49), kTransparent);
    EXPECT_EQ(pixelAt(scaled, 50, 50), kBlue);
    EXPECT_EQ(pixelAt(scaled, 62, 62), kBlue);
    EXPECT_EQ(pixelAt(scaled, 63, 63), (RGBA{{0, 0, 0, 255}}));
    EXPECT_EQ(pixelAt(scaled, 79, 79), (RGBA{{0, 0, 0, 255}}));
    EXPECT_EQ(pixelAt(scaled, 80, 80), kTransparent);

    TestCanvas empty(0, 0);
    EXPECT_EQ(canvas->drawImage(*empty.element, 0, 0).exception().name, "InvalidStateError");
    // A canvas drawn onto itself reads its pixels as they were before the call.
    ASSERT_FALSE(source->drawImage(*source.element, 10, 0).isException());
    EXPECT_EQ(pixelAt(source, 15, 5), kRed);
}

} // namespace
