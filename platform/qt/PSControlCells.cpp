#include "PSControlCells.h"

#include "UISlider.h"
#include "UISwitch.h"
#include "UIView.h"

#include <QCoreApplication>
#include <QKeyEvent>
#include <QLabel>

#include <cmath>

const ObjCClass& PSControlTableCell::staticClass()
{
    static const ObjCClass& cls =
        ClassBuilder<PSControlTableCell>("PSControlTableCell", &PSTableCell::staticClass()).build();
    return cls;
}

PSControlTableCell::PSControlTableCell(int style, const std::string& reuseIdentifier,
                                       std::shared_ptr<PSSpecifier> specifier)
    : PSTableCell(style, reuseIdentifier, std::move(specifier))
{
}

void PSControlTableCell::controlChanged()
{
    value_ = controlValue();
    std::shared_ptr<PSSpecifier> entry = specifier();
    if (!entry || !entry->target() || entry->setter().empty())
        return;
    entry->target()->performSelector(entry->setter(), {value_, entry});
}

const ObjCClass& PSSwitchTableCell::staticClass()
{
    static const ObjCClass& cls =
        ClassBuilder<PSSwitchTableCell>("PSSwitchTableCell", &PSControlTableCell::staticClass()).build();
    return cls;
}

PSSwitchTableCell::PSSwitchTableCell(int style, const std::string& reuseIdentifier,
                                     std::shared_ptr<PSSpecifier> specifier)
    : PSControlTableCell(style, reuseIdentifier, std::move(specifier))
{
    switch_ = new UISwitch(this);
    switch_->setFocusPolicy(Qt::NoFocus);
    switch_->setAccessibleName(textLabel()->text());
    setControl(switch_);
    setAccessoryView(switch_);
    connect(switch_, &QAbstractButton::toggled, this, [this] { controlChanged(); });
}

void PSSwitchTableCell::setValue(const Id& value)
{
    value_ = Id(value.boolValue());
    switch_->setOn(value.boolValue());
    switch_->setAccessibleName(textLabel()->text());
    updateAccessibility();
}

Id PSSwitchTableCell::controlValue() const
{
    return Id(switch_->isOn());
}

void PSSwitchTableCell::activate()
{
    switch_->click();
}

QString PSSwitchTableCell::accessibleValue() const
{
    return switch_->isOn() ? QStringLiteral("on") : QStringLiteral("off");
}

const ObjCClass& PSSliderTableCell::staticClass()
{
    static const ObjCClass& cls =
        ClassBuilder<PSSliderTableCell>("PSSliderTableCell", &PSControlTableCell::staticClass()).build();
    return cls;
}

PSSliderTableCell::PSSliderTableCell(int style, const std::string& reuseIdentifier,
                                     std::shared_ptr<PSSpecifier> specifier)
    : PSControlTableCell(style, reuseIdentifier, std::move(specifier))
{
    slider_ = new UISlider(contentView());
    slider_->setFocusPolicy(Qt::NoFocus);
    valueLabel_ = new QLabel(contentView());
    valueLabel_->setFont(systemFont(17));
    valueLabel_->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    QPalette palette = valueLabel_->palette();
    palette.setColor(QPalette::WindowText, QColor(138, 138, 142));
    valueLabel_->setPalette(palette);
    setControl(slider_);
    if (std::shared_ptr<PSSpecifier> entry = this->specifier()) {
        Id minimum = entry->propertyForKey("min");
        Id maximum = entry->propertyForKey("max");
        slider_->setMinimumValue(minimum ? minimum.floatValue() : 0.0f);
        slider_->setMaximumValue(maximum ? maximum.floatValue() : 1.0f);
        valueLabel_->setVisible(entry->propertyForKey("showValue").boolValue());
        slider_->setAccessibleName(QString::fromStdString(entry->name()));
    }
    connect(slider_, &UISlider::valueEdited, this, [this] {
        valueLabel_->setText(valueText());
        updateAccessibility();
        if (!slider_->isSliderDown())
            controlChanged();
    });
    connect(slider_, &QSlider::sliderReleased, this, [this] { controlChanged(); });
}

void PSSliderTableCell::setValue(const Id& value)
{
    value_ = value;
    slider_->setValue(value.floatValue());
    valueLabel_->setText(valueText());
    updateAccessibility();
}

Id PSSliderTableCell::controlValue() const
{
    return Id(slider_->value());
}

QString PSSliderTableCell::valueText() const
{
    float value = slider_->value();
    float range = slider_->maximumValue() - slider_->minimumValue();
    if (range <= 10)
        return QString::number(value, 'f', 2);
    return QString::number(static_cast<long>(std::lround(value)));
}

QString PSSliderTableCell::accessibleValue() const
{
    return valueText();
}

void PSSliderTableCell::setAccessibilityLabel(const QString& label)
{
    PSControlTableCell::setAccessibilityLabel(label);
    if (textLabel()->text().isEmpty())
        slider_->setAccessibleName(label);
}

void PSSliderTableCell::layoutSubviews()
{
    PSTableCell::layoutSubviews();
    int left = 16;
    int right = width() - 16;
    if (!textLabel()->text().isEmpty())
        left = textLabel()->geometry().right() + 12;
    if (!valueLabel_->isHidden()) {
        int labelWidth = QFontMetrics(valueLabel_->font()).horizontalAdvance(QStringLiteral("0000")) + 4;
        valueLabel_->setGeometry(right - labelWidth, 0, labelWidth, height());
        right -= labelWidth + 10;
    }
    slider_->setGeometry(left, 0, std::max(0, right - left), height());
}

void PSSliderTableCell::keyPressEvent(QKeyEvent* event)
{
    // Left and Right move the slider; the other movement keys belong to the table.
    if (event->key() == Qt::Key_Left || event->key() == Qt::Key_Right) {
        QKeyEvent forwarded(event->type(), event->key(), event->modifiers(), event->text());
        QCoreApplication::sendEvent(slider_, &forwarded);
        return;
    }
    PSTableCell::keyPressEvent(event);
}
