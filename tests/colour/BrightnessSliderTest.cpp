#include "ColourTestSupport.h"

#include "colour/CPBrightnessCursor.h"
#include "colour/CPBrightnessSlider.h"
#include "colour/CPColorInfoView.h"

#include <QSignalSpy>

#include <gtest/gtest.h>

#include <limits>

namespace {

class BrightnessSlider : public WithApplication, public testing::Test {
protected:
    void SetUp() override
    {
        CGRect frame = CPBrightnessSlider::frameForAlignmentRect(CGRectMake(32, 100, 200, 11));
        slider_.setGeometry(int(frame.origin.x), int(frame.origin.y), int(frame.size.width), int(frame.size.height));
        slider_.setBrightnessLowerLimit(0.25);
        track_ = slider_.trackRect();
    }

    double touch(double x)
    {
        QSignalSpy changed(&slider_, &CPBrightnessSlider::valueChanged);
        slider_.update(x);
        EXPECT_EQ(changed.count(), 1);
        return slider_.brightness();
    }
    double left() const { return track_.origin.x; }
    double right() const { return track_.origin.x + track_.size.width; }

    CPBrightnessSlider slider_;
    CGRect track_;
};

TEST_F(BrightnessSlider, TheTrackIsTheAlignmentRectangle)
{
    EXPECT_EQ(track_.size.width, 200);
    EXPECT_EQ(track_.size.height, 11);
    CGRect frame = CPBrightnessSlider::frameForAlignmentRect(CGRectMake(32, 100, 200, 11));
    EXPECT_EQ(CPBrightnessSlider::alignmentRectForFrame(frame), CGRectMake(32, 100, 200, 11));
    // The knob fits inside the frame at both ends.
    EXPECT_GE(frame.size.height, CPBrightnessCursor::cursorSize());
    EXPECT_GE(track_.origin.x, CPBrightnessCursor::cursorSize() / 2);
}

TEST_F(BrightnessSlider, LeftIsFullBrightnessAndRightTheLowerLimit)
{
    EXPECT_DOUBLE_EQ(touch(left()), 1);
    EXPECT_DOUBLE_EQ(touch(right()), 0.25);
    EXPECT_DOUBLE_EQ(touch(left() + 50), 0.75 * 0.75 + 0.25);
    // Beyond the ends the value stays at the ends.
    EXPECT_DOUBLE_EQ(touch(0), 1);
    EXPECT_DOUBLE_EQ(touch(-1e9), 1);
    EXPECT_DOUBLE_EQ(touch(right() + 30), 0.25);
}

TEST_F(BrightnessSlider, TheKnobFollowsTheBrightness)
{
    touch(left());
    EXPECT_NEAR(slider_.cursor()->x() + slider_.cursor()->width() / 2.0, left(), 1);
    touch(left() + 50);
    EXPECT_NEAR(slider_.cursor()->x() + slider_.cursor()->width() / 2.0, left() + 50, 1);
    touch(right());
    EXPECT_NEAR(slider_.cursor()->x() + slider_.cursor()->width() / 2.0, right(), 1);
}

TEST_F(BrightnessSlider, TheColourSetsTheBrightnessAndTheTracksEnds)
{
    slider_.setColor(colorWithHueSaturationBrightnessAlpha(0.5, 0.5, 0.4, 1));
    EXPECT_NEAR(slider_.brightness(), 0.4, 1e-6);
    UIColor start = slider_.gradientStartColor();
    UIColor end = slider_.gradientEndColor();
    EXPECT_EQ(CPColorInfoView::hexTextForColor(start), "#7fffff");
    EXPECT_NEAR(end.red(), 0.125, 1e-6);
    EXPECT_NEAR(end.green(), 0.25, 1e-6);
    EXPECT_NEAR(end.blue(), 0.25, 1e-6);
    EXPECT_EQ(end.alpha(), 1);
}

TEST_F(BrightnessSlider, BadValuesAreIgnoredOrClamped)
{
    const double nan = std::numeric_limits<double>::quiet_NaN();
    touch(left());
    QSignalSpy changed(&slider_, &CPBrightnessSlider::valueChanged);
    slider_.update(nan);
    EXPECT_EQ(changed.count(), 0);
    EXPECT_DOUBLE_EQ(slider_.brightness(), 1);
    slider_.setBrightnessLowerLimit(nan);
    EXPECT_DOUBLE_EQ(slider_.brightnessLowerLimit(), 0.25);
    slider_.setBrightnessLowerLimit(3);
    EXPECT_DOUBLE_EQ(slider_.brightnessLowerLimit(), 1);
    EXPECT_DOUBLE_EQ(touch(left() + 10), 1); // no range left to slide through

    CPBrightnessSlider empty;
    empty.resize(0, 0);
    empty.update(5);
    EXPECT_DOUBLE_EQ(empty.brightness(), 1);
    empty.repaint();
}

TEST_F(BrightnessSlider, KeyboardStepsStayWithinTheRange)
{
    touch(left() + 100);
    double start = slider_.brightness();
    slider_.stepBrightness(0.05);
    EXPECT_NEAR(slider_.brightness(), start + 0.05, 1e-9);
    for (int i = 0; i < 40; ++i)
        slider_.stepBrightness(-0.05);
    EXPECT_DOUBLE_EQ(slider_.brightness(), 0.25);
    QSignalSpy changed(&slider_, &CPBrightnessSlider::valueChanged);
    slider_.stepBrightness(-0.05);
    EXPECT_EQ(changed.count(), 0); // already at the end: nothing changed, nothing sent
    EXPECT_EQ(slider_.accessibleDescription(), "Brightness 25 %");
}

} // namespace
