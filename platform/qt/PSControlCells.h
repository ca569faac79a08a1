#pragma once

#include "PSTableCell.h"

class QLabel;
class UISlider;
class UISwitch;

// A row whose value is edited by a control; a change is stored through the entry's setter
// on its target ("setPreferenceValue:specifier:" unless the entry names another).
class PSControlTableCell : public PSTableCell {
    Q_OBJECT
    AMPWELL_OBJC_CLASS()

public:
    PSControlTableCell(int style, const std::string& reuseIdentifier, std::shared_ptr<PSSpecifier> specifier);

    QWidget* control() const { return control_; }
    // The value the control shows.
    virtual Id controlValue() const { return value_; }
    // Hands the control's value to the entry's setter.
    void controlChanged();

protected:
    void setControl(QWidget* control) { control_ = control; }

private:
    QWidget* control_ = nullptr;
};

class PSSwitchTableCell : public PSControlTableCell {
    Q_OBJECT
    AMPWELL_OBJC_CLASS()

public:
    PSSwitchTableCell(int style, const std::string& reuseIdentifier, std::shared_ptr<PSSpecifier> specifier);

    UISwitch* switchControl() const { return switch_; }
    void setValue(const Id& value) override;
    Id controlValue() const override;
    bool isSelectable() const override { return true; }
    void activate() override;
    QString accessibleValue() const override;

private:
    UISwitch* switch_;
};

// A slider row: the slider fills the row; with "showValue" the value stands at its right.
// "min" and "max" bound it.
class PSSliderTableCell : public PSControlTableCell {
    Q_OBJECT
    AMPWELL_OBJC_CLASS()

public:
    PSSliderTableCell(int style, const std::string& reuseIdentifier, std::shared_ptr<PSSpecifier> specifier);

    UISlider* slider() const { return slider_; }
    void setValue(const Id& value) override;
    Id controlValue() const override;
    void layoutSubviews() override;
    QString accessibleValue() const override;
    void setAccessibilityLabel(const QString& label) override;
    QString valueText() const;

protected:
    void keyPressEvent(QKeyEvent* event) override;

private:
    UISlider* slider_;
    QLabel* valueLabel_;
};
