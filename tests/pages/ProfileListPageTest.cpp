#include "pagekit/QtTestSupport.h"

#include "pages/NewProfileFile.h"
#include "pages/QLAWSettingProfileListController.h"
#include "pages/QLAWSettingsMainController.h"
#include "pages/QLProfileCell.h"
#include "render/preview/QLAWBatteryPreView.h"
#include "store/Installation.h"
#include "store/PreferencesStore.h"
#include "store/Profiles.h"
#include "store/SettingsCatalogue.h"
#include "support/PlistPrinting.h"
#include "support/TemporaryRoot.h"

#include "platform/core/DarwinNotifyCenter.h"
#include "platform/core/PropertyListFile.h"
#include "platform/qt/UIImageView.h"
#include "platform/qt/UITextField.h"
#include "platform/qt/UIView.h"

#include <QAccessible>
#include <QContextMenuEvent>
#include <QLabel>
#include <QMenu>
#include <QTest>

#include <gtest/gtest.h>

#include <filesystem>

namespace {

namespace fs = std::filesystem;

constexpr const char* kPreferences = "/var/mobile/Library/Preferences/com.mossgate.ampwell.plist";
constexpr const char* kNoticesSeen = "<key>viewed10P</key><integer>2</integer><key>viewedPP</key><integer>2</integer>";

PlistDict withValues(PlistDict profile, const PlistDict& values)
{
    profile.addEntriesFrom(values);
    return profile;
}

class ProfileListPageTest : public ::testing::Test {
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
        NSBundle::setPreferredLanguages({});
    }

    void writePreferences(const std::string& body)
    {
        root_.writeFile(kPreferences, "<plist version=\"1.0\"><dict>" + body + "</dict></plist>");
    }
    // The main page, then the profile list through its row, as a user gets there.
    QLAWSettingProfileListController* openList()
    {
        main_ = new QLAWSettingsMainController();
        window_ = std::make_unique<TestWindow>(main_);
        window_->window()->activateWindow();
        for (UIAlertView* alert : UIAlertView::visibleAlerts())
            alert->dismissWithClickedButtonIndex(0, false);
        return reopenList();
    }
    QLAWSettingProfileListController* reopenList()
    {
        rowNamed(main_, "Profiles")->activate();
        TestWindow::settle();
        list_ = dynamic_cast<QLAWSettingProfileListController*>(window_->top());
        if (list_)
            list_->repaint(); // previews of the rows in sight render when painted
        return list_;
    }
    void leaveList()
    {
        window_->navigation()->popViewControllerAnimated(false);
        TestWindow::settle();
    }
    static PSTableCell* rowNamed(PSListController* page, const std::string& name)
    {
        for (PSTableCell* cell : page->table()->visibleCells())
            if (cell->specifier() && cell->specifier()->name() == name)
                return cell;
        return nullptr;
    }
    QLProfileCell* row(const std::string& name) { return dynamic_cast<QLProfileCell*>(rowNamed(list_, name)); }
    std::vector<std::string> rowNames()
    {
        std::vector<std::string> names;
        for (PSTableCell* cell : list_->table()->visibleCells())
            names.push_back(cell->textLabel()->text().toStdString());
        return names;
    }
    std::vector<std::string> mainPageTitles()
    {
        std::vector<std::string> titles;
        for (const PlistValue& title : rowNamed(main_, "Profiles")->specifier()->titles())
            titles.push_back(*title.asString());
        return titles;
    }
    std::string text(const char* key) { return list_->localizedString(key); }
    // Saves through Ctrl+S, the kind alert and the name alert.
    void saveAs(int kind, const std::string& name)
    {
        QTest::keyClick(list_->table()->visibleCells().front(), Qt::Key_S, Qt::ControlModifier);
        ASSERT_TRUE(list_->saveTypeAlert());
        list_->saveTypeAlert()->clickButtonAtIndex(kind);
        typeName(name);
    }
    void typeName(const std::string& name)
    {
        UIAlertView* alert = list_->saveNameAlert();
        ASSERT_TRUE(alert && alert->isVisibleAlert());
        alert->textFieldAtIndex(0)->setTextString(name);
        alert->clickButtonAtIndex(1);
        TestWindow::settle();
    }
    void restore(const std::string& name, int choice)
    {
        QTest::keyClick(row(name), Qt::Key_Return);
        ASSERT_TRUE(list_->restoreAlert());
        list_->restoreAlert()->clickButtonAtIndex(choice);
        TestWindow::settle();
    }

    TemporaryRoot root_;
    QLAWSettingsMainController* main_ = nullptr;
    QLAWSettingProfileListController* list_ = nullptr;
    std::unique_ptr<TestWindow> window_;
};

TEST_F(ProfileListPageTest, RowsFollowTheMainPageAndKeepDefaultAndMostRecent)
{
    writePreferences(kNoticesSeen);
    ASSERT_TRUE(writeProfile("Work", withValues(defaultProfile(), {{"theme", "Amp Pill"}})));
    ASSERT_TRUE(writeProfile("Sunset", withValues(colorProfileTemplate(), {{"lightColor", "#ff0000"}})));
    ASSERT_TRUE(openList());
    EXPECT_EQ(rowNames(), mainPageTitles());
    EXPECT_EQ(rowNames().front(), "Default");
    EXPECT_EQ(list_->undeletable(), 1);
    EXPECT_FALSE(list_->tableViewCanEditRowAtIndexPath(list_->table(), {0, 0}));
    EXPECT_TRUE(list_->tableViewCanEditRowAtIndexPath(list_->table(), {0, 1}));

    EXPECT_EQ(row("Work")->detailTextLabel()->text(), QStringLiteral("All"));
    EXPECT_EQ(row("Sunset")->detailTextLabel()->text(), QStringLiteral("Colors"));
    EXPECT_FALSE(row("Work")->isChecked());
    QLAWBatteryPreView* preview = QLAWSettingProfileListController::previewOfCell(row("Sunset"));
    ASSERT_TRUE(preview);
    EXPECT_EQ(UIView::tag(preview), 717);
    EXPECT_EQ(preview->geometry(), QRect(18, 20, 110, 40));
    EXPECT_EQ(preview->batteryImageHeight(), 20);
    EXPECT_EQ(preview->darkSettings()->value("color"), PlistValue(UIColor::colorWithRedGreenBlueAlpha(1, 0, 0, 1)));
    EXPECT_FALSE(preview->lightBatteryView()->image().isNil());

    QAccessibleInterface* work = QAccessible::queryAccessibleInterface(row("Work"));
    EXPECT_EQ(work->text(QAccessible::Name), QStringLiteral("Work"));
    EXPECT_EQ(work->text(QAccessible::Value), QStringLiteral("all settings, can be deleted"));
    QAccessibleInterface* kept = QAccessible::queryAccessibleInterface(row("Default"));
    EXPECT_EQ(kept->text(QAccessible::Value), QStringLiteral("all settings, kept by Ampwell, cannot be deleted"));
    EXPECT_EQ(QAccessible::queryAccessibleInterface(row("Sunset"))->text(QAccessible::Value),
              QStringLiteral("colors only, can be deleted"));

    leaveList();
    ASSERT_TRUE(writeProfile("Most Recent", defaultProfile()));
    ASSERT_TRUE(reopenList());
    EXPECT_EQ(rowNames().front(), "Most Recent");
    EXPECT_EQ(list_->undeletable(), 2);
    EXPECT_FALSE(list_->tableViewCanEditRowAtIndexPath(list_->table(), {0, 1}));
    EXPECT_TRUE(list_->tableViewCanEditRowAtIndexPath(list_->table(), {0, 2}));
}

TEST_F(ProfileListPageTest, TheFirstRestoreKeepsTheSettingsAsMostRecentAtTheTop)
{
    writePreferences(std::string(kNoticesSeen) + "<key>theme</key><string>Amp Dots</string>"
                                                 "<key>lightColor</key><string>#123456</string>");
    PlistDict before = currentCompleteProfile();
    PlistDict work = withValues(defaultProfile(), {{"theme", "Amp Pill"}, {"lightColor", "#abcdef"}});
    ASSERT_TRUE(writeProfile("Work", work));
    DarwinNotificationListener listener("com.mossgate.ampwell.settingsChanged");
    ASSERT_TRUE(openList());

    QTest::keyClick(row("Work"), Qt::Key_Return);
    UIAlertView* alert = list_->restoreAlert();
    ASSERT_TRUE(alert);
    EXPECT_EQ(alert->message(), text("PROFILE_POPUP_COMP"));
    EXPECT_EQ(alert->buttonTitleAtIndex(1), text("PROFILE_POPUP_OP_COMP"));
    EXPECT_EQ(alert->buttonTitleAtIndex(2), text("PROFILE_POPUP_OP_COL"));
    EXPECT_FALSE(root_.exists(std::string(kProfileDirectory) + "Most Recent.awProfile"));
    alert->clickButtonAtIndex(1);
    TestWindow::settle();

    EXPECT_EQ(readProfile("Most Recent"), before);
    EXPECT_EQ(loadPreferences()->value("theme"), PlistValue("Amp Pill"));
    EXPECT_EQ(loadPreferences()->value("lightColor"), PlistValue("#abcdef"));
    EXPECT_EQ(rowNames(), (std::vector<std::string>{"Most Recent", "Default", "Work"}));
    EXPECT_EQ(mainPageTitles(), rowNames());
    EXPECT_EQ(list_->undeletable(), 2);
    EXPECT_TRUE(row("Work")->hasFocus());
    ASSERT_TRUE(listener.isListening());
    EXPECT_TRUE(listener.waitForNext(std::chrono::seconds(5)));

    // Restoring "Most Recent" undoes the restore.
    restore("Most Recent", 1);
    EXPECT_EQ(currentCompleteProfile(), before);
    EXPECT_EQ(readProfile("Most Recent"), work);
}

TEST_F(ProfileListPageTest, CancellingARestoreTouchesNothing)
{
    writePreferences(std::string(kNoticesSeen) + "<key>theme</key><string>Amp Dots</string>");
    PlistDict undo = withValues(defaultProfile(), {{"theme", "Amp Wave"}});
    ASSERT_TRUE(writeProfile("Most Recent", undo));
    ASSERT_TRUE(writeProfile("Work", withValues(defaultProfile(), {{"theme", "Amp Pill"}})));
    std::optional<PlistDict> preferences = loadPreferences();
    DarwinNotificationListener listener("com.mossgate.ampwell.settingsChanged");
    ASSERT_TRUE(openList());

    restore("Work", 0);
    QTest::keyClick(row("Work"), Qt::Key_Return);
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Escape);
    EXPECT_TRUE(UIAlertView::visibleAlerts().empty());
    EXPECT_EQ(readProfile("Most Recent"), undo);
    EXPECT_EQ(loadPreferences(), preferences);
    EXPECT_FALSE(listener.waitForNext(std::chrono::milliseconds(300)));
}

TEST_F(ProfileListPageTest, RestoreChoicesApplyWholeColoursOnlyOrColoursWithDefaults)
{
    std::string settings = std::string(kNoticesSeen) + "<key>theme</key><string>Amp Dots</string>"
                           "<key>flipX</key><true/><key>useSBC</key><true/>"
                           "<key>lightColor</key><string>#111111</string>";
    writePreferences(settings);
    ASSERT_TRUE(writeProfile("Sunset", withValues(colorProfileTemplate(), {{"lightColor", "#ff8800"}})));
    ASSERT_TRUE(writeProfile("Work", withValues(defaultProfile(), {{"theme", "Amp Pill"}, {"lightColor", "#abcdef"}})));
    ASSERT_TRUE(openList());

    QTest::keyClick(row("Sunset"), Qt::Key_Return);
    ASSERT_TRUE(list_->restoreAlert());
    EXPECT_EQ(list_->restoreAlert()->message(), text("PROFILE_POPUP_COLOR"));
    EXPECT_EQ(list_->restoreAlert()->buttonTitleAtIndex(1), text("PROFILE_POPUP_OP_CUR"));
    EXPECT_EQ(list_->restoreAlert()->buttonTitleAtIndex(2), text("PROFILE_POPUP_OP_DEF"));
    list_->restoreAlert()->clickButtonAtIndex(1);
    EXPECT_EQ(loadPreferences()->value("lightColor"), PlistValue("#ff8800"));
    EXPECT_EQ(loadPreferences()->value("theme"), PlistValue("Amp Dots"));
    EXPECT_EQ(loadPreferences()->value("useSBC"), PlistValue(true)); // not among the colours a restore copies

    writePreferences(settings);
    restore("Sunset", 2);
    PlistDict others = otherProfileTemplate();
    for (const std::string& key : others.keys())
        EXPECT_EQ(loadPreferences()->value(key), others.value(key)) << key;
    EXPECT_EQ(loadPreferences()->value("lightColor"), PlistValue("#ff8800"));
    EXPECT_EQ(loadPreferences()->value("viewedPP"), PlistValue(2));

    writePreferences(settings);
    restore("Work", 2);
    EXPECT_EQ(loadPreferences()->value("lightColor"), PlistValue("#abcdef"));
    EXPECT_EQ(loadPreferences()->value("theme"), PlistValue("Amp Dots"));
    EXPECT_EQ(loadPreferences()->value("flipX"), PlistValue(true));
}

TEST_F(ProfileListPageTest, AnUnreadableProfileShowsNothingAndRestoresAsColoursWithDefaults)
{
    writePreferences(std::string(kNoticesSeen) + "<key>theme</key><string>Amp Dots</string>"
                                                 "<key>lightColor</key><string>#111111</string>");
    root_.writeFile(std::string(kProfileDirectory) + "Broken.awProfile", "<plist><dict><key>theme</key>");
    ASSERT_TRUE(openList());
    QLProfileCell* broken = row("Broken");
    ASSERT_TRUE(broken);
    EXPECT_EQ(broken->detailTextLabel()->text(), QStringLiteral("Colors"));
    QLAWBatteryPreView* preview = QLAWSettingProfileListController::previewOfCell(broken);
    EXPECT_TRUE(preview->lightBatteryView()->image().isNil());
    EXPECT_TRUE(preview->darkBatteryView()->image().isNil());

    PlistDict before = currentCompleteProfile();
    restore("Broken", 2);
    EXPECT_EQ(readProfile("Most Recent"), before);
    EXPECT_EQ(loadPreferences()->value("theme"), PlistValue("Amp Connect"));
    EXPECT_EQ(loadPreferences()->value("lightColor"), PlistValue("#111111"));
}

TEST_F(ProfileListPageTest, SavingAsksKindThenNameAndNeverReplacesAProfile)
{
    writePreferences(std::string(kNoticesSeen) + "<key>lightColor</key><string>#ff8800</string>");
    ASSERT_TRUE(writeProfile("Most Recent", defaultProfile()));
    ASSERT_TRUE(openList());
    ASSERT_EQ(list_->navigationItem()->rightBarButtonItems().size(), 1u);
    EXPECT_EQ(list_->navigationItem()->rightBarButtonItems().front()->title(), "Save");

    list_->navigationItem()->rightBarButtonItems().front()->trigger();
    UIAlertView* kind = list_->saveTypeAlert();
    ASSERT_TRUE(kind);
    EXPECT_EQ(kind->title(), text("SAVE_PROFILE"));
    kind->clickButtonAtIndex(0);
    TestWindow::settle();
    EXPECT_TRUE(UIAlertView::visibleAlerts().empty());

    std::optional<PlistDict> mostRecent = readProfile("Most Recent");
    for (const char* taken : {"Default", "Most Recent"}) {
        saveAs(2, taken);
        ASSERT_TRUE(list_->saveNameAlert());
        EXPECT_EQ(list_->saveNameAlert()->message(), text("PROFILE_BAD_POPUP")) << taken;
        list_->saveNameAlert()->clickButtonAtIndex(0);
    }
    EXPECT_EQ(readProfile("Most Recent"), mostRecent);
    EXPECT_EQ(readProfile("Default"), defaultProfile());

    saveAs(2, "Default");
    typeName("Evening");
    EXPECT_EQ(readProfile("Evening"), currentColorProfile());
    EXPECT_EQ(rowNames(), (std::vector<std::string>{"Most Recent", "Default", "Evening"}));
    EXPECT_EQ(mainPageTitles(), rowNames());
    EXPECT_EQ(row("Evening")->detailTextLabel()->text(), QStringLiteral("Colors"));
    EXPECT_TRUE(row("Evening")->hasFocus());

    // A link that leads out of the folder holds its name too, even when it leads nowhere.
    fs::create_symlink(root_.folder() + "/outside.awProfile", profilePath("Ghost"));
    saveAs(1, "Ghost");
    EXPECT_EQ(list_->saveNameAlert()->message(), text("PROFILE_BAD_POPUP"));
    EXPECT_EQ(list_->saveNameAlert()->textFieldAtIndex(0)->textString(), "Ghost");
    typeName("Work");
    EXPECT_FALSE(fs::exists(root_.folder() + "/outside.awProfile"));
    EXPECT_EQ(readProfile("Work"), currentCompleteProfile());
    EXPECT_EQ(writeNewProfile(profilePath("Work"), defaultProfile()), NewProfileWrite::Taken);
    EXPECT_EQ(readProfile("Work"), currentCompleteProfile());
}

TEST_F(ProfileListPageTest, NamesThatCannotBeFileNamesAreAskedAgainWithTheReason)
{
    writePreferences(kNoticesSeen);
    ASSERT_TRUE(openList());
    const std::vector<std::pair<std::string, const char*>> refused = {
        {"", "PROFILE_EMPTY_POPUP"},
        {"../Escape", "PROFILE_SLASH_POPUP"},
        {"Work/Home", "PROFILE_SLASH_POPUP"},
        {".hidden", "PROFILE_DOT_POPUP"},
        {"Tab\there", "PROFILE_CONTROL_POPUP"},
        {"Next\xC2\x85line", "PROFILE_CONTROL_POPUP"},
        {std::string(201, 'a'), "PROFILE_LONG_POPUP"},
    };
    for (std::size_t i = 0; i < refused.size(); ++i) {
        const auto& [name, reason] = refused[i];
        if (i == 0)
            saveAs(1, name);
        else
            typeName(name);
        UIAlertView* again = list_->saveNameAlert();
        ASSERT_TRUE(again && again->isVisibleAlert()) << reason;
        EXPECT_EQ(again->message(), text(reason)) << reason;
        EXPECT_NE(again->message(), reason) << "the message needs a text";
        EXPECT_EQ(again->textFieldAtIndex(0)->textString(), name);
    }
    EXPECT_EQ(UIAlertView::visibleAlerts().size(), 1u);
    std::vector<std::string> files;
    for (const auto& entry : fs::recursive_directory_iterator(root_.folder()))
        if (entry.path().string().ends_with(".awProfile"))
            files.push_back(entry.path().filename().string());
    EXPECT_EQ(files, std::vector<std::string>{"Default.awProfile"});

    // The longest name the command line takes is fine here too.
    typeName(std::string(200, 'a'));
    EXPECT_TRUE(UIAlertView::visibleAlerts().empty());
    EXPECT_TRUE(readProfile(std::string(200, 'a')));
}

TEST_F(ProfileListPageTest, DeleteKeyAndContextMenuDeleteOnlyDeletableRows)
{
    writePreferences(kNoticesSeen);
    for (const char* name : {"Most Recent", "Work", "Home"})
        ASSERT_TRUE(writeProfile(name, defaultProfile()));
    DarwinNotificationListener listener("com.mossgate.ampwell.settingsChanged");
    ASSERT_TRUE(openList());
    std::vector<std::string> names = rowNames();
    ASSERT_EQ(names.size(), 4u);

    for (const char* kept : {"Most Recent", "Default"}) {
        row(kept)->setFocus();
        QTest::keyClick(row(kept), Qt::Key_Delete);
        QContextMenuEvent click(QContextMenuEvent::Mouse, QPoint(5, 5), row(kept)->mapToGlobal(QPoint(5, 5)));
        QApplication::sendEvent(row(kept), &click);
        EXPECT_FALSE(row(kept)->findChild<QMenu*>()) << kept;
    }
    EXPECT_EQ(rowNames(), names);
    EXPECT_TRUE(root_.exists(std::string(kProfileDirectory) + "Most Recent.awProfile"));

    // Delete on the third row: the keyboard moves on to the row that takes its place.
    std::string third = names[2];
    std::string fourth = names[3];
    row(third)->setFocus();
    QTest::keyClick(row(third), Qt::Key_Delete);
    TestWindow::settle();
    EXPECT_FALSE(readProfile(third));
    EXPECT_EQ(rowNames(), (std::vector<std::string>{"Most Recent", "Default", fourth}));
    EXPECT_EQ(mainPageTitles(), rowNames());
    EXPECT_TRUE(row(fourth)->hasFocus());

    QContextMenuEvent click(QContextMenuEvent::Keyboard, QPoint(), row(fourth)->mapToGlobal(QPoint()));
    QApplication::sendEvent(row(fourth), &click);
    auto* menu = row(fourth)->findChild<QMenu*>();
    ASSERT_TRUE(menu);
    ASSERT_EQ(menu->actions().size(), 1);
    EXPECT_EQ(menu->actions().front()->text(), QStringLiteral("Delete"));
    menu->actions().front()->trigger();
    TestWindow::settle();
    EXPECT_FALSE(readProfile(fourth));
    EXPECT_EQ(rowNames(), (std::vector<std::string>{"Most Recent", "Default"}));
    EXPECT_FALSE(listener.waitForNext(std::chrono::milliseconds(300)));
}

TEST_F(ProfileListPageTest, TheNoticeShowsOnTheFirstTwoVisitsOnceSettingsExist)
{
    ASSERT_TRUE(openList());
    for (int visit = 0; visit < 2; ++visit) {
        ASSERT_TRUE(alertTitled(text("PROFILE_POPUP_TITLE")));
        alertTitled(text("PROFILE_POPUP_TITLE"))->clickButtonAtIndex(0);
        leaveList();
        reopenList();
    }
    ASSERT_TRUE(alertTitled(text("PROFILE_POPUP_TITLE")));
    EXPECT_FALSE(root_.exists(kPreferences)); // a notice alone never makes the settings file
    alertTitled(text("PROFILE_POPUP_TITLE"))->clickButtonAtIndex(0);
    leaveList();

    writePreferences("<key>viewed10P</key><integer>2</integer>");
    for (std::int64_t visit = 0; visit < 3; ++visit) {
        reopenList();
        UIAlertView* notice = alertTitled(text("PROFILE_POPUP_TITLE"));
        EXPECT_EQ(notice != nullptr, visit < 2) << "visit " << visit;
        if (notice) {
            EXPECT_EQ(notice->message(), text("PROFILE_POPUP"));
            EXPECT_EQ(notice->cancelButtonIndex(), -1);
            EXPECT_EQ(notice->buttonTitleAtIndex(0), text("OK_SWEET"));
            notice->clickButtonAtIndex(0);
        }
        EXPECT_EQ(loadPreferences()->value("viewedPP"), PlistValue(std::min<std::int64_t>(visit + 1, 2)));
        leaveList();
    }
}

} // namespace
