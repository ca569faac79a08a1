#include "pagekit/QtTestSupport.h"

#include "pages/QLAWSettingsOptionsController.h"
#include "store/PreferencesStore.h"
#include "support/TemporaryRoot.h"

#include "pagekit/PKTypeInSliderTableCell.h"
#include "platform/qt/PSControlCells.h"
#include "platform/qt/UISlider.h"
#include "platform/qt/UISwitch.h"
#include "platform/qt/UITextField.h"

#include <QAccessible>
#include <QLabel>
#include <QTest>

#include <gtest/gtest.h>

namespace {

class OtherOptionsPageTest : public ::testing::Test {
protected:
    void SetUp() override
    {
        testApplication();
        NSBundle::setPreferredLanguages({"en"});
        root_.makeFolder("/var/mobile/Library/Preferences");
        page_ = new QLAWSettingsOptionsController();
        window_ = std::make_unique<TestWindow>(page_);
    }
    void TearDown() override
    {
        window_.reset();
        NSBundle::setPreferredLanguages({});
    }
    PSTableCell* cellForKey(const std::string& key)
    {
        for (const auto& entry : page_->specifiers())
            if (const std::string* stored = entry->propertyForKey("key").string(); stored && *stored == key)
                return page_->cachedCellForSpecifier(entry);
        return nullptr;
    }

    TemporaryRoot root_;
    QLAWSettingsOptionsController* page_ = nullptr;
    std::unique_ptr<TestWindow> window_;
};

TEST_F(OtherOptionsPageTest, AFreshInstallationShowsTheTablesDefaults)
{
    EXPECT_EQ(window_->navigation()->navigationBar()->shownTitle(), QStringLiteral("Other Options"));
    EXPECT_EQ(page_->specifiers().size(), 31u);
    std::vector<std::string> on;
    for (const auto& entry : page_->specifiers())
        if (auto* cell = dynamic_cast<PSSwitchTableCell*>(page_->cachedCellForSpecifier(entry)); cell && cell->switchControl()->isOn())
            on.push_back(*entry->propertyForKey("key").string());
    EXPECT_EQ(on, (std::vector<std::string>{"colorBolt", "hideSecPerc"}));
    for (const auto& [key, value] : std::vector<std::pair<std::string, float>>{
             {"showPerc", 100}, {"hidePercLev", 0}, {"lowLevel", 20}, {"customLevel", 75}}) {
        auto* slider = dynamic_cast<PKTypeInSliderTableCell*>(cellForKey(key));
        ASSERT_TRUE(slider) << key;
        EXPECT_EQ(slider->slider()->value(), value) << key;
    }
    // The base-colour percentage switch shares its caption with the bolt's.
    EXPECT_EQ(cellForKey("basePercent")->textLabel()->text(), cellForKey("baseBolt")->textLabel()->text());
    EXPECT_FALSE(loadPreferences());
}

TEST_F(OtherOptionsPageTest, SwitchesAndSlidersStoreTheirKeys)
{
    window_->window()->activateWindow();
    TestWindow::settle();
    // The first switch has the keyboard; Space turns the charging bolt on.
    auto* bolt = dynamic_cast<PSSwitchTableCell*>(QApplication::focusWidget());
    ASSERT_TRUE(bolt);
    QTest::keyClick(bolt, Qt::Key_Space);
    EXPECT_EQ(loadPreferences()->value("chargeSym"), PlistValue(true));

    auto* low = dynamic_cast<PKTypeInSliderTableCell*>(cellForKey("lowLevel"));
    ASSERT_TRUE(low);
    EXPECT_EQ(low->slider()->maximumValue(), 95);
    // Read out by the text row that captions it.
    EXPECT_EQ(QAccessible::queryAccessibleInterface(low)->text(QAccessible::Name), QStringLiteral("Low battery at or below:"));
    low->setFocus();
    QTest::keyClick(low, Qt::Key_End); // moves the keyboard, not the slider
    EXPECT_EQ(low->slider()->value(), 20);
    low->presentPopup();
    EXPECT_EQ(low->alert()->message(), "Please enter a value between 0.0 and 95.0.");
    low->alert()->textFieldAtIndex(0)->setTextString("96");
    low->alert()->clickButtonAtIndex(1);
    TestWindow::settle();
    EXPECT_TRUE(alertTitled("Error"));
    EXPECT_FALSE(loadPreferences()->find("lowLevel"));
}

} // namespace
