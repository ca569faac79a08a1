#pragma once

#include "platform/core/PlistValue.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

inline constexpr std::string_view kProfileDirectory = "/var/mobile/Library/Preferences/Ampwell/Profiles/";
inline constexpr std::string_view kProfileExtension = ".awProfile";
inline constexpr std::string_view kDefaultProfileName = "Default";
inline constexpr std::string_view kMostRecentProfileName = "Most Recent";

// The profile folder under the root, with its trailing slash.
std::string profileDirectoryPath();
// The profile folder, the name and ".awProfile".
std::string profilePath(std::string_view name);

// A profile is complete exactly when it holds a "theme"; otherwise it holds colours only.
bool isCompleteProfile(const PlistDict& profile);

// Snapshots: the template(s) with each key the preferences file holds taking the file's value.
PlistDict currentColorProfile();
PlistDict currentCompleteProfile();

// Both write nothing when there is no preferences file, and never post.
void applyProfile(const PlistDict& profile);
void applyOnlyColorProfile(const PlistDict& profile);

// Every default: both templates merged, the content of the "Default" profile.
PlistDict defaultProfile();

std::optional<PlistDict> readProfile(std::string_view name);
bool writeProfile(std::string_view name, const PlistDict& profile, std::string* error = nullptr);

// Why a profile name cannot be used as a file name, or nothing when it can: empty, holding a
// "/", starting with ".", holding control characters or longer than 200 bytes.
std::optional<std::string> profileNameProblem(std::string_view name);
