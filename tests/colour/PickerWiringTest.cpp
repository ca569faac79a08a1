#include "ColourTestSupport.h"

#include "colour/CPColorCursor.h"
#include "colour/CPColorPickerView.h"

#include "platform/core/SystemLog.h"

#include <QAccessible>
#include <QLayout>
#include <QPointer>
#include <QSignalSpy>
#include <QTest>
#include <QVBoxLayout>

#include <gtest/gtest.h>

#include <limits>
#include <string>
#include <vector>

namespace {

QRect rectOf(double x, double y, double width, double height)
{
    return QRect(int(x), int(y), int(width), int(height));
}

class PickerWiring : public testing::Test {
protected:
    void SetUp() override
    {
        setSystemLogObserver([this](const std::string& line) { logged_.push_back(line); });
        picker_ = new CPColorPickerView(window_.get());
    }
    void TearDown() override { setSystemLogObserver(nullptr); }

    // Resizing a shown picker lays it out at once; a hidden one waits until it is shown.
    void layOut(int width, int height)
    {
        picker_->resize(width, height);
        if (picker_->isHidden())
            picker_->show();
    }

    ShownWindow window_;
    CPColorPickerView* picker_ = nullptr;
    std::vector<std::string> logged_;
};

TEST_F(PickerWiring, TheStandardLayout)
{
    layOut(390, 844);
    CPColorMapView* map = picker_->colorMapView();
    EXPECT_EQ(map->geometry(), rectOf(0, 154, 390, 844 - 154 - 44));
    EXPECT_EQ(picker_->colorInfoView()->geometry(), rectOf(8, 154 - 102, 66, 84));
    EXPECT_TRUE(picker_->colorInfoView()->isHidden());
    QRect slider = picker_->brightnessSlider()->geometry();
    CGRect track = CPBrightnessSlider::alignmentRectForFrame(CGRectMake(slider.x(), slider.y(), slider.width(), slider.height()));
    EXPECT_EQ(track, CGRectMake(32, 154 - 35, 390 - 64, 11));
    ASSERT_TRUE(picker_->backdropView());
    EXPECT_EQ(picker_->backdropView()->geometry(), QRect(0, 0, 390, 844));
    EXPECT_DOUBLE_EQ(picker_->backdropView()->opacity(), 0.08);
    EXPECT_EQ(picker_->children().first(), picker_->backdropView()); // behind everything

    ASSERT_GE(logged_.size(), 2u);
    EXPECT_EQ(logged_[logged_.size() - 2], "map frame before: {{0, 0}, {0, 0}}");
    EXPECT_EQ(logged_.back(), "map frame after: {{0, 154}, {390, 646}}");
}

TEST_F(PickerWiring, AHeaderModifierMovesTheMap)
{
    picker_->setHeaderHeightModifier(2.8); // 179.2 points
    layOut(390, 844);
    EXPECT_EQ(picker_->colorMapView()->geometry(), rectOf(0, 179, 390, 844 - 179 - 44));
}

TEST_F(PickerWiring, LayoutStopsAfterFivePasses)
{
    for (int pass = 1; pass <= 5; ++pass) {
        layOut(300 + pass, 800);
        EXPECT_EQ(picker_->colorMapView()->width(), 300 + pass);
        EXPECT_EQ(picker_->isLayoutDone(), pass == 5);
    }
    layOut(320, 700);
    EXPECT_EQ(picker_->colorMapView()->width(), 305);
    EXPECT_EQ(picker_->layoutPassCount(), 5);
}

TEST_F(PickerWiring, PartsMadeAfterThePickerIsShownAreShownToo)
{
    picker_->show();
    QCoreApplication::processEvents();
    picker_->setColorMapView(nullptr);
    picker_->setBrightnessSlider(nullptr);
    EXPECT_TRUE(picker_->colorMapView()->isVisible());
    EXPECT_TRUE(picker_->brightnessSlider()->isVisible());
}

TEST_F(PickerWiring, AQtLayoutTakesOverTheLayout)
{
    auto* layout = new QVBoxLayout(picker_);
    EXPECT_TRUE(picker_->usingAutoLayout());
    layOut(390, 844);
    EXPECT_EQ(picker_->layoutPassCount(), 0);
    delete layout;
}

TEST_F(PickerWiring, ASmallPickerGetsEmptyPartsNotNegativeOnes)
{
    layOut(20, 30);
    EXPECT_EQ(picker_->colorMapView()->height(), 0);
    EXPECT_GE(picker_->brightnessSlider()->width(), 0);
    picker_->colorMapView()->update(CGPoint{1, 1});
    QCoreApplication::processEvents();
}

TEST_F(PickerWiring, SetColorReachesEveryPart)
{
    layOut(390, 844);
    UIColor color = colorWithHueSaturationBrightnessAlpha(0.5, 0.5, 0.6, 1);
    picker_->setColor(color);
    EXPECT_NEAR(picker_->colorMapView()->brightness(), 0.6, 1e-6);
    EXPECT_NEAR(picker_->colorMapView()->colorMapLayerOpacity(), 0.6, 1e-6);
    EXPECT_NEAR(picker_->colorMapView()->hsvColor().hue, 0.5, 1e-6);
    EXPECT_NEAR(picker_->brightnessSlider()->brightness(), 0.6, 1e-6);
    EXPECT_EQ(picker_->colorInfoView()->text(), "#4c9999");
    EXPECT_EQ(picker_->accessibleDescription(), "#4c9999");
}

TEST_F(PickerWiring, TheMapsColourGoesToTheSliderInfoAndBackdrop)
{
    layOut(390, 844);
    picker_->setColor(colorWithHueSaturationBrightnessAlpha(0, 1, 0.5, 1));
    picker_->colorMapView()->update(CGPoint{130, 0}); // hue 1/3 at the top: green
    EXPECT_NEAR(picker_->hsvColor().hue, 1.0 / 3, 1e-6);
    EXPECT_NEAR(picker_->hsvColor().brightness, 0.5, 1e-6);
    EXPECT_EQ(picker_->colorInfoView()->text(), "#007f00");
    EXPECT_EQ(CPColorInfoView::hexTextForColor(picker_->brightnessSlider()->gradientStartColor()), "#00ff00");
    EXPECT_EQ(picker_->backdropView()->backgroundColor(), picker_->colorMapView()->color());
}

TEST_F(PickerWiring, TheSlidersBrightnessGoesToTheMapWithoutLosingTheHueAtBlack)
{
    layOut(390, 844);
    picker_->colorMapView()->update(CGPoint{130, 0});
    CPBrightnessSlider* slider = picker_->brightnessSlider();
    CGRect track = slider->trackRect();
    slider->update(track.origin.x + track.size.width); // lower limit 0: black
    EXPECT_EQ(picker_->hsvColor().brightness, 0);
    EXPECT_EQ(picker_->colorMapView()->colorMapLayerOpacity(), 0);
    EXPECT_EQ(picker_->colorInfoView()->text(), "#000000");
    // Dragging on a black map still moves along the hues.
    picker_->colorMapView()->update(CGPoint{260, 0});
    slider->update(track.origin.x);
    EXPECT_NEAR(picker_->hsvColor().hue, 2.0 / 3, 1e-6);
    EXPECT_EQ(picker_->colorInfoView()->text(), "#0000ff");
    EXPECT_DOUBLE_EQ(picker_->colorMapView()->colorCursor()->center().x, 260.5);
}

TEST_F(PickerWiring, KeyboardMovesTheCursorAndTheBrightness)
{
    layOut(390, 844);
    picker_->setFocus();
    EXPECT_EQ(picker_->focusPolicy(), Qt::StrongFocus);
    picker_->colorMapView()->update(CGPoint{10.5, 10.5});
    QTest::keyClick(picker_, Qt::Key_Down, Qt::ShiftModifier);
    QTest::keyClick(picker_, Qt::Key_Left);
    EXPECT_DOUBLE_EQ(picker_->colorMapView()->colorCursor()->center().x, 9.5);
    EXPECT_DOUBLE_EQ(picker_->colorMapView()->colorCursor()->center().y, 20.5);
    float before = picker_->hsvColor().brightness;
    QTest::keyClick(picker_, Qt::Key_PageDown);
    EXPECT_NEAR(picker_->hsvColor().brightness, before - 0.05, 1e-6);
}

TEST_F(PickerWiring, TheMapCursorReachesPastTheMapsTopEdge)
{
    layOut(390, 844);
    CPColorMapView* map = picker_->colorMapView();
    map->update(CGPoint{100, 0});
    CPColorCursor* cursor = map->colorCursor();
    EXPECT_EQ(cursor->parentWidget(), picker_);
    EXPECT_TRUE(cursor->isVisible());
    EXPECT_LT(cursor->geometry().top(), map->geometry().top());
    EXPECT_NEAR(cursor->x() + cursor->width() / 2.0, map->x() + 100.5, 0.5);
    // Above the map even when the map is raised, and hidden with it.
    map->raise();
    EXPECT_EQ(picker_->children().last(), cursor);
    map->hide();
    EXPECT_FALSE(cursor->isVisible());
    map->show();
    EXPECT_TRUE(cursor->isVisible());

    // It goes with the map.
    QPointer<CPColorCursor> watched = cursor;
    picker_->setColorMapView(new CPColorMapView(picker_));
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_TRUE(watched.isNull());
}

TEST_F(PickerWiring, TheFocusShowsOnTheCursors)
{
    layOut(390, 844);
    QFocusEvent in(QEvent::FocusIn);
    QCoreApplication::sendEvent(picker_, &in);
    EXPECT_TRUE(picker_->colorMapView()->colorCursor()->showsFocus());
    QFocusEvent out(QEvent::FocusOut);
    QCoreApplication::sendEvent(picker_, &out);
    EXPECT_FALSE(picker_->colorMapView()->colorCursor()->showsFocus());
}

TEST_F(PickerWiring, NonsenseColoursAreClamped)
{
    const double nan = std::numeric_limits<double>::quiet_NaN();
    layOut(390, 844);
    picker_->setColor(UIColor::colorWithRedGreenBlueAlpha(nan, 5, -std::numeric_limits<double>::infinity(), nan));
    HSVColor hsv = picker_->hsvColor();
    for (float value : {hsv.hue, hsv.saturation, hsv.brightness, hsv.alpha}) {
        EXPECT_GE(value, 0);
        EXPECT_LE(value, 1);
    }
    picker_->setHeaderHeightModifier(nan);
    EXPECT_EQ(picker_->headerHeightModifier(), 0);
}

TEST_F(PickerWiring, PartsCanBeGivenReplacedAndDeleted)
{
    auto* given = CPColorMapView::colorMapWithFrameSaturationUpperLimit(CGRectMake(0, 0, 10, 10), 1);
    given->setTileSize(2);
    picker_->setColor(UIColor::colorWithRedGreenBlueAlpha(0, 0, 1, 1));
    picker_->setColorMapView(given);
    EXPECT_EQ(given->parentWidget(), picker_);
    EXPECT_NEAR(given->hsvColor().hue, 2.0 / 3, 1e-6);
    QSignalSpy sent(picker_, &CPColorPickerView::valueChanged);
    given->update(CGPoint{1, 1});
    EXPECT_EQ(sent.count(), 1);

    // A part deleted by someone else is simply made again.
    delete given;
    CPColorMapView* made = picker_->colorMapView();
    ASSERT_TRUE(made);
    EXPECT_EQ(made->tileSize(), 1);

    // A part the picker made is let go when replaced, and no longer heard.
    QPointer<CPColorMapView> old = made;
    auto* replacement = new CPColorMapView(picker_);
    picker_->setColorMapView(replacement);
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_TRUE(old.isNull());
}

TEST_F(PickerWiring, EveryPartHasANameForScreenReaders)
{
    layOut(390, 844);
    EXPECT_EQ(picker_->accessibleName(), "Colour picker");
    EXPECT_EQ(picker_->brightnessSlider()->accessibleName(), "Brightness");
    picker_->setColor(colorWithHueSaturationBrightnessAlpha(0, 0, 0.8, 1));
    EXPECT_EQ(picker_->brightnessSlider()->accessibleDescription(), "Brightness 80 %");
    EXPECT_EQ(picker_->colorInfoView()->accessibleDescription(), "#cccccc");

    QAccessibleInterface* map = QAccessible::queryAccessibleInterface(picker_->colorMapView());
    ASSERT_TRUE(map);
    EXPECT_EQ(map->role(), QAccessible::Slider);
    EXPECT_EQ(map->text(QAccessible::Name), "Colour map");
    EXPECT_EQ(map->text(QAccessible::Value), picker_->colorMapView()->accessibleValueText());
    QAccessibleInterface* slider = QAccessible::queryAccessibleInterface(picker_->brightnessSlider());
    ASSERT_TRUE(slider);
    EXPECT_EQ(slider->text(QAccessible::Value), "Brightness 80 %");
}

} // namespace
