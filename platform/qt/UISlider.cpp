#include "UISlider.h"

#include "QtConversions.h"
#include "UIView.h"

#include <QMouseEvent>
#include <QPainter>
#include <QStyleOptionSlider>

#include <algorithm>
#include <cmath>

UISlider::UISlider(QWidget* parent) : QSlider(Qt::Horizontal, parent)
{
    QSlider::setRange(0, kSteps);
    setSingleStep(kSteps / 100);
    setPageStep(kSteps / 10);
    setFocusPolicy(Qt::StrongFocus);
    setMinimumHeight(34);
    connect(this, &QSlider::valueChanged, this, [this](int step) {
        if (settingValue_)
            return;
        value_ = minimum_ + (maximum_ - minimum_) * static_cast<float>(step) / kSteps;
        emit valueEdited(value_);
    });
}

float UISlider::value() const
{
    return value_;
}

void UISlider::setValue(float value, bool)
{
    if (!std::isfinite(value))
        return;
    value_ = std::clamp(value, std::min(minimum_, maximum_), std::max(minimum_, maximum_));
    float range = maximum_ - minimum_;
    int step = range > 0 ? static_cast<int>(std::lround((value_ - minimum_) / range * kSteps)) : 0;
    settingValue_ = true;
    QSlider::setValue(step);
    settingValue_ = false;
    update();
}

void UISlider::setMinimumValue(float minimum)
{
    if (std::isfinite(minimum))
        minimum_ = minimum;
    setValue(value_);
}

void UISlider::setMaximumValue(float maximum)
{
    if (std::isfinite(maximum))
        maximum_ = maximum;
    setValue(value_);
}

void UISlider::setMinimumTrackTintColor(std::optional<UIColor> color)
{
    minimumTrackTint_ = color;
    update();
}

void UISlider::setMaximumTrackTintColor(std::optional<UIColor> color)
{
    maximumTrackTint_ = color;
    update();
}

void UISlider::setThumbTintColor(std::optional<UIColor> color)
{
    thumbTint_ = color;
    update();
}

void UISlider::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    constexpr double thumb = 28;
    double left = thumb / 2;
    double right = width() - thumb / 2;
    double fraction = static_cast<double>(QSlider::value()) / kSteps;
    double x = left + (right - left) * fraction;
    double y = height() / 2.0;

    painter.setPen(Qt::NoPen);
    painter.setBrush(maximumTrackTint_ ? toQColor(*maximumTrackTint_) : QColor(120, 120, 128, 51));
    painter.drawRoundedRect(QRectF(left - 2, y - 2, right - left + 4, 4), 2, 2);
    painter.setBrush(toQColor(minimumTrackTint_ ? *minimumTrackTint_ : UIView::effectiveTintColor(this)));
    painter.drawRoundedRect(QRectF(left - 2, y - 2, x - left + 2, 4), 2, 2);

    QRectF knob(x - thumb / 2, y - thumb / 2, thumb, thumb);
    for (int i = 4; i > 0; --i) {
        painter.setBrush(QColor(0, 0, 0, 9));
        painter.drawEllipse(knob.translated(0, i * 0.7).adjusted(-i * 0.4, -i * 0.4, i * 0.4, i * 0.4));
    }
    painter.setBrush(thumbTint_ ? toQColor(*thumbTint_) : QColor(Qt::white));
    painter.drawEllipse(knob);
    if (hasFocus()) {
        painter.setBrush(Qt::NoBrush);
        painter.setPen(QPen(toQColor(UIView::effectiveTintColor(this)), 1.5));
        painter.drawEllipse(knob.adjusted(-1, -1, 1, 1));
    }
}

void UISlider::followPointer(double x)
{
    constexpr double thumb = 28;
    double span = std::max(1.0, width() - thumb);
    double fraction = std::clamp((x - thumb / 2) / span, 0.0, 1.0);
    QSlider::setValue(static_cast<int>(std::lround(fraction * kSteps)));
}

void UISlider::mousePressEvent(QMouseEvent* event)
{
    if (event->button() != Qt::LeftButton)
        return QSlider::mousePressEvent(event);
    setSliderDown(true);
    followPointer(event->position().x());
    event->accept();
}

void UISlider::mouseMoveEvent(QMouseEvent* event)
{
    if (isSliderDown())
        followPointer(event->position().x());
    event->accept();
}

void UISlider::mouseReleaseEvent(QMouseEvent* event)
{
    if (isSliderDown()) {
        followPointer(event->position().x());
        setSliderDown(false);
    }
    event->accept();
}
