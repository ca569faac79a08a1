#pragma once

#include <QSlider>

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
};
