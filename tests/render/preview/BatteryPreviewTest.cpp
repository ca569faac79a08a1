#include "pagekit/QtTestSupport.h"
#include "support/ImagePixels.h"

#include "render/QLAWBatteryRenderer.h"
#include "render/preview/QLAWBatteryPreView.h"
#include "store/ThemeScripts.h"

#include "pagekit/UIViewFrameAdditions.h"
#include "platform/qt/UIImageView.h"

#include <gtest/gtest.h>

namespace {

SharedRenderSettings ringSettings(double height, UIColor colour = UIColor::whiteColor())
{
    return std::make_shared<PlistDict>(PlistDict{{"script", std::string(kBuiltInPreviewScript)},
                                                 {"height", height},
                                                 {"level", 55},
                                                 {"charging", false},
                                                 {"low", false},
                                                 {"lpm", false},
                                                 {"color", colour},
                                                 {"baseColor", UIColor::blackColor()}});
}

class BatteryPreview : public ::testing::Test {
protected:
    void SetUp() override
    {
        testApplication();
        UIScreen::mainScreen().setScale(2);
        host_ = std::make_unique<QWidget>();
        host_->resize(300, 200);
        host_->show();
    }
    void TearDown() override { UIScreen::mainScreen().setScale(2); }

    QLAWBatteryPreView* shown(QLAWBatteryPreView* preview)
    {
        preview->show();
        TestWindow::settle();
        return preview;
    }

    std::unique_ptr<QWidget> host_;
};

TEST_F(BatteryPreview, HalvesAndIconsFollowThePanelsSize)
{
    auto* preview = shown(new QLAWBatteryPreView(CGRectMake(5, 5, 110, 44), ringSettings(20), host_.get()));
    EXPECT_EQ(preview->lightView()->geometry(), QRect(0, 0, 55, 44));
    EXPECT_EQ(preview->darkView()->geometry(), QRect(55, 0, 55, 44));
    EXPECT_EQ(preview->lightBatteryView()->geometry(), QRect(0, 9, 55, 26));
    EXPECT_EQ(preview->darkBatteryView()->geometry(), QRect(0, 9, 55, 26));

    preview->resize(200, 80);
    TestWindow::settle();
    EXPECT_EQ(preview->darkView()->geometry(), QRect(100, 0, 100, 80));
    EXPECT_EQ(preview->darkBatteryView()->geometry(), QRect(0, 27, 100, 26));
}

TEST_F(BatteryPreview, ThePanelsHeightWinsAndIsWrittenIntoTheSharedSettings)
{
    SharedRenderSettings settings = ringSettings(20);
    auto* preview = shown(new QLAWBatteryPreView(CGRectMake(0, 0, 110, 44), settings, host_.get()));
    EXPECT_EQ(settings->value("height").doubleValue(), 26.0);
    const UIImage& light = preview->lightBatteryView()->image();
    ASSERT_FALSE(light.isNil());
    // The ring is as tall as the 26 points asked for, drawn at the screen's two pixels a point.
    EXPECT_EQ(light.scale(), 2);
    EXPECT_EQ(light.pixelHeight(), 41);
    EXPECT_TRUE(samePixels(light, preview->darkBatteryView()->image()));

    // Only the dark half has settings of its own: the light half keeps the shared ones.
    preview->setDarkSettings(ringSettings(26, UIColor::colorWithRedGreenBlueAlpha(1, 0, 0, 1)));
    preview->refreshBattery();
    EXPECT_TRUE(samePixels(preview->lightBatteryView()->image(), light));
    EXPECT_FALSE(samePixels(preview->darkBatteryView()->image(), light));
}

TEST_F(BatteryPreview, APanelWithoutSettingsOrWithABrokenScriptShowsNothing)
{
    auto* empty = shown(new QLAWBatteryPreView(CGRectMake(0, 0, 110, 44), host_.get()));
    empty->refreshBattery();
    empty->layoutSubviews();
    EXPECT_TRUE(empty->lightBatteryView()->image().isNil());
    EXPECT_TRUE(empty->darkBatteryView()->image().isNil());

    SharedRenderSettings broken = ringSettings(26);
    broken->set("script", "(c,g,l,m,e){throw new Error('no')}");
    auto* failing = shown(new QLAWBatteryPreView(CGRectMake(0, 50, 110, 44), broken, host_.get()));
    EXPECT_TRUE(failing->lightBatteryView()->image().isNil());
    broken->remove("script");
    failing->refreshBattery();
    EXPECT_TRUE(failing->darkBatteryView()->image().isNil());
}

TEST_F(BatteryPreview, APanelOutOfSightRendersWhenItIsFirstPainted)
{
    auto* hidden = new QLAWBatteryPreView(CGRectMake(0, 0, 110, 44), ringSettings(26), host_.get());
    hidden->hide();
    std::uint64_t before = QLAWBatteryRenderer::evaluationCount();
    hidden->refreshBattery();
    hidden->layoutSubviews();
    EXPECT_EQ(QLAWBatteryRenderer::evaluationCount(), before);
    EXPECT_TRUE(hidden->isRefreshPending());

    shown(hidden)->repaint();
    EXPECT_EQ(QLAWBatteryRenderer::evaluationCount(), before + 2);
    EXPECT_FALSE(hidden->lightBatteryView()->image().isNil());
    // Painting again does not render again.
    hidden->repaint();
    EXPECT_EQ(QLAWBatteryRenderer::evaluationCount(), before + 2);
}

TEST_F(BatteryPreview, IconsAreRenderedAtTheScreensScale)
{
    UIScreen::mainScreen().setScale(3);
    auto* preview = shown(new QLAWBatteryPreView(CGRectMake(0, 0, 110, 40), ringSettings(26), host_.get()));
    preview->setBatteryImageHeight(20);
    preview->refreshBattery();
    const UIImage& light = preview->lightBatteryView()->image();
    ASSERT_FALSE(light.isNil());
    EXPECT_EQ(light.scale(), 3);
    EXPECT_EQ(light.pixelHeight(), 48); // 60 px: two radii of 22.5 and a 3 px line
    EXPECT_EQ(preview->lightBatteryView()->geometry(), QRect(0, 10, 55, 20));
}

} // namespace
