#include "PreferencesStore.h"

#include "platform/core/DarwinNotifyCenter.h"
#include "platform/core/PropertyListFile.h"
#include "platform/core/PropertyListUpdate.h"
#include "platform/core/Root.h"

#include <algorithm>

std::string preferencesPath()
{
    return Root::path(kPreferencesFile);
}

std::optional<PlistDict> loadPreferences()
{
    return readPropertyListDictionary(preferencesPath());
}

PlistDict getSettingsForKeys(const std::vector<std::string>& keys)
{
    PlistDict result;
    std::optional<PlistDict> file = loadPreferences();
    if (!file)
        return result;
    for (const std::string& key : keys)
        if (const PlistValue* value = file->find(key))
            result.set(key, *value);
    return result;
}

void setSettingsForKeys(const std::vector<std::string>& keys, const PlistArray& values)
{
    updatePropertyListFile(preferencesPath(), MissingFilePolicy::WriteNothing, [&](PlistDict& file) {
        std::size_t count = std::min(keys.size(), values.size());
        for (std::size_t i = 0; i < count; ++i)
            file.set(keys[i], values[i]);
    });
}

void setSettingsWithDictionary(const PlistDict& settings)
{
    updatePropertyListFile(preferencesPath(), MissingFilePolicy::WriteNothing,
                           [&](PlistDict& file) { file.addEntriesFrom(settings); });
}

PlistValue getPreferenceValueForKey(const std::string& path, const std::string& key)
{
    std::optional<PlistDict> file = readPropertyListDictionary(path);
    return file ? file->value(key) : PlistValue();
}

void setPreferenceValueForKey(const std::string& path, const std::string& key, const PlistValue& value)
{
    updatePropertyListFile(path, MissingFilePolicy::WriteNothing, [&](PlistDict& file) { file.set(key, value); });
}

void postSettingsChangedNotification()
{
    postDarwinNotification(kSettingsChangedNotification);
}
