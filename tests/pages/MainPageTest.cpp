#include "pagekit/QtTestSupport.h"

#include "pages/QLAWCreditsController.h"
#include "pages/QLAWSettingsMainController.h"
#include "pages/QLHeaderCell.h"

#include "pagekit/PKTintedCells.h"
#include "platform/core/DarwinNotifyCenter.h"
#include "platform/core/PropertyListFile.h"
#include "platform/qt/PSControlCells.h"
#include "platform/qt/UIImageView.h"
#include "platform/qt/UISwitch.h"
#include "platform/qt/UIView.h"
#include "store/Installation.h"
#include "store/PreferencesStore.h"
#include "store/Profiles.h"
#include "support/TemporaryRoot.h"

#include <QTest>

#include <gtest/gtest.h>

namespace {

constexpr const char* kLegacy = "/var/mobile/Library/Preferences/com.quarrylab.ampwell.plist";
constexpr const char* kPreferences = "/var/mobile/Library/Preferences/com.mossgate.ampwell.plist";

class MainPageTest : public ::testing::Test {
protected:
    void SetUp() override
    {
        testApplication();
        installComponent();
        NSBundle::setPreferredLanguages({"en"});
    }
    void TearDown() override
    {
        window_.reset();
        UIDevice::currentDevice().setSystemVersion("16.0");
        NSBundle::setPreferredLanguages({});
    }

    QLAWSettingsMainController* open(const std::string& systemVersion = "16.0")
    {
        UIDevice::currentDevice().setSystemVersion(systemVersion);
        page_ = new QLAWSettingsMainController();
        window_.reset();
        window_ = std::make_unique<TestWindow>(page_);
        return page_;
    }
    // Shows the page again, as coming back to it does.
    void reappear()
    {
        page_->viewWillAppear(false);
        page_->viewDidAppear(false);
        TestWindow::settle();
    }
    UIAlertView* notice() { return alertTitled(page_->localizedString("IOS10_A_T")); }
    PSTableCell* rowLabelled(const std::string& label)
    {
        for (PSTableCell* cell : page_->table()->visibleCells())
            if (cell->specifier() && cell->specifier()->name() == label)
                return cell;
        return nullptr;
    }
    void writePreferences(const std::string& body, const char* path = kPreferences)
    {
        root_.writeFile(path, "<plist version=\"1.0\"><dict>" + body + "</dict></plist>");
    }

    TemporaryRoot root_;
    QLAWSettingsMainController* page_ = nullptr;
    std::unique_ptr<TestWindow> window_;
};

TEST_F(MainPageTest, MasterSwitchWritesEnabledAndPosts)
{
    DarwinNotificationListener listener("com.mossgate.ampwell.settingsChanged");
    open();
    PSTableCell* row = rowLabelled("Enabled");
    ASSERT_TRUE(row);
    EXPECT_EQ(&row->isa(), &PKTintedSwitchCell::staticClass());
    UISwitch* control = static_cast<PSSwitchTableCell*>(row)->switchControl();
    EXPECT_FALSE(control->isOn());
    EXPECT_EQ(control->effectiveOnTintColor(), QLAWSettingsController::tintColour());

    control->click();
    EXPECT_EQ(loadPreferences()->value("enabled"), PlistValue(true));
    ASSERT_TRUE(listener.isListening());
    EXPECT_EQ(listener.waitForNext(std::chrono::seconds(5)), "com.mossgate.ampwell.settingsChanged");
    control->click();
    EXPECT_EQ(loadPreferences()->value("enabled"), PlistValue(false));
}

TEST_F(MainPageTest, OffersLegacySettingsWhileNoneExistAndCopiesThemWhole)
{
    writePreferences("<key>theme</key><string>Old Theme</string><key>enabled</key><true/>", kLegacy);
    DarwinNotificationListener listener("com.mossgate.ampwell.settingsChanged");
    open("9.3");
    UIAlertView* offer = alertTitled("Old Settings");
    ASSERT_TRUE(offer);
    EXPECT_EQ(offer, page_->legacyAlert());
    EXPECT_EQ(offer->message(), "It looks like you dont have any settings but there is settings from a previous "
                                "version. Would you like to transfer them over?");
    EXPECT_EQ(offer->numberOfButtons(), 1);
    EXPECT_EQ(offer->cancelButtonIndex(), -1);
    EXPECT_EQ(offer->buttonTitleAtIndex(0), "Ok Sweet!");

    // Declining is not possible; it recurs on every appearance until accepted.
    reappear();
    EXPECT_EQ(UIAlertView::visibleAlerts().size(), 2u);
    for (UIAlertView* alert : UIAlertView::visibleAlerts())
        if (alert != page_->legacyAlert())
            alert->dismissWithClickedButtonIndex(0, false);

    page_->legacyAlert()->clickButtonAtIndex(0);
    EXPECT_EQ(page_->legacyAlert(), nullptr);
    EXPECT_EQ(readPropertyListDictionary(root_.path(kPreferences)), readPropertyListDictionary(root_.path(kLegacy)));
    EXPECT_TRUE(root_.exists(kLegacy));
    auto* master = static_cast<PSSwitchTableCell*>(rowLabelled("Enabled"));
    EXPECT_TRUE(master->switchControl()->isOn());
    ASSERT_TRUE(listener.isListening());
    EXPECT_EQ(listener.waitForNext(std::chrono::seconds(5)), "com.mossgate.ampwell.settingsChanged");

    reappear();
    EXPECT_EQ(alertTitled("Old Settings"), nullptr);
}

TEST_F(MainPageTest, NoLegacyOfferWhenSettingsExistOrTheOldFileIsBroken)
{
    writePreferences("<key>theme</key><string>New</string>");
    writePreferences("<key>theme</key><string>Old</string>", kLegacy);
    open("9.3");
    EXPECT_EQ(alertTitled("Old Settings"), nullptr);

    std::filesystem::remove(root_.path(kPreferences));
    root_.writeFile(kLegacy, "not a property list");
    reappear();
    ASSERT_TRUE(alertTitled("Old Settings"));
    alertTitled("Old Settings")->clickButtonAtIndex(0);
    EXPECT_FALSE(root_.exists(kPreferences));
}

TEST_F(MainPageTest, VersionNoticeShowsOnTwoDismissalsFromTenOn)
{
    open("9.3");
    EXPECT_EQ(notice(), nullptr);

    writePreferences("<key>viewed10P</key><integer>0</integer>");
    open("10.2.1");
    ASSERT_TRUE(notice());
    EXPECT_EQ(notice()->title(), "A Note About Newer Systems");
    EXPECT_EQ(notice()->buttonTitleAtIndex(0), "Ok Sweet!");
    notice()->clickButtonAtIndex(0);
    EXPECT_EQ(getSettingsForKeys({"viewed10P"}).value("viewed10P").integerValue(), 1);

    reappear();
    ASSERT_TRUE(notice());
    notice()->clickButtonAtIndex(0);
    EXPECT_EQ(getSettingsForKeys({"viewed10P"}).value("viewed10P").integerValue(), 2);
    reappear();
    EXPECT_EQ(notice(), nullptr);
}

TEST_F(MainPageTest, WithoutASettingsFileTheNoticeCannotBeCounted)
{
    open("10.0");
    ASSERT_TRUE(notice());
    notice()->clickButtonAtIndex(0);
    EXPECT_FALSE(root_.exists(kPreferences));
    reappear();
    EXPECT_TRUE(notice());
}

TEST_F(MainPageTest, ProfileRowListsMostRecentThenDefaultThenTheRest)
{
    for (const char* name : {"Most Recent", "Default", "Work"})
        ASSERT_TRUE(writeProfile(name, defaultProfile()));
    root_.writeFile(std::string(kProfileDirectory) + "notes.txt", "not a profile");
    open();
    PSTableCell* row = rowLabelled("Profiles");
    ASSERT_TRUE(row);
    std::vector<std::string> titles;
    for (const PlistValue& title : row->specifier()->titles())
        titles.push_back(*title.asString());
    EXPECT_EQ(titles, (std::vector<std::string>{"Most Recent", "Default", "Work"}));
    EXPECT_EQ(row->specifier()->values().size(), 3u);

    std::filesystem::remove(profilePath("Default"));
    std::filesystem::remove(profilePath("Most Recent"));
    EXPECT_EQ(page_->loadProfiles(Id()), (std::vector<std::string>{"Default", "Work"}));
    EXPECT_TRUE(std::filesystem::exists(profilePath("Default")));
}

TEST_F(MainPageTest, EveryLinkOpensItsPageAndEscapeComesBack)
{
    open();
    for (UIAlertView* alert : UIAlertView::visibleAlerts())
        alert->clickButtonAtIndex(0);
    for (const auto& [label, page] : std::vector<std::pair<std::string, std::string>>{
             {"Theme Options", "QLAWSettingsThemeOptionsController"},
             {"Profiles", "QLAWSettingProfileListController"},
             {"Color Options", "QLAWSettingsColorOptionsController"},
             {"Other Options", "QLAWSettingsOptionsController"}}) {
        rowLabelled(label)->activate();
        TestWindow::settle();
        for (UIAlertView* alert : UIAlertView::visibleAlerts())
            alert->clickButtonAtIndex(0);
        EXPECT_EQ(window_->top()->isa().name(), page) << label;
        window_->navigation()->popViewControllerAnimated(false);
        TestWindow::settle();
        EXPECT_EQ(window_->top(), page_);
    }

    PSTableCell* credits = rowLabelled("Credits");
    ASSERT_TRUE(credits);
    EXPECT_EQ(&credits->isa(), &PSTableCell::staticClass());
    credits->activate();
    ASSERT_TRUE(dynamic_cast<QLAWCreditsController*>(window_->top()));
    EXPECT_EQ(window_->navigation()->navigationBar()->shownTitle(), QStringLiteral("Credits"));
    // The keyboard lands on the first row; Escape goes back.
    window_->window()->activateWindow();
    QWidget* focused = QApplication::focusWidget();
    ASSERT_TRUE(focused);
    EXPECT_TRUE(window_->top()->isAncestorOf(focused));
    QTest::keyClick(focused, Qt::Key_Escape);
    EXPECT_EQ(window_->top(), page_);
    EXPECT_EQ(window_->navigation()->navigationBar()->shownTitle(), QString());
}

TEST_F(MainPageTest, ShowsTheLogoAndRoundsTheHeaderAfterLeavingPortrait)
{
    open();
    EXPECT_TRUE(page_->logoUp());
    auto* logo = dynamic_cast<UIImageView*>(page_->navigationItem()->titleView());
    ASSERT_TRUE(logo);
    EXPECT_TRUE(logo->isTemplate());
    EXPECT_EQ(UIView::effectiveTintColor(logo), QLAWSettingsController::tintColour());
    EXPECT_EQ(page_->navigationItem()->title(), "");
    EXPECT_EQ(page_->table()->contentInsetTop(), 29.0);

    CGSize header = NSBundle::mainBundle().imageNamed("ampwellHeader").size();
    EXPECT_FLOAT_EQ(page_->headerHeight(), static_cast<float>(390 / header.width * header.height));
    ASSERT_TRUE(QLHeaderCell::current());
    EXPECT_EQ(QLHeaderCell::current()->height(), static_cast<int>(std::round(page_->headerHeight())));

    window_->navigation()->rotate(UIInterfaceOrientationLandscapeLeft);
    EXPECT_EQ(UIView::cornerRadius(QLHeaderCell::current()), 7.0);
    window_->navigation()->rotate(UIInterfaceOrientationPortrait);
    EXPECT_EQ(UIView::cornerRadius(QLHeaderCell::current()), 0.0);
}

} // namespace
