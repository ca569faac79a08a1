// Strokes along very long paths are drawn in pieces that can be interrupted; they must still
// look like one stroke.
#include "CanvasTestSupport.h"

#include "web/canvas/DrawingInterruption.h"

#include <gtest/gtest.h>

#include <cmath>

namespace {

// A tight spiral of 19000 points in translucent blue: its turns overlap every pixel of the disc
// several times.
void strokeSpiral(TestCanvas& canvas)
{
    canvas->setLineWidth(4);
    canvas->setStrokeStyle(std::string("rgba(0, 0, 255, 0.5)"));
    canvas->beginPath();
    for (int i = 0; i < 19000; ++i) {
        double t = i / 190.0;
        canvas->lineTo(50 + t / 2 * std::cos(t * 3), 50 + t / 2 * std::sin(t * 3));
    }
    canvas->stroke();
}

TEST(PiecewiseStroke, ALongTranslucentStrokeIsPaintedOnce)
{
    TestCanvas canvas(100, 100);
    strokeSpiral(canvas);
    // Wherever the pieces overlap, the colour is laid down once: half-transparent blue.
    for (auto [x, y] : {std::pair{50, 50}, {60, 45}, {35, 62}, {50, 20}})
        EXPECT_EQ(pixelAt(canvas, x, y), (RGBA{{0, 0, 255, 128}})) << x << "," << y;
}

TEST(PiecewiseStroke, StopsDrawingWhenTold)
{
    setDrawingInterruption([] { return true; });
    TestCanvas canvas(100, 100);
    strokeSpiral(canvas);
    setDrawingInterruption(nullptr);
    EXPECT_EQ(pixelAt(canvas, 50, 50)[3], 0);

    // Short paths are drawn in one go, without asking.
    setDrawingInterruption([] { return true; });
    TestCanvas small(20, 20);
    small->setLineWidth(4);
    small->moveTo(0, 10);
    small->lineTo(20, 10);
    small->stroke();
    setDrawingInterruption(nullptr);
    EXPECT_EQ(pixelAt(small, 10, 10)[3], 255);
}

} // namespace
