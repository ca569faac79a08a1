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

// Many rows with text rows between them, for the keys that move through a long page.
class LongPage : public PKTintedListController {
    AMPWELL_OBJC_CLASS()
public:
    EntryTable customSpecifiers()
    {
        EntryTable table{{{"cell", "PSGroupCell"}}, {{"cell", "PSStaticTextCell"}, {"label", "Caption"}}};
        for (int i = 0; i < 40; ++i) {
            table.push_back({{"cell", "PSButtonCell"}, {"label", "Row " + std::to_string(i)}, {"action", "press"}});
            if (i % 10 == 9)
                table.push_back({{"cell", "PSStaticTextCell"}, {"label", "Text " + std::to_string(i)}});
        }
        table.push_back({{"cell", "PSStaticTextCell"}, {"label", "Caption of the level"}});
        table.push_back({{"cell", "PSSliderCell"}, {"min", 0}, {"max", 100}, {"get", "value:"}});
        return table;
    }
    Id value(std::shared_ptr<PSSpecifier>) { return Id(10); }
    void press() {}
};

const ObjCClass& LongPage::staticClass()
{
    static const ObjCClass& cls = ClassBuilder<LongPage>("TestLongPage", &PKTintedListController::staticClass())
                                      .method("customSpecifiers", &LongPage::customSpecifiers)
                                      .method("value:", &LongPage::value)
                                      .method("press", &LongPage::press)
                                      .build();
    return cls;
}

QString focusedRowName()
{
    auto* cell = dynamic_cast<PSTableCell*>(QApplication::focusWidget());
    return cell ? cell->accessibleName() : QString();
}

TEST(UITableView, TheKeyboardStopsOnlyOnRowsThatDoSomethingAndJumpsByPage)
{
    testApplication();
    auto* page = new LongPage();
    TestWindow window(page);
    window.window()->activateWindow();
    TestWindow::settle();
    // The page opens on its first row that can be used: the text above it is passed over.
    EXPECT_EQ(focusedRowName(), QStringLiteral("Row 0"));

    auto press = [](Qt::Key key) {
        QTest::keyClick(QApplication::focusWidget(), key);
        TestWindow::settle();
    };
    for (int i = 0; i < 10; ++i)
        press(Qt::Key_Down);
    EXPECT_EQ(focusedRowName(), QStringLiteral("Row 10")); // "Text 9" skipped
    press(Qt::Key_End);
    // The slider is named by the text above it, and the keyboard reaches it.
    EXPECT_EQ(focusedRowName(), QStringLiteral("Caption of the level"));
    press(Qt::Key_Down);
    EXPECT_EQ(focusedRowName(), QStringLiteral("Caption of the level"));
    press(Qt::Key_Home);
    EXPECT_EQ(focusedRowName(), QStringLiteral("Row 0"));
    press(Qt::Key_Up);
    EXPECT_EQ(focusedRowName(), QStringLiteral("Row 0"));

    // A page moves about a screen's height, and the row it lands on is in view.
    press(Qt::Key_PageDown);
    auto* landed = dynamic_cast<PSTableCell*>(QApplication::focusWidget());
    ASSERT_TRUE(landed);
    int rowsPerScreen = page->table()->viewport()->height() / 44;
    int index = landed->accessibleName().mid(4).toInt();
    EXPECT_GE(index, rowsPerScreen - 3);
    EXPECT_LE(index, rowsPerScreen + 1);
    QRect shown = page->table()->viewport()->rect();
    QRect where(landed->mapTo(page->table()->viewport(), QPoint(0, 0)), landed->size());
    EXPECT_TRUE(shown.contains(where));
    press(Qt::Key_PageUp);
    EXPECT_EQ(focusedRowName(), QStringLiteral("Row 0"));
}

TEST(UITableView, AReloadKeepsEachEntrysRowAndAnAlertGivesTheKeyboardBack)
{
    testApplication();
    auto* page = new LongPage();
    TestWindow window(page);
    window.window()->activateWindow();
    std::vector<PSTableCell*> before = page->table()->visibleCells();
    page->reload();
    TestWindow::settle();
    EXPECT_EQ(page->table()->visibleCells(), before);
    // New entries make new rows.
    page->reloadSpecifiers();
    TestWindow::settle();
    EXPECT_NE(page->table()->visibleCells().front(), before.front());

    PSTableCell* row = page->table()->visibleCells()[3];
    row->setFocus();
    auto* alert = new UIAlertView("Question", "", nullptr, std::string("Cancel"), {"Yes", "No"});
    alert->show();
    TestWindow::settle();
    EXPECT_FALSE(row->hasFocus());
    // Return presses the first button that is not Cancel; the row has the keyboard again.
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
    TestWindow::settle();
    EXPECT_EQ(alertTitled("Question"), nullptr);
    EXPECT_TRUE(row->hasFocus());
}

} // namespace
