#include "ColourTestSupport.h"

#include "colour/CPColorPickerView.h"

#include <QSignalSpy>
#include <QTest>

#include <gtest/gtest.h>

namespace {

using namespace std::chrono_literals;

// A picker on a clock the test moves by hand, so nothing depends on how fast the machine is.
class PickerThrottle : public testing::Test {
protected:
    void SetUp() override
    {
        picker_ = new CPColorPickerView(window_.get());
        picker_->setClockForTesting([this] { return now_; });
        picker_->resize(390, 844);
        picker_->show();
        QCoreApplication::processEvents();
        map_ = picker_->colorMapView();
    }

    // A click on the map, in the map's own coordinates.
    void click(QPointF point) { map_->update(CGPoint{point.x(), point.y()}); }

    ShownWindow window_;
    CPColorPickerView* picker_ = nullptr;
    CPColorMapView* map_ = nullptr;
    std::chrono::microseconds now_{1'000'000'000};
};

TEST_F(PickerThrottle, TwoChangesWithinTheIntervalSendOneEvent)
{
    QSignalSpy sent(picker_, &CPColorPickerView::valueChanged);
    click({10, 10});
    now_ += 66665us;
    click({20, 10});
    EXPECT_EQ(sent.count(), 1);
    EXPECT_TRUE(picker_->hasPendingActions());
    // The interval counts from the last event sent, not from the last change.
    now_ += 1us;
    click({30, 10});
    EXPECT_EQ(sent.count(), 2);
    EXPECT_FALSE(picker_->hasPendingActions());
}

TEST_F(PickerThrottle, ADragSendsAboutFifteenEventsASecond)
{
    QSignalSpy sent(picker_, &CPColorPickerView::valueChanged);
    // One second of drag steps every 10 ms.
    for (int step = 0; step < 100; ++step) {
        click({double(step), 100});
        now_ += 10ms;
    }
    EXPECT_EQ(sent.count(), 15);
}

TEST_F(PickerThrottle, TheEndOfADragSendsTheChangeThatWasHeldBack)
{
    QSignalSpy sent(picker_, &CPColorPickerView::valueChanged);
    sendMouse(map_, QEvent::MouseButtonPress, {10, 10});
    now_ += 5ms;
    sendMouse(map_, QEvent::MouseMove, {200, 300});
    now_ += 5ms;
    EXPECT_EQ(sent.count(), 1);
    sendMouse(map_, QEvent::MouseButtonRelease, {200, 300});
    EXPECT_EQ(sent.count(), 2);
    EXPECT_FALSE(picker_->hasPendingActions());
    // What the last event carries is the last position's colour.
    EXPECT_EQ(picker_->color(), map_->color());
    EXPECT_FLOAT_EQ(picker_->hsvColor().hue, 200.0f / 390);
}

TEST_F(PickerThrottle, AFinishedDragWithNothingHeldBackSendsNothingMore)
{
    QSignalSpy sent(picker_, &CPColorPickerView::valueChanged);
    sendMouse(map_, QEvent::MouseButtonPress, {10, 10});
    now_ += 100ms;
    sendMouse(map_, QEvent::MouseButtonRelease, {10, 10});
    EXPECT_EQ(sent.count(), 1);
}

TEST_F(PickerThrottle, TheSliderIsThrottledTooAndItsDragEndSendsTheLastValue)
{
    CPBrightnessSlider* slider = picker_->brightnessSlider();
    QSignalSpy sent(picker_, &CPColorPickerView::valueChanged);
    double y = slider->height() / 2.0;
    sendMouse(slider, QEvent::MouseButtonPress, {40, y});
    sendMouse(slider, QEvent::MouseMove, {120, y});
    EXPECT_EQ(sent.count(), 1);
    sendMouse(slider, QEvent::MouseButtonRelease, {120, y});
    EXPECT_EQ(sent.count(), 2);
    EXPECT_FLOAT_EQ(picker_->hsvColor().brightness, static_cast<float>(slider->brightness()));
}

TEST_F(PickerThrottle, HeldKeysSendTheirLastChangeWhenReleased)
{
    picker_->setFocus();
    map_->update(CGPoint{100.5, 300.5});
    now_ += 1s;
    QSignalSpy sent(picker_, &CPColorPickerView::valueChanged);
    QTest::keyPress(picker_, Qt::Key_Right);
    QTest::keyPress(picker_, Qt::Key_Right);
    QTest::keyPress(picker_, Qt::Key_Right, Qt::ShiftModifier);
    EXPECT_EQ(sent.count(), 1);
    QTest::keyRelease(picker_, Qt::Key_Right);
    EXPECT_EQ(sent.count(), 2);
    EXPECT_FLOAT_EQ(picker_->hsvColor().hue, 112.0f / 390);
}

TEST_F(PickerThrottle, AClockThatGoesBackDoesNotSilenceThePicker)
{
    QSignalSpy sent(picker_, &CPColorPickerView::valueChanged);
    click({10, 10});
    now_ -= 1s;
    click({20, 10});
    EXPECT_EQ(sent.count(), 2);
}

} // namespace
