#include "support/PlistPrinting.h"
#include "support/TemporaryRoot.h"

#include "store/PreferencesStore.h"
#include "store/RenderSettings.h"
#include "store/ThemeScripts.h"

#include "platform/core/ColorParsing.h"
#include "platform/core/PropertyListFile.h"

#include <gtest/gtest.h>

namespace {

class RenderSettings : public ::testing::Test {
protected:
    TemporaryRoot root;

    void SetUp() override
    {
        useSecondarySettings = false;
        root.writeFile(std::string(kThemesFolder) + "/Amp Connect.js", "(connect){}");
        root.writeFile(std::string(kThemesFolder) + "/Other.js", "(other){}");
    }
    void TearDown() override { useSecondarySettings = false; }
    void writePreferences(const PlistDict& dict)
    {
        root.makeFolderFor(kPreferencesFile);
        ASSERT_TRUE(writePropertyListAtomically(preferencesPath(), dict));
    }
    static const PlistDict& light(const PlistDict& settings) { return *settings.find("lightSettings")->asDict(); }
    static const PlistDict& dark(const PlistDict& settings) { return *settings.find("darkSettings")->asDict(); }
    static UIColor colour(const char* hex) { return *ColorParsing::colorFromHexStringTD(hex); }
};

} // namespace

TEST_F(RenderSettings, WithoutAFileTheStylesAreTheDefaults)
{
    PlistDict settings = getBatteryRenderSettings();
    ASSERT_EQ(settings.size(), 2u);
    EXPECT_EQ(light(settings).value("script"), PlistValue("(connect){}"));
    EXPECT_EQ(light(settings).value("height"), PlistValue(26));
    EXPECT_EQ(light(settings).value("level"), PlistValue(55));
    EXPECT_EQ(light(settings).value("flipX"), PlistValue(false));
    // Black on the light background, white on the dark one.
    EXPECT_EQ(light(settings).value("color"), PlistValue(colour("#000000")));
    EXPECT_EQ(light(settings).value("baseColor"), PlistValue(colour("#00000055")));
    EXPECT_EQ(dark(settings).value("color"), PlistValue(colour("#FFFFFF")));
    EXPECT_EQ(dark(settings).value("baseColor"), PlistValue(colour("#FFFFFF55")));
    EXPECT_FALSE(light(settings).contains("share"));
    EXPECT_FALSE(dark(settings).contains("shareAlpha"));
}

TEST_F(RenderSettings, ColoursPairCrosswiseAndStylesShareScriptAndFlips)
{
    writePreferences({{"lightColor", "#ff0000"}, {"darkColor", "#00ff00"}, {"theme", "Other"}, {"flipY", true}});
    PlistDict settings = getBatteryRenderSettings();
    EXPECT_EQ(dark(settings).value("color"), PlistValue(colour("#ff0000")));
    EXPECT_EQ(light(settings).value("color"), PlistValue(colour("#00ff00")));
    for (const char* key : {"script", "flipX", "flipY", "height"})
        EXPECT_EQ(light(settings).value(key), dark(settings).value(key)) << key;
    EXPECT_EQ(light(settings).value("script"), PlistValue("(other){}"));
    EXPECT_EQ(light(settings).value("flipY"), PlistValue(true));
}

TEST_F(RenderSettings, SharedBaseTakesTheMainColourAtTheSharedAlpha)
{
    writePreferences({{"shareMainColorEnabled", true}, {"lightColor", "#ff0000"}, {"baseLightColor", "#0000ff80"}});
    PlistDict settings = getBatteryRenderSettings();
    for (const PlistDict* style : {&light(settings), &dark(settings)}) {
        EXPECT_EQ(style->value("share"), PlistValue(true));
        EXPECT_EQ(style->value("shareAlpha"), PlistValue(0.3f));
        EXPECT_FLOAT_EQ(style->value("baseColor").asColor()->alpha(), 0.3f);
    }
    EXPECT_EQ(dark(settings).value("baseColor"), PlistValue(colour("#ff0000").colorWithAlphaComponent(0.3f)));
}

TEST_F(RenderSettings, SecondaryFlipsReplaceOnlyWhatIsStored)
{
    writePreferences({{"flipX", false}, {"flipY", true}, {"flipXSecondary", true}});
    useSecondarySettings = true;
    PlistDict settings = getBatteryRenderSettings();
    EXPECT_EQ(light(settings).value("flipX"), PlistValue(true));
    EXPECT_EQ(light(settings).value("flipY"), PlistValue(true));
}

TEST_F(RenderSettings, WrongTypesPassThroughAndMissingThemesKeepTheBuiltInScript)
{
    writePreferences({{"flipX", "yes"}, {"theme", "Gone"}, {"lightColor", 5}});
    PlistDict settings = getBatteryRenderSettings();
    EXPECT_EQ(light(settings).value("flipX"), PlistValue("yes"));
    EXPECT_EQ(light(settings).value("script"), PlistValue(std::string(kBuiltInPreviewScript)));
    EXPECT_EQ(dark(settings).value("color"), PlistValue(colour("#FFFFFF")));
}

TEST_F(RenderSettings, ProfilesUseTheirOwnValuesButAColourProfileTheCurrentTheme)
{
    writePreferences({{"theme", "Other"}, {"flipX", true}, {"flipXSecondary", true}});
    useSecondarySettings = true;
    PlistDict colours{{"lightColor", "#123456"}};
    PlistDict settings = getBatteryRenderSettingsForProfile(colours);
    EXPECT_EQ(light(settings).value("script"), PlistValue("(other){}"));
    EXPECT_EQ(light(settings).value("flipX"), PlistValue(false)); // the profile's flips, not the file's
    EXPECT_EQ(dark(settings).value("color"), PlistValue(colour("#123456")));

    PlistDict complete{{"theme", "Amp Connect"}, {"flipY", true}};
    EXPECT_EQ(light(getBatteryRenderSettingsForProfile(complete)).value("script"), PlistValue("(connect){}"));
    EXPECT_EQ(light(getBatteryRenderSettingsForProfile(complete)).value("flipY"), PlistValue(true));
    EXPECT_TRUE(getLightAndDarkColors().empty());
}
