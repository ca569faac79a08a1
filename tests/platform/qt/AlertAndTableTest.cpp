#include "pagekit/QtTestSupport.h"

#include "pagekit/PKTintedListController.h"
#include "platform/qt/PSControlCells.h"
#include "platform/qt/PSTableCell.h"
#include "platform/qt/UISwitch.h"
#include "platform/qt/UITextField.h"

#include <QAccessible>
#include <QKeyEvent>
#include <QTest>

#include <gtest/gtest.h>

namespace {

struct RecordingDelegate : UIAlertViewDelegate {
    std::vector<std::string> calls;
    void alertViewClickedButtonAtIndex(UIAlertView*, int index) override { calls.push_back("clicked " + std::to_string(index)); }
    void alertViewDidDismissWithButtonIndex(UIAlertView* alert, int index) override
    {
        calls.push_back("dismissed " + std::to_string(index) + (alert->isVisibleAlert() ? " visible" : ""));
    }
};

TEST(UIAlertView, NumbersButtonsAndTellsTheDelegateAfterThePress)
{
    TestWindow window(nullptr);
    RecordingDelegate delegate;
    auto* alert = new UIAlertView("Title", "Message", &delegate, std::string("Cancel"), {"One", "Two"});
    alert->setTag(7);
    alert->setAlertViewStyle(UIAlertView::UIAlertViewStylePlainTextInput);
    EXPECT_EQ(alert->cancelButtonIndex(), 0);
    EXPECT_EQ(alert->buttonTitleAtIndex(2), "Two");
    EXPECT_EQ(alert->buttonTitleAtIndex(3), "");
    alert->show();
    ASSERT_EQ(alertTitled("Title"), alert);
    EXPECT_EQ(alert->parentWidget(), window.window());
    ASSERT_TRUE(alert->textFieldAtIndex(0));
    EXPECT_EQ(alert->textFieldAtIndex(1), nullptr);

    // A second alert stands over the first until it goes.
    auto* second = new UIAlertView("Second", "", &delegate, std::string("OK"), {});
    second->show();
    EXPECT_FALSE(alert->isVisible());
    EXPECT_TRUE(second->isVisible());
    second->clickButtonAtIndex(0);
    EXPECT_TRUE(alert->isVisible());
    delegate.calls.clear();

    alert->clickButtonAtIndex(5);
    EXPECT_TRUE(delegate.calls.empty());
    alert->clickButtonAtIndex(2);
    EXPECT_EQ(delegate.calls, (std::vector<std::string>{"clicked 2", "dismissed 2"}));
    EXPECT_EQ(alertTitled("Title"), nullptr);

    auto* plain = new UIAlertView("Only", "", &delegate, std::nullopt, {"Ok"});
    EXPECT_EQ(plain->cancelButtonIndex(), -1);
    EXPECT_EQ(plain->textFieldAtIndex(0), nullptr);
    plain->show();
    // Escape does nothing without a cancel button; Enter presses the only button.
    QTest::keyClick(plain, Qt::Key_Escape);
    EXPECT_TRUE(alertTitled("Only"));
    QTest::keyClick(plain, Qt::Key_Return);
    EXPECT_EQ(delegate.calls.back(), "dismissed 0");
    TestWindow::settle();

    // A delegate that is gone is not called; the alert still goes away.
    struct WidgetDelegate : QWidget, RecordingDelegate {};
    auto* gone = new WidgetDelegate();
    auto* orphan = new UIAlertView("Orphan", "", gone, std::string("OK"), {});
    orphan->show();
    delete gone;
    EXPECT_EQ(orphan->delegate(), nullptr);
    orphan->clickButtonAtIndex(0);
    EXPECT_EQ(alertTitled("Orphan"), nullptr);
    TestWindow::settle();
}

class KeyboardPage : public PKTintedListController {
    AMPWELL_OBJC_CLASS()
public:
    EntryTable customSpecifiers()
    {
        return {
            {{"cell", "PSGroupCell"}, {"label", "HEAD"}},
            {{"cell", "PSSwitchCell"}, {"label", "Switch"}, {"key", "s"}, {"get", "value:"}, {"set", "store:specifier:"}},
            {{"cell", "PSButtonCell"}, {"label", "Button"}, {"action", "press"}},
            {{"cell", "PSSliderCell"}, {"label", "Level"}, {"min", 0}, {"max", 100}, {"showValue", true},
             {"get", "value:"}, {"set", "store:specifier:"}},
        };
    }
    Id value(std::shared_ptr<PSSpecifier> entry) { return entry->cellType() == PSSwitchCell ? Id(false) : Id(50); }
    void store(Id value, std::shared_ptr<PSSpecifier> specifier) { stored.emplace_back(specifier->name(), value); }
    void press() { ++presses; }
    std::vector<std::pair<std::string, Id>> stored;
    int presses = 0;
};

const ObjCClass& KeyboardPage::staticClass()
{
    static const ObjCClass& cls = ClassBuilder<KeyboardPage>("TestKeyboardPage", &PKTintedListController::staticClass())
                                      .method("customSpecifiers", &KeyboardPage::customSpecifiers)
                                      .method("value:", &KeyboardPage::value)
                                      .method("store:specifier:", &KeyboardPage::store)
                                      .method("press", &KeyboardPage::press)
                                      .build();
    return cls;
}

TEST(UITableView, RowsWorkFromTheKeyboardAndReadOutLabelAndValue)
{
    testApplication();
    auto* page = new KeyboardPage();
    TestWindow window(page);
    std::vector<PSTableCell*> cells = page->table()->visibleCells();
    ASSERT_EQ(cells.size(), 3u);
    cells[0]->setFocus();
    TestWindow::settle();

    QTest::keyClick(cells[0], Qt::Key_Space);
    ASSERT_EQ(page->stored.size(), 1u);
    EXPECT_TRUE(page->stored[0].second.boolValue());
    QAccessibleInterface* row = QAccessible::queryAccessibleInterface(cells[0]);
    ASSERT_TRUE(row);
    EXPECT_EQ(row->text(QAccessible::Name), QStringLiteral("Switch"));
    EXPECT_EQ(row->text(QAccessible::Value), QStringLiteral("on"));

    QTest::keyClick(cells[0], Qt::Key_Down);
    EXPECT_TRUE(cells[1]->hasFocus());
    QTest::keyClick(cells[1], Qt::Key_Return);
    EXPECT_EQ(page->presses, 1);

    QTest::keyClick(cells[1], Qt::Key_Down);
    ASSERT_TRUE(cells[2]->hasFocus());
    EXPECT_EQ(QAccessible::queryAccessibleInterface(cells[2])->text(QAccessible::Value), QStringLiteral("50"));
    QTest::keyClick(cells[2], Qt::Key_Right);
    ASSERT_EQ(page->stored.size(), 2u);
    EXPECT_EQ(page->stored[1].first, "Level");
    EXPECT_NEAR(page->stored[1].second.doubleValue(), 51, 0.01);
    QTest::keyClick(cells[2], Qt::Key_Up);
    EXPECT_TRUE(cells[1]->hasFocus());
}

} // namespace
