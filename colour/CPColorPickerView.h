#pragma once

#include "CPBackdropView.h"
#include "CPBrightnessSlider.h"
#include "CPColorInfoView.h"
#include "CPColorMapView.h"
#include "HSVColor.h"

#include "platform/core/UIColor.h"

#include <QPointer>
#include <QWidget>

#include <chrono>
#include <functional>
#include <optional>

// The hue, saturation and brightness picker: a colour map under a brightness slider, with a
// hidden info view and a faint backdrop of the chosen colour. It holds one colour and sends
// valueChanged, at most about 15 times a second, while the user changes it; when a drag or key
// press ends on a change that was held back, that last change is still sent.
//
// Keyboard: the arrows move the map's cursor by a tile (with Shift by ten), Page Up and Page
// Down change the brightness by a twentieth.
class CPColorPickerView : public QWidget {
    Q_OBJECT

public:
    using Clock = std::function<std::chrono::microseconds()>;
    static constexpr std::chrono::microseconds kMinimumActionInterval{66666};
    static constexpr double kKeyboardBrightnessStep = 0.05;
    static constexpr int kKeyboardLargeTileStep = 10;

    explicit CPColorPickerView(QWidget* parent = nullptr);
    ~CPColorPickerView() override;

    UIColor color() const;
    void setColor(const UIColor& color);
    const HSVColor& hsvColor() const { return hsv_; }

    // Each part is made (as a child, with tile size 1 and saturation limit 1 for the map) on
    // first access when none was set. A part given here is wired to the picker, made a child
    // if it has no parent, and given the current colour; a part the picker made itself and
    // that is replaced is deleted.
    CPColorMapView* colorMapView();
    void setColorMapView(CPColorMapView* colorMapView);
    CPBrightnessSlider* brightnessSlider();
    void setBrightnessSlider(CPBrightnessSlider* brightnessSlider);
    CPColorInfoView* colorInfoView();
    void setColorInfoView(CPColorInfoView* colorInfoView);

    // Scales the header above the map (64 points a unit); 0 means the standard 153.6 points.
    double headerHeightModifier() const { return headerHeightModifier_; }
    void setHeaderHeightModifier(double modifier);

    // From the parts' valueChanged.
    void brightnessChanged();
    void colorMapColorChanged();
    // Sends valueChanged unless one was sent less than kMinimumActionInterval ago; a change
    // held back that way is remembered until the next one sent.
    void sendActions();
    // Sends the change held back by sendActions, if any (at the end of a drag or key press).
    void sendPendingActions();
    bool hasPendingActions() const { return pendingActions_; }
    // Where sendActions reads the time; the default is the steady clock.
    void setClockForTesting(Clock clock);

    // Laid out by a Qt layout rather than by layoutSubviews.
    bool usingAutoLayout() const;
    void layoutSubviews();
    int layoutPassCount() const { return layoutPassCount_; }
    bool isLayoutDone() const { return layoutDone_; }
    CPBackdropView* backdropView() const { return backdropView_; }

signals:
    void valueChanged();

protected:
    void resizeEvent(QResizeEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void keyReleaseEvent(QKeyEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;

private:
    void showFocus(bool shows);
    void updateAccessibleValue();
    std::chrono::microseconds now() const;

    HSVColor hsv_{0, 0, 1, 1};
    QPointer<CPColorMapView> colorMapView_;
    QPointer<CPBrightnessSlider> brightnessSlider_;
    QPointer<CPColorInfoView> colorInfoView_;
    QPointer<CPBackdropView> backdropView_;
    bool madeColorMapView_ = false;
    bool madeBrightnessSlider_ = false;
    bool madeColorInfoView_ = false;
    double headerHeightModifier_ = 0;
    Clock clock_;
    std::optional<std::chrono::microseconds> lastActionTime_;
    bool pendingActions_ = false;
    int layoutPassCount_ = 0;
    bool layoutDone_ = false;
};
