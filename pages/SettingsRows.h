#pragma once

#include "platform/qt/NSObject.h"

#include <optional>
#include <string>

// Rows of the settings pages' entry tables, written once. Every row that stores a value
// names the preferences file; switches and sliders also name the change notification, which
// the page posts after writing.
namespace SettingsRows {

// A group heading; no label means an empty group, a label of "" a heading with no text.
NSDictionary group(std::optional<std::string> label = std::nullopt,
                   std::optional<std::string> footer = std::nullopt);
NSDictionary staticText(std::string label);
NSDictionary tintedSwitch(std::string label, std::string key, bool defaultValue);
// A slider with the type-in popup; no label when a text row above captions it.
NSDictionary typeInSlider(std::optional<std::string> label, std::string key, Id defaultValue, Id minimum, Id maximum);
// A row that opens a choose-one list page of the given class; titles and values come from
// the page's "themeTitles:" and "themeValues:".
NSDictionary themeList(std::string label, std::string key, std::string defaultValue, std::string detail);
NSDictionary button(std::string label, std::string action);

} // namespace SettingsRows
