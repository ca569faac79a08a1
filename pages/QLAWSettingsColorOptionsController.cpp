#include "QLAWSettingsColorOptionsController.h"

#include "SettingsRows.h"

#include "colour/QLColorCell.h"
#include "store/PreferencesStore.h"

#include "platform/core/ColorParsing.h"
#include "platform/core/PropertyListUpdate.h"

namespace {

// A colour row. "foreUpdate" names the preview half the picker updates; none means both.
NSDictionary colorRow(std::string label, std::string key, std::string defaultValue, bool useAlpha, std::string update,
                      std::optional<std::string> foreUpdate = std::nullopt)
{
    NSDictionary row{{"cell", "PSLinkCell"},
                     {"cellClass", "QLColorCell"},
                     {"label", std::move(label)},
                     {"key", std::move(key)},
                     {"default", std::move(defaultValue)},
                     {"defaults", kPreferencesDomain},
                     {"PostNotification", kSettingsChangedNotification},
                     {"useAlpha", useAlpha},
                     {"update", std::move(update)}};
    if (foreUpdate)
        row.set("foreUpdate", *foreUpdate);
    return row;
}

} // namespace

const ObjCClass& QLAWSettingsColorOptionsController::staticClass()
{
    static const ObjCClass& cls =
        ClassBuilder<QLAWSettingsColorOptionsController>("QLAWSettingsColorOptionsController",
                                                         &QLAWSettingsController::staticClass())
            .method("customTitle", &QLAWSettingsColorOptionsController::customTitle)
            .method("customSpecifiers", &QLAWSettingsColorOptionsController::customSpecifiers)
            .method("pullBaseToStatus", &QLAWSettingsColorOptionsController::pullBaseToStatus)
            .method("pullMainToStatus", &QLAWSettingsColorOptionsController::pullMainToStatus)
            .method("swapMainWithBaseLight", &QLAWSettingsColorOptionsController::swapMainWithBaseLight)
            .method("swapMainWithBaseDark", &QLAWSettingsColorOptionsController::swapMainWithBaseDark)
            .method("swapLightAndDarkColors", &QLAWSettingsColorOptionsController::swapLightAndDarkColors)
            .build();
    return cls;
}

void QLAWSettingsColorOptionsController::loadView()
{
    QLAWSettingsController::loadView();
    QLColorCell::setColorPage(this);
}

EntryTable QLAWSettingsColorOptionsController::customSpecifiers()
{
    using namespace SettingsRows;
    return {
        group("LIGHT_HEAD"),
        colorRow("LIGHT_MAIN_COL", "darkColor", "#000000", false, "color", "lightSettings"),
        colorRow("LIGHT_BASE_COL", "baseDarkColor", "#00000055", true, "baseColor", "lightSettings"),
        button("Swap Main <-> Base", "swapMainWithBaseDark"),
        group("DARK_HEAD", "BASE_FOOTER"),
        colorRow("DARK_MAIN_COL", "lightColor", "#FFFFFF", false, "color", "darkSettings"),
        colorRow("DARK_BASE_COL", "baseLightColor", "#FFFFFF55", true, "baseColor", "darkSettings"),
        button("Swap Main <-> Base", "swapMainWithBaseLight"),
        group(),
        button("Swap Light <-> Dark Sets", "swapLightAndDarkColors"),
        group("OTHER_CUSTOM_HEAD", "OTHER_CUSTOM_FOOT"),
        tintedSwitch("USE_CUSTOM_CH", "useCustomCharge", false),
        colorRow("CH_COL", "chargeColor", "#00FF00", false, "color"),
        tintedSwitch("USE_CUSTOM_CC", "useCustomCC", false),
        colorRow("CC_COL", "chargeCColor", "#00CCFF", false, "color"),
        tintedSwitch("USE_CUSTOM_LOW", "useCustomLow", false),
        colorRow("LOW_COL", "lowColor", "#FF0000", false, "color"),
        tintedSwitch("USE_CUSTOM_LPM", "useCustomLPM", false),
        colorRow("LPM_COL", "lpmColor", "#FFCC00", false, "color"),
        group("SHARE_HEAD", "SHARE_BASE_FOOT"),
        tintedSwitch("SHARE_W_BASE", "shareMainColorEnabled", false),
        staticText("SHARE_BASE_ALPHA"),
        typeInSlider(std::nullopt, "sharedColorAlpha", 0.3, 0, 1),
        group("STAT_HEAD", "STAT_FOOT"),
        tintedSwitch("STAT_EN", "useSBC", false),
        colorRow("STAT_LT", "sbcDark", "#000000", true, "MAINANDBASE", "darkSettings"),
        colorRow("STAT_DK", "sbcLight", "#FFFFFF", true, "MAINANDBASE", "lightSettings"),
        tintedSwitch("STAT_SB_DARK", "darkSpring", false),
        tintedSwitch("STAT_LS_DARK", "darkLock", false),
        button("PULL_SB_BASE", "pullBaseToStatus"),
        button("PULL_SB_MAIN", "pullMainToStatus"),
    };
}

PlistDict QLAWSettingsColorOptionsController::shownColors(const std::vector<std::string>& keys)
{
    PlistDict stored = getSettingsForKeys(keys);
    PlistDict shown;
    for (const std::string& key : keys) {
        if (const PlistValue* value = stored.find(key)) {
            shown.set(key, *value);
            continue;
        }
        for (const std::shared_ptr<PSSpecifier>& entry : specifiers())
            if (const std::string* entryKey = entry->propertyForKey("key").string(); entryKey && *entryKey == key)
                shown.set(key, entry->propertyForKey("default").plistValue());
    }
    return shown;
}

void QLAWSettingsColorOptionsController::store(const PlistDict& changed)
{
    // The store only changes a file that exists; a fresh installation has none until now.
    updatePropertyListFile(preferencesPath(), MissingFilePolicy::StartEmpty, [](PlistDict&) {});
    setSettingsWithDictionary(changed);
    postAndUpdate();
}

void QLAWSettingsColorOptionsController::pullBaseToStatus()
{
    PlistDict base = shownColors({"baseDarkColor", "baseLightColor"});
    store(PlistDict{{"sbcDark", base.value("baseDarkColor")}, {"sbcLight", base.value("baseLightColor")}});
}

void QLAWSettingsColorOptionsController::pullMainToStatus()
{
    PlistDict main = shownColors({"darkColor", "lightColor"});
    store(PlistDict{{"sbcDark", main.value("darkColor")}, {"sbcLight", main.value("lightColor")}});
}

void QLAWSettingsColorOptionsController::swapLightAndDarkColors()
{
    PlistDict old = shownColors({"baseLightColor", "lightColor", "baseDarkColor", "darkColor"});
    store(PlistDict{{"baseDarkColor", old.value("baseLightColor")},
                    {"darkColor", old.value("lightColor")},
                    {"baseLightColor", old.value("baseDarkColor")},
                    {"lightColor", old.value("darkColor")}});
}

void QLAWSettingsColorOptionsController::swapMainWithBaseLight()
{
    store(swapColorsRetainingAlphas(shownColors({"baseLightColor", "lightColor"})));
}

void QLAWSettingsColorOptionsController::swapMainWithBaseDark()
{
    store(swapColorsRetainingAlphas(shownColors({"baseDarkColor", "darkColor"})));
}

PlistDict QLAWSettingsColorOptionsController::swapColorsRetainingAlphas(const PlistDict& settings)
{
    std::string baseKey = settings.find("baseDarkColor") ? "baseDarkColor" : "baseLightColor";
    std::string mainKey = settings.find("darkColor") ? "darkColor" : "lightColor";
    auto colour = [&](const std::string& key) {
        const PlistValue* stored = settings.find(key);
        const std::string* text = stored ? stored->asString() : nullptr;
        return ColorParsing::colorFromHexStringTD(text ? *text : std::string()).value_or(UIColor::clearColor());
    };
    UIColor base = colour(baseKey);
    UIColor main = colour(mainKey);
    UIColor newBase = main.colorWithAlphaComponent(base.alpha());
    UIColor newMain = base.colorWithAlphaComponent(1);
    return PlistDict{{baseKey, ColorParsing::hexStringFromColorAlphaHash(newBase, true, true).value_or("")},
                     {mainKey, ColorParsing::hexStringFromColorAlphaHash(newMain, false, true).value_or("")}};
}
