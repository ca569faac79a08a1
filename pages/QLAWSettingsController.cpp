#include "QLAWSettingsController.h"

#include "store/PreferencesStore.h"

#include "platform/core/DarwinNotifyCenter.h"
#include "platform/core/PropertyListUpdate.h"

const ObjCClass& QLAWSettingsController::staticClass()
{
    static const ObjCClass& cls =
        ClassBuilder<QLAWSettingsController>("QLAWSettingsController", &PKTintedListController::staticClass())
            .method("postAndUpdate", &QLAWSettingsController::postAndUpdate)
            .method("tintNavigationTitleText", &QLAWSettingsController::tintNavigationTitleText)
            .method("tintSwitches", &QLAWSettingsController::tintSwitches)
            .method("navigationTintColor", &QLAWSettingsController::navigationTintColor)
            .method("switchOnTintColor", &QLAWSettingsController::switchOnTintColor)
            .method("readPreferenceValue:", &QLAWSettingsController::readPreferenceValue)
            .method("setPreferenceValue:specifier:", &QLAWSettingsController::setPreferenceValue)
            .method("shareMessage", &QLAWSettingsController::shareMessage)
            .build();
    return cls;
}

UIColor QLAWSettingsController::tintColour()
{
    return UIColor::colorWithRedGreenBlueAlpha(143.0 / 255.0, 0, 1, 1);
}

void QLAWSettingsController::postAndUpdate()
{
    postDarwinNotification(kSettingsChangedNotification);
    reloadSpecifiers();
}

Id QLAWSettingsController::readPreferenceValue(std::shared_ptr<PSSpecifier> specifier)
{
    if (!specifier)
        return Id();
    std::optional<PlistDict> preferences = loadPreferences();
    if (const std::string* key = specifier->propertyForKey("key").string(); key && preferences)
        if (const PlistValue* value = preferences->find(*key))
            return Id(*value);
    return specifier->propertyForKey("default");
}

void QLAWSettingsController::setPreferenceValue(Id value, std::shared_ptr<PSSpecifier> specifier)
{
    if (!specifier || value.isNil())
        return;
    const std::string* key = specifier->propertyForKey("key").string();
    if (!key)
        return;
    // Read again right before writing, so that keys other pages wrote meanwhile survive. A
    // value that is no property list is not written; the file keeps its content.
    if (const PlistValue* stored = value.plist(); stored && stored->isPropertyList()) {
        std::string changed = *key;
        PlistValue newValue = *stored;
        updatePropertyListFile(preferencesPath(), MissingFilePolicy::StartEmpty,
                               [&](PlistDict& preferences) { preferences.set(changed, newValue); });
    }
    if (const std::string* notification = specifier->propertyForKey("PostNotification").string())
        postDarwinNotification(*notification);
}
