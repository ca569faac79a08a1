#include "CPBrightnessSlider.h"

#include "CPAccessibility.h"
#include "CPBrightnessCursor.h"

#include "platform/qt/QtConversions.h"

#include <QLinearGradient>
#include <QMouseEvent>
#include <QPainter>

#include <algorithm>
#include <cmath>

CPBrightnessSlider::CPBrightnessSlider(QWidget* parent) : QWidget(parent)
{
    setFocusPolicy(Qt::NoFocus);
    cursor_ = new CPBrightnessCursor(this);
    registerAccessiblePart(this, QAccessible::Slider, QStringLiteral("Brightness"));
    setAccessibleValue(this, accessibleValueText());
    updateCursor();
}

CPBrightnessSlider::Insets CPBrightnessSlider::alignmentRectInsets()
{
    // The knob is centred on the track and reaches its centre to the track's ends, so half a
    // knob of room on every side (less the track's own height above and below) keeps it whole.
    double knob = std::ceil(CPBrightnessCursor::cursorSize());
    constexpr double track = 11;
    double vertical = std::ceil((knob - track) / 2);
    return {vertical, knob / 2, vertical, knob / 2};
}

CGRect CPBrightnessSlider::frameForAlignmentRect(CGRect alignmentRect)
{
    Insets insets = alignmentRectInsets();
    return CGRectMake(alignmentRect.origin.x - insets.left, alignmentRect.origin.y - insets.top,
                      alignmentRect.size.width + insets.left + insets.right,
                      alignmentRect.size.height + insets.top + insets.bottom);
}

CGRect CPBrightnessSlider::alignmentRectForFrame(CGRect frame)
{
    Insets insets = alignmentRectInsets();
    return CGRectMake(frame.origin.x + insets.left, frame.origin.y + insets.top,
                      std::max(0.0, frame.size.width - insets.left - insets.right),
                      std::max(0.0, frame.size.height - insets.top - insets.bottom));
}

CGRect CPBrightnessSlider::trackRect() const
{
    return alignmentRectForFrame(CGRectMake(0, 0, width(), height()));
}

void CPBrightnessSlider::setColor(const UIColor& color)
{
    hsv_ = HSVColorFromUIColorKeepingHue(color, hsv_);
    color_ = UIColorFromHSVColor(hsv_);
    brightness_ = hsv_.brightness;
    updateCursor();
    setAccessibleValue(this, accessibleValueText());
    // The new gradient is drawn at once: nothing animates between the old and new ends.
    update();
}

void CPBrightnessSlider::setBrightnessLowerLimit(double limit)
{
    if (std::isnan(limit))
        return;
    brightnessLowerLimit_ = clampUnit(limit);
    updateCursor();
    update();
}

UIColor CPBrightnessSlider::gradientStartColor() const
{
    return colorWithHueSaturationBrightnessAlpha(hsv_.hue, hsv_.saturation, 1, 1);
}

UIColor CPBrightnessSlider::gradientEndColor() const
{
    return colorWithHueSaturationBrightnessAlpha(hsv_.hue, hsv_.saturation, brightnessLowerLimit_, 1);
}

void CPBrightnessSlider::update(double x)
{
    if (!std::isfinite(x))
        return;
    CGRect track = trackRect();
    double fraction = 0;
    if (track.size.width > 0)
        fraction = std::clamp(x - track.origin.x, 0.0, track.size.width) / track.size.width;
    brightness_ = (1 - fraction) * (1 - brightnessLowerLimit_) + brightnessLowerLimit_;
    brightnessChangedByUser();
}

void CPBrightnessSlider::stepBrightness(double delta)
{
    if (!std::isfinite(delta) || delta == 0)
        return;
    double stepped = std::clamp(brightness_ + delta, brightnessLowerLimit_, 1.0);
    if (stepped == brightness_)
        return;
    brightness_ = stepped;
    brightnessChangedByUser();
}

void CPBrightnessSlider::brightnessChangedByUser()
{
    updateCursor();
    setAccessibleValue(this, accessibleValueText());
    emit valueChanged();
}

void CPBrightnessSlider::updateCursor()
{
    CGRect track = trackRect();
    double span = 1 - brightnessLowerLimit_;
    double fraction = span > 0 ? std::clamp((1 - brightness_) / span, 0.0, 1.0) : 0;
    double centreX = track.origin.x + fraction * track.size.width;
    double centreY = track.origin.y + track.size.height / 2;
    cursor_->move(static_cast<int>(std::lround(centreX - cursor_->width() / 2.0)),
                  static_cast<int>(std::lround(centreY - cursor_->height() / 2.0)));
    cursor_->setColor(colorWithHueSaturationBrightnessAlpha(hsv_.hue, hsv_.saturation, brightness_, 1));
}

void CPBrightnessSlider::setShowsFocus(bool shows)
{
    cursor_->setShowsFocus(shows);
}

QString CPBrightnessSlider::accessibleValueText() const
{
    return QStringLiteral("Brightness %1 %").arg(std::lround(clampUnit(brightness_) * 100));
}

void CPBrightnessSlider::handleTap(double x)
{
    update(x);
}

void CPBrightnessSlider::handlePan(double x, Qt::GestureState state)
{
    bool ending = state == Qt::GestureFinished || state == Qt::GestureCanceled;
    if (!ending || x != lastX_)
        update(x);
    lastX_ = x;
}

void CPBrightnessSlider::paintEvent(QPaintEvent*)
{
    CGRect track = trackRect();
    if (track.size.width <= 0 || track.size.height <= 0)
        return;
    QRectF bar(track.origin.x, track.origin.y, track.size.width, track.size.height);
    QLinearGradient gradient(bar.topLeft(), bar.topRight());
    gradient.setColorAt(0, toQColor(gradientStartColor()));
    gradient.setColorAt(1, toQColor(gradientEndColor()));

    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(QColor(0, 0, 0, 30), 0.5));
    painter.setBrush(gradient);
    double radius = bar.height() / 2;
    painter.drawRoundedRect(bar, radius, radius);
}

void CPBrightnessSlider::resizeEvent(QResizeEvent* event)
{
    QWidget::resizeEvent(event);
    updateCursor();
}

void CPBrightnessSlider::mousePressEvent(QMouseEvent* event)
{
    if (event->button() != Qt::LeftButton)
        return QWidget::mousePressEvent(event);
    tracking_ = true;
    lastX_ = event->position().x();
    handleTap(lastX_);
    event->accept();
}

void CPBrightnessSlider::mouseMoveEvent(QMouseEvent* event)
{
    if (!tracking_)
        return QWidget::mouseMoveEvent(event);
    handlePan(event->position().x(), Qt::GestureUpdated);
    event->accept();
}

void CPBrightnessSlider::mouseReleaseEvent(QMouseEvent* event)
{
    if (!tracking_ || event->button() != Qt::LeftButton)
        return QWidget::mouseReleaseEvent(event);
    tracking_ = false;
    handlePan(event->position().x(), Qt::GestureFinished);
    event->accept();
    emit editingFinished();
}
