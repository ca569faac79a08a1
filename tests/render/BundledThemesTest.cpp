// Every theme we ship draws something in every state a status bar can ask of it.
#include "support/ImagePixels.h"

#include "render/QLAWBatteryRenderer.h"
#include "store/EmbeddedFile.h"

#include "platform/core/UIScreen.h"

#include <gtest/gtest.h>

namespace {

bool hasInk(const UIImage& image)
{
    for (int y = 0; y < image.pixelHeight(); ++y) {
        for (int x = 0; x < image.pixelWidth(); ++x) {
            if (pixel(image, x, y) >> 24)
                return true;
        }
    }
    return false;
}

struct State {
    int level;
    bool charging, low, lowPowerMode;
};

TEST(BundledThemes, DrawInEveryStateSizeScaleAndBackground)
{
    const State states[] = {{0, false, true, false}, {5, false, true, false}, {20, false, false, true},
                            {55, false, false, false}, {60, true, false, false}, {100, false, false, false},
                            {100, true, false, false}};
    ASSERT_GE(bundledThemes().size(), 8u);
    for (const EmbeddedFile& theme : bundledThemes()) {
        for (double scale : {2.0, 3.0}) {
            UIScreen::mainScreen().setScale(scale);
            for (double height : {20.0, 26.0}) {
                for (const State& s : states) {
                    for (bool dark : {false, true}) {
                        PlistDict settings{{"script", std::string(theme.contents)}, {"height", height}, {"level", s.level},
                                           {"charging", s.charging}, {"low", s.low}, {"lpm", s.lowPowerMode},
                                           {"color", dark ? UIColor::whiteColor() : UIColor::blackColor()},
                                           {"baseColor", UIColor::colorWithRedGreenBlueAlpha(dark, dark, dark, 0x55 / 255.0)}};
                        std::string failure;
                        UIImage image = QLAWBatteryRenderer::renderBatteryImageWithSettingsForStyle(settings, 0, &failure);
                        ASSERT_FALSE(image.isNil()) << theme.name << " at level " << s.level << ", " << height << " pt, x"
                                                    << scale << (dark ? ", dark" : ", light") << ": " << failure;
                        EXPECT_TRUE(hasInk(image)) << theme.name << " draws nothing at level " << s.level;
                        EXPECT_EQ(image.scale(), scale);
                    }
                }
            }
        }
    }
    UIScreen::mainScreen().setScale(2);
}

} // namespace
