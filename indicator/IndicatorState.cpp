#include "IndicatorState.h"

#include "store/RenderSettings.h"
#include "store/SettingsCatalogue.h"

#include "platform/core/ColorParsing.h"
#include "platform/core/JSONString.h"

#include <algorithm>
#include <cmath>

namespace {

// Where the pages show another default than a saved profile holds, the tray follows the page:
// it is what the user sees and sets.
PlistValue pageDefault(const std::string& key)
{
    if (key == "colorBolt")
        return PlistValue(true);
    if (key == "sbcLight")
        return PlistValue("#FFFFFF");
    if (key == "sbcDark")
        return PlistValue("#000000");
    if (key == "enabled" || key == "cpe" || key == "dce" || key == "customCh" || key == "darkLock")
        return PlistValue(false);
    if (key == "customLevel")
        return PlistValue(75);
    const SettingDeclaration* declared = findSetting(key);
    return declared ? declared->defaultValue : PlistValue();
}

bool flag(const PlistDict& settings, const std::string& key)
{
    return effectiveSetting(settings, key).boolValue();
}

int number(const PlistDict& settings, const std::string& key)
{
    double value = effectiveSetting(settings, key).doubleValue();
    return std::isfinite(value) ? static_cast<int>(std::clamp(value, -1e6, 1e6)) : 0;
}

std::string text(const PlistDict& settings, const std::string& key)
{
    PlistValue value = effectiveSetting(settings, key);
    return value.asString() ? *value.asString() : std::string();
}

std::optional<UIColor> colour(const PlistDict& settings, const std::string& key)
{
    return ColorParsing::colorFromHexStringTD(text(settings, key));
}

void chooseTheme(IndicatorState& state, const PlistDict& settings)
{
    bool secondary = flag(settings, "useSecondTheme") && state.level < number(settings, "secondThemeLimit");
    bool charge = flag(settings, "useChargeTheme") && state.charging && (!secondary || flag(settings, "chOverSec"));
    state.role = charge ? ThemeRole::Charging : secondary ? ThemeRole::Secondary : ThemeRole::Primary;
    const char* themeKey = charge ? "chargeTheme" : secondary ? "secondTheme" : "theme";
    const char* suffix = charge ? "Charge" : secondary ? "Secondary" : "";
    state.theme = text(settings, themeKey);
    state.flipX = flag(settings, std::string("flipX") + suffix);
    state.flipY = flag(settings, std::string("flipY") + suffix);
}

// The main colour a special state asks for, if any. The charging colours win over low battery
// and Low Power Mode unless those are put first.
std::optional<UIColor> stateColour(const IndicatorState& state, const PlistDict& settings)
{
    std::optional<UIColor> charging;
    if (flag(settings, "useCustomCC") && state.fullyCharged && !flag(settings, "ignoreCCC"))
        charging = colour(settings, "chargeCColor");
    else if (flag(settings, "useCustomCharge") && state.charging && !flag(settings, "ignoreCC"))
        charging = colour(settings, "chargeColor");
    std::optional<UIColor> low;
    if (flag(settings, "useCustomLow") && state.low)
        low = colour(settings, "lowColor");
    std::optional<UIColor> lowPower;
    if (flag(settings, "useCustomLPM") && state.lowPowerMode && !flag(settings, "ignoreLPMC"))
        lowPower = colour(settings, "lpmColor");
    if (charging) {
        if (low && flag(settings, "lowOverC"))
            return low;
        if (lowPower && flag(settings, "lpmOverC"))
            return lowPower;
        return charging;
    }
    return low ? low : lowPower;
}

void chooseColours(IndicatorState& state, const PlistDict& settings)
{
    PlistDict style;
    fillRenderColours(style, settings, state.appearance);
    auto stored = [&style](const char* key) {
        const PlistValue* value = style.find(key);
        return value && value->asColor() ? *value->asColor() : UIColor();
    };
    state.color = stored("color");
    state.baseColor = stored("baseColor");
    std::optional<double> sharedAlpha;
    if (const PlistValue* share = style.find("shareAlpha"))
        sharedAlpha = share->doubleValue();
    // A status-bar colour stands for both colours, its own opacity included.
    if (flag(settings, "useSBC"))
        if (std::optional<UIColor> bar = colour(settings, state.appearance == 0 ? "sbcDark" : "sbcLight")) {
            state.color = *bar;
            state.baseColor = *bar;
            sharedAlpha.reset();
        }
    if (std::optional<UIColor> special = stateColour(state, settings)) {
        state.color = *special;
        if (sharedAlpha)
            state.baseColor = special->colorWithAlphaComponent(*sharedAlpha);
    }
}

void choosePercentAndBolt(IndicatorState& state, const PlistDict& settings)
{
    int hideAtOrBelow = number(settings, "hidePercLev");
    bool inRange = state.level <= number(settings, "showPerc") && !(hideAtOrBelow > 0 && state.level <= hideAtOrBelow);
    bool shown = inRange || (state.charging && flag(settings, "showPerCH"));
    if (state.charging && flag(settings, "hidePerCH"))
        shown = false;
    if (state.role == ThemeRole::Secondary && flag(settings, "hideSecPerc"))
        shown = false;
    state.showPercent = shown && !flag(settings, "hidePerc");
    state.percentText = std::to_string(state.level) + (flag(settings, "remPerc") ? "" : "%");
    if (flag(settings, "colorPerc"))
        state.percentColor = state.color;
    else if (flag(settings, "basePercent"))
        state.percentColor = state.baseColor;

    state.showBolt = state.charging && flag(settings, "chargeSym");
    if (flag(settings, "colorBolt"))
        state.boltColor = state.color;
    else if (flag(settings, "baseBolt"))
        state.boltColor = state.baseColor;
}

std::string hex(const UIColor& colour)
{
    return ColorParsing::hexStringFromColorAlphaHash(colour, true, true).value_or("");
}

std::string optionalHex(const std::optional<UIColor>& colour)
{
    return colour ? jsonString(hex(*colour)) : std::string("null");
}

const char* boolText(bool value)
{
    return value ? "true" : "false";
}

} // namespace

PlistValue effectiveSetting(const PlistDict& settings, const std::string& key)
{
    if (const PlistValue* stored = settings.find(key))
        return *stored;
    return pageDefault(key);
}

IndicatorState indicatorState(const PlistDict& settings, const BatteryState& battery, int appearance)
{
    IndicatorState state;
    state.enabled = flag(settings, "enabled");
    state.batteryPresent = battery.present;
    state.appearance = appearance == 1 ? 1 : 0;
    double percentage = battery.present && std::isfinite(battery.percentage) ? battery.percentage : 100;
    state.level = static_cast<int>(std::lround(std::clamp(percentage, 0.0, 100.0)));
    state.charging = battery.present && battery.pluggedIn();
    bool fullByBattery = battery.present && battery.charge == BatteryState::Charge::FullyCharged;
    // Theme makers fix the level or the charging state to try a theme out.
    if (flag(settings, "cpe")) {
        state.level = std::clamp(number(settings, "customLevel"), 0, 100);
        fullByBattery = false;
    }
    if (flag(settings, "dce")) {
        state.charging = flag(settings, "customCh");
        fullByBattery = false;
    }
    state.fullyCharged = state.charging && (state.level >= 100 || fullByBattery);
    state.low = state.level <= number(settings, "lowLevel");
    state.lowPowerMode = battery.powerSaver;
    chooseTheme(state, settings);
    chooseColours(state, settings);
    choosePercentAndBolt(state, settings);
    return state;
}

PlistDict renderSettingsForState(const IndicatorState& state, const std::string& script, double height)
{
    return PlistDict{{"script", script},          {"height", height},
                     {"level", state.level},      {"charging", state.charging},
                     {"low", state.low},          {"lpm", state.lowPowerMode},
                     {"color", state.color},      {"baseColor", state.baseColor},
                     {"flipX", state.flipX},      {"flipY", state.flipY}};
}

std::string themeRoleName(ThemeRole role)
{
    switch (role) {
    case ThemeRole::Secondary:
        return "secondary";
    case ThemeRole::Charging:
        return "charging";
    default:
        return "primary";
    }
}

std::string indicatorStateJSON(const IndicatorState& state, double height, double scale)
{
    std::string json = "{";
    auto field = [&json](const std::string& name, const std::string& value) {
        if (json.size() > 1)
            json += ", ";
        json += jsonString(name) + ": " + value;
    };
    field("enabled", boolText(state.enabled));
    field("battery", boolText(state.batteryPresent));
    field("level", std::to_string(state.level));
    field("charging", boolText(state.charging));
    field("fullyCharged", boolText(state.fullyCharged));
    field("low", boolText(state.low));
    field("lpm", boolText(state.lowPowerMode));
    field("theme", jsonString(state.theme));
    field("themeRole", jsonString(themeRoleName(state.role)));
    field("flipX", boolText(state.flipX));
    field("flipY", boolText(state.flipY));
    field("appearance", jsonString(state.appearance == 0 ? "light" : "dark"));
    field("color", jsonString(hex(state.color)));
    field("baseColor", jsonString(hex(state.baseColor)));
    field("percent", "{\"shown\": " + std::string(boolText(state.showPercent)) + ", \"text\": " +
                         jsonString(state.percentText) + ", \"color\": " + optionalHex(state.percentColor) + "}");
    field("bolt", "{\"shown\": " + std::string(boolText(state.showBolt)) + ", \"color\": " +
                      optionalHex(state.boltColor) + "}");
    field("height", std::to_string(height));
    field("scale", std::to_string(scale));
    return json + "}";
}
