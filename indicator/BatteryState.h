#pragma once

#include <cstdint>

// What the machine says about its power: the display battery of UPower and the active power
// profile. Without a battery (a desktop machine, or no UPower) `present` is false.
struct BatteryState {
    // UPower's numbering of the device state.
    enum class Charge { Unknown = 0, Charging = 1, Discharging = 2, Empty = 3, FullyCharged = 4,
                        PendingCharge = 5, PendingDischarge = 6 };

    bool present = false;
    double percentage = 100;
    Charge charge = Charge::Unknown;
    std::int64_t secondsToEmpty = 0; // 0 when not known
    std::int64_t secondsToFull = 0;
    bool powerSaver = false; // the active power profile is "power-saver"

    bool pluggedIn() const
    {
        return charge == Charge::Charging || charge == Charge::FullyCharged || charge == Charge::PendingCharge;
    }
};
