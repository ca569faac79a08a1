#include "UISwitch.h"

#include "QtConversions.h"
#include "UIView.h"

#include <QPainter>
#include <QPainterPath>

#include <map>

namespace {

std::map<const ObjCClass*, UIColor>& appearance()
{
    static std::map<const ObjCClass*, UIColor> colours;
    return colours;
}

} // namespace

UISwitch::UISwitch(QWidget* parent) : QAbstractButton(parent)
{
    setCheckable(true);
    setFixedSize(51, 31);
    setFocusPolicy(Qt::StrongFocus);
    setCursor(Qt::PointingHandCursor);
    knob_.setDuration(180);
    knob_.setEasingCurve(QEasingCurve::OutCubic);
    connect(&knob_, &QVariantAnimation::valueChanged, this, [this](const QVariant& value) {
        position_ = value.toDouble();
        update();
    });
}

void UISwitch::setOn(bool on, bool animated)
{
    QSignalBlocker quiet(this);
    setChecked(on);
    if (!animated) {
        knob_.stop();
        position_ = on ? 1 : 0;
        update();
    }
}

void UISwitch::checkStateSet()
{
    knob_.stop();
    position_ = isChecked() ? 1 : 0;
    update();
}

void UISwitch::nextCheckState()
{
    QAbstractButton::nextCheckState();
    knob_.stop();
    knob_.setStartValue(position_);
    knob_.setEndValue(isChecked() ? 1.0 : 0.0);
    knob_.start();
}

void UISwitch::setOnTintColor(std::optional<UIColor> color)
{
    onTint_ = color;
    update();
}

UIColor UISwitch::effectiveOnTintColor() const
{
    if (onTint_)
        return *onTint_;
    for (const QWidget* ancestor = parentWidget(); ancestor; ancestor = ancestor->parentWidget())
        if (auto* object = dynamic_cast<const NSObject*>(ancestor))
            if (std::optional<UIColor> color = appearanceOnTintColor(object->isa()))
                return *color;
    return UIColor::colorWithRedGreenBlueAlpha(52 / 255.0, 199 / 255.0, 89 / 255.0, 1);
}

void UISwitch::setAppearanceOnTintColor(const ObjCClass& containerClass, std::optional<UIColor> color)
{
    if (color)
        appearance()[&containerClass] = *color;
    else
        appearance().erase(&containerClass);
}

std::optional<UIColor> UISwitch::appearanceOnTintColor(const ObjCClass& containerClass)
{
    for (const ObjCClass* cls = &containerClass; cls; cls = cls->superclass()) {
        auto found = appearance().find(cls);
        if (found != appearance().end())
            return found->second;
    }
    return std::nullopt;
}

void UISwitch::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    QRectF track(0.5, 0.5, width() - 1, height() - 1);
    double radius = track.height() / 2;

    QColor off(233, 233, 234);
    QColor on = toQColor(effectiveOnTintColor());
    if (!isEnabled())
        painter.setOpacity(0.5);
    QColor fill = QColor::fromRgbF(off.redF() + (on.redF() - off.redF()) * position_,
                                   off.greenF() + (on.greenF() - off.greenF()) * position_,
                                   off.blueF() + (on.blueF() - off.blueF()) * position_);
    painter.setPen(Qt::NoPen);
    painter.setBrush(fill);
    painter.drawRoundedRect(track, radius, radius);

    double knobSize = height() - 4;
    double x = 2 + (width() - 4 - knobSize) * position_;
    QRectF knob(x, 2, knobSize, knobSize);
    for (int i = 3; i > 0; --i) {
        painter.setBrush(QColor(0, 0, 0, 10));
        painter.drawEllipse(knob.translated(0, i * 0.6).adjusted(-i * 0.3, -i * 0.3, i * 0.3, i * 0.3));
    }
    painter.setBrush(Qt::white);
    painter.drawEllipse(knob);

    if (hasFocus()) {
        painter.setBrush(Qt::NoBrush);
        painter.setPen(QPen(toQColor(UIView::effectiveTintColor(this)), 1.5));
        painter.drawRoundedRect(track.adjusted(-0.5, -0.5, 0.5, 0.5), radius + 0.5, radius + 0.5);
    }
}
