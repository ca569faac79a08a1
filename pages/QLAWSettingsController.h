#pragma once

#include "pagekit/PKTintedListController.h"

#include "platform/core/UIColor.h"

// The product's own settings pages: entries read from and written to the preferences file
// one by one, the product's tint, and the product's share text.
class QLAWSettingsController : public PKTintedListController {
    Q_OBJECT
    AMPWELL_OBJC_CLASS()

public:
    static UIColor tintColour();
    static constexpr const char* kShareMessage =
        "OMG I have fallen in love with Ampwell! Thanks @mossgate for creating this awesome tweak! "
        "I can't wait for Tunebloom! #Ampwell";

    // Posts the change notification and reads every entry again.
    void postAndUpdate();
    bool tintNavigationTitleText() { return false; }
    bool tintSwitches() { return true; }
    UIColor navigationTintColor() { return tintColour(); }
    UIColor switchOnTintColor() { return tintColour(); }
    Id readPreferenceValue(std::shared_ptr<PSSpecifier> specifier);
    void setPreferenceValue(Id value, std::shared_ptr<PSSpecifier> specifier);
    std::string shareMessage() { return kShareMessage; }
};
