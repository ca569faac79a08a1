#pragma once

#include "QLAWBatteryPreView.h"

#include "platform/qt/PSTableCell.h"

#include <string>

// A row that shows a theme: its name above a preview of the theme's script drawn with sample
// values (white on black at 55 %). The entry's "script_key" holds the script text. A second
// panel beside it is made and placed but never given settings, so it stays empty.
class QLAWThemeCell : public PSTableCell {
    Q_OBJECT
    AMPWELL_OBJC_CLASS()

public:
    static constexpr double kHeight = 100.0;

    QLAWThemeCell(int style, const std::string& reuseIdentifier, std::shared_ptr<PSSpecifier> specifier);
    ~QLAWThemeCell() override;

    void layoutSubviews() override;
    double preferredHeightForWidth(double) const override { return kHeight; }
    // The argument is not used: the sample settings are always the same.
    void updateBatteryViewsWithSettings(Id ignored);
    void didMoveToSuperview() override;
    void saveTheme();
    std::string action() const { return "saveTheme"; }
    std::string cellAction() const { return "saveTheme"; }
    QWidget* target() { return this; }
    QWidget* cellTarget() { return this; }

    const std::string& script() const { return script_; }
    const SharedRenderSettings& settings() const { return settings_; }
    QLAWBatteryPreView* dynamicPreview() const { return dynamicPreview_; }
    QLAWBatteryPreView* defaultPreview() const { return defaultPreview_; }

private:
    std::string script_;
    SharedRenderSettings settings_;
    QLAWBatteryPreView* dynamicPreview_;
    QLAWBatteryPreView* defaultPreview_;
};
