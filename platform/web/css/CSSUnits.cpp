#include "platform/web/css/CSSUnits.h"

#include <cmath>
#include <utility>

namespace {

template <std::size_t N>
std::optional<double> factorOf(const std::pair<std::string_view, double> (&table)[N], std::string_view unit)
{
    for (const auto& [name, factor] : table) {
        if (unit == name)
            return factor;
    }
    return std::nullopt;
}

} // namespace

std::optional<double> degreesPerAngleUnit(std::string_view unit)
{
    static constexpr std::pair<std::string_view, double> kAngles[] = {
        {"deg", 1}, {"rad", 180 / M_PI}, {"grad", 0.9}, {"turn", 360}};
    return factorOf(kAngles, unit);
}

std::optional<double> pixelsPerAbsoluteLengthUnit(std::string_view unit)
{
    static constexpr std::pair<std::string_view, double> kLengths[] = {
        {"px", 1}, {"in", 96}, {"cm", 96 / 2.54}, {"mm", 96 / 25.4}, {"q", 96 / 101.6}, {"pt", 96.0 / 72}, {"pc", 16}};
    return factorOf(kLengths, unit);
}
