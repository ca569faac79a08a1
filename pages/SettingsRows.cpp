#include "SettingsRows.h"

#include "store/PreferencesStore.h"

namespace SettingsRows {

NSDictionary group(std::optional<std::string> label, std::optional<std::string> footer)
{
    NSDictionary row{{"cell", "PSGroupCell"}};
    if (label)
        row.set("label", *label);
    if (footer)
        row.set("footerText", *footer);
    return row;
}

NSDictionary staticText(std::string label)
{
    return {{"cell", "PSStaticTextCell"}, {"label", std::move(label)}};
}

NSDictionary tintedSwitch(std::string label, std::string key, bool defaultValue)
{
    return {{"cell", "PSSwitchCell"},
            {"label", std::move(label)},
            {"key", std::move(key)},
            {"default", defaultValue},
            {"defaults", kPreferencesDomain},
            {"PostNotification", kSettingsChangedNotification},
            {"cellClass", "PKTintedSwitchCell"}};
}

NSDictionary typeInSlider(std::optional<std::string> label, std::string key, Id defaultValue, Id minimum, Id maximum)
{
    NSDictionary row{{"cell", "PSSliderCell"}};
    if (label)
        row.set("label", *label);
    row.set("key", std::move(key));
    row.set("default", std::move(defaultValue));
    row.set("min", std::move(minimum));
    row.set("max", std::move(maximum));
    row.set("showValue", true);
    row.set("defaults", kPreferencesDomain);
    row.set("PostNotification", kSettingsChangedNotification);
    row.set("cellClass", "PKTypeInSliderTableCell");
    return row;
}

NSDictionary themeList(std::string label, std::string key, std::string defaultValue, std::string detail)
{
    return {{"cell", "PSLinkListCell"},
            {"label", std::move(label)},
            {"key", std::move(key)},
            {"default", std::move(defaultValue)},
            {"defaults", kPreferencesDomain},
            {"detail", std::move(detail)},
            {"titlesDataSource", "themeTitles:"},
            {"valuesDataSource", "themeValues:"}};
}

NSDictionary button(std::string label, std::string action)
{
    return {{"cell", "PSButtonCell"}, {"label", std::move(label)}, {"action", std::move(action)}};
}

} // namespace SettingsRows
