#include "SettingsCatalogue.h"

#include <algorithm>

namespace {

SettingDeclaration colour(const char* key, const char* value, bool withAlpha = false)
{
    return {key, SettingType::Colour, SettingGroup::ColourProfile, PlistValue(value), withAlpha};
}

SettingDeclaration flag(SettingGroup group, const char* key, bool value)
{
    return {key, SettingType::Boolean, group, PlistValue(value)};
}

SettingDeclaration number(SettingGroup group, const char* key, int value)
{
    return {key, SettingType::Integer, group, PlistValue(value)};
}

SettingDeclaration theme(const char* key, const char* value)
{
    return {key, SettingType::ThemeName, SettingGroup::OtherProfile, PlistValue(value)};
}

std::vector<SettingDeclaration> makeCatalogue()
{
    using enum SettingGroup;
    return {
        colour("lightColor", "#FFFFFF"),
        colour("darkColor", "#000000"),
        colour("baseLightColor", "#FFFFFF55", true),
        colour("baseDarkColor", "#00000055", true),
        colour("chargeColor", "#00FF00"),
        colour("chargeCColor", "#00CCFF"),
        colour("lowColor", "#FF0000"),
        colour("lpmColor", "#FFCC00"),
        flag(ColourProfile, "useCustomCharge", false),
        flag(ColourProfile, "useCustomCC", false),
        flag(ColourProfile, "useCustomLow", false),
        flag(ColourProfile, "useCustomLPM", false),
        flag(ColourProfile, "shareMainColorEnabled", false),
        // Single precision on purpose: written out it reads 0.30000001192092896.
        {"sharedColorAlpha", SettingType::Real, ColourProfile, PlistValue(0.3f)},
        flag(ColourProfile, "useSBC", false),
        colour("sbcLight", "#FFFFFF55", true),
        colour("sbcDark", "#00000055", true),
        flag(ColourProfile, "darkSpring", false),

        theme("theme", "Amp Connect"),
        number(OtherProfile, "lowLevel", 20),
        flag(OtherProfile, "useSecondTheme", true),
        number(OtherProfile, "secondThemeLimit", 20),
        theme("secondTheme", "Amp Bar-Thin"),
        flag(OtherProfile, "flipY", false),
        flag(OtherProfile, "flipX", false),
        flag(OtherProfile, "flipYSecondary", false),
        flag(OtherProfile, "flipXSecondary", false),
        flag(OtherProfile, "chargeSym", false),
        flag(OtherProfile, "colorBolt", false),
        flag(OtherProfile, "baseBolt", false),
        flag(OtherProfile, "colorPerc", false),
        flag(OtherProfile, "basePercent", false),
        flag(OtherProfile, "remPerc", false),
        flag(OtherProfile, "hidePerc", false),
        number(OtherProfile, "hidePercLev", 0),
        number(OtherProfile, "showPerc", 100),
        flag(OtherProfile, "showPerCH", false),
        flag(OtherProfile, "hidePerCH", false),
        flag(OtherProfile, "hideSecPerc", true),
        flag(OtherProfile, "useChargeTheme", false),
        flag(OtherProfile, "chOverSec", false),
        theme("chargeTheme", "Amp Bar-Thin"),
        flag(OtherProfile, "flipYCharge", false),
        flag(OtherProfile, "flipXCharge", false),
        flag(OtherProfile, "ignoreCC", false),
        flag(OtherProfile, "ignoreCCC", false),
        flag(OtherProfile, "ignoreLPMC", false),
        flag(OtherProfile, "lpmOverC", false),
        flag(OtherProfile, "lowOverC", false),

        // Counters read as 0 while absent; the rest are the pages' declared defaults.
        number(Outside, "viewedTP", 0),
        number(Outside, "viewedPP", 0),
        number(Outside, "viewed10P", 0),
        flag(Outside, "enabled", false),
        flag(Outside, "darkLock", false),
        flag(Outside, "cpe", false),
        number(Outside, "customLevel", 75),
        flag(Outside, "dce", false),
        flag(Outside, "customCh", false),
    };
}

PlistDict templateOf(SettingGroup group)
{
    PlistDict result;
    for (const SettingDeclaration& setting : settingsCatalogue())
        if (setting.group == group)
            result.set(setting.key, setting.defaultValue);
    return result;
}

} // namespace

const std::vector<SettingDeclaration>& settingsCatalogue()
{
    static const std::vector<SettingDeclaration> catalogue = makeCatalogue();
    return catalogue;
}

const SettingDeclaration* findSetting(std::string_view key)
{
    const auto& catalogue = settingsCatalogue();
    auto it = std::find_if(catalogue.begin(), catalogue.end(),
                           [&](const SettingDeclaration& setting) { return setting.key == key; });
    return it == catalogue.end() ? nullptr : &*it;
}

PlistDict colorProfileTemplate()
{
    return templateOf(SettingGroup::ColourProfile);
}

PlistDict otherProfileTemplate()
{
    return templateOf(SettingGroup::OtherProfile);
}

const std::vector<std::string>& colorProfileKeys()
{
    static const std::vector<std::string> keys = {
        "lightColor", "darkColor", "baseLightColor", "baseDarkColor", "chargeColor", "chargeCColor",
        "lowColor", "lpmColor", "useCustomCharge", "useCustomCC", "useCustomLow", "useCustomLPM",
        "shareMainColorEnabled", "sharedColorAlpha", "passMain", "passBase", "passBaseAlpha"};
    return keys;
}

const std::vector<std::string>& otherProfileKeys()
{
    static const std::vector<std::string> keys = {
        "theme", "lowLevel", "useSecondTheme", "secondThemeLimit", "secondTheme",
        "flipY", "flipX", "flipYSecondary", "flipXSecondary"};
    return keys;
}

std::string_view settingTypeName(SettingType type)
{
    switch (type) {
    case SettingType::Colour: return "colour";
    case SettingType::Boolean: return "bool";
    case SettingType::Integer: return "int";
    case SettingType::Real: return "real";
    case SettingType::ThemeName: return "theme";
    }
    return "unknown";
}
