#pragma once

#include "render/preview/QLAWBatteryPreView.h"

#include "platform/core/UIColor.h"
#include "platform/qt/UIAlertView.h"
#include "platform/qt/UIViewController.h"

#include <QPointer>

#include <optional>
#include <string>

class CPColorPickerView;
class QLAWColorPickerViewController;
class UIButton;
class UISlider;

// Hears the colour the user picked when the picker page is left by going back.
class QLAWColorPickerViewControllerDelegate {
public:
    virtual ~QLAWColorPickerViewControllerDelegate() = default;
    virtual void colorPickerControllerDidFinishPickingWithColor(QLAWColorPickerViewController*, const UIColor&) {}
    virtual void colorPickerControllerDidCancelPicking(QLAWColorPickerViewController*) {}
    virtual void setSelectedColor(const UIColor&) {}
};

// A page for choosing one colour: the hue, saturation and brightness picker, a live preview
// of the battery in the colour being picked, a slider for the preview's charge level, an
// opacity slider where the colour may be translucent, and a box to type or copy hex text.
// Going back keeps the colour; Cancel (or Escape) leaves without it.
//
// Ctrl+C copies the colour as hex text; Ctrl+V takes hex text ("#" optional, six or eight
// digits) from the clipboard as the new colour and ignores anything else.
class QLAWColorPickerViewController : public UIViewController, public UIAlertViewDelegate {
    Q_OBJECT
    AMPWELL_OBJC_CLASS()

public:
    static constexpr double kAlphaHeaderHeightModifier = 2.8;
    static constexpr double kPasteButtonMinimumScreenHeight = 500;

    QLAWColorPickerViewController(const UIColor& color, bool fullColor, bool useAlpha = false);

    QLAWColorPickerViewControllerDelegate* delegate() const;
    // The delegate is not owned; a delegate that is a QObject is forgotten when it goes.
    void setDelegate(QLAWColorPickerViewControllerDelegate* delegate);
    // Render settings of both styles ("lightSettings", "darkSettings"); setting them also
    // refreshes the preview.
    bool hasBatterySettings() const { return lightSettings_ && darkSettings_; }
    const SharedRenderSettings& lightSettings() const { return lightSettings_; }
    const SharedRenderSettings& darkSettings() const { return darkSettings_; }
    void setBatterySettings(const PlistDict& settings);
    const std::optional<std::string>& updateKey() const { return updateKey_; }
    void setUpdateKey(std::optional<std::string> key) { updateKey_ = std::move(key); }
    const std::optional<std::string>& updateForegroundKey() const { return updateForegroundKey_; }
    void setUpdateForegroundKey(std::optional<std::string> key) { updateForegroundKey_ = std::move(key); }

    void loadView() override;
    void viewDidLayoutSubviews() override;
    void viewWillAppear(bool animated) override;
    void viewDidAppear(bool animated) override;
    void viewWillDisappear(bool animated) override;
    bool escapePressed() override;

    void colorWasChanged();
    void setColor(const UIColor& color);
    void alphaWasChanged();
    void percentWasChanged();
    // The colour being edited with the opacity slider's value as its alpha (1 without one).
    UIColor pickedColor() const;
    void updateBatterySettings();
    void refreshBatteryPreview();
    void hexTapped();
    void alertViewClickedButtonAtIndex(UIAlertView* alertView, int buttonIndex) override;
    void cancelPicking();

    // The keyboard's copy and paste.
    void copyColor();
    void pasteColor();

    const UIColor& color() const { return color_; }
    bool isCanceling() const { return isCanceling_; }
    CPColorPickerView* colorPickerView() const { return colorPickerView_; }
    QLAWBatteryPreView* batteryPreview() const { return batteryPreview_; }
    UISlider* percentSlider() const { return percentSlider_; }
    UISlider* alphaSlider() const { return alphaSlider_; }
    UIButton* cancelButton() const { return cancelButton_; }
    const SharedRenderSettings& defaultBatterySettings() const { return defaultBatterySettings_; }

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    void takeColorFromHexText(const std::string& text);
    void tintPercentSlider();
    SharedRenderSettings styleSettings(const std::string& style) const;
    void updateSliderValues();

    CPColorPickerView* colorPickerView_ = nullptr;
    UIColor color_;
    bool fullColor_;
    QLAWBatteryPreView* batteryPreview_ = nullptr;
    UISlider* percentSlider_ = nullptr;
    SharedRenderSettings defaultBatterySettings_;
    bool useAlpha_;
    UISlider* alphaSlider_ = nullptr;
    UIButton* cancelButton_ = nullptr;
    bool isCanceling_ = false;
    QLAWColorPickerViewControllerDelegate* delegate_ = nullptr;
    QPointer<QObject> delegateObject_;
    bool delegateWatched_ = false;
    SharedRenderSettings lightSettings_;
    SharedRenderSettings darkSettings_;
    std::optional<std::string> updateKey_;
    std::optional<std::string> updateForegroundKey_;
};
