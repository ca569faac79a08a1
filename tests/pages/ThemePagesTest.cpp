#include "pagekit/QtTestSupport.h"

#include "pages/QLAWSettingThemeListController.h"
#include "pages/QLAWSettingsThemeOptionsController.h"
#include "render/QLAWBatteryRenderer.h"
#include "render/preview/QLAWBatteryPreView.h"
#include "store/PreferencesStore.h"
#include "store/RenderSettings.h"
#include "store/ThemeScripts.h"
#include "support/TemporaryRoot.h"

#include "pagekit/PKTypeInSliderTableCell.h"
#include "platform/core/DarwinNotifyCenter.h"
#include "platform/qt/PSControlCells.h"
#include "platform/qt/UIImageView.h"
#include "platform/qt/UISlider.h"
#include "platform/qt/UISwitch.h"
#include "platform/qt/UITextField.h"
#include "platform/web/UIWebView.h"

#include <QAccessible>
#include <QLabel>
#include <QTest>

#include <gtest/gtest.h>

#include <filesystem>

namespace {

constexpr const char* kPreferences = "/var/mobile/Library/Preferences/com.mossgate.ampwell.plist";
constexpr const char* kThemes = "/Library/Application Support/Ampwell/Themes/";
constexpr const char* kInstalled = "/var/mobile/Library/Preferences/Ampwell/Installed/";
const std::string kRing(kBuiltInPreviewScript);

class ThemePagesTest : public ::testing::Test {
protected:
    void SetUp() override
    {
        testApplication();
        NSBundle::setPreferredLanguages({"en"});
        UIWebView::setExecutionTimeLimit(std::chrono::milliseconds(100));
    }
    void TearDown() override
    {
        window_.reset();
        NSBundle::setPreferredLanguages({});
        UIWebView::setExecutionTimeLimit(std::chrono::milliseconds(500));
    }

    void writePreferences(const std::string& body)
    {
        root_.writeFile(kPreferences, "<plist version=\"1.0\"><dict>" + body + "</dict></plist>");
    }
    void addTheme(const std::string& folder, const std::string& name, const std::string& script = kRing)
    {
        root_.writeFile(folder + name + ".js", script);
    }
    QLAWSettingsThemeOptionsController* open()
    {
        options_ = new QLAWSettingsThemeOptionsController();
        window_ = std::make_unique<TestWindow>(options_);
        return options_;
    }
    PSTableCell* rowLabelled(PSListController* page, const std::string& label)
    {
        for (PSTableCell* cell : page->table()->visibleCells())
            if (cell->textLabel()->text().toStdString() == label)
                return cell;
        return nullptr;
    }
    // Opens the list behind the options row and dismisses its notice, if any.
    QLAWSettingThemeListController* openList(const std::string& label)
    {
        rowLabelled(options_, label)->activate();
        TestWindow::settle();
        for (UIAlertView* alert : UIAlertView::visibleAlerts())
            alert->clickButtonAtIndex(0);
        auto* list = dynamic_cast<QLAWSettingThemeListController*>(window_->top());
        if (list)
            list->repaint(); // previews of the rows in sight render when painted
        return list;
    }
    std::vector<std::string> rowTitles(PSListController* page)
    {
        std::vector<std::string> titles;
        for (PSTableCell* cell : page->table()->visibleCells())
            titles.push_back(cell->textLabel()->text().toStdString());
        return titles;
    }
    std::int64_t noticeCount() { return getPreferenceValueForKey(preferencesPath(), "viewedTP").integerValue(); }

    TemporaryRoot root_;
    QLAWSettingsThemeOptionsController* options_ = nullptr;
    std::unique_ptr<TestWindow> window_;
};

std::vector<std::string> namesInFolder(const std::string& folder)
{
    std::vector<std::string> names;
    for (const auto& entry : std::filesystem::directory_iterator(folder))
        names.push_back(entry.path().stem().string());
    return names;
}

TEST_F(ThemePagesTest, ListsEveryFolderInOrderKeepingDuplicates)
{
    addTheme(kThemes, "A");
    addTheme(kThemes, "B");
    root_.writeFile(std::string(kThemes) + "notes.txt", "not a theme");
    addTheme(kInstalled, "A");
    open();
    std::vector<std::string> expected = namesInFolder(root_.path(kThemes));
    std::erase(expected, "notes");
    for (const std::string& name : namesInFolder(root_.path(kInstalled)))
        expected.push_back(name);
    EXPECT_EQ(options_->themes(), expected);
    EXPECT_EQ(std::count(expected.begin(), expected.end(), "A"), 2);

    QLAWSettingThemeListController* list = openList("Theme");
    ASSERT_TRUE(list);
    EXPECT_EQ(rowTitles(list), expected);
    EXPECT_EQ(window_->navigation()->navigationBar()->shownTitle(), QStringLiteral("Theme"));
}

TEST_F(ThemePagesTest, APickStoresTheThemeAndPostsOnce)
{
    addTheme(kThemes, "Ring");
    addTheme(kThemes, "Other");
    writePreferences("<key>viewedTP</key><integer>2</integer>");
    DarwinNotificationListener listener("com.mossgate.ampwell.settingsChanged");
    open();
    QLAWSettingThemeListController* list = openList("Theme");
    ASSERT_TRUE(list);
    PSTableCell* ring = rowLabelled(list, "Ring");
    ASSERT_TRUE(ring);
    EXPECT_FALSE(ring->isChecked());

    QTest::keyClick(ring, Qt::Key_Return);
    EXPECT_EQ(loadPreferences()->value("theme"), PlistValue("Ring"));
    EXPECT_TRUE(ring->isChecked());
    EXPECT_FALSE(rowLabelled(list, "Other")->isChecked());
    ASSERT_TRUE(listener.isListening());
    EXPECT_TRUE(listener.waitForNext(std::chrono::seconds(5)));
    EXPECT_FALSE(listener.waitForNext(std::chrono::milliseconds(300)));
    QAccessibleInterface* row = QAccessible::queryAccessibleInterface(ring);
    EXPECT_EQ(row->text(QAccessible::Name), QStringLiteral("Ring"));
    EXPECT_EQ(row->text(QAccessible::Value), QStringLiteral("selected"));

    // Back on the options page, the row shows the new choice.
    ASSERT_TRUE(window_->navigation()->popViewControllerAnimated(false));
    TestWindow::settle();
    EXPECT_EQ(rowLabelled(options_, "Theme")->detailTextLabel()->text(), QStringLiteral("Ring"));
}

TEST_F(ThemePagesTest, PreviewsShowTheThemeInTheCurrentColoursAndTheListsMirrorSettings)
{
    addTheme(kThemes, "Ring");
    writePreferences("<key>viewedTP</key><integer>2</integer><key>lightColor</key><string>#FF0000</string>"
                     "<key>flipX</key><false/><key>flipXSecondary</key><true/>");
    open();
    QLAWSettingThemeListController* list = openList("Theme");
    ASSERT_TRUE(list);
    EXPECT_FALSE(useSecondarySettings);
    QLAWBatteryPreView* preview = QLAWSettingThemeListController::previewOfCell(rowLabelled(list, "Ring"));
    ASSERT_TRUE(preview);
    EXPECT_EQ(preview->geometry(), QRect(18, 20, 110, 40));
    EXPECT_EQ(preview->batteryImageHeight(), 20);
    EXPECT_EQ(preview->darkSettings()->value("script"), PlistValue(kRing));
    EXPECT_EQ(preview->darkSettings()->value("color"), PlistValue(UIColor::colorWithRedGreenBlueAlpha(1, 0, 0, 1)));
    EXPECT_EQ(preview->lightSettings()->value("flipX"), PlistValue(false));
    EXPECT_FALSE(preview->lightBatteryView()->image().isNil());

    window_->navigation()->popViewControllerAnimated(false);
    TestWindow::settle();
    EXPECT_FALSE(useSecondarySettings);
    list = openList("Secondary Theme");
    ASSERT_TRUE(dynamic_cast<QLAWSettingSecondaryThemeListController*>(list));
    EXPECT_TRUE(useSecondarySettings);
    preview = QLAWSettingThemeListController::previewOfCell(rowLabelled(list, "Ring"));
    EXPECT_EQ(preview->lightSettings()->value("flipX"), PlistValue(true));
    window_->navigation()->popViewControllerAnimated(false);
    EXPECT_FALSE(useSecondarySettings);

    // The charging theme's list is the primary one.
    list = openList("Charging Theme");
    EXPECT_FALSE(dynamic_cast<QLAWSettingSecondaryThemeListController*>(list));
    EXPECT_FALSE(useSecondarySettings);
}

TEST_F(ThemePagesTest, TheNoticeShowsOnTheFirstTwoVisits)
{
    addTheme(kThemes, "Ring");
    writePreferences("");
    open();
    for (std::int64_t visit = 0; visit < 3; ++visit) {
        EXPECT_EQ(noticeCount(), std::min<std::int64_t>(visit, 2));
        rowLabelled(options_, "Theme")->activate();
        TestWindow::settle();
        UIAlertView* notice = alertTitled("Live Previews");
        EXPECT_EQ(notice != nullptr, visit < 2) << "visit " << visit;
        if (notice) {
            EXPECT_EQ(notice->numberOfButtons(), 1);
            EXPECT_EQ(notice->buttonTitleAtIndex(notice->cancelButtonIndex()), "Ok Sweet!");
            QTest::keyClick(QApplication::focusWidget(), Qt::Key_Escape);
            EXPECT_EQ(alertTitled("Live Previews"), nullptr);
        }
        window_->navigation()->popViewControllerAnimated(false);
        TestWindow::settle();
    }
}

TEST_F(ThemePagesTest, AReusedRowKeepsItsPreviewAndALoopingThemeRunsOnce)
{
    addTheme(kThemes, "Ring");
    addTheme(kInstalled, "Loop", "(c,g,l,m,e){for (;;) {}}");
    writePreferences("<key>viewedTP</key><integer>2</integer>");
    open();
    std::uint64_t before = QLAWBatteryRenderer::evaluationCount();
    QLAWSettingThemeListController* list = openList("Theme");
    ASSERT_TRUE(list);
    // Ring on both halves, Loop once: its second half is not run again.
    EXPECT_EQ(QLAWBatteryRenderer::evaluationCount(), before + 3);
    PSTableCell* loopRow = rowLabelled(list, "Loop");
    QLAWBatteryPreView* loop = QLAWSettingThemeListController::previewOfCell(loopRow);
    ASSERT_TRUE(loop);
    EXPECT_TRUE(loop->lightBatteryView()->image().isNil());
    EXPECT_TRUE(loop->darkBatteryView()->image().isNil());

    QLAWBatteryPreView* ring = QLAWSettingThemeListController::previewOfCell(rowLabelled(list, "Ring"));
    list->reload();
    TestWindow::settle();
    list->repaint();
    EXPECT_EQ(rowLabelled(list, "Loop"), loopRow);
    EXPECT_EQ(QLAWSettingThemeListController::previewOfCell(rowLabelled(list, "Ring")), ring);
    EXPECT_EQ(QLAWBatteryRenderer::evaluationCount(), before + 3);

    // A new list renders good themes afresh but never the loop again.
    window_->navigation()->popViewControllerAnimated(false);
    openList("Theme");
    EXPECT_EQ(QLAWBatteryRenderer::evaluationCount(), before + 5);
}

TEST_F(ThemePagesTest, AVanishedThemeFileGivesAnEmptyPreview)
{
    addTheme(kThemes, "Ring");
    addTheme(kThemes, "Gone");
    writePreferences("<key>viewedTP</key><integer>2</integer>");
    open();
    std::filesystem::remove(root_.path(std::string(kThemes) + "Gone.js"));
    QLAWSettingThemeListController* list = openList("Theme");
    ASSERT_TRUE(list);
    QLAWBatteryPreView* gone = QLAWSettingThemeListController::previewOfCell(rowLabelled(list, "Gone"));
    ASSERT_TRUE(gone);
    EXPECT_TRUE(gone->lightBatteryView()->image().isNil());
    EXPECT_FALSE(QLAWSettingThemeListController::previewOfCell(rowLabelled(list, "Ring"))
                     ->lightBatteryView()->image().isNil());
}

TEST_F(ThemePagesTest, MirrorSwitchesStoreTheCrosswiseKeys)
{
    writePreferences("");
    open();
    std::vector<std::pair<std::string, std::string>> switches = {
        {"FLIP_H", "flipY"}, {"FLIP_V", "flipX"}, {"FLIP_SEC_H", "flipYSecondary"},
        {"FLIP_SEC_V", "flipXSecondary"}, {"FLIP_CH_H", "flipYCharge"}, {"FLIP_CH_V", "flipXCharge"}};
    for (const auto& [label, key] : switches) {
        std::shared_ptr<PSSpecifier> entry;
        for (const auto& candidate : options_->specifiers())
            if (candidate->propertyForKey("key").string() && *candidate->propertyForKey("key").string() == key)
                entry = candidate;
        ASSERT_TRUE(entry) << key;
        EXPECT_EQ(entry->name(), options_->localizedString(label));
        auto* cell = dynamic_cast<PSSwitchTableCell*>(options_->cachedCellForSpecifier(entry));
        ASSERT_TRUE(cell);
        cell->switchControl()->click();
        EXPECT_EQ(loadPreferences()->value(key), PlistValue(true)) << label;
    }
}

TEST_F(ThemePagesTest, TheLowerLimitPopupKeepsToFiveThroughNinetyFive)
{
    writePreferences("");
    open();
    auto* slider = dynamic_cast<PKTypeInSliderTableCell*>(rowLabelled(options_, "Lower Limit"));
    ASSERT_TRUE(slider);
    EXPECT_EQ(slider->slider()->value(), 20);
    auto enter = [&](const std::string& text) {
        slider->presentPopup();
        EXPECT_EQ(slider->alert()->message(), "Please enter a value between 5.0 and 95.0.");
        slider->alert()->textFieldAtIndex(0)->setTextString(text);
        slider->alert()->clickButtonAtIndex(1);
        TestWindow::settle();
    };
    enter("96");
    ASSERT_TRUE(alertTitled("Error"));
    alertTitled("Error")->clickButtonAtIndex(0);
    ASSERT_TRUE(alertTitled("Lower Limit"));
    alertTitled("Lower Limit")->clickButtonAtIndex(0);
    enter("4");
    ASSERT_TRUE(alertTitled("Error"));
    alertTitled("Error")->clickButtonAtIndex(0);
    alertTitled("Lower Limit")->clickButtonAtIndex(0);
    EXPECT_FALSE(loadPreferences()->find("secondThemeLimit"));
    enter("95");
    EXPECT_EQ(loadPreferences()->value("secondThemeLimit").doubleValue(), 95);
}

} // namespace
