#include "support/ImagePixels.h"
#include "support/PlistPrinting.h"

#include "render/QLAWBatteryRenderer.h"
#include "store/ThemeScripts.h"

#include "platform/core/Base64.h"
#include "platform/core/UIImageFlipping.h"
#include "platform/core/UIScreen.h"
#include "platform/web/UIWebView.h"

#include <gtest/gtest.h>

#include <cstring>

namespace {

class BatteryRenderer : public ::testing::Test {
protected:
    void SetUp() override { UIScreen::mainScreen().setScale(2); }
    void TearDown() override
    {
        UIScreen::mainScreen().setScale(2);
        UIWebView::setExecutionTimeLimit(std::chrono::milliseconds(500));
    }

    static PlistDict settingsFor(std::string script)
    {
        return PlistDict{{"script", std::move(script)}, {"height", 26}, {"level", 55}, {"charging", false},
                         {"low", false}, {"lpm", false}, {"color", UIColor::whiteColor()},
                         {"baseColor", UIColor::colorWithRedGreenBlueAlpha(0, 0, 0, 0.456)}};
    }
    // A script that reports the arguments it was given, drawn as nothing but a 1x1 canvas
    // whose size carries nothing; the arguments come back through the failure text instead.
    static std::string failureOf(const PlistDict& settings)
    {
        std::string failure;
        EXPECT_TRUE(QLAWBatteryRenderer::renderBatteryImageWithSettingsForStyle(settings, 0, &failure).isNil());
        return failure;
    }
};



} // namespace

TEST_F(BatteryRenderer, TheBuiltInScriptDrawsARingSizedByThePixelHeight)
{
    UIImage image = QLAWBatteryRenderer::renderBatteryImageWithSettingsForStyle(
        settingsFor(std::string(kBuiltInPreviewScript)), 0);
    ASSERT_FALSE(image.isNil());
    // 52 px high: radius round(39)/2 = 19.5, line 2, side 41.
    EXPECT_EQ(image.pixelWidth(), 41);
    EXPECT_EQ(image.pixelHeight(), 41);
    EXPECT_EQ(image.scale(), 2);
    EXPECT_NE(pixel(image, 20, 1) >> 24, 0u);  // the arc passes through the top
    EXPECT_EQ(pixel(image, 1, 1) >> 24, 0u);   // the corner stays clear

    UIScreen::mainScreen().setScale(3);
    PlistDict small = settingsFor(std::string(kBuiltInPreviewScript));
    small.set("height", 20);
    UIImage threeX = QLAWBatteryRenderer::renderBatteryImageWithSettingsForStyle(small, 1);
    ASSERT_FALSE(threeX.isNil());
    EXPECT_EQ(threeX.scale(), 3); // 60 px: side 2 * 22.5 + 3 = 48
    EXPECT_EQ(threeX.pixelHeight(), 48);
}

TEST_F(BatteryRenderer, ArgumentsReachTheScriptInTheRightForm)
{
    std::string shortForm = "(c,g,l,m,e){throw new Error([c,g,l,m,e,arguments.length].join('|'))}";
    EXPECT_NE(failureOf(settingsFor(shortForm)).find("52|55|false|false|255,255,255|5"), std::string::npos);

    std::string longForm = "(c,g,l,m,p,e,b){throw new Error([c,p,e,b,arguments.length].join('|'))}";
    PlistDict settings = settingsFor(longForm);
    settings.set("lpm", true);
    settings.set("color", UIColor::colorWithRedGreenBlueAlpha(0.5, 0.999, 0, 1));
    EXPECT_NE(failureOf(settings).find("52|true|127,254,0|0,0,0,0.46|7"), std::string::npos);

    std::string seven = "(a,b,c,d,e,f,g){throw new Error(String(g))}";
    EXPECT_NE(failureOf(settingsFor(seven)).find("0,0,0,0.46"), std::string::npos);
}

TEST_F(BatteryRenderer, ScriptsThatGiveNoImageAreNil)
{
    UIWebView::setExecutionTimeLimit(std::chrono::milliseconds(100));
    for (std::string body : {
             "return 'data:image/png;base64,!!!!'",
             "return 'no marker here'",
             "return 'data:image/png;base64,' + btoa('not a png at all')",
             "return 'data:image/png;base64,' + 'A'.repeat(8000000)",
             "return 42",
             "throw new TypeError('broken')",
             "while (true) {}",
             "return document.createElement('canvas').toDataURL()", // 300 x 150 of nothing: still an image
         }) {
        std::string script = "(c,g,l,m,e){" + body + "}";
        std::string failure;
        UIImage image = QLAWBatteryRenderer::renderBatteryImageWithSettingsForStyle(settingsFor(script), 0, &failure);
        if (body.find("toDataURL") != std::string::npos) {
            EXPECT_FALSE(image.isNil());
            continue;
        }
        EXPECT_TRUE(image.isNil()) << body;
        EXPECT_FALSE(failure.empty()) << body;
    }
    EXPECT_TRUE(QLAWBatteryRenderer::renderBatteryImageWithSettingsForStyle(settingsFor("no parameters"), 0).isNil());
    EXPECT_TRUE(QLAWBatteryRenderer::renderBatteryImageWithSettingsForStyle(PlistDict{}, 0).isNil());
    // After all that, a good script still renders.
    EXPECT_FALSE(QLAWBatteryRenderer::renderBatteryImageWithSettingsForStyle(
                     settingsFor(std::string(kBuiltInPreviewScript)), 0)
                     .isNil());
}

TEST_F(BatteryRenderer, AScriptThatRanPastALimitIsNotRunAgainButOthersAre)
{
    UIWebView::setExecutionTimeLimit(std::chrono::milliseconds(50));
    PlistDict looping = settingsFor("(c,g,l,m,e){for (;;) {}}");
    PlistDict throwing = settingsFor("(c,g,l,m,e){throw new Error('again')}");
    std::uint64_t before = QLAWBatteryRenderer::evaluationCount();
    EXPECT_NE(failureOf(looping).find("stopped"), std::string::npos);
    EXPECT_NE(failureOf(throwing).find("again"), std::string::npos);
    EXPECT_EQ(QLAWBatteryRenderer::evaluationCount(), before + 2);

    // Another height or colour is the same script: skipped at once.
    looping.set("height", 20);
    looping.set("color", UIColor::blackColor());
    EXPECT_NE(failureOf(looping).find("not run again"), std::string::npos);
    EXPECT_NE(failureOf(looping).find("not run again"), std::string::npos);
    // A script that merely failed is tried afresh every time.
    EXPECT_NE(failureOf(throwing).find("again"), std::string::npos);
    EXPECT_EQ(QLAWBatteryRenderer::evaluationCount(), before + 3);
    EXPECT_FALSE(QLAWBatteryRenderer::renderBatteryImageWithSettingsForStyle(
                     settingsFor(std::string(kBuiltInPreviewScript)), 0)
                     .isNil());
}

TEST_F(BatteryRenderer, BothFlipsAreOneHalfTurnAndTheStyleChangesNothing)
{
    PlistDict settings = settingsFor(std::string(kBuiltInPreviewScript));
    UIImage plain = QLAWBatteryRenderer::renderBatteryImageWithSettingsForStyle(settings, 0);
    ASSERT_FALSE(plain.isNil());
    EXPECT_TRUE(samePixels(plain, QLAWBatteryRenderer::renderBatteryImageWithSettingsForStyle(settings, 1)));
    settings.set("flipX", true);
    settings.set("flipY", true);
    EXPECT_TRUE(samePixels(QLAWBatteryRenderer::renderBatteryImageWithSettingsForStyle(settings, 0),
                           flippedImageByAxis(plain, 2)));
    settings.set("flipY", false);
    EXPECT_TRUE(samePixels(QLAWBatteryRenderer::renderBatteryImageWithSettingsForStyle(settings, 0),
                           flippedImageByAxis(plain, 0)));
}

TEST(BatteryRendererInertHelpers, AnswerTheSameForAnyScript)
{
    EXPECT_TRUE(QLAWBatteryRenderer::isValidScript("nonsense"));
    EXPECT_EQ(QLAWBatteryRenderer::numberOfParametersInScript("(a,b,c){}"), 0);
}
