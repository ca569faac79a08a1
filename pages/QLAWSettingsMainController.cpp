#include "QLAWSettingsMainController.h"

#include "QLHeaderCell.h"

#include "store/PreferencesStore.h"
#include "store/ProfileList.h"

#include "platform/core/DarwinNotifyCenter.h"
#include "platform/core/PropertyListFile.h"
#include "platform/core/PropertyListUpdate.h"
#include "platform/core/Root.h"
#include "platform/core/UIScreen.h"
#include "platform/qt/NSBundle.h"
#include "platform/qt/UIDevice.h"
#include "platform/qt/UIImageView.h"
#include "platform/qt/UINavigationController.h"
#include "platform/qt/UIView.h"

#include <QPropertyAnimation>

#include <algorithm>
#include <filesystem>

namespace {

QPointer<QLAWSettingsMainController>& mainPageReference()
{
    static QPointer<QLAWSettingsMainController> page;
    return page;
}

std::int64_t noticeCount()
{
    return getSettingsForKeys({QLAWSettingsMainController::kNoticeCounterKey})
        .value(QLAWSettingsMainController::kNoticeCounterKey)
        .integerValue();
}

} // namespace

const ObjCClass& QLAWSettingsMainController::staticClass()
{
    static const ObjCClass& cls =
        ClassBuilder<QLAWSettingsMainController>("QLAWSettingsMainController", &QLAWSettingsController::staticClass())
            .method("navigationTintColor", &QLAWSettingsMainController::navigationTintColor)
            .method("navigationTitle", &QLAWSettingsMainController::navigationTitle)
            .method("profileTitles:", &QLAWSettingsMainController::profileTitles)
            .method("loadProfiles:", &QLAWSettingsMainController::loadProfiles)
            .method("customSpecifiers", &QLAWSettingsMainController::customSpecifiers)
            .build();
    return cls;
}

QLAWSettingsMainController* QLAWSettingsMainController::current()
{
    return mainPageReference();
}

void QLAWSettingsMainController::loadView()
{
    mainPageReference() = this;
    QLAWSettingsController::loadView();
    CGRect screen = UIScreen::mainScreen().bounds();
    double shortSide = std::min(screen.size.width, screen.size.height);
    CGSize picture = bundle().imageNamed("ampwellHeader").size();
    // Without the picture this divides by zero; the table then gives the row its normal height.
    headerHeight_ = static_cast<float>(shortSide / picture.width * picture.height);
}

std::vector<std::string> QLAWSettingsMainController::profileTitles(Id)
{
    profiles_ = ::profileTitles();
    return profiles_;
}

std::vector<std::string> QLAWSettingsMainController::loadProfiles(Id)
{
    profiles_ = ::loadProfiles();
    return profiles_;
}

void QLAWSettingsMainController::viewWillAppear(bool animated)
{
    QLAWSettingsController::viewWillAppear(animated);
    navigationItem()->setTitle("");
    if (table()) {
        table()->setContentInsetTop(kTableTopInset);
        table()->setContentOffsetY(-kTableTopInset);
    }
}

void QLAWSettingsMainController::viewDidAppear(bool animated)
{
    QLAWSettingsController::viewDidAppear(animated);
    if (!logoUp_) {
        auto* logo = new UIImageView(bundle().imageNamed("mossgateLogoSmall.png"));
        logo->setTemplate(true);
        logo->sizeToFit();
        UIView::setTintColor(logo, navigationTintColor());
        logo->setAlpha(0);
        logo->setAccessibleName(QStringLiteral("Mossgate"));
        navigationItem()->setTitleView(logo);
        auto* fade = new QPropertyAnimation(logo, "alpha", logo);
        fade->setDuration(kLogoFadeMilliseconds);
        fade->setStartValue(0.0);
        fade->setEndValue(1.0);
        fade->start(QAbstractAnimation::DeleteWhenStopped);
        logoUp_ = true;
    }

    std::error_code ignored;
    if (!std::filesystem::exists(preferencesPath(), ignored)
        && std::filesystem::exists(Root::path(kLegacyPreferencesFile), ignored)) {
        old_ = new UIAlertView("Old Settings",
                               "It looks like you dont have any settings but there is settings from a previous "
                               "version. Would you like to transfer them over?",
                               this, std::nullopt, {"Ok Sweet!"});
        old_->show();
    }

    if (compareVersionsNumerically(UIDevice::currentDevice().systemVersion(), kNoticeThreshold) >= 0
        && noticeCount() < 2) {
        tenAlert_ = new UIAlertView(localizedString("IOS10_A_T"), localizedString("IOS10_A_MSG"), this, std::nullopt,
                                    {"Ok Sweet!"});
        tenAlert_->show();
    }
}

void QLAWSettingsMainController::alertViewDidDismissWithButtonIndex(UIAlertView* alertView, int)
{
    if (alertView && alertView == old_) {
        if (std::optional<PlistDict> legacy = readPropertyListDictionary(Root::path(kLegacyPreferencesFile)))
            updatePropertyListFile(preferencesPath(), MissingFilePolicy::StartEmpty,
                                   [&](PlistDict& preferences) { preferences = *legacy; });
        reloadSpecifiers();
        reload();
        postDarwinNotification(kSettingsChangedNotification);
        old_ = nullptr;
    } else if (alertView && alertView == tenAlert_) {
        PlistDict counter;
        counter.set(kNoticeCounterKey, PlistValue(noticeCount() + 1));
        setSettingsWithDictionary(counter);
        tenAlert_ = nullptr;
    }
}

void QLAWSettingsMainController::didRotateFromInterfaceOrientation(UIInterfaceOrientation from)
{
    QLAWSettingsController::didRotateFromInterfaceOrientation(from);
    if (QLHeaderCell* header = QLHeaderCell::current())
        UIView::setCornerRadius(header, from == UIInterfaceOrientationPortrait ? 7.0 : 0.0);
}

EntryTable QLAWSettingsMainController::customSpecifiers()
{
    auto domain = Id(kPreferencesDomain);
    auto notification = Id(kSettingsChangedNotification);
    return {
        {{"cell", "PSGroupCell"}, {"footerText", "OWNER_FOOT"}},
        {{"cell", "PSStaticTextCell"}, {"ampwellHeader", "ampwellHeader"}, {"cellClass", "QLHeaderCell"},
         {"height", headerHeight_}},
        {{"cell", "PSGroupCell"}, {"footerText", "ENABLED_FOOT"}},
        {{"cell", "PSSwitchCell"}, {"label", "ENABLED"}, {"key", "enabled"}, {"default", false}, {"defaults", domain},
         {"PostNotification", notification}, {"cellClass", "PKTintedSwitchCell"}},
        {{"cell", "PSGroupCell"}, {"label", ""}},
        {{"cell", "PSLinkCell"}, {"label", "THEME_OPS"}, {"isController", true}, {"cellClass", "PKTintedCell"},
         {"detail", "QLAWSettingsThemeOptionsController"}},
        {{"cell", "PSGroupCell"}},
        {{"cell", "PSLinkListCell"}, {"label", "PROFILES"}, {"detail", "QLAWSettingProfileListController"},
         {"titlesDataSource", "loadProfiles:"}, {"valuesDataSource", "loadProfiles:"}},
        {{"cell", "PSGroupCell"}},
        {{"cell", "PSLinkCell"}, {"label", "COLOR_OPTIONS"}, {"isController", true}, {"cellClass", "PKTintedCell"},
         {"detail", "QLAWSettingsColorOptionsController"}},
        {{"cell", "PSLinkCell"}, {"label", "OTHER_OPTIONS"}, {"isController", true}, {"cellClass", "PKTintedCell"},
         {"detail", "QLAWSettingsOptionsController"}},
        {{"cell", "PSGroupCell"}},
        {{"cell", "PSLinkCell"}, {"label", "CREATOR"}, {"isController", true}, {"detail", "QLAWCreditsController"}},
    };
}
