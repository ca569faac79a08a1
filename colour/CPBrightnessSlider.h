#pragma once

#include "HSVColor.h"

#include "platform/core/CGGeometry.h"
#include "platform/core/UIColor.h"

#include <QWidget>

class CPBrightnessCursor;

// A horizontal track shaded from the colour at full brightness (left) to the colour at the
// lower limit (right), with a knob at the current brightness. The frame is larger than the
// track so that the knob fits; the alignment rectangle is the track.
class CPBrightnessSlider : public QWidget {
    Q_OBJECT

public:
    struct Insets {
        double top = 0;
        double left = 0;
        double bottom = 0;
        double right = 0;
    };

    explicit CPBrightnessSlider(QWidget* parent = nullptr);

    const UIColor& color() const { return color_; }
    // Takes the colour's brightness as the slider's and shades the track with its hue and saturation.
    void setColor(const UIColor& color);
    double brightness() const { return brightness_; }
    // The brightness at the right end, 0..1.
    double brightnessLowerLimit() const { return brightnessLowerLimit_; }
    void setBrightnessLowerLimit(double limit);

    // The track's two ends: the colour at brightness 1 and at the lower limit.
    UIColor gradientStartColor() const;
    UIColor gradientEndColor() const;

    void handleTap(double x);
    void handlePan(double x, Qt::GestureState state);
    // A touch at x in the slider's own coordinates: left of the track is full brightness,
    // right of it the lower limit. Sends valueChanged.
    void update(double x);
    using QWidget::update;
    void updateCursor();
    // Changes the brightness by a step (the keyboard's Page Up and Page Down), within the
    // lower limit and 1, and sends valueChanged when it moved.
    void stepBrightness(double delta);

    static Insets alignmentRectInsets();
    static CGRect frameForAlignmentRect(CGRect alignmentRect);
    static CGRect alignmentRectForFrame(CGRect frame);
    // The track in the slider's own coordinates.
    CGRect trackRect() const;
    CPBrightnessCursor* cursor() const { return cursor_; }
    void setShowsFocus(bool shows);

    // "Brightness 80 %".
    QString accessibleValueText() const;

signals:
    void valueChanged();
    // A drag (or click) on the slider ended.
    void editingFinished();

protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;

private:
    void brightnessChangedByUser();

    UIColor color_ = UIColor::whiteColor();
    HSVColor hsv_{0, 0, 1, 1};
    double brightness_ = 1;
    double brightnessLowerLimit_ = 0;
    CPBrightnessCursor* cursor_ = nullptr;
    bool tracking_ = false;
    double lastX_ = 0;
};
