#pragma once

#include "PKTintedListController.h"

#include <string>
#include <vector>

// A ready-made page: the ENABLED switch, OPTIONS and MAKERS links and a SUPPORT row that
// writes a mail. A subclass fills in the names, texts and addresses.
class PKStandardController : public PKTintedListController {
    Q_OBJECT
    AMPWELL_OBJC_CLASS()

public:
    bool showHeartImage() { return true; }
    bool tintNavigationTitleText() { return false; }
    bool shiftHeartImage() { return true; }
    std::string enabledDescription() { return "test"; }
    EntryTable customSpecifiers();
    std::string postNotification() { return {}; }
    std::string defaultsFileName() { return {}; }
    std::string emailBody() { return {}; }
    std::string emailSubject() { return {}; }
    std::string footerText() { return {}; }
    std::string settingsListControllerClassName() { return {}; }
    std::string makersListControllerClassName() { return {}; }
    std::vector<std::string> emailAddresses() { return {}; }
    void showSupportDialog();
    std::optional<UIColor> iconColor();
};
