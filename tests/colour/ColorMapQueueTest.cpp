#include "ColourTestSupport.h"

#include "colour/CPColorMapView.h"

#include "platform/core/UIScreen.h"

#include <QPointer>
#include <QSignalSpy>

#include <gtest/gtest.h>

#include <limits>

namespace {

class ColorMapQueue : public testing::Test {
protected:
    void SetUp() override
    {
        savedScale_ = UIScreen::mainScreen().scale();
        UIScreen::mainScreen().setScale(2);
    }
    void TearDown() override { UIScreen::mainScreen().setScale(savedScale_); }

    ShownWindow window_;

private:
    double savedScale_ = 2;
};

TEST_F(ColorMapQueue, NothingIsDrawnUntilTheMapCanBeMade)
{
    auto* map = new CPColorMapView(CGRectMake(0, 0, 120, 80), 1.0, window_.get());
    EXPECT_TRUE(map->isImageQueueSuspended()); // not yet shown, no tile size
    map->show();
    QCoreApplication::processEvents();
    EXPECT_FALSE(map->isAbleToCreateColorMap()); // still no tile size
    EXPECT_TRUE(map->isImageQueueSuspended());
    EXPECT_FALSE(map->isMakingColorMap());

    map->setTileSize(4);
    EXPECT_TRUE(map->isAbleToCreateColorMap());
    EXPECT_FALSE(map->isImageQueueSuspended());
    ASSERT_TRUE(waitUntil([&] { return !map->colorMapImage().isNil(); }));
    EXPECT_EQ(map->colorMapImage().size(), (CGSize{120, 80}));
    EXPECT_EQ(map->colorMapImage().scale(), 2);
    EXPECT_EQ(map->backgroundImage().size(), (CGSize{120, 80}));
}

TEST_F(ColorMapQueue, ABrightnessChangeIsTheLayersOpacityAndNeverARedraw)
{
    auto* map = new CPColorMapView(CGRectMake(0, 0, 120, 80), 1.0, window_.get());
    map->setTileSize(4);
    map->show();
    ASSERT_TRUE(waitUntil([&] { return !map->colorMapImage().isNil(); }));
    cairo_surface_t* drawn = map->colorMapImage().CGImage();

    QSignalSpy redrawn(map, &CPColorMapView::colorMapImageChanged);
    for (double brightness : {0.0, 0.3, 1.0, 0.65}) {
        map->setBrightness(brightness);
        EXPECT_DOUBLE_EQ(map->colorMapLayerOpacity(), brightness);
    }
    map->repaint();
    QCoreApplication::processEvents();
    EXPECT_FALSE(map->isMakingColorMap());
    EXPECT_EQ(map->colorMapImage().CGImage(), drawn);
    EXPECT_EQ(redrawn.count(), 0);

    map->setBrightness(7);
    EXPECT_DOUBLE_EQ(map->brightness(), 1);
    map->setBrightness(std::numeric_limits<double>::quiet_NaN());
    EXPECT_DOUBLE_EQ(map->brightness(), 1);
}

TEST_F(ColorMapQueue, ANewSizeOrLimitGetsNewImagesOnce)
{
    auto* map = new CPColorMapView(CGRectMake(0, 0, 120, 80), 1.0, window_.get());
    map->setTileSize(4);
    map->show();
    ASSERT_TRUE(waitUntil([&] { return !map->colorMapImage().isNil(); }));

    // Sizes in quick succession: only the last one has to be drawn in the end.
    map->resize(100, 60);
    map->resize(200, 160);
    ASSERT_TRUE(waitUntil([&] { return map->colorMapImage().size() == CGSize{200, 160} && !map->isMakingColorMap(); }));
    EXPECT_EQ(map->backgroundImage().size(), (CGSize{200, 160}));

    map->setSaturationUpperLimit(0.5);
    ASSERT_TRUE(waitUntil([&] { return !map->isMakingColorMap(); }));
    // The bottom row is now half white over its hue, not white.
    Pixel bottomLeft = pixelAt(map->colorMapImage(), 0, map->colorMapImage().pixelHeight() - 1);
    EXPECT_NEAR(bottomLeft.green, 128, 2);
}

TEST_F(ColorMapQueue, AMapDeletedWhileItsImagesAreDrawnIsNotCalledBack)
{
    UIScreen::mainScreen().setScale(3);
    for (int i = 0; i < 8; ++i) {
        QPointer<CPColorMapView> map = new CPColorMapView(CGRectMake(0, 0, 390, 600), 1.0, window_.get());
        map->setTileSize(1);
        map->show();
        QCoreApplication::processEvents();
        if (i % 2)
            map->deleteLater();
        else
            delete map.data();
        QCoreApplication::processEvents();
    }
    // Give any stray delivery time to arrive.
    QElapsedTimer timer;
    timer.start();
    while (timer.elapsed() < 300)
        QCoreApplication::processEvents(QEventLoop::AllEvents, 10);
    SUCCEED();
}

TEST_F(ColorMapQueue, AMapTooSmallForOneTileShowsNoImage)
{
    auto* map = new CPColorMapView(CGRectMake(0, 0, 3, 80), 1.0, window_.get());
    map->setTileSize(4);
    map->show();
    ASSERT_TRUE(waitUntil([&] { return !map->isMakingColorMap(); }));
    EXPECT_TRUE(map->colorMapImage().isNil());
    map->repaint();
}

} // namespace
