#include "QLAWSettingsOptionsController.h"

#include "SettingsRows.h"

const ObjCClass& QLAWSettingsOptionsController::staticClass()
{
    static const ObjCClass& cls =
        ClassBuilder<QLAWSettingsOptionsController>("QLAWSettingsOptionsController",
                                                    &QLAWSettingsController::staticClass())
            .method("customTitle", &QLAWSettingsOptionsController::customTitle)
            .method("customSpecifiers", &QLAWSettingsOptionsController::customSpecifiers)
            .build();
    return cls;
}

std::string QLAWSettingsOptionsController::customTitle()
{
    return localizedString("MORE_CHOICES");
}

EntryTable QLAWSettingsOptionsController::customSpecifiers()
{
    using namespace SettingsRows;
    return {
        group("BOLT_HEAD"),
        tintedSwitch("SHOW_BOLT", "chargeSym", false),
        tintedSwitch("COL_BOLT", "colorBolt", true),
        tintedSwitch("BASE_F_BOLT", "baseBolt", false),
        group("PERC_HEAD", "PERC_HF"),
        group(std::nullopt, "PERC_FOOT"),
        staticText("SHOW_PERC_LVL"),
        typeInSlider(std::nullopt, "showPerc", 100, 0, 100),
        staticText("HIDE_PERC_LVL"),
        typeInSlider(std::nullopt, "hidePercLev", 0, 0, 100),
        tintedSwitch("SHW_PER_CH", "showPerCH", false),
        tintedSwitch("HIDE_PER_CH", "hidePerCH", false),
        tintedSwitch("HIDE_PERC_SEC", "hideSecPerc", true),
        tintedSwitch("REM_PERC", "remPerc", false),
        tintedSwitch("COL_PERC", "colorPerc", false),
        tintedSwitch("BASE_F_BOLT", "basePercent", false),
        tintedSwitch("HIDE_PERC", "hidePerc", false),
        group("IGRO_HEAD", "LPM_OVER_FOOT"),
        tintedSwitch("IGNORE_CHARGE", "ignoreCC", false),
        tintedSwitch("IGNORE_CC", "ignoreCCC", false),
        tintedSwitch("IGNORE_LPM", "ignoreLPMC", false),
        tintedSwitch("LPM_OVER", "lpmOverC", false),
        tintedSwitch("LOW_OVER", "lowOverC", false),
        group(std::nullopt, "LOW_FOOTER"),
        staticText("LOW_LEVEL"),
        typeInSlider(std::nullopt, "lowLevel", 20, 0, 95),
        group("Development", "DEV_FOOT"),
        tintedSwitch("Enable Custom Percent", "cpe", false),
        typeInSlider("Percent", "customLevel", 75, 0, 100),
        tintedSwitch("Enable Custom Charging", "dce", false),
        tintedSwitch("Set Charging", "customCh", false),
    };
}
