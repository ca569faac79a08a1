#pragma once

#include "platform/core/PlistValue.h"

#include <string>
#include <string_view>
#include <vector>

// Every setting the system stores, declared once with its type and default.

enum class SettingType { Colour, Boolean, Integer, Real, ThemeName };

enum class SettingGroup {
    ColourProfile, // in the colour profile template
    OtherProfile,  // in the other profile template
    Outside,       // kept in the same file but never in a profile; the default is the page's
};

struct SettingDeclaration {
    std::string key;
    SettingType type;
    SettingGroup group;
    PlistValue defaultValue;
    bool colourWithAlpha = false; // its colour row stores eight digits, alpha last
};

// In template order: the 18 colour settings, the 31 other settings, then the keys outside
// the profiles.
const std::vector<SettingDeclaration>& settingsCatalogue();
const SettingDeclaration* findSetting(std::string_view key);

// Fresh dictionaries of defaults, owned by the caller.
PlistDict colorProfileTemplate();
PlistDict otherProfileTemplate();

// The keys a colours-only restore copies. Not the colour template's keys: it adds "passMain",
// "passBase" and "passBaseAlpha" and leaves out the status-bar colours and "darkSpring", so
// that those are never changed by such a restore.
const std::vector<std::string>& colorProfileKeys();
// The first nine keys of the other template.
const std::vector<std::string>& otherProfileKeys();

std::string_view settingTypeName(SettingType type);
