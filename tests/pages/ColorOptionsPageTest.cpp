#include "pages/ColorOptionsFixture.h"

#include "platform/core/DarwinNotifyCenter.h"
#include "platform/qt/PSTableCell.h"

#include <QLabel>

#include <gtest/gtest.h>

namespace {

class ColorOptionsPageTest : public ColorOptionsFixture {
protected:
    void press(const std::string& action)
    {
        for (const auto& entry : page_->specifiers())
            if (entry->action() == action) {
                page_->tableViewDidSelectRowAtIndexPath(page_->table(), *page_->table()->indexPathForCell(
                                                                            page_->cachedCellForSpecifier(entry)));
                return;
            }
        ADD_FAILURE() << "no button for " << action;
    }
};

TEST_F(ColorOptionsPageTest, SwappingMainAndBaseKeepsTheBasesAlphaAndMakesTheMainOpaque)
{
    open("<key>darkColor</key><string>#FF0000</string><key>baseDarkColor</key><string>#0000FF55</string>"
         "<key>lightColor</key><string>#123456</string><key>baseLightColor</key><string>#abcdef80</string>");
    DarwinNotificationListener listener("com.mossgate.ampwell.settingsChanged");
    press("swapMainWithBaseDark");
    EXPECT_EQ(stored("darkColor"), "#0000ff");
    EXPECT_EQ(stored("baseDarkColor"), "#ff000055");
    EXPECT_EQ(stored("lightColor"), "#123456");
    ASSERT_TRUE(listener.isListening());
    EXPECT_TRUE(listener.waitForNext(std::chrono::seconds(5)));
    press("swapMainWithBaseLight");
    EXPECT_EQ(stored("lightColor"), "#abcdef");
    EXPECT_EQ(stored("baseLightColor"), "#12345680");
    // The rows show the new values at once.
    for (PSTableCell* cell : page_->table()->visibleCells())
        if (cell->textLabel()->text() == QStringLiteral("Main Color")) {
            EXPECT_EQ(cell->detailTextLabel()->text(), QStringLiteral("#0000FF"));
            break;
        }
}

TEST_F(ColorOptionsPageTest, SwappingTheDefaultsChangesNothingAndMissingValuesActAsShown)
{
    open("");
    press("swapMainWithBaseDark");
    EXPECT_EQ(stored("darkColor"), "#000000");
    EXPECT_EQ(stored("baseDarkColor"), "#00000055");
    press("pullMainToStatus");
    EXPECT_EQ(stored("sbcDark"), "#000000");
    EXPECT_EQ(stored("sbcLight"), "#FFFFFF");
}

TEST_F(ColorOptionsPageTest, SwappingLightAndDarkTwiceRestoresAllFour)
{
    open("<key>darkColor</key><string>#010203</string><key>baseDarkColor</key><string>#04050607</string>"
         "<key>lightColor</key><string>#0A0B0C</string><key>baseLightColor</key><string>#0D0E0F10</string>");
    press("swapLightAndDarkColors");
    EXPECT_EQ(stored("darkColor"), "#0A0B0C");
    EXPECT_EQ(stored("baseDarkColor"), "#0D0E0F10");
    EXPECT_EQ(stored("lightColor"), "#010203");
    EXPECT_EQ(stored("baseLightColor"), "#04050607");
    press("swapLightAndDarkColors");
    EXPECT_EQ(stored("darkColor"), "#010203");
    EXPECT_EQ(stored("baseDarkColor"), "#04050607");
    EXPECT_EQ(stored("lightColor"), "#0A0B0C");
    EXPECT_EQ(stored("baseLightColor"), "#0D0E0F10");
}

TEST_F(ColorOptionsPageTest, PullCopiesTheValuesAsStored)
{
    open("<key>darkColor</key><string>#AABBCC</string><key>lightColor</key><string>ddeeff</string>"
         "<key>baseDarkColor</key><string>#11223344</string><key>baseLightColor</key><string>#55667788</string>");
    press("pullBaseToStatus");
    EXPECT_EQ(stored("sbcDark"), "#11223344");
    EXPECT_EQ(stored("sbcLight"), "#55667788");
    press("pullMainToStatus");
    EXPECT_EQ(stored("sbcDark"), "#AABBCC");
    EXPECT_EQ(stored("sbcLight"), "ddeeff");
}

TEST(ColorOptionsSwap, TakesTheLightPairOnlyWhenTheDarkOneIsAbsent)
{
    PlistDict light{{"baseLightColor", "#00ff0040"}, {"lightColor", "#0000ff"}};
    PlistDict swapped = QLAWSettingsColorOptionsController::swapColorsRetainingAlphas(light);
    EXPECT_EQ(swapped, (PlistDict{{"baseLightColor", "#0000ff40"}, {"lightColor", "#00ff00"}}));
    PlistDict mixed{{"baseDarkColor", "#ffffff"}, {"lightColor", "#000000"}};
    EXPECT_EQ(QLAWSettingsColorOptionsController::swapColorsRetainingAlphas(mixed),
              (PlistDict{{"baseDarkColor", "#000000ff"}, {"lightColor", "#ffffff"}}));
}

} // namespace
