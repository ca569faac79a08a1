#pragma once

#include "BatteryState.h"

#include <functional>
#include <string>

// "55 % — charging, 1 h 20 min until full", "40 % — 2 h 5 min until empty", "100 % — fully
// charged" or "No battery": what the tray's tooltip (and its name for screen readers) says of
// the real battery. `translate` turns a text key into the user's language.
std::string indicatorTooltip(const BatteryState& battery, const std::function<std::string(const std::string&)>& translate);

// "1 h 20 min", "45 min", "2 h".
std::string durationText(std::int64_t seconds);
