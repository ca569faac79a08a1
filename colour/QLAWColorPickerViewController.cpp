#include "QLAWColorPickerViewController.h"

#include "CPAccessibility.h"
#include "CPBrightnessSlider.h"
#include "CPColorMapView.h"
#include "CPColorPickerView.h"

#include "store/ThemeScripts.h"

#include "pagekit/UIViewFrameAdditions.h"
#include "platform/core/ColorParsing.h"
#include "platform/core/UIScreen.h"
#include "platform/qt/QtConversions.h"
#include "platform/qt/UIApplication.h"
#include "platform/qt/UIBarButtonItem.h"
#include "platform/qt/UIButton.h"
#include "platform/qt/UINavigationController.h"
#include "platform/qt/UIPasteboard.h"
#include "platform/qt/UISlider.h"
#include "platform/qt/UITextField.h"
#include "platform/qt/UIView.h"

#include <QPainter>
#include <QRegularExpression>
#include <QShortcut>

namespace FA = FrameAdditions;

namespace {

// The page's places are measured from the top of the screen, under the status and navigation
// bars; this page starts below the navigation bar.
constexpr double kBarsHeight = 64;
constexpr double kPreviewCentreY = 102 - kBarsHeight;
constexpr double kPreviewAspect = 2.5;
constexpr double kPreviewHeight = 44;
constexpr double kSliderHeight = 40;
constexpr double kCancelAboveBottom = 6;

UIColor pageTint()
{
    return UIColor::colorWithRedGreenBlueAlpha(143.0 / 255.0, 0, 1, 1);
}

QString percentText(double fraction)
{
    return QString::number(std::lround(std::clamp(fraction, 0.0, 1.0) * 100)) + QStringLiteral(" %");
}

// Hex colour text as people paste it: "#" optional, six or eight digits, either case.
bool isPastableHexColour(const QString& text)
{
    static const QRegularExpression form(QStringLiteral("^#?([0-9A-Fa-f]{6}|[0-9A-Fa-f]{8})$"));
    return form.match(text.trimmed()).hasMatch();
}

} // namespace

const ObjCClass& QLAWColorPickerViewController::staticClass()
{
    static const ObjCClass& cls = ClassBuilder<QLAWColorPickerViewController>("QLAWColorPickerViewController",
                                                                               &UIViewController::staticClass())
                                      .method("colorWasChanged:", &QLAWColorPickerViewController::colorWasChanged)
                                      .method("alphaWasChanged:", &QLAWColorPickerViewController::alphaWasChanged)
                                      .method("percentWasChanged:", &QLAWColorPickerViewController::percentWasChanged)
                                      .method("hexTapped:", &QLAWColorPickerViewController::hexTapped)
                                      .method("cancelPicking:", &QLAWColorPickerViewController::cancelPicking)
                                      .build();
    return cls;
}

QLAWColorPickerViewController::QLAWColorPickerViewController(const UIColor& color, bool fullColor, bool useAlpha)
    : color_(color), fullColor_(fullColor), useAlpha_(useAlpha)
{
}

QLAWColorPickerViewControllerDelegate* QLAWColorPickerViewController::delegate() const
{
    return delegateWatched_ && !delegateObject_ ? nullptr : delegate_;
}

void QLAWColorPickerViewController::setDelegate(QLAWColorPickerViewControllerDelegate* delegate)
{
    delegate_ = delegate;
    delegateObject_ = dynamic_cast<QObject*>(delegate);
    delegateWatched_ = delegateObject_ != nullptr;
}

void QLAWColorPickerViewController::setBatterySettings(const PlistDict& settings)
{
    auto style = [&](const char* key) {
        const PlistValue* stored = settings.find(key);
        return stored && stored->asDict() ? std::make_shared<PlistDict>(*stored->asDict()) : nullptr;
    };
    lightSettings_ = style("lightSettings");
    darkSettings_ = style("darkSettings");
    refreshBatteryPreview();
}

void QLAWColorPickerViewController::loadView()
{
    colorPickerView_ = new CPColorPickerView(this);
    colorPickerView_->setColor(color_);
    if (useAlpha_)
        colorPickerView_->setHeaderHeightModifier(kAlphaHeaderHeightModifier);
    if (fullColor_) {
        auto* map = new CPColorMapView();
        map->setSaturationUpperLimit(1);
        map->setTileSize(1);
        auto* brightness = new CPBrightnessSlider();
        brightness->setBrightnessLowerLimit(0);
        colorPickerView_->setColorMapView(map);
        colorPickerView_->setBrightnessSlider(brightness);
    }
    connect(colorPickerView_, &CPColorPickerView::valueChanged, this, [this] { colorWasChanged(); });

    defaultBatterySettings_ = std::make_shared<PlistDict>(PlistDict{{"height", 26},
                                                                    {"level", 55},
                                                                    {"charging", false},
                                                                    {"low", false},
                                                                    {"lpm", false},
                                                                    {"color", color_},
                                                                    {"baseColor", UIColor::blackColor()},
                                                                    {"script", std::string(kBuiltInPreviewScript)}});
    batteryPreview_ = new QLAWBatteryPreView(CGRectMake(0, 0, 100, 100),
                                             std::make_shared<PlistDict>(*defaultBatterySettings_), this);
    FA::apply(static_cast<QWidget*>(batteryPreview_), FA::setCenterX, width() / 2.0);
    FA::apply(static_cast<QWidget*>(batteryPreview_), FA::setCenterY, kPreviewCentreY);
    batteryPreview_->raise();

    percentSlider_ = new UISlider(this);
    registerAccessiblePart(percentSlider_, QAccessible::Slider, QStringLiteral("Charge level of the preview"));
    percentSlider_->setValue(static_cast<float>(defaultBatterySettings_->value("level").doubleValue() / 100));
    connect(percentSlider_, &UISlider::valueEdited, this, [this] { percentWasChanged(); });
    tintPercentSlider();
    percentSlider_->raise();

    if (useAlpha_) {
        alphaSlider_ = new UISlider(this);
        registerAccessiblePart(alphaSlider_, QAccessible::Slider, QStringLiteral("Opacity"));
        connect(alphaSlider_, &UISlider::valueEdited, this, [this] { alphaWasChanged(); });
        alphaSlider_->setMinimumTrackTintColor(UIColor::colorWithWhiteAlpha(0, 0.25));
        alphaSlider_->setMaximumTrackTintColor(UIColor::colorWithWhiteAlpha(0, 1));
        alphaSlider_->setThumbTintColor(UIColor::grayColor());
        alphaSlider_->setValue(static_cast<float>(color_.alpha()));
        alphaSlider_->raise();
    }
    updateSliderValues();

    UIBarButtonItem* hex = UIBarButtonItem::withTitle("#", [this] { hexTapped(); }, this);
    navigationItem()->setRightBarButtonItem(hex);

    cancelButton_ = new UIButton(QStringLiteral("Cancel"), this);
    cancelButton_->setAccessibleName(QStringLiteral("Cancel"));
    cancelButton_->adjustSize();
    connect(cancelButton_, &QAbstractButton::clicked, this, [this] { cancelPicking(); });

    for (auto [keys, action] : {std::pair{QKeySequence::Copy, &QLAWColorPickerViewController::copyColor},
                                std::pair{QKeySequence::Paste, &QLAWColorPickerViewController::pasteColor}}) {
        auto* shortcut = new QShortcut(keys, this);
        shortcut->setContext(Qt::WidgetWithChildrenShortcut);
        connect(shortcut, &QShortcut::activated, this, action);
    }
    setFocusProxy(colorPickerView_);
}

void QLAWColorPickerViewController::viewDidLayoutSubviews()
{
    if (!colorPickerView_)
        return;
    double width = this->width();
    FA::setFrame(colorPickerView_, CGRectMake(0, 0, width, height()));
    FA::setFrame(batteryPreview_, CGRectMake(0, 0, width / kPreviewAspect, kPreviewHeight));
    FA::apply(static_cast<QWidget*>(batteryPreview_), FA::setCenterX, width / 2);
    FA::apply(static_cast<QWidget*>(batteryPreview_), FA::setCenterY, kPreviewCentreY);
    CGRect level = CGRectMake(18, FA::bottom(FA::frame(batteryPreview_)) + 2, width * 0.8, kSliderHeight);
    FA::setCenterX(level, width / 2);
    FA::setFrame(percentSlider_, level);
    if (alphaSlider_) {
        CGRect opacity = level;
        FA::setTopM(opacity, FA::bottom(level) - 8);
        FA::setFrame(alphaSlider_, opacity);
    }
    CGRect cancel = FA::frame(cancelButton_);
    FA::setCenterX(cancel, width / 2);
    FA::setBottomM(cancel, height() - kCancelAboveBottom);
    FA::setFrame(cancelButton_, cancel);
}

void QLAWColorPickerViewController::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.fillRect(rect(), toQColor(color_));
}

void QLAWColorPickerViewController::viewWillAppear(bool animated)
{
    UIViewController::viewWillAppear(animated);
    if (UINavigationController* navigation = navigationController())
        UIView::setTintColor(navigation->navigationBar(), pageTint());
    UIView::setTintColor(UIApplication::sharedApplication().keyWindow(), pageTint());
    updateBatterySettings();
}

void QLAWColorPickerViewController::viewDidAppear(bool animated)
{
    UIViewController::viewDidAppear(animated);
    isCanceling_ = false;
    if (colorPickerView_)
        colorPickerView_->setFocus(Qt::OtherFocusReason);
}

void QLAWColorPickerViewController::viewWillDisappear(bool animated)
{
    UIViewController::viewWillDisappear(animated);
    if (QLAWColorPickerViewControllerDelegate* listener = delegate(); listener && !isCanceling_)
        listener->colorPickerControllerDidFinishPickingWithColor(this, pickedColor());
}

bool QLAWColorPickerViewController::escapePressed()
{
    cancelPicking();
    return true;
}

void QLAWColorPickerViewController::colorWasChanged()
{
    setColor(colorPickerView_->color());
}

void QLAWColorPickerViewController::setColor(const UIColor& color)
{
    color_ = color;
    if (alphaSlider_)
        alphaSlider_->setValue(static_cast<float>(color_.alpha()));
    tintPercentSlider();
    updateSliderValues();
    update();
    updateBatterySettings();
}

void QLAWColorPickerViewController::tintPercentSlider()
{
    if (!percentSlider_)
        return;
    UIColor tint = alphaSlider_ ? color_ : color_.colorWithAlphaComponent(1);
    percentSlider_->setMinimumTrackTintColor(tint);
    percentSlider_->setThumbTintColor(tint);
}

void QLAWColorPickerViewController::updateSliderValues()
{
    if (percentSlider_)
        setAccessibleValue(percentSlider_, percentText(percentSlider_->value()));
    if (alphaSlider_)
        setAccessibleValue(alphaSlider_, percentText(alphaSlider_->value()));
}

void QLAWColorPickerViewController::alphaWasChanged()
{
    updateSliderValues();
    updateBatterySettings();
}

void QLAWColorPickerViewController::percentWasChanged()
{
    updateSliderValues();
    updateBatterySettings();
}

UIColor QLAWColorPickerViewController::pickedColor() const
{
    return color_.colorWithAlphaComponent(alphaSlider_ ? std::clamp<double>(alphaSlider_->value(), 0, 1) : 1.0);
}

void QLAWColorPickerViewController::updateBatterySettings()
{
    if (!percentSlider_)
        return;
    UIColor picked = pickedColor();
    double level = static_cast<double>(percentSlider_->value()) * 100;
    std::vector<SharedRenderSettings> styles;
    if (updateForegroundKey_ == "lightSettings")
        styles = {lightSettings_};
    else if (updateForegroundKey_ == "darkSettings")
        styles = {darkSettings_};
    else
        styles = {lightSettings_, darkSettings_};
    if (hasBatterySettings()) {
        if (updateKey_) {
            for (const SharedRenderSettings& style : styles)
                if (style)
                    style->set(*updateKey_, picked);
        } else {
            // Main and base colour move together; the base keeps its own transparency.
            const PlistValue* shared = lightSettings_->find("shareAlpha");
            const PlistValue* base = lightSettings_->find("baseColor");
            double alpha = shared ? shared->doubleValue() : (base && base->asColor() ? base->asColor()->alpha() : 1.0);
            for (const SharedRenderSettings& style : styles)
                if (style) {
                    style->set("color", picked);
                    style->set("baseColor", picked.colorWithAlphaComponent(alpha));
                }
        }
        lightSettings_->set("level", level);
        darkSettings_->set("level", level);
    } else if (defaultBatterySettings_) {
        std::vector<std::string> keys = updateKey_ ? std::vector<std::string>{*updateKey_}
                                                   : std::vector<std::string>{"color", "baseColor"};
        for (const std::string& key : keys)
            defaultBatterySettings_->set(key, picked);
        defaultBatterySettings_->set("level", level);
    }
    refreshBatteryPreview();
}

void QLAWColorPickerViewController::refreshBatteryPreview()
{
    if (!batteryPreview_)
        return;
    if (hasBatterySettings()) {
        batteryPreview_->setLightSettings(lightSettings_);
        batteryPreview_->setDarkSettings(darkSettings_);
    } else {
        batteryPreview_->setBatterySettings(defaultBatterySettings_);
    }
    batteryPreview_->refreshBattery();
}

void QLAWColorPickerViewController::hexTapped()
{
    std::vector<std::string> buttons{"Set", "Copy"};
    if (UIScreen::mainScreen().bounds().size.height >= kPasteButtonMinimumScreenHeight)
        buttons.push_back("Paste");
    auto* alert = new UIAlertView("Hex Color", "Enter a hex color or copy it to your pasteboard.", this,
                                  std::string("Cancel"), buttons);
    alert->setAlertViewStyle(UIAlertView::UIAlertViewStylePlainTextInput);
    alert->textFieldAtIndex(0)->setTextString(ColorParsing::hexStringFromColorAlphaHash(color_, true, true).value_or(""));
    alert->show();
}

void QLAWColorPickerViewController::alertViewClickedButtonAtIndex(UIAlertView* alertView, int buttonIndex)
{
    switch (buttonIndex) {
    case 1:
        if (UITextField* field = alertView->textFieldAtIndex(0))
            takeColorFromHexText(field->textString());
        break;
    case 2:
        copyColor();
        break;
    case 3:
        // Whatever the clipboard holds is taken as it parses, unlike typed text.
        if (std::optional<UIColor> pasted =
                ColorParsing::colorFromHexStringTD(UIPasteboard::generalPasteboard().string().value_or(""))) {
            colorPickerView_->setColor(*pasted);
            setColor(*pasted);
        }
        break;
    default:
        break;
    }
}

void QLAWColorPickerViewController::takeColorFromHexText(const std::string& text)
{
    if (std::optional<UIColor> parsed = ColorParsing::colorFromHexStringTD(text)) {
        colorPickerView_->setColor(*parsed);
        setColor(*parsed);
    }
}

void QLAWColorPickerViewController::cancelPicking()
{
    isCanceling_ = true;
    if (UINavigationController* navigation = navigationController())
        navigation->popViewControllerAnimated(true);
}

void QLAWColorPickerViewController::copyColor()
{
    if (std::optional<std::string> hex = ColorParsing::hexStringFromColorAlphaHash(color_, true, true))
        UIPasteboard::generalPasteboard().setString(*hex);
}

void QLAWColorPickerViewController::pasteColor()
{
    std::optional<std::string> text = UIPasteboard::generalPasteboard().string();
    if (text && isPastableHexColour(QString::fromStdString(*text)))
        takeColorFromHexText(QString::fromStdString(*text).trimmed().toStdString());
}
