#include "CanvasTestSupport.h"

#include "web/canvas/CairoSafePath.h"
#include "web/canvas/Path2D.h"
#include "web/css/CSSFilter.h"
#include "web/css/CSSTransform.h"

#include <cmath>
#include <limits>
#include <vector>

namespace {

constexpr double kHuge = std::numeric_limits<double>::max();

// Hostile scripts must neither crash nor hang nor leave the context unable to draw.
TEST(CanvasRobustness, ExtremeArgumentsDrawNothingOrSomethingSensible)
{
    TestCanvas canvas(50, 50);
    canvas->scale(1e300, 1e300);
    canvas->scale(1e300, 1e300); // overflows to infinity: nothing can be drawn
    canvas->fillRect(0, 0, 1, 1);
    canvas->setTransform(1, 0, 0, 1, 0, 0);
    ASSERT_FALSE(canvas->arc(25, 25, kHuge, 0, 1e300).isException());
    ASSERT_FALSE(canvas->ellipse(25, 25, 1e200, 1e-200, 1e100, -1e300, 1e300, true).isException());
    ASSERT_FALSE(canvas->arcTo(1e308, 1e308, -1e308, 1e308, 1e308).isException());
    canvas->bezierCurveTo(kHuge, -kHuge, -kHuge, kHuge, 0, 0);
    canvas->fill();
    canvas->setLineWidth(1e300);
    canvas->stroke();
    canvas->setShadowColor("black");
    canvas->setShadowBlur(1e300);
    canvas->setShadowOffsetX(1e300);
    canvas->fillRect(0, 0, 10, 10);
    std::vector<double> dashes(10000, 0.001);
    canvas->setLineDash(dashes);
    canvas->setLineWidth(1);
    canvas->strokeRect(1, 1, 48, 48);
    // Still drawing normally afterwards.
    canvas->reset();
    canvas->fillRect(0, 0, 50, 50);
    EXPECT_EQ(pixelAt(canvas, 25, 25), kBlack);
}

TEST(CanvasRobustness, DeepSaveStacksAndLongPathsStayBounded)
{
    TestCanvas canvas(10, 10);
    for (int i = 0; i < 100000; ++i)
        canvas->save();
    for (int i = 0; i < 100010; ++i)
        EXPECT_FALSE(canvas->restore().isException());
    for (int i = 0; i < 100000; ++i)
        canvas->lineTo(i % 10, i % 7);
    canvas->stroke();
    canvas->clip();
    canvas->fillRect(0, 0, 10, 10);
    SUCCEED();
}

TEST(CairoSafePath, ClampsFarPointsAndDropsNonNumbers)
{
    Path2D far;
    far.moveTo(0, 0);
    far.lineTo(1e12, 0);
    far.lineTo(1e12, 1e12);
    far.closePath();
    EXPECT_TRUE(exceedsCairoRange(far.pathData()));
    auto clamped = clampToCairoRange(far.pathData(), false);
    EXPECT_FALSE(exceedsCairoRange(clamped));

    std::vector<cairo_path_data_t> broken(far.pathData().begin(), far.pathData().end());
    broken[3].point.x = NAN;
    EXPECT_TRUE(clampToCairoRange(broken, false).empty());

    // A curve whose control points fly off keeps its part near the canvas.
    Path2D curve;
    curve.moveTo(10, 10);
    curve.bezierCurveTo(1e9, 10, 1e9, 20, 10, 20);
    auto flattened = clampToCairoRange(curve.pathData(), true);
    EXPECT_FALSE(flattened.empty());
    EXPECT_FALSE(exceedsCairoRange(flattened));
}

TEST(CSSFilter, AcceptsFilterListsAsChromiumDoes)
{
    for (const char* valid : {"none", "blur(5px)", "BLUR(2PX)", "blur()", "url(#x) blur(2px)", "brightness(50%) contrast(2)",
                              "drop-shadow(2px 3px 4px red)", "drop-shadow(rgba(0,0,0,0.5) 1px 1px)", "hue-rotate(90deg)",
                              "hue-rotate(0)", "grayscale(1) sepia(0.5) invert(100%) opacity(.2) saturate(3)"})
        EXPECT_TRUE(isValidCSSFilter(valid)) << valid;
    for (const char* invalid : {"", "blur(5)", "blur 10px", "blur(-1px)", "none blur(1px)", "drop-shadow(1px)", "brightness(-1)",
                                "hue-rotate(10)", "sparkle(1)", "blur(1px", "drop-shadow(red 1px 2px blue)"})
        EXPECT_FALSE(isValidCSSFilter(invalid)) << invalid;
}

TEST(CSSTransform, ConvertsAbsoluteUnitsAndAngles)
{
    auto m = parseCSSTransformList("translate(1cm, 12pt) rotate(0.5turn)");
    ASSERT_TRUE(m.has_value());
    EXPECT_NEAR(m->m[0][3], 96 / 2.54, 1e-9);
    EXPECT_NEAR(m->m[1][3], 16, 1e-9);
    EXPECT_EQ(m->m[0][0], -1); // exact at half a turn
    EXPECT_TRUE(m->is2D);
    EXPECT_FALSE(parseCSSTransformList("translate(1vw)").has_value());
    EXPECT_FALSE(parseCSSTransformList("rotate(1deg) ,").has_value());
    EXPECT_FALSE(parseCSSTransformList("").has_value());
    EXPECT_FALSE(parseCSSTransformList("skew(1deg, 2deg, 3deg)").has_value());
    EXPECT_FALSE(parseCSSTransformList("perspective(-1px)").has_value());
}

} // namespace
