#pragma once

#include "QLAWSettingsController.h"

#include "platform/qt/UIAlertView.h"

#include <QPointer>

#include <string>
#include <vector>

// The root page: the header picture, the master switch, links to the other pages and the
// profile row. On appearing it fades the maker's logo in as the title, offers to take over
// the settings of a former release while none exist, and shows a notice on newer systems.
class QLAWSettingsMainController : public QLAWSettingsController, public UIAlertViewDelegate {
    Q_OBJECT
    AMPWELL_OBJC_CLASS()

public:
    static constexpr const char* kLegacyPreferencesFile = "/var/mobile/Library/Preferences/com.quarrylab.ampwell.plist";
    static constexpr const char* kNoticeThreshold = "10.0";
    static constexpr const char* kNoticeCounterKey = "viewed10P";
    static constexpr double kTableTopInset = 29.0;
    static constexpr int kLogoFadeMilliseconds = 1250;

    // The main page last loaded, or null.
    static QLAWSettingsMainController* current();

    UIColor navigationTintColor() { return tintColour(); }
    std::optional<std::string> navigationTitle() { return std::nullopt; }
    void loadView() override;
    std::vector<std::string> profileTitles(Id ignored);
    std::vector<std::string> loadProfiles(Id ignored);
    void removedSpecifier(std::shared_ptr<PSSpecifier>) override {}
    void viewWillAppear(bool animated) override;
    void viewDidAppear(bool animated) override;
    void alertViewDidDismissWithButtonIndex(UIAlertView* alertView, int buttonIndex) override;
    void didRotateFromInterfaceOrientation(UIInterfaceOrientation from) override;
    EntryTable customSpecifiers();

    const std::vector<std::string>& profiles() const { return profiles_; }
    bool logoUp() const { return logoUp_; }
    float headerHeight() const { return headerHeight_; }
    UIAlertView* legacyAlert() const { return old_; }
    UIAlertView* noticeAlert() const { return tenAlert_; }

private:
    std::vector<std::string> profiles_;
    bool logoUp_ = false;
    float headerHeight_ = 0;
    QPointer<UIAlertView> old_;
    QPointer<UIAlertView> tenAlert_;
};
