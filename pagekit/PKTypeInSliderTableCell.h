#pragma once

#include "platform/qt/PSControlCells.h"
#include "platform/qt/UIAlertView.h"

#include <QPointer>

class UIButton;

// A slider row whose right end opens a popup to type an exact value. The value is checked
// against "min" and "max", shown on the slider, written straight into the row's preferences
// file and announced with the row's "PostNotification".
class PKTypeInSliderTableCell : public PSSliderTableCell, public UIAlertViewDelegate {
    Q_OBJECT
    AMPWELL_OBJC_CLASS()

public:
    static constexpr int kPopupTag = 342879;
    static constexpr int kErrorAlertTag = 85230234;
    static constexpr int kTouchAreaWidth = 50;

    // The style asked for is ignored: the row is always in the default style.
    PKTypeInSliderTableCell(int style, const std::string& reuseIdentifier, std::shared_ptr<PSSpecifier> specifier);

    void presentPopup();
    void typeMinus();
    void typePoint();
    void alertViewClickedButtonAtIndex(UIAlertView* alertView, int buttonIndex) override;
    void setPreferenceValue(Id value, std::shared_ptr<PSSpecifier> specifier);

    UIAlertView* alert() const { return alert_; }
    UIButton* popupButton() const { return popupButton_; }

    void layoutSubviews() override;
    bool isSelectable() const override { return true; }
    // Enter on the row opens the popup, as a tap on its right end does.
    void activate() override { presentPopup(); }

private:
    QPointer<UIAlertView> alert_;
    UIButton* popupButton_;
};
