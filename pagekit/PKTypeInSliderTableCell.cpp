#include "PKTypeInSliderTableCell.h"

#include "platform/core/DarwinNotifyCenter.h"
#include "platform/core/PropertyListUpdate.h"
#include "platform/core/Root.h"
#include "platform/core/SystemLog.h"
#include "platform/qt/UIBarButtonItem.h"
#include "platform/qt/UIButton.h"
#include "platform/qt/UIDevice.h"
#include "platform/qt/UISlider.h"
#include "platform/qt/UITextField.h"

#include <QString>

#include <cstdio>

namespace {

constexpr std::string_view kPreferencesFolder = "/var/mobile/Library/Preferences/";
constexpr float kSmallRange = 10.0f;

// The platform's float reading of text: the longest leading number, 0 when there is none.
float floatValue(const std::string& text)
{
    return static_cast<float>(PlistValue(text).doubleValue());
}

} // namespace

const ObjCClass& PKTypeInSliderTableCell::staticClass()
{
    static const ObjCClass& cls =
        ClassBuilder<PKTypeInSliderTableCell>("PKTypeInSliderTableCell", &PSSliderTableCell::staticClass())
            .method("presentPopup", &PKTypeInSliderTableCell::presentPopup)
            .method("typeMinus", &PKTypeInSliderTableCell::typeMinus)
            .method("typePoint", &PKTypeInSliderTableCell::typePoint)
            .method("setPreferenceValue:specifier:", &PKTypeInSliderTableCell::setPreferenceValue)
            .build();
    return cls;
}

PKTypeInSliderTableCell::PKTypeInSliderTableCell(int, const std::string& reuseIdentifier,
                                                 std::shared_ptr<PSSpecifier> specifier)
    : PSSliderTableCell(0, reuseIdentifier, std::move(specifier))
{
    popupButton_ = new UIButton(QString(), this);
    popupButton_->setFocusPolicy(Qt::NoFocus);
    popupButton_->setAccessibleName(QStringLiteral("Type a value"));
    popupButton_->setGeometry(width() - kTouchAreaWidth, 0, kTouchAreaWidth, height());
    connect(popupButton_, &QAbstractButton::clicked, this, [this] { presentPopup(); });
}

void PKTypeInSliderTableCell::layoutSubviews()
{
    PSSliderTableCell::layoutSubviews();
    // Keeps to the right edge as the row's width changes.
    popupButton_->setGeometry(width() - kTouchAreaWidth, 0, kTouchAreaWidth, height());
    popupButton_->raise();
}

void PKTypeInSliderTableCell::presentPopup()
{
    std::shared_ptr<PSSpecifier> entry = specifier();
    if (!entry)
        return;
    float minimum = entry->propertyForKey("min").floatValue();
    float maximum = entry->propertyForKey("max").floatValue();
    char message[160];
    std::snprintf(message, sizeof message, "Please enter a value between %.01f and %.01f.", minimum, maximum);

    alert_ = new UIAlertView(entry->name(), message, this, std::string("Cancel"), {"Enter"});
    alert_->setAlertViewStyle(UIAlertView::UIAlertViewStylePlainTextInput);
    alert_->setTag(kPopupTag);
    alert_->show();

    UITextField* field = alert_->textFieldAtIndex(0);
    field->resignFirstResponder();
    field->setKeyboardType(UITextField::UIKeyboardTypeNumberPad);

    float range = maximum - minimum;
    bool small = range <= kSmallRange;
    bool negative = minimum < 0;
    if ((small || negative) && UIDevice::currentDevice().userInterfaceIdiom() != UIUserInterfaceIdiomPad) {
        auto* toolbar = new UIToolbar();
        std::vector<UIBarButtonItem*> items;
        QPointer<PKTypeInSliderTableCell> self(this);
        if (negative)
            items.push_back(UIBarButtonItem::withTitle("Negate", [self] { if (self) self->typeMinus(); }, toolbar));
        if (small)
            items.push_back(UIBarButtonItem::withTitle("Point", [self] { if (self) self->typePoint(); }, toolbar));
        toolbar->setItems(items, false);
        field->setInputAccessoryView(toolbar);
    }
    field->becomeFirstResponder();
}

void PKTypeInSliderTableCell::typeMinus()
{
    if (!alert_)
        return;
    UITextField* field = alert_->textFieldAtIndex(0);
    if (!field)
        return;
    std::string text = field->textString();
    field->setTextString(text.starts_with("-") ? text.substr(1) : "-" + text);
}

void PKTypeInSliderTableCell::typePoint()
{
    if (!alert_)
        return;
    if (UITextField* field = alert_->textFieldAtIndex(0))
        field->setTextString(field->textString() + ".");
}

void PKTypeInSliderTableCell::alertViewClickedButtonAtIndex(UIAlertView* alertView, int buttonIndex)
{
    if (alertView->tag() == kPopupTag) {
        UITextField* field = alertView->textFieldAtIndex(0);
        if (buttonIndex == 1 && field && specifier()) {
            float value = floatValue(field->textString());
            float minimum = specifier()->propertyForKey("min").floatValue();
            float maximum = specifier()->propertyForKey("max").floatValue();
            if (minimum <= value && value <= maximum) {
                slider()->setValue(value);
                setValue(Id(value));
                setPreferenceValue(Id(value), specifier());
            } else {
                auto* error = new UIAlertView("Error", "Ensure you enter a valid value.", this, std::string("OK"), {});
                error->setTag(kErrorAlertTag);
                error->show();
            }
        }
        if (field)
            field->resignFirstResponder();
    } else if (alertView->tag() == kErrorAlertTag) {
        presentPopup();
    }
}

void PKTypeInSliderTableCell::setPreferenceValue(Id value, std::shared_ptr<PSSpecifier> entry)
{
    if (!entry)
        return;
    const std::string* domain = entry->propertyForKey("defaults").string();
    const std::string* key = entry->propertyForKey("key").string();
    bool written = false;
    // A name with a slash would leave the preferences folder; such a row writes nothing.
    if (domain && key && value.plist() && domain->find('/') == std::string::npos && !domain->empty()) {
        std::string path = Root::path(std::string(kPreferencesFolder) + *domain);
        PlistValue stored = *value.plist();
        written = updatePropertyListFile(path, MissingFilePolicy::StartEmpty,
                                         [&](PlistDict& file) { file.set(*key, stored); });
    }
    if (!written)
        systemLog("AMPW: FAILED WRITING SETTINGS");
    if (const std::string* notification = entry->propertyForKey("PostNotification").string())
        postDarwinNotification(*notification);
}
