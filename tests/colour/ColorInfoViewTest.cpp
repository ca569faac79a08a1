#include "ColourTestSupport.h"

#include "colour/CPColorInfoView.h"

#include <gtest/gtest.h>

#include <limits>

namespace {

TEST(ColorInfoView, HexTextTruncatesEachChannel)
{
    EXPECT_EQ(CPColorInfoView::hexTextForColor(UIColor::colorWithRedGreenBlueAlpha(1, 0.5, 0, 1)), "#ff7f00");
    EXPECT_EQ(CPColorInfoView::hexTextForColor(UIColor::colorWithRedGreenBlueAlpha(0.999, 0.004, 0.0039, 0.2)),
              "#fe0100");
    EXPECT_EQ(CPColorInfoView::hexTextForColor(UIColor::blackColor()), "#000000");
    EXPECT_EQ(CPColorInfoView::hexTextForColor(UIColor::colorWithWhiteAlpha(1, 1)), "#ffffff");
    const double nan = std::numeric_limits<double>::quiet_NaN();
    EXPECT_EQ(CPColorInfoView::hexTextForColor(UIColor::colorWithRedGreenBlueAlpha(2, -1, nan, 1)), "#ff0000");
}

TEST(ColorInfoView, ShowsAndReadsOutTheHexText)
{
    colourTestApplication();
    CPColorInfoView info;
    info.setColor(UIColor::colorWithRedGreenBlueAlpha(0.2, 0.4, 0.6, 1));
    EXPECT_EQ(info.text(), "#336699");
    EXPECT_EQ(info.accessibleDescription(), "#336699");
    info.resize(66, 84);
    info.repaint();
}

} // namespace
