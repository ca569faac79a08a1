#include "QLAWSettingsThemeOptionsController.h"

#include "SettingsRows.h"

#include "store/ThemeScripts.h"

#include "platform/core/Root.h"

#include <QPointer>

#include <filesystem>

namespace {

QPointer<QLAWSettingsThemeOptionsController>& optionsPageReference()
{
    static QPointer<QLAWSettingsThemeOptionsController> page;
    return page;
}

} // namespace

const ObjCClass& QLAWSettingsThemeOptionsController::staticClass()
{
    static const ObjCClass& cls =
        ClassBuilder<QLAWSettingsThemeOptionsController>("QLAWSettingsThemeOptionsController",
                                                         &QLAWSettingsController::staticClass())
            .method("navigationTintColor", &QLAWSettingsThemeOptionsController::navigationTintColor)
            .method("navigationTitle", &QLAWSettingsThemeOptionsController::navigationTitle)
            .method("themesInFolder:", &QLAWSettingsThemeOptionsController::themesInFolder)
            .method("themeTitles:", &QLAWSettingsThemeOptionsController::themeTitles)
            .method("themeValues:", &QLAWSettingsThemeOptionsController::themeValues)
            .method("customSpecifiers", &QLAWSettingsThemeOptionsController::customSpecifiers)
            .build();
    return cls;
}

QLAWSettingsThemeOptionsController* QLAWSettingsThemeOptionsController::current()
{
    return optionsPageReference();
}

void QLAWSettingsThemeOptionsController::loadView()
{
    QLAWSettingsController::loadView();
    setTitle(localizedString(navigationTitle()));
    themes_.clear();
    for (std::string_view folder : kThemeFolders)
        for (std::string& theme : themesInFolder(std::string(folder)))
            themes_.push_back(std::move(theme));
    optionsPageReference() = this;
}

std::vector<std::string> QLAWSettingsThemeOptionsController::themesInFolder(const std::string& folder)
{
    std::vector<std::string> names;
    std::error_code error;
    std::filesystem::directory_iterator entries(Root::path(folder), error);
    for (; !error && entries != std::filesystem::directory_iterator(); entries.increment(error)) {
        std::string file = entries->path().filename().string();
        if (file.ends_with(".js"))
            names.push_back(file.substr(0, file.size() - 3));
    }
    return names;
}

std::vector<std::string> QLAWSettingsThemeOptionsController::themeTitles(Id)
{
    return themes_;
}

std::vector<std::string> QLAWSettingsThemeOptionsController::themeValues(Id)
{
    return themes_;
}

EntryTable QLAWSettingsThemeOptionsController::customSpecifiers()
{
    using namespace SettingsRows;
    return {
        group(""),
        themeList("THEME", "theme", "Amp Connect", "QLAWSettingThemeListController"),
        tintedSwitch("FLIP_H", "flipY", false),
        tintedSwitch("FLIP_V", "flipX", false),
        group("ANOTHER_HEAD", "SEC_THM_FOOT"),
        tintedSwitch("USE_SECOND", "useSecondTheme", true),
        themeList("SEC_THEME", "secondTheme", "Amp Bar-Thin", "QLAWSettingSecondaryThemeListController"),
        tintedSwitch("FLIP_SEC_H", "flipYSecondary", false),
        tintedSwitch("FLIP_SEC_V", "flipXSecondary", false),
        staticText("ACTIV_BELOW"),
        typeInSlider("Lower Limit", "secondThemeLimit", 20, 5, 95),
        group("CH_THM_HD"),
        tintedSwitch("CH_THEM_EN", "useChargeTheme", false),
        themeList("CH_THEME", "chargeTheme", "Amp Bar-Thin", "QLAWSettingThemeListController"),
        tintedSwitch("FLIP_CH_H", "flipYCharge", false),
        tintedSwitch("FLIP_CH_V", "flipXCharge", false),
        tintedSwitch("CH_OVR_SEC", "chOverSec", false),
    };
}
