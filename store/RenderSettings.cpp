#include "RenderSettings.h"

#include "PreferencesStore.h"
#include "ThemeScripts.h"

#include "platform/core/ColorParsing.h"

bool useSecondarySettings = false;

namespace {

constexpr const char* kDefaultTheme = "Amp Connect";

struct ColourKeys {
    const char* main;
    const char* mainDefault;
    const char* base;
    const char* baseDefault;
};
constexpr ColourKeys kLightKeys{"lightColor", "#FFFFFF", "baseLightColor", "#FFFFFF55"};
constexpr ColourKeys kDarkKeys{"darkColor", "#000000", "baseDarkColor", "#00000055"};

// A stored colour that is not text, or text that gives no colour, falls back to the default.
UIColor colourFrom(const PlistDict& source, const char* key, const char* fallback)
{
    if (const PlistValue* stored = source.find(key))
        if (const std::string* text = stored->asString())
            if (std::optional<UIColor> color = ColorParsing::colorFromHexStringTD(*text))
                return *color;
    return *ColorParsing::colorFromHexStringTD(fallback);
}

void fillColours(PlistDict& style, const PlistDict& source, const ColourKeys& keys)
{
    UIColor main = colourFrom(source, keys.main, keys.mainDefault);
    UIColor base = colourFrom(source, keys.base, keys.baseDefault);
    if (source.value("shareMainColorEnabled").boolValue()) {
        const PlistValue* stored = source.find("sharedColorAlpha");
        float alpha = stored ? stored->floatValue() : 0.3f;
        base = main.colorWithAlphaComponent(alpha);
        style.set("share", true);
        style.set("shareAlpha", alpha);
    }
    style.set("color", main);
    style.set("baseColor", base);
}

PlistDict baseStyle()
{
    return PlistDict{{"height", 26}, {"level", 55}, {"charging", false}, {"low", false},
                     {"lpm", false}, {"flipX", false}, {"flipY", false},
                     {"script", std::string(kBuiltInPreviewScript)}};
}

void takeScript(PlistDict& style, const std::string& theme)
{
    if (std::optional<std::string> script = getThemeScriptWithName(theme))
        style.set("script", std::move(*script));
}

void takeFlips(PlistDict& style, const PlistDict& source, const char* xKey, const char* yKey)
{
    if (const PlistValue* flipX = source.find(xKey))
        style.set("flipX", *flipX);
    if (const PlistValue* flipY = source.find(yKey))
        style.set("flipY", *flipY);
}

std::string themeName(const PlistValue& stored)
{
    const std::string* name = stored.asString();
    return name ? *name : kDefaultTheme;
}

PlistDict bothStyles(PlistDict dark, const PlistDict& source)
{
    PlistDict light = dark;
    fillRenderColours(dark, source, 1);
    fillRenderColours(light, source, 0);
    return PlistDict{{"lightSettings", std::move(light)}, {"darkSettings", std::move(dark)}};
}

} // namespace

PlistDict getBatteryRenderSettings()
{
    PlistDict preferences = loadPreferences().value_or(PlistDict());
    PlistDict style = baseStyle();
    takeScript(style, themeName(preferences.value("theme")));
    takeFlips(style, preferences, "flipX", "flipY");
    if (useSecondarySettings)
        takeFlips(style, preferences, "flipXSecondary", "flipYSecondary");
    return bothStyles(std::move(style), preferences);
}

PlistDict getBatteryRenderSettingsForProfile(const PlistDict& profile)
{
    PlistDict style = baseStyle();
    const PlistValue* theme = profile.find("theme");
    takeScript(style, themeName(theme ? *theme : loadPreferences().value_or(PlistDict()).value("theme")));
    takeFlips(style, profile, "flipX", "flipY");
    return bothStyles(std::move(style), profile);
}

void fillRenderColours(PlistDict& style, const PlistDict& settings, int appearance)
{
    fillColours(style, settings, appearance == 0 ? kDarkKeys : kLightKeys);
}

PlistDict getLightAndDarkColors()
{
    return {};
}
