#include "support/PlistPrinting.h"
#include "store/SettingsCatalogue.h"

#include <gtest/gtest.h>

TEST(SettingsCatalogue, TemplatesAreDisjointAndTogetherHoldFortyNineKeys)
{
    PlistDict colours = colorProfileTemplate();
    PlistDict others = otherProfileTemplate();
    EXPECT_EQ(colours.size(), 18u);
    EXPECT_EQ(others.size(), 31u);
    for (const std::string& key : colours.keys())
        EXPECT_FALSE(others.contains(key)) << key;
    PlistDict merged = colours;
    merged.addEntriesFrom(others);
    EXPECT_EQ(merged.size(), 49u);
}

TEST(SettingsCatalogue, TemplatesComeFreshAndInOrder)
{
    PlistDict first = colorProfileTemplate();
    first.set("lightColor", "#123456");
    EXPECT_EQ(colorProfileTemplate().value("lightColor"), PlistValue("#FFFFFF"));
    EXPECT_EQ(colorProfileTemplate().keys().front(), "lightColor");
    EXPECT_EQ(colorProfileTemplate().keys().back(), "darkSpring");
    EXPECT_EQ(otherProfileTemplate().keys().front(), "theme");
    EXPECT_EQ(otherProfileTemplate().keys().back(), "lowOverC");
}

TEST(SettingsCatalogue, SharedAlphaIsTheSinglePrecisionValue)
{
    PlistValue alpha = colorProfileTemplate().value("sharedColorAlpha");
    ASSERT_EQ(alpha.type(), PlistValue::Type::Real);
    EXPECT_EQ(alpha.doubleValue(), static_cast<double>(0.3f));
    EXPECT_NE(alpha.doubleValue(), 0.3);
}

TEST(SettingsCatalogue, KeyListsDifferFromTheTemplatesOnPurpose)
{
    const auto& colourKeys = colorProfileKeys();
    ASSERT_EQ(colourKeys.size(), 17u);
    PlistDict colours = colorProfileTemplate();
    for (std::string key : {"passMain", "passBase", "passBaseAlpha"}) {
        EXPECT_NE(std::find(colourKeys.begin(), colourKeys.end(), key), colourKeys.end()) << key;
        EXPECT_FALSE(colours.contains(key));
        EXPECT_FALSE(otherProfileTemplate().contains(key));
    }
    for (std::string key : {"useSBC", "sbcLight", "sbcDark", "darkSpring"}) {
        EXPECT_EQ(std::find(colourKeys.begin(), colourKeys.end(), key), colourKeys.end()) << key;
        EXPECT_TRUE(colours.contains(key));
    }
    std::vector<std::string> firstNine(otherProfileTemplate().keys());
    firstNine.resize(9);
    EXPECT_EQ(otherProfileKeys(), firstNine);
}

TEST(SettingsCatalogue, OnlyTwoSwitchesDefaultToOn)
{
    PlistDict all = colorProfileTemplate();
    all.addEntriesFrom(otherProfileTemplate());
    std::vector<std::string> on;
    for (const auto& entry : all)
        if (entry.value.type() == PlistValue::Type::Boolean && entry.value.boolValue())
            on.push_back(entry.key);
    EXPECT_EQ(on, (std::vector<std::string>{"useSecondTheme", "hideSecPerc"}));
}

TEST(SettingsCatalogue, FlipKeysKeepTheirCrosswiseOrder)
{
    std::vector<std::string> keys = otherProfileTemplate().keys();
    auto at = [&](const char* key) { return std::find(keys.begin(), keys.end(), key) - keys.begin(); };
    EXPECT_LT(at("flipY"), at("flipX"));
    EXPECT_LT(at("flipYSecondary"), at("flipXSecondary"));
    EXPECT_LT(at("flipYCharge"), at("flipXCharge"));
}

TEST(SettingsCatalogue, EveryKeyIsDeclaredOnceWithADefaultOfItsType)
{
    std::set<std::string> seen;
    for (const SettingDeclaration& setting : settingsCatalogue()) {
        EXPECT_TRUE(seen.insert(setting.key).second) << setting.key;
        switch (setting.type) {
        case SettingType::Colour:
        case SettingType::ThemeName: EXPECT_TRUE(setting.defaultValue.asString()) << setting.key; break;
        case SettingType::Boolean: EXPECT_EQ(setting.defaultValue.type(), PlistValue::Type::Boolean); break;
        case SettingType::Integer: EXPECT_EQ(setting.defaultValue.type(), PlistValue::Type::Integer); break;
        case SettingType::Real: EXPECT_EQ(setting.defaultValue.type(), PlistValue::Type::Real); break;
        }
    }
    EXPECT_EQ(findSetting("customLevel")->defaultValue, PlistValue(75));
    EXPECT_EQ(findSetting("passMain"), nullptr);
}
