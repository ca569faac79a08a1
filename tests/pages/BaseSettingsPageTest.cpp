#include "pagekit/QtTestSupport.h"

#include "pages/QLAWSettingsController.h"

#include "platform/core/DarwinNotifyCenter.h"
#include "platform/core/PropertyListFile.h"
#include "platform/qt/PSControlCells.h"
#include "platform/qt/UISwitch.h"
#include "platform/qt/UIView.h"
#include "store/PreferencesStore.h"
#include "support/TemporaryRoot.h"

#include <gtest/gtest.h>

namespace {

class OptionsPage : public QLAWSettingsController {
    AMPWELL_OBJC_CLASS()
public:
    EntryTable customSpecifiers()
    {
        return {
            {{"cell", "PSGroupCell"}},
            {{"cell", "PSSwitchCell"}, {"label", "Loud"}, {"key", "loud"}, {"default", 1},
             {"defaults", "com.mossgate.ampwell.plist"}, {"PostNotification", "com.mossgate.ampwell.settingsChanged"},
             {"cellClass", "PKTintedSwitchCell"}},
            {{"cell", "PSSwitchCell"}, {"label", "Quiet"}, {"key", "quiet"}, {"cellClass", "PKTintedSwitchCell"}},
        };
    }
};

const ObjCClass& OptionsPage::staticClass()
{
    static const ObjCClass& cls = ClassBuilder<OptionsPage>("TestOptionsPage", &QLAWSettingsController::staticClass())
                                      .method("customSpecifiers", &OptionsPage::customSpecifiers)
                                      .build();
    return cls;
}

class BaseSettingsPageTest : public ::testing::Test {
protected:
    void SetUp() override
    {
        testApplication();
        root_.makeFolder("/var/mobile/Library/Preferences");
        page_ = new OptionsPage();
        window_ = std::make_unique<TestWindow>(page_);
    }
    UISwitch* switchAt(int index)
    {
        auto* cell = dynamic_cast<PSSwitchTableCell*>(page_->table()->visibleCells().at(static_cast<std::size_t>(index)));
        return cell ? cell->switchControl() : nullptr;
    }
    std::optional<PlistDict> file() { return loadPreferences(); }

    TemporaryRoot root_;
    DarwinNotificationListener listener_{"com.mossgate.ampwell.settingsChanged"};
    OptionsPage* page_ = nullptr;
    std::unique_ptr<TestWindow> window_;
};

TEST_F(BaseSettingsPageTest, ReadsTheDefaultThenWritesTheFileWithOneKeyAndPosts)
{
    ASSERT_TRUE(switchAt(0));
    EXPECT_TRUE(switchAt(0)->isOn());
    EXPECT_FALSE(file());

    switchAt(0)->click();
    std::optional<PlistDict> written = file();
    ASSERT_TRUE(written);
    EXPECT_EQ(written->size(), 1u);
    // Off is written as false, not by removing the key.
    EXPECT_EQ(written->value("loud"), PlistValue(false));
    ASSERT_TRUE(listener_.isListening());
    EXPECT_EQ(listener_.waitForNext(std::chrono::seconds(5)), "com.mossgate.ampwell.settingsChanged");
}

TEST_F(BaseSettingsPageTest, KeepsOtherKeysAndPostsOnlyWhenTheEntrySaysSo)
{
    root_.writeFile("/var/mobile/Library/Preferences/com.mossgate.ampwell.plist",
                    R"(<?xml version="1.0" encoding="UTF-8"?><plist version="1.0"><dict>
                    <key>theme</key><string>Amp Connect</string><key>loud</key><false/></dict></plist>)");
    page_->reloadSpecifiers();
    EXPECT_FALSE(switchAt(0)->isOn());

    switchAt(1)->click();
    std::optional<PlistDict> written = file();
    ASSERT_TRUE(written);
    EXPECT_EQ(written->value("theme"), PlistValue("Amp Connect"));
    EXPECT_EQ(written->value("quiet"), PlistValue(true));
    ASSERT_TRUE(listener_.isListening());
    EXPECT_FALSE(listener_.waitForNext(std::chrono::milliseconds(300)));

    // Nothing is written for nil, for an entry without a key, or for a value that is no
    // property list (the file keeps its content).
    auto keyless = PSSpecifier::emptyGroupSpecifier();
    page_->setPreferenceValue(Id(true), keyless);
    page_->setPreferenceValue(Id(), page_->specifierForID("Quiet"));
    page_->setPreferenceValue(Id(UIColor::whiteColor()), page_->specifierForID("Quiet"));
    EXPECT_EQ(file(), written);
}

TEST_F(BaseSettingsPageTest, PostAndUpdateReadsEveryValueAgain)
{
    EXPECT_TRUE(switchAt(0)->isOn());
    root_.writeFile("/var/mobile/Library/Preferences/com.mossgate.ampwell.plist",
                    R"(<plist version="1.0"><dict><key>loud</key><false/></dict></plist>)");
    page_->postAndUpdate();
    EXPECT_FALSE(switchAt(0)->isOn());
    ASSERT_TRUE(listener_.isListening());
    EXPECT_EQ(listener_.waitForNext(std::chrono::seconds(5)), "com.mossgate.ampwell.settingsChanged");
}

TEST_F(BaseSettingsPageTest, TintsTheBarAndSwitchesButNotTheTitle)
{
    UINavigationBar* bar = window_->navigation()->navigationBar();
    EXPECT_EQ(UIView::tintColor(bar), QLAWSettingsController::tintColour());
    EXPECT_EQ(bar->titleTextColor(), std::nullopt);
    EXPECT_EQ(switchAt(0)->effectiveOnTintColor(), QLAWSettingsController::tintColour());
}

} // namespace
