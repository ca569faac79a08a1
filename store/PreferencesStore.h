#pragma once

#include "platform/core/PlistValue.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

inline constexpr std::string_view kPreferencesDirectory = "/var/mobile/Library/Preferences/";
inline constexpr std::string_view kPreferencesFile = "/var/mobile/Library/Preferences/com.mossgate.ampwell.plist";
inline constexpr std::string_view kPreferencesDomain = "com.mossgate.ampwell.plist";
inline constexpr std::string_view kSettingsChangedNotification = "com.mossgate.ampwell.settingsChanged";

// The preferences file under the root.
std::string preferencesPath();

// The whole preferences file; nothing when it is missing or not a dictionary. No cache: every
// call reads the disk.
std::optional<PlistDict> loadPreferences();

// The values the file holds for the keys, in key order; absent keys are left out.
PlistDict getSettingsForKeys(const std::vector<std::string>& keys);

// The writes below read the file, change the given keys and write the whole file back. They
// never create the file and never post the change notification: the caller decides that.
void setSettingsForKeys(const std::vector<std::string>& keys, const PlistArray& values);
void setSettingsWithDictionary(const PlistDict& settings);

PlistValue getPreferenceValueForKey(const std::string& path, const std::string& key);
void setPreferenceValueForKey(const std::string& path, const std::string& key, const PlistValue& value);

void postSettingsChangedNotification();
