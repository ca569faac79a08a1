#include "ColourTestSupport.h"

#include "colour/CPColorCursor.h"
#include "colour/CPColorMapView.h"

#include <QSignalSpy>

#include <gtest/gtest.h>

#include <limits>

namespace {

// A 100 x 60 map of 10-point tiles: 10 columns, 6 rows.
class ColorMapTouch : public WithApplication, public testing::Test {
protected:
    void SetUp() override
    {
        map_.resize(100, 60);
        map_.setTileSize(10);
        map_.setSaturationUpperLimit(1);
        map_.setBrightness(0.8);
    }

    // The colour a touch picks, or nothing when the touch is ignored.
    std::optional<HSVColor> touch(double x, double y)
    {
        map_.setColor(UIColor::colorWithRedGreenBlueAlpha(0.1, 0.2, 0.3, 1));
        HSVColor before = map_.hsvColor();
        QSignalSpy changed(&map_, &CPColorMapView::valueChanged);
        map_.update(CGPoint{x, y});
        if (changed.count() == 0) {
            EXPECT_FLOAT_EQ(map_.hsvColor().hue, before.hue);
            return std::nullopt;
        }
        EXPECT_EQ(changed.count(), 1);
        return map_.hsvColor();
    }

    CPColorMapView map_;
};

TEST_F(ColorMapTouch, CornersPickHueAcrossAndSaturationDown)
{
    auto topLeft = touch(0, 0);
    ASSERT_TRUE(topLeft);
    EXPECT_FLOAT_EQ(topLeft->hue, 0);
    EXPECT_FLOAT_EQ(topLeft->saturation, 1);
    EXPECT_FLOAT_EQ(topLeft->brightness, 0.8f);
    EXPECT_FLOAT_EQ(topLeft->alpha, 1);

    auto topRight = touch(99.9, 0);
    ASSERT_TRUE(topRight);
    EXPECT_FLOAT_EQ(topRight->hue, 0.9f);
    EXPECT_FLOAT_EQ(topRight->saturation, 1);

    auto bottomLeft = touch(0, 59.9);
    ASSERT_TRUE(bottomLeft);
    EXPECT_FLOAT_EQ(bottomLeft->saturation, 0);

    auto inner = touch(35, 25);
    ASSERT_TRUE(inner);
    EXPECT_FLOAT_EQ(inner->hue, 0.3f);
    EXPECT_FLOAT_EQ(inner->saturation, 1 - 2.0f / 5);
}

TEST_F(ColorMapTouch, TheLineJustBelowTheMapCountsAndNothingFurther)
{
    auto atHeight = touch(50, 60);
    ASSERT_TRUE(atHeight);
    EXPECT_FLOAT_EQ(atHeight->saturation, 0);
    EXPECT_FLOAT_EQ(atHeight->hue, 0.5f);

    auto justAbovePlusOne = touch(50, 60.99);
    ASSERT_TRUE(justAbovePlusOne);
    EXPECT_FLOAT_EQ(justAbovePlusOne->saturation, 0);

    EXPECT_FALSE(touch(50, 61));
    EXPECT_FALSE(touch(50, 61.5));
}

TEST_F(ColorMapTouch, TheRightAndLeftEdgesAndTheTop)
{
    EXPECT_FALSE(touch(100, 10)); // the right edge itself lies outside
    EXPECT_FALSE(touch(-0.01, 10));
    EXPECT_FALSE(touch(10, -0.01));
    auto rightmost = touch(99.999, 10);
    ASSERT_TRUE(rightmost);
    EXPECT_FLOAT_EQ(rightmost->hue, 0.9f);
}

TEST_F(ColorMapTouch, PartTilesAtTheEdgesBelongToTheLastWholeTile)
{
    map_.resize(105, 65);
    auto corner = touch(104, 64);
    ASSERT_TRUE(corner);
    EXPECT_FLOAT_EQ(corner->hue, 0.9f);
    EXPECT_FLOAT_EQ(corner->saturation, 0);
}

TEST_F(ColorMapTouch, ALimitBelowOneWashesTheBottomRowOnlyThatFar)
{
    map_.setSaturationUpperLimit(0.5);
    auto bottom = touch(0, 59);
    ASSERT_TRUE(bottom);
    EXPECT_FLOAT_EQ(bottom->saturation, 0.5f);
}

TEST_F(ColorMapTouch, NonsenseTouchesAndMapsWithoutTilesAreIgnored)
{
    const double nan = std::numeric_limits<double>::quiet_NaN();
    const double inf = std::numeric_limits<double>::infinity();
    EXPECT_FALSE(touch(nan, 10));
    EXPECT_FALSE(touch(10, nan));
    EXPECT_FALSE(touch(inf, -inf));

    map_.setTileSize(std::nullopt);
    EXPECT_FALSE(touch(10, 10));
    map_.setTileSize(0);
    EXPECT_FALSE(touch(10, 10));
    map_.setTileSize(nan);
    EXPECT_FALSE(touch(10, 10));
    map_.setTileSize(200); // larger than the map
    EXPECT_FALSE(touch(10, 10));

    map_.setTileSize(10);
    map_.resize(0, 0);
    EXPECT_FALSE(touch(0, 0));
}

TEST_F(ColorMapTouch, ASingleRowMapGivesFullSaturationNotNaN)
{
    map_.resize(100, 10);
    auto only = touch(5, 5);
    ASSERT_TRUE(only);
    EXPECT_FLOAT_EQ(only->saturation, 1);
}

TEST_F(ColorMapTouch, TheCursorSitsAtTheCentreOfTheTouchedTile)
{
    for (int column = 0; column < 10; ++column)
        for (int row = 0; row < 6; ++row) {
            SCOPED_TRACE(testing::Message() << column << "," << row);
            map_.update(CGPoint{column * 10 + 1.0, row * 10 + 9.0});
            CGPoint centre = map_.colorCursor()->center();
            EXPECT_DOUBLE_EQ(centre.x, column * 10 + 5);
            EXPECT_DOUBLE_EQ(centre.y, row * 10 + 5);
            // The colour alone puts it back there.
            UIColor picked = map_.color();
            map_.update(CGPoint{0, 0});
            map_.setColor(picked);
            // The bottom row is grey, which has no hue to find a column by.
            if (row < 5) {
                EXPECT_DOUBLE_EQ(map_.colorCursor()->center().x, column * 10 + 5);
            }
            EXPECT_DOUBLE_EQ(map_.colorCursor()->center().y, row * 10 + 5);
        }
}

TEST_F(ColorMapTouch, AGreyKeepsTheCursorsColumnAndBlackItsPlace)
{
    map_.update(CGPoint{35, 15});
    map_.setColor(UIColor::colorWithWhiteAlpha(0.6, 1));
    EXPECT_DOUBLE_EQ(map_.colorCursor()->center().x, 35);
    EXPECT_DOUBLE_EQ(map_.colorCursor()->center().y, 55);

    map_.update(CGPoint{35, 15});
    map_.setColor(UIColor::blackColor());
    EXPECT_DOUBLE_EQ(map_.colorCursor()->center().x, 35);
    EXPECT_DOUBLE_EQ(map_.colorCursor()->center().y, 15);
}

TEST_F(ColorMapTouch, AHueJustBelowOneIsTheRedOfTheFirstColumn)
{
    map_.setColor(UIColor::colorWithRedGreenBlueAlpha(1, 0, 0.02, 1));
    EXPECT_DOUBLE_EQ(map_.colorCursor()->center().x, 5);
}

TEST_F(ColorMapTouch, ArrowStepsMoveByWholeTilesAndStopAtTheEdges)
{
    map_.update(CGPoint{5, 5});
    map_.moveColorCursorByTiles(3, 2);
    EXPECT_FLOAT_EQ(map_.hsvColor().hue, 0.3f);
    EXPECT_FLOAT_EQ(map_.hsvColor().saturation, 0.6f);
    map_.moveColorCursorByTiles(100, 100);
    EXPECT_FLOAT_EQ(map_.hsvColor().hue, 0.9f);
    EXPECT_FLOAT_EQ(map_.hsvColor().saturation, 0);
    map_.moveColorCursorByTiles(-100, -100);
    EXPECT_FLOAT_EQ(map_.hsvColor().hue, 0);
    EXPECT_FLOAT_EQ(map_.hsvColor().saturation, 1);
}

TEST_F(ColorMapTouch, ADragSendsOneChangePerStepAndOneEndOfEditing)
{
    map_.show();
    QSignalSpy changed(&map_, &CPColorMapView::valueChanged);
    QSignalSpy finished(&map_, &CPColorMapView::editingFinished);
    sendMouse(&map_, QEvent::MouseButtonPress, {5, 5});
    EXPECT_TRUE(map_.colorCursor()->isEditing());
    sendMouse(&map_, QEvent::MouseMove, {15, 5});
    sendMouse(&map_, QEvent::MouseMove, {25, 5});
    sendMouse(&map_, QEvent::MouseButtonRelease, {25, 5});
    EXPECT_EQ(changed.count(), 3);
    EXPECT_EQ(finished.count(), 1);
    EXPECT_FALSE(map_.colorCursor()->isEditing());
    EXPECT_FLOAT_EQ(map_.hsvColor().hue, 0.2f);
}

TEST_F(ColorMapTouch, TheAccessibleValueNamesHueAndSaturation)
{
    map_.setColor(colorWithHueSaturationBrightnessAlpha(210.0 / 360, 0.4, 1, 1));
    EXPECT_EQ(map_.accessibleName(), "Colour map");
    EXPECT_EQ(map_.accessibleDescription(), "Hue 210 degrees, saturation 40 %");
}

} // namespace
