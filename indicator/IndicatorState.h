#pragma once

#include "BatteryState.h"

#include "platform/core/PlistValue.h"
#include "platform/core/UIColor.h"

#include <optional>
#include <string>

// Which of the three themes draws the battery.
enum class ThemeRole { Primary, Secondary, Charging };

// Everything the tray icon shows, decided from the settings and the battery: the theme and its
// flips, the state the theme is told, its colours, and the percentage and bolt beside it.
// Nothing here draws; the icon is made from it.
struct IndicatorState {
    bool enabled = false;
    bool batteryPresent = false;
    int level = 100;
    bool charging = false;
    bool fullyCharged = false;
    bool low = false;
    bool lowPowerMode = false;

    ThemeRole role = ThemeRole::Primary;
    std::string theme;
    bool flipX = false;
    bool flipY = false;

    int appearance = 0; // 0 on a light panel, 1 on a dark one
    UIColor color;
    UIColor baseColor;

    bool showPercent = false;
    std::string percentText;
    std::optional<UIColor> percentColor; // nothing: the panel's text colour
    bool showBolt = false;
    std::optional<UIColor> boltColor;
};

// The setting as the pages show it: the stored value, else the default the page shows.
PlistValue effectiveSetting(const PlistDict& settings, const std::string& key);

IndicatorState indicatorState(const PlistDict& settings, const BatteryState& battery, int appearance);

// What the renderer needs to draw the state's battery with the script, `height` points high.
PlistDict renderSettingsForState(const IndicatorState& state, const std::string& script, double height);

// The state as one JSON object (colours as "#rrggbbaa"), for scripts and tests.
std::string indicatorStateJSON(const IndicatorState& state, double height, double scale);

std::string themeRoleName(ThemeRole role);
