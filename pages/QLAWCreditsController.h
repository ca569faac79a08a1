#pragma once

#include "pagekit/PKTintedListController.h"

#include "platform/core/UIColor.h"

// The credits page: the maker, a donation button, a contributor and the donors.
class QLAWCreditsController : public PKTintedListController {
    Q_OBJECT
    AMPWELL_OBJC_CLASS()

public:
    static constexpr const char* kDonationAddress = "https://mossgate.github.io/ampwell/donate";

    UIColor navigationTintColor();
    std::string customTitle() { return "Credits"; }
    EntryTable customSpecifiers();
    void openDevTwitter();
    void openDonate();
    std::string shareMessage();
};
