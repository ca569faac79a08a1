#include "pages/ColorOptionsFixture.h"

#include "platform/qt/UIView.h"

#include <QAccessible>
#include <QLabel>

#include <gtest/gtest.h>

namespace {

class ColorCellTest : public ColorOptionsFixture {
protected:
    QString shown(const std::string& key) { return colorRow(key)->detailTextLabel()->text(); }
    QLColorCell* row(const std::string& key) { return colorRow(key); }
};

TEST_F(ColorCellTest, ShowsTheStoredTextInCapitalsElseTheRowsDefault)
{
    open("<key>darkColor</key><string>#12ab34</string>"
         "<key>lightColor</key><string></string>"
         "<key>chargeColor</key><string>not a colour</string>"
         "<key>lowColor</key><integer>42</integer>"
         "<key>lpmColor</key><dict><key>a</key><string>b</string></dict>"
         "<key>sbcDark</key><string>#00ff0080</string>");
    EXPECT_EQ(shown("darkColor"), QStringLiteral("#12AB34"));
    EXPECT_EQ(row("darkColor")->keyColor(), UIColor::colorWithRedGreenBlueAlpha(0x12 / 255.0, 0xab / 255.0, 0x34 / 255.0, 1));
    EXPECT_EQ(shown("lightColor"), QStringLiteral("#FFFFFF"));
    // Text that is no colour is shown as it is and reads as clear black (it is long enough
    // to be taken for eight digits).
    EXPECT_EQ(shown("chargeColor"), QStringLiteral("NOT A COLOUR"));
    EXPECT_EQ(row("chargeColor")->keyColor(), UIColor::colorWithRedGreenBlueAlpha(0, 0, 0, 0));
    // A value that is not text at all counts as none.
    EXPECT_EQ(shown("lowColor"), QStringLiteral("#FF0000"));
    EXPECT_EQ(shown("lpmColor"), QStringLiteral("#FFCC00"));
    // The status-bar rows show their own defaults, without the alpha of a profile's.
    EXPECT_EQ(shown("sbcLight"), QStringLiteral("#FFFFFF"));
    EXPECT_EQ(shown("sbcDark"), QStringLiteral("#00FF0080"));

    QLColorCell* cell = row("darkColor");
    ASSERT_TRUE(cell->colorPreview());
    EXPECT_EQ(cell->accessoryView(), cell->colorPreview());
    EXPECT_EQ(UIView::tag(cell->colorPreview()), QLColorCell::kSwatchTag);
    EXPECT_EQ(cell->specifier()->action(), "openColorPicker");
    QAccessibleInterface* readOut = QAccessible::queryAccessibleInterface(cell);
    EXPECT_EQ(readOut->text(QAccessible::Name), QStringLiteral("Main Color"));
    EXPECT_EQ(readOut->text(QAccessible::Value), QStringLiteral("#12AB34"));
}

TEST_F(ColorCellTest, WithoutAColourPageTheRowOpensNothing)
{
    open("");
    QLColorCell* cell = row("darkColor");
    ASSERT_TRUE(cell);
    QLColorCell::setColorPage(nullptr);
    cell->openColorPicker();
    EXPECT_EQ(window_->top(), page_);
    QLColorCell::setColorPage(page_);
    cell->openColorPicker();
    EXPECT_NE(window_->top(), page_);
}

} // namespace
