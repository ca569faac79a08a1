#include "pages/ColorOptionsFixture.h"

#include "colour/CPColorPickerView.h"
#include "colour/QLAWColorPickerViewController.h"

#include "platform/core/ColorParsing.h"
#include "platform/qt/UIButton.h"
#include "platform/qt/UIPasteboard.h"
#include "platform/qt/UISlider.h"
#include "platform/qt/UITextField.h"

#include <QAccessible>
#include <QLabel>
#include <QTest>

#include <gtest/gtest.h>

namespace {

UIColor hex(const std::string& text)
{
    return *ColorParsing::colorFromHexStringTD(text);
}

std::string text(const UIColor& color)
{
    return *ColorParsing::hexStringFromColorAlphaHash(color, true, true);
}

class ColorPickerPageTest : public ColorOptionsFixture {
protected:
    void open() { ColorOptionsFixture::open(body_); }
    QLAWColorPickerViewController* openPicker(const std::string& key)
    {
        QLColorCell* row = colorRow(key);
        if (!row)
            return nullptr;
        QTest::keyClick(row, Qt::Key_Return);
        TestWindow::settle();
        return dynamic_cast<QLAWColorPickerViewController*>(window_->top());
    }
    void writePreferences(const std::string& body) { body_ = body; }
    void pressKeys(QKeySequence::StandardKey keys)
    {
        QTest::keySequence(QApplication::focusWidget(), QKeySequence(keys));
        TestWindow::settle();
    }

    std::string body_;
};

TEST_F(ColorPickerPageTest, BackStoresThePickedColourAndCancelOrEscapeDiscardsIt)
{
    writePreferences("<key>darkColor</key><string>#102030</string>");
    open();
    QLAWColorPickerViewController* picker = openPicker("darkColor");
    ASSERT_TRUE(picker);
    EXPECT_EQ(window_->navigation()->navigationBar()->shownTitle(), QStringLiteral("Main Color"));
    EXPECT_EQ(picker->color(), hex("#102030"));
    picker->colorPickerView()->setColor(hex("#ff0000"));
    picker->colorWasChanged();
    ASSERT_TRUE(window_->navigation()->popViewControllerAnimated(false));
    TestWindow::settle();
    EXPECT_EQ(stored("darkColor"), "#ff0000");
    EXPECT_EQ(colorRow("darkColor")->detailTextLabel()->text(), QStringLiteral("#FF0000"));

    picker = openPicker("darkColor");
    picker->setColor(hex("#00ff00"));
    picker->cancelButton()->click();
    TestWindow::settle();
    EXPECT_EQ(window_->top(), page_);
    EXPECT_EQ(stored("darkColor"), "#ff0000");

    // Escape is this page's Cancel; Alt+Left is its Back.
    picker = openPicker("darkColor");
    picker->setColor(hex("#0000ff"));
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Escape);
    TestWindow::settle();
    EXPECT_EQ(window_->top(), page_);
    EXPECT_EQ(stored("darkColor"), "#ff0000");
    picker = openPicker("darkColor");
    picker->setColor(hex("#0000ff"));
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Left, Qt::AltModifier);
    TestWindow::settle();
    EXPECT_EQ(window_->top(), page_);
    EXPECT_EQ(stored("darkColor"), "#0000ff");
}

TEST_F(ColorPickerPageTest, HexTextKeepsAlphaOnlyWhereTheRowAllowsIt)
{
    writePreferences("");
    open();
    QLAWColorPickerViewController* picker = openPicker("baseDarkColor");
    ASSERT_TRUE(picker);
    ASSERT_TRUE(picker->alphaSlider());
    EXPECT_NEAR(picker->alphaSlider()->value(), 0x55 / 255.0, 1e-6);
    EXPECT_EQ(picker->colorPickerView()->headerHeightModifier(), 2.8);
    picker->hexTapped();
    UIAlertView* box = alertTitled("Hex Color");
    ASSERT_TRUE(box);
    EXPECT_EQ(box->numberOfButtons(), 4); // Cancel, Set, Copy, Paste
    EXPECT_EQ(box->textFieldAtIndex(0)->textString(), "#00000055");
    EXPECT_TRUE(box->textFieldAtIndex(0)->hasFocus());
    box->textFieldAtIndex(0)->setTextString("#AbCdEf80");
    QTest::keyClick(box->textFieldAtIndex(0), Qt::Key_Return); // Set
    TestWindow::settle();
    EXPECT_EQ(alertTitled("Hex Color"), nullptr);
    EXPECT_EQ(text(picker->pickedColor()), "#abcdef80");
    window_->navigation()->popViewControllerAnimated(false);
    TestWindow::settle();
    EXPECT_EQ(stored("baseDarkColor"), "#abcdef80");

    // A row without alpha stores six digits, whatever alpha the text had.
    picker = openPicker("lightColor");
    EXPECT_FALSE(picker->alphaSlider());
    picker->hexTapped();
    alertTitled("Hex Color")->textFieldAtIndex(0)->setTextString("11223344");
    alertTitled("Hex Color")->clickButtonAtIndex(1);
    window_->navigation()->popViewControllerAnimated(false);
    TestWindow::settle();
    EXPECT_EQ(stored("lightColor"), "#112233");

    // Text that gives no colour is ignored by Set.
    picker = openPicker("lightColor");
    picker->hexTapped();
    alertTitled("Hex Color")->textFieldAtIndex(0)->setTextString("");
    alertTitled("Hex Color")->clickButtonAtIndex(1);
    EXPECT_EQ(picker->color(), hex("#112233"));
}

TEST_F(ColorPickerPageTest, CopyAndPasteTakeOnlyHexColourText)
{
    writePreferences("<key>lowColor</key><string>#FF0000</string>");
    open();
    QLAWColorPickerViewController* picker = openPicker("lowColor");
    ASSERT_TRUE(picker);
    pressKeys(QKeySequence::Copy);
    EXPECT_EQ(UIPasteboard::generalPasteboard().string(), "#ff0000ff");

    for (const char* bad : {"hello", "#12345", "#1234567", "12 34 56", "#12345g", "#123456789"}) {
        UIPasteboard::generalPasteboard().setString(bad);
        pressKeys(QKeySequence::Paste);
        EXPECT_EQ(picker->color(), hex("#ff0000")) << bad;
    }
    UIPasteboard::generalPasteboard().setString("  12AB34\n");
    pressKeys(QKeySequence::Paste);
    EXPECT_EQ(picker->color(), hex("#12ab34"));
    // The picker holds it as hue, saturation and brightness: the same colour to within a step.
    EXPECT_NEAR(picker->colorPickerView()->color().blue(), 0x34 / 255.0, 0.5 / 255);
    UIPasteboard::generalPasteboard().setString("#00ff0080");
    pressKeys(QKeySequence::Paste);
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Left, Qt::AltModifier);
    TestWindow::settle();
    EXPECT_EQ(stored("lowColor"), "#00ff00");
}

TEST_F(ColorPickerPageTest, ThePreviewShowsThePickedColourInTheRowsHalfAndRole)
{
    writePreferences("<key>shareMainColorEnabled</key><true/><key>sharedColorAlpha</key><real>0.5</real>");
    open();
    // A main colour of the light section, with the base following it at the shared alpha.
    QLAWColorPickerViewController* picker = openPicker("darkColor");
    ASSERT_TRUE(picker);
    EXPECT_FALSE(picker->updateKey());
    EXPECT_EQ(picker->updateForegroundKey(), "lightSettings");
    picker->setColor(hex("#0000ff"));
    EXPECT_EQ(picker->lightSettings()->value("color"), PlistValue(hex("#0000ff")));
    EXPECT_EQ(picker->lightSettings()->value("baseColor"), PlistValue(hex("#0000ff").colorWithAlphaComponent(0.5)));
    EXPECT_EQ(picker->darkSettings()->value("color"), PlistValue(hex("#ffffff")));
    // The level slider moves only the preview.
    picker->percentSlider()->setValue(0.2f);
    picker->percentWasChanged();
    EXPECT_NEAR(picker->darkSettings()->value("level").doubleValue(), 20, 1e-4);
    EXPECT_EQ(QAccessible::queryAccessibleInterface(picker->percentSlider())->text(QAccessible::Value),
              QStringLiteral("20 %"));
    picker->cancelPicking();
    TestWindow::settle();
    EXPECT_EQ(loadPreferences()->find("darkColor"), nullptr);

    // A base colour row still sets only the base while sharing.
    picker = openPicker("baseLightColor");
    EXPECT_EQ(picker->updateKey(), "baseColor");
    EXPECT_EQ(QAccessible::queryAccessibleInterface(picker->alphaSlider())->text(QAccessible::Name),
              QStringLiteral("Opacity"));
    EXPECT_EQ(QAccessible::queryAccessibleInterface(picker->alphaSlider())->text(QAccessible::Value),
              QStringLiteral("33 %"));
    picker->cancelPicking();
    TestWindow::settle();
    // A main colour row with sharing off updates only its own role.
    ColorOptionsFixture::writePreferences("");
    picker = openPicker("chargeColor");
    EXPECT_EQ(picker->updateKey(), "color");
    EXPECT_FALSE(picker->updateForegroundKey());
}

TEST_F(ColorPickerPageTest, AShortScreenHasNoPasteButton)
{
    writePreferences("");
    open();
    UIScreen::mainScreen().setBounds(CGRectMake(0, 0, 390, 480));
    QLAWColorPickerViewController* picker = openPicker("lightColor");
    ASSERT_TRUE(picker);
    picker->hexTapped();
    ASSERT_TRUE(alertTitled("Hex Color"));
    EXPECT_EQ(alertTitled("Hex Color")->numberOfButtons(), 3);
}

} // namespace
