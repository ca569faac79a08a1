#include "Profiles.h"

#include "PreferencesStore.h"
#include "SettingsCatalogue.h"

#include "platform/core/PropertyListFile.h"
#include "platform/core/PropertyListUpdate.h"
#include "platform/core/Root.h"

namespace {

PlistDict withFileValues(PlistDict snapshot)
{
    std::optional<PlistDict> file = loadPreferences();
    if (!file)
        return snapshot;
    for (const std::string& key : snapshot.keys())
        if (const PlistValue* value = file->find(key))
            snapshot.set(key, *value);
    return snapshot;
}

} // namespace

std::string profileDirectoryPath()
{
    return Root::path(kProfileDirectory);
}

std::string profilePath(std::string_view name)
{
    return profileDirectoryPath() + std::string(name) + std::string(kProfileExtension);
}

bool isCompleteProfile(const PlistDict& profile)
{
    return profile.contains("theme");
}

PlistDict defaultProfile()
{
    PlistDict profile = colorProfileTemplate();
    profile.addEntriesFrom(otherProfileTemplate());
    return profile;
}

PlistDict currentColorProfile()
{
    return withFileValues(colorProfileTemplate());
}

PlistDict currentCompleteProfile()
{
    return withFileValues(defaultProfile());
}

void applyProfile(const PlistDict& profile)
{
    updatePropertyListFile(preferencesPath(), MissingFilePolicy::WriteNothing,
                           [&](PlistDict& file) { file.addEntriesFrom(profile); });
}

void applyOnlyColorProfile(const PlistDict& profile)
{
    updatePropertyListFile(preferencesPath(), MissingFilePolicy::WriteNothing, [&](PlistDict& file) {
        for (const std::string& key : colorProfileKeys())
            if (const PlistValue* value = profile.find(key))
                file.set(key, *value);
    });
}

std::optional<PlistDict> readProfile(std::string_view name)
{
    return readPropertyListDictionary(profilePath(name));
}

bool writeProfile(std::string_view name, const PlistDict& profile, std::string* error)
{
    return writePropertyListAtomically(profilePath(name), profile, error);
}

std::optional<std::string> profileNameProblem(std::string_view name)
{
    if (name.empty())
        return "a profile needs a name";
    if (name.find('/') != std::string_view::npos)
        return "a profile name cannot contain \"/\"";
    if (name.front() == '.')
        return "a profile name cannot start with \".\"";
    for (unsigned char c : name)
        if (c < 0x20 || c == 0x7F)
            return "a profile name cannot contain control characters";
    if (name.size() > 200)
        return "a profile name can be at most 200 bytes long";
    return std::nullopt;
}
