#include "PageClasses.h"

#include "QLAWCreditsController.h"
#include "QLAWSettingsController.h"
#include "QLAWSettingsColorOptionsController.h"
#include "QLAWSettingsMainController.h"
#include "QLAWSettingsOptionsController.h"
#include "QLAWSettingProfileListController.h"
#include "QLAWSettingThemeListController.h"
#include "QLAWSettingsThemeOptionsController.h"
#include "QLDeveloperCell.h"
#include "QLHeaderCell.h"
#include "QLProfileCell.h"

#include "pagekit/PageKitClasses.h"
#include "colour/QLColorCell.h"
#include "render/preview/QLAWThemeCell.h"

void registerAmpwellPages()
{
    registerPageKitClasses();
    QLAWSettingsController::staticClass();
    QLAWSettingsMainController::staticClass();
    QLAWCreditsController::staticClass();
    QLAWSettingsThemeOptionsController::staticClass();
    QLAWSettingsOptionsController::staticClass();
    QLAWSettingsColorOptionsController::staticClass();
    QLColorCell::staticClass();
    QLAWColorPickerViewController::staticClass();
    QLAWSettingThemeListController::staticClass();
    QLAWSettingSecondaryThemeListController::staticClass();
    QLAWSettingProfileListController::staticClass();
    QLAWThemeCell::staticClass();
    QLDeveloperCell::staticClass();
    QLHeaderCell::staticClass();
    QLProfileCell::staticClass();
}
