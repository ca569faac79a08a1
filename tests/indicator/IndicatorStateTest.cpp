#include "indicator/IndicatorState.h"
#include "indicator/IndicatorTooltip.h"

#include "platform/core/ColorParsing.h"

#include <gtest/gtest.h>

#include <cmath>

namespace {

BatteryState onBattery(double level)
{
    return BatteryState{.present = true, .percentage = level, .charge = BatteryState::Charge::Discharging};
}

BatteryState charging(double level)
{
    return BatteryState{.present = true, .percentage = level, .charge = BatteryState::Charge::Charging};
}

UIColor hex(const char* text)
{
    return *ColorParsing::colorFromHexStringTD(text);
}

TEST(IndicatorState, TheSecondaryThemeTakesOverBelowItsLimitAndTheChargeThemeWhileCharging)
{
    PlistDict settings{{"theme", "Main"}, {"secondTheme", "Low"}, {"chargeTheme", "Plug"},
                       {"flipXSecondary", true}, {"flipYCharge", true}, {"secondThemeLimit", 20}};
    IndicatorState state = indicatorState(settings, onBattery(20), 0);
    EXPECT_EQ(state.theme, "Main"); // at the limit: not below it
    EXPECT_FALSE(state.flipX);
    state = indicatorState(settings, onBattery(19), 0);
    EXPECT_EQ(state.role, ThemeRole::Secondary);
    EXPECT_EQ(state.theme, "Low");
    EXPECT_TRUE(state.flipX);
    EXPECT_FALSE(state.flipY);

    // The charge theme only with its switch; over the secondary one only when put first.
    EXPECT_EQ(indicatorState(settings, charging(50), 0).theme, "Main");
    settings.set("useChargeTheme", true);
    state = indicatorState(settings, charging(50), 0);
    EXPECT_EQ(state.theme, "Plug");
    EXPECT_TRUE(state.flipY);
    EXPECT_EQ(indicatorState(settings, charging(10), 0).theme, "Low");
    settings.set("chOverSec", true);
    EXPECT_EQ(indicatorState(settings, charging(10), 0).theme, "Plug");
    settings.set("useSecondTheme", false);
    EXPECT_EQ(indicatorState(settings, onBattery(10), 0).theme, "Main");
}

TEST(IndicatorState, LowFollowsTheLowLevelAndTheDevelopmentSwitchesOverrideTheBattery)
{
    PlistDict settings;
    EXPECT_TRUE(indicatorState(settings, onBattery(20), 0).low);
    EXPECT_FALSE(indicatorState(settings, onBattery(21), 0).low);
    settings.set("lowLevel", 30);
    EXPECT_TRUE(indicatorState(settings, onBattery(30), 0).low);

    settings.set("cpe", true);
    settings.set("customLevel", 88);
    settings.set("dce", true);
    settings.set("customCh", true);
    IndicatorState state = indicatorState(settings, onBattery(12.4), 0);
    EXPECT_EQ(state.level, 88);
    EXPECT_TRUE(state.charging);
    EXPECT_FALSE(state.low);
    // Without a battery the theme shows a full one, and nothing charges.
    IndicatorState none = indicatorState(PlistDict{}, BatteryState{}, 0);
    EXPECT_EQ(none.level, 100);
    EXPECT_FALSE(none.charging);
    EXPECT_FALSE(none.batteryPresent);
    EXPECT_EQ(indicatorState(PlistDict{}, onBattery(54.5), 0).level, 55);
}

TEST(IndicatorState, ColoursFollowThePanelAndTheSpecialStatesInTheirOrder)
{
    PlistDict settings{{"darkColor", "#102030"}, {"lightColor", "#A0B0C0"}, {"chargeColor", "#00FF00"},
                       {"lowColor", "#FF0000"}, {"lpmColor", "#FFCC00"}, {"chargeCColor", "#00CCFF"}};
    EXPECT_EQ(indicatorState(settings, onBattery(50), 0).color, hex("#102030"));
    EXPECT_EQ(indicatorState(settings, onBattery(50), 1).color, hex("#A0B0C0"));

    settings.set("useCustomCharge", true);
    settings.set("useCustomLow", true);
    settings.set("useCustomLPM", true);
    BatteryState lowAndCharging = charging(10);
    lowAndCharging.powerSaver = true;
    EXPECT_EQ(indicatorState(settings, lowAndCharging, 0).color, hex("#00FF00"));
    settings.set("lpmOverC", true);
    EXPECT_EQ(indicatorState(settings, lowAndCharging, 0).color, hex("#FFCC00"));
    settings.set("lowOverC", true);
    EXPECT_EQ(indicatorState(settings, lowAndCharging, 0).color, hex("#FF0000"));
    settings.set("ignoreCC", true);
    settings.set("lowOverC", false);
    settings.set("lpmOverC", false);
    EXPECT_EQ(indicatorState(settings, lowAndCharging, 0).color, hex("#FF0000"));
    settings.set("useCustomLow", false);
    EXPECT_EQ(indicatorState(settings, lowAndCharging, 0).color, hex("#FFCC00"));
    settings.set("ignoreLPMC", true);
    EXPECT_EQ(indicatorState(settings, lowAndCharging, 0).color, hex("#102030"));

    // Fully charged has a colour of its own.
    settings.set("useCustomCC", true);
    BatteryState full{.present = true, .percentage = 100, .charge = BatteryState::Charge::FullyCharged};
    EXPECT_EQ(indicatorState(settings, full, 0).color, hex("#00CCFF"));

    // Status-bar colours stand for both colours; a shared base follows the state's colour.
    PlistDict bar{{"useSBC", true}, {"sbcDark", "#11223344"}};
    IndicatorState state = indicatorState(bar, onBattery(50), 0);
    EXPECT_EQ(state.color, hex("#11223344"));
    EXPECT_EQ(state.baseColor, hex("#11223344"));
    EXPECT_EQ(indicatorState(bar, onBattery(50), 1).color, hex("#FFFFFF")); // the page's default
    PlistDict shared{{"shareMainColorEnabled", true}, {"sharedColorAlpha", 0.5}, {"useCustomLow", true}};
    state = indicatorState(shared, onBattery(5), 1);
    EXPECT_EQ(state.color, hex("#FF0000"));
    EXPECT_EQ(state.baseColor, hex("#FF000080").colorWithAlphaComponent(0.5));
}

TEST(IndicatorState, ThePercentageAndBoltFollowTheirSwitches)
{
    PlistDict settings{{"showPerc", 50}, {"hidePercLev", 10}};
    EXPECT_FALSE(indicatorState(settings, onBattery(51), 0).showPercent);
    EXPECT_TRUE(indicatorState(settings, onBattery(50), 0).showPercent);
    EXPECT_FALSE(indicatorState(settings, onBattery(10), 0).showPercent);
    EXPECT_TRUE(indicatorState(PlistDict{{"hideSecPerc", false}}, onBattery(0), 0).showPercent); // 100 and 0: always
    settings.set("showPerCH", true);
    EXPECT_TRUE(indicatorState(settings, charging(80), 0).showPercent);
    settings.set("hidePerCH", true);
    EXPECT_FALSE(indicatorState(settings, charging(30), 0).showPercent);
    // With the secondary theme (below 20 by default) the percentage hides unless told not to.
    EXPECT_FALSE(indicatorState(PlistDict{}, onBattery(15), 0).showPercent);
    EXPECT_TRUE(indicatorState(PlistDict{{"hideSecPerc", false}}, onBattery(15), 0).showPercent);
    EXPECT_FALSE(indicatorState(PlistDict{{"hidePerc", true}}, onBattery(50), 0).showPercent);

    IndicatorState plain = indicatorState(PlistDict{}, onBattery(42), 0);
    EXPECT_EQ(plain.percentText, "42%");
    EXPECT_FALSE(plain.percentColor);
    IndicatorState bare = indicatorState(PlistDict{{"remPerc", true}, {"basePercent", true}}, onBattery(42), 0);
    EXPECT_EQ(bare.percentText, "42");
    EXPECT_EQ(bare.percentColor, bare.baseColor);

    EXPECT_FALSE(indicatorState(PlistDict{{"chargeSym", true}}, onBattery(42), 0).showBolt);
    IndicatorState bolt = indicatorState(PlistDict{{"chargeSym", true}}, charging(42), 0);
    EXPECT_TRUE(bolt.showBolt);
    EXPECT_EQ(bolt.boltColor, bolt.color); // the page shows "main colour" on by default
    EXPECT_FALSE(indicatorState(PlistDict{{"chargeSym", true}, {"colorBolt", false}}, charging(42), 0).boltColor);
}

TEST(IndicatorState, StrangeValuesGiveDefaultsNotSurprises)
{
    PlistDict hostile{{"theme", 42}, {"lowLevel", "many"}, {"secondThemeLimit", -1e300}, {"darkColor", PlistArray{}},
                      {"customLevel", -5}, {"cpe", true}};
    IndicatorState state = indicatorState(hostile, onBattery(50), 0);
    EXPECT_EQ(state.level, 0);
    // A theme name that is no text names no theme: the built-in script draws.
    EXPECT_EQ(state.role, ThemeRole::Primary);
    EXPECT_EQ(state.theme, "");
    EXPECT_EQ(state.color, hex("#000000"));
    BatteryState odd{.present = true, .percentage = std::nan(""), .charge = BatteryState::Charge::Unknown};
    EXPECT_EQ(indicatorState(PlistDict{}, odd, 0).level, 100);
}

TEST(IndicatorTooltip, SaysTheLevelTheStateAndTheTimeLeft)
{
    auto english = [](const std::string& key) {
        if (key == "INDICATOR_CHARGING") return std::string("charging");
        if (key == "INDICATOR_UNTIL_FULL") return std::string("until full");
        if (key == "INDICATOR_UNTIL_EMPTY") return std::string("until empty");
        if (key == "INDICATOR_FULLY_CHARGED") return std::string("fully charged");
        return std::string("No battery");
    };
    BatteryState battery = charging(55);
    battery.secondsToFull = 4800;
    EXPECT_EQ(indicatorTooltip(battery, english), "55 % — charging, 1 h 20 min until full");
    battery = onBattery(40.4);
    battery.secondsToEmpty = 7500;
    EXPECT_EQ(indicatorTooltip(battery, english), "40 % — 2 h 5 min until empty");
    battery.secondsToEmpty = 0;
    EXPECT_EQ(indicatorTooltip(battery, english), "40 %");
    EXPECT_EQ(indicatorTooltip(BatteryState{.present = true, .percentage = 100,
                                            .charge = BatteryState::Charge::FullyCharged},
                               english),
              "100 % — fully charged");
    EXPECT_EQ(indicatorTooltip(BatteryState{}, english), "No battery");
    EXPECT_EQ(durationText(45 * 60), "45 min");
    EXPECT_EQ(durationText(7200), "2 h");
}

} // namespace
