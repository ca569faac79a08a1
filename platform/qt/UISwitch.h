#pragma once

#include "NSObject.h"

#include "platform/core/UIColor.h"

#include <QAbstractButton>
#include <QVariantAnimation>

#include <optional>

// The platform's on/off switch, drawn as on the phone: a 51 x 31 point track that fills with
// the on-tint colour and a round white knob that slides across.
class UISwitch : public QAbstractButton {
    Q_OBJECT

public:
    explicit UISwitch(QWidget* parent = nullptr);

    bool isOn() const { return isChecked(); }
    void setOn(bool on, bool animated = false);

    // The switch's own on-tint; nothing means the appearance set for its page's class, else
    // the system green.
    std::optional<UIColor> onTintColor() const { return onTint_; }
    void setOnTintColor(std::optional<UIColor> color);
    UIColor effectiveOnTintColor() const;

    QSize sizeHint() const override { return QSize(51, 31); }

    // The on-tint colour of switches inside pages of a class (and its subclasses); the most
    // specific class wins, as with the platform's appearance proxies.
    static void setAppearanceOnTintColor(const ObjCClass& containerClass, std::optional<UIColor> color);
    static std::optional<UIColor> appearanceOnTintColor(const ObjCClass& containerClass);

protected:
    void paintEvent(QPaintEvent* event) override;
    void checkStateSet() override;
    void nextCheckState() override;

private:
    std::optional<UIColor> onTint_;
    QVariantAnimation knob_;
    double position_ = 0; // 0 off, 1 on
};
