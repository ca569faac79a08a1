#include "PageClasses.h"

#include "QLAWCreditsController.h"
#include "QLAWSettingsController.h"
#include "QLAWSettingsMainController.h"
#include "QLDeveloperCell.h"
#include "QLHeaderCell.h"

#include "pagekit/PageKitClasses.h"

void registerAmpwellPages()
{
    registerPageKitClasses();
    QLAWSettingsController::staticClass();
    QLAWSettingsMainController::staticClass();
    QLAWCreditsController::staticClass();
    QLDeveloperCell::staticClass();
    QLHeaderCell::staticClass();
}
