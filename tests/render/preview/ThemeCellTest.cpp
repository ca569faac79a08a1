#include "pagekit/QtTestSupport.h"

#include "render/preview/QLAWThemeCell.h"
#include "store/ThemeScripts.h"

#include "pagekit/UIViewFrameAdditions.h"
#include "platform/qt/PSSpecifier.h"
#include "platform/qt/UIImageView.h"

#include <QLabel>

#include <gtest/gtest.h>

namespace {

std::shared_ptr<PSSpecifier> themeEntry(const std::string& script)
{
    auto entry = PSSpecifier::preferenceSpecifierNamed("Ring", nullptr, {}, {}, nullptr, PSLinkCell, nullptr);
    entry->setProperty(Id(script), "script_key");
    entry->setProperty(Id(&QLAWThemeCell::staticClass()), "cellClass");
    return entry;
}

TEST(ThemeCell, ShowsTheScriptInWhiteOnBlackBesideAnEmptyPanel)
{
    testApplication();
    QWidget host;
    host.resize(390, 120);
    host.show();
    auto entry = themeEntry(std::string(kBuiltInPreviewScript));
    auto* cell = static_cast<QLAWThemeCell*>(QLAWThemeCell::staticClass().createCell(0, "QLAWThemeCell", entry));
    cell->setParent(&host);
    cell->setGeometry(0, 0, 390, 100);
    cell->show();
    cell->didMoveToSuperview();
    cell->layoutSubviews();
    TestWindow::settle();

    EXPECT_EQ(cell->preferredHeightForWidth(1000), 100.0);
    EXPECT_EQ(cell->settings()->value("color").asColor() ? *cell->settings()->value("color").asColor() : UIColor(),
              UIColor::whiteColor());
    EXPECT_EQ(cell->settings()->value("level").intValue(), 55);
    EXPECT_FALSE(cell->defaultPreview()->lightBatteryView()->image().isNil());
    EXPECT_TRUE(cell->dynamicPreview()->lightBatteryView()->image().isNil());
    EXPECT_TRUE(cell->dynamicPreview()->darkBatteryView()->image().isNil());

    // The two panels stand 36 points apart around the middle, below the title.
    CGRect left = FrameAdditions::frame(cell->dynamicPreview());
    CGRect right = FrameAdditions::frame(cell->defaultPreview());
    EXPECT_EQ(FrameAdditions::right(left), 390 / 2 - 18);
    EXPECT_EQ(FrameAdditions::left(right), 390 / 2 + 18);
    EXPECT_EQ(FrameAdditions::centerY(right), 64);
    EXPECT_EQ(cell->textLabel()->y(), -22);
    EXPECT_EQ(cell->accessoryView(), nullptr);

    // Tapping the row only logs; the row is the entry's target until it goes.
    EXPECT_EQ(entry->action(), "saveTheme");
    EXPECT_EQ(entry->target(), static_cast<NSObject*>(cell));
    EXPECT_TRUE(cell->isSelectable());
    cell->activate();
    delete cell;
    EXPECT_EQ(entry->target(), nullptr);
}

TEST(ThemeCell, AnEntryWithoutAScriptGivesAnEmptyPreview)
{
    testApplication();
    QWidget host;
    host.show();
    auto entry = PSSpecifier::preferenceSpecifierNamed("None", nullptr, {}, {}, nullptr, PSLinkCell, nullptr);
    std::unique_ptr<PSTableCell> cell(QLAWThemeCell::staticClass().createCell(0, "QLAWThemeCell", entry));
    ASSERT_TRUE(cell);
    cell->setParent(&host);
    cell->show();
    TestWindow::settle();
    EXPECT_TRUE(static_cast<QLAWThemeCell*>(cell.get())->defaultPreview()->lightBatteryView()->image().isNil());
}

} // namespace
