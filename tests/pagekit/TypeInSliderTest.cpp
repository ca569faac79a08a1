#include "QtTestSupport.h"

#include "pagekit/PKTintedListController.h"
#include "pagekit/PKTypeInSliderTableCell.h"

#include "platform/core/DarwinNotifyCenter.h"
#include "platform/core/PropertyListFile.h"
#include "platform/core/SystemLog.h"
#include "platform/qt/UIBarButtonItem.h"
#include "platform/qt/UISlider.h"
#include "platform/qt/UITextField.h"
#include "support/TemporaryRoot.h"

#include <gtest/gtest.h>

namespace {

constexpr const char* kPreferences = "/var/mobile/Library/Preferences/com.mossgate.ampwell.plist";

class SliderPage : public PKTintedListController {
    AMPWELL_OBJC_CLASS()
public:
    static inline double minimum = 0;
    static inline double maximum = 100;
    EntryTable customSpecifiers()
    {
        return {
            {{"cell", "PSGroupCell"}},
            {{"cell", "PSSliderCell"}, {"label", "Level"}, {"key", "lowLevel"}, {"default", 20}, {"min", minimum},
             {"max", maximum}, {"showValue", true}, {"defaults", "com.mossgate.ampwell.plist"},
             {"PostNotification", "com.mossgate.ampwell.settingsChanged"}, {"cellClass", "PKTypeInSliderTableCell"}},
        };
    }
};

const ObjCClass& SliderPage::staticClass()
{
    static const ObjCClass& cls = ClassBuilder<SliderPage>("TestSliderPage", &PKTintedListController::staticClass())
                                      .method("customSpecifiers", &SliderPage::customSpecifiers)
                                      .build();
    return cls;
}

class TypeInSliderTest : public ::testing::Test {
protected:
    void SetUp() override
    {
        testApplication();
        root_.makeFolder("/var/mobile/Library/Preferences");
    }
    void open(double minimum, double maximum)
    {
        SliderPage::minimum = minimum;
        SliderPage::maximum = maximum;
        page_ = new SliderPage();
        window_ = std::make_unique<TestWindow>(page_);
        cell_ = dynamic_cast<PKTypeInSliderTableCell*>(page_->table()->visibleCells().at(0));
        ASSERT_TRUE(cell_);
    }
    UIAlertView* popup() { return alertTitled("Level"); }
    std::vector<std::string> toolbarTitles()
    {
        std::vector<std::string> titles;
        if (auto* toolbar = dynamic_cast<UIToolbar*>(popup()->textFieldAtIndex(0)->inputAccessoryView()))
            for (UIBarButtonItem* item : toolbar->items())
                titles.push_back(item->title());
        return titles;
    }
    void enter(const std::string& text)
    {
        popup()->textFieldAtIndex(0)->setTextString(text);
        popup()->clickButtonAtIndex(1);
        TestWindow::settle();
    }
    PlistValue stored()
    {
        std::optional<PlistDict> file = readPropertyListDictionary(root_.path(kPreferences));
        return file ? file->value("lowLevel") : PlistValue();
    }

    TemporaryRoot root_;
    SliderPage* page_ = nullptr;
    std::unique_ptr<TestWindow> window_;
    PKTypeInSliderTableCell* cell_ = nullptr;
};

TEST_F(TypeInSliderTest, AcceptsValuesInRangeAndWritesThemWithANotification)
{
    open(0, 95);
    DarwinNotificationListener listener("com.mossgate.ampwell.settingsChanged");
    EXPECT_EQ(cell_->slider()->value(), 20);
    cell_->presentPopup();
    ASSERT_TRUE(popup());
    EXPECT_EQ(popup()->message(), "Please enter a value between 0.0 and 95.0.");
    EXPECT_EQ(popup()->tag(), PKTypeInSliderTableCell::kPopupTag);
    EXPECT_EQ(popup()->textFieldAtIndex(0)->keyboardType(), UITextField::UIKeyboardTypeNumberPad);
    EXPECT_TRUE(toolbarTitles().empty());

    enter("95");
    EXPECT_EQ(popup(), nullptr);
    EXPECT_FLOAT_EQ(cell_->slider()->value(), 95);
    EXPECT_DOUBLE_EQ(stored().doubleValue(), 95);
    ASSERT_TRUE(listener.isListening());
    EXPECT_EQ(listener.waitForNext(std::chrono::seconds(5)), "com.mossgate.ampwell.settingsChanged");

    // Text that is no number reads as 0, which is in range.
    cell_->presentPopup();
    enter("abc");
    EXPECT_DOUBLE_EQ(stored().doubleValue(), 0);
}

TEST_F(TypeInSliderTest, OutOfRangeBringsTheErrorThenThePopupBack)
{
    open(0, 95);
    cell_->presentPopup();
    enter("96");
    UIAlertView* error = alertTitled("Error");
    ASSERT_TRUE(error);
    EXPECT_EQ(error->tag(), PKTypeInSliderTableCell::kErrorAlertTag);
    EXPECT_EQ(error->message(), "Ensure you enter a valid value.");
    EXPECT_EQ(error->buttonTitleAtIndex(0), "OK");
    EXPECT_TRUE(stored().isNil());

    error->clickButtonAtIndex(0);
    TestWindow::settle();
    ASSERT_TRUE(popup());
    enter("100.5");
    EXPECT_TRUE(alertTitled("Error"));
    alertTitled("Error")->clickButtonAtIndex(0);
    TestWindow::settle();

    // Cancel ends the loop and writes nothing.
    popup()->clickButtonAtIndex(0);
    TestWindow::settle();
    EXPECT_EQ(popup(), nullptr);
    EXPECT_TRUE(stored().isNil());
}

TEST_F(TypeInSliderTest, ToolbarOffersMinusAndPointWhereTheyMatter)
{
    open(-5, 5);
    cell_->presentPopup();
    EXPECT_EQ(toolbarTitles(), (std::vector<std::string>{"Negate", "Point"}));
    UITextField* field = popup()->textFieldAtIndex(0);
    field->setTextString("3");
    cell_->typeMinus();
    EXPECT_EQ(field->textString(), "-3");
    cell_->typeMinus();
    EXPECT_EQ(field->textString(), "3");
    cell_->typePoint();
    cell_->typePoint();
    EXPECT_EQ(field->textString(), "3..");
    enter("-0.5");
    EXPECT_DOUBLE_EQ(stored().doubleValue(), -0.5);
}

TEST_F(TypeInSliderTest, SmallRangesGetAPointAndTabletsNoToolbar)
{
    open(0, 1);
    cell_->presentPopup();
    EXPECT_EQ(toolbarTitles(), std::vector<std::string>{"Point"});
    enter("0.3");
    EXPECT_NEAR(stored().doubleValue(), 0.3, 1e-6);

    UIDevice::currentDevice().setUserInterfaceIdiom(UIUserInterfaceIdiomPad);
    cell_->presentPopup();
    EXPECT_TRUE(toolbarTitles().empty());
    UIDevice::currentDevice().setUserInterfaceIdiom(UIUserInterfaceIdiomPhone);
}

TEST_F(TypeInSliderTest, AWriteThatCannotHappenIsLogged)
{
    open(0, 100);
    std::vector<std::string> lines;
    setSystemLogObserver([&](const std::string& line) { lines.push_back(line); });
    auto entry = PSSpecifier::emptyGroupSpecifier();
    entry->setProperty(Id("../escape.plist"), "defaults");
    entry->setProperty(Id("k"), "key");
    cell_->setPreferenceValue(Id(1), entry);
    setSystemLogObserver(nullptr);
    EXPECT_NE(std::find(lines.begin(), lines.end(), "AMPW: FAILED WRITING SETTINGS"), lines.end());
}

} // namespace
