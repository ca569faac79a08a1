#pragma once

#include "platform/core/UIColor.h"

#include <QSlider>

#include <optional>

// The platform's slider: a floating-point value between a minimum and a maximum, drawn as
// on the phone (a thin track filled in the tint colour up to a round white thumb).
class UISlider : public QSlider {
    Q_OBJECT

public:
    explicit UISlider(QWidget* parent = nullptr);

    float value() const;
    void setValue(float value, bool animated = false);
    float minimumValue() const { return minimum_; }
    float maximumValue() const { return maximum_; }
    void setMinimumValue(float minimum);
    void setMaximumValue(float maximum);

    // The track up to the thumb (default: the tint colour), the track after it (default: a
    // light grey) and the thumb (default: white); nothing brings the default back.
    void setMinimumTrackTintColor(std::optional<UIColor> color);
    void setMaximumTrackTintColor(std::optional<UIColor> color);
    void setThumbTintColor(std::optional<UIColor> color);

signals:
    // The value the user set (while dragging, and by keyboard).
    void valueEdited(float value);

protected:
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;

private:
    void followPointer(double x);

    static constexpr int kSteps = 10000;
    float minimum_ = 0;
    float maximum_ = 1;
    float value_ = 0;
    bool settingValue_ = false;
    std::optional<UIColor> minimumTrackTint_;
    std::optional<UIColor> maximumTrackTint_;
    std::optional<UIColor> thumbTint_;
};
