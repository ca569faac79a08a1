#include "IndicatorTooltip.h"

#include <algorithm>
#include <cmath>

std::string durationText(std::int64_t seconds)
{
    std::int64_t minutes = std::max<std::int64_t>(1, (seconds + 30) / 60);
    std::int64_t hours = minutes / 60;
    minutes %= 60;
    if (hours == 0)
        return std::to_string(minutes) + " min";
    if (minutes == 0)
        return std::to_string(hours) + " h";
    return std::to_string(hours) + " h " + std::to_string(minutes) + " min";
}

std::string indicatorTooltip(const BatteryState& battery, const std::function<std::string(const std::string&)>& translate)
{
    if (!battery.present)
        return translate("INDICATOR_NO_BATTERY");
    double percentage = std::isfinite(battery.percentage) ? std::clamp(battery.percentage, 0.0, 100.0) : 0;
    std::string text = std::to_string(std::lround(percentage)) + " %";
    if (battery.charge == BatteryState::Charge::FullyCharged)
        return text + " — " + translate("INDICATOR_FULLY_CHARGED");
    if (battery.pluggedIn()) {
        text += " — " + translate("INDICATOR_CHARGING");
        if (battery.secondsToFull > 0)
            text += ", " + durationText(battery.secondsToFull) + " " + translate("INDICATOR_UNTIL_FULL");
        return text;
    }
    if (battery.secondsToEmpty > 0)
        text += " — " + durationText(battery.secondsToEmpty) + " " + translate("INDICATOR_UNTIL_EMPTY");
    return text;
}
