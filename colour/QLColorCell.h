#pragma once

#include "QLAWColorPickerViewController.h"

#include "platform/core/UIColor.h"
#include "platform/qt/PSTableCell.h"

#include <QPointer>

#include <optional>

class PSListController;

// A colour setting's row: the stored colour as a round swatch and as hex text. Tapping it
// opens the picker page with a live preview of the current theme; the colour picked there is
// stored through the colour options page when the user goes back.
class QLColorCell : public PSTableCell, public QLAWColorPickerViewControllerDelegate {
    Q_OBJECT
    AMPWELL_OBJC_CLASS()

public:
    static constexpr int kSwatchTag = 199;

    QLColorCell(int style, const std::string& reuseIdentifier, std::shared_ptr<PSSpecifier> specifier);
    ~QLColorCell() override;

    // The colour options page last loaded: it opens the picker and stores what is picked.
    static PSListController* colorPage();
    static void setColorPage(PSListController* page);

    void didMoveToSuperview() override;
    void updateCellColor();
    void openColorPicker();
    void colorPickerControllerDidFinishPickingWithColor(QLAWColorPickerViewController* picker,
                                                        const UIColor& color) override;
    std::string action() const { return "openColorPicker"; }
    std::string cellAction() const { return "openColorPicker"; }
    QWidget* target() { return this; }
    QWidget* cellTarget() { return this; }

    QWidget* colorPreview() const { return colorPreview_; }
    const std::optional<UIColor>& keyColor() const { return keyColor_; }
    QString accessibleValue() const override;
    const ObjCClass* openedPageClass() const override { return &QLAWColorPickerViewController::staticClass(); }

private:
    bool usesAlpha() const;
    void showColor(const std::optional<UIColor>& color);

    QPointer<QWidget> colorPreview_;
    std::optional<UIColor> keyColor_;
};
