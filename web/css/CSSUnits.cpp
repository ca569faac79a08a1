#include "web/css/CSSUnits.h"

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

std::optional<double> dimensionOrZero(const CSSScanner::Numeric& n, std::optional<double> (*perUnit)(std::string_view))
{
    if (n.isNumber())
        return n.value == 0 ? std::optional<double>(0.0) : std::nullopt;
    if (n.type != CSSScanner::Numeric::Type::Dimension)
        return std::nullopt;
    auto factor = perUnit(n.unit);
    if (!factor)
        return std::nullopt;
    return n.value * *factor;
}
