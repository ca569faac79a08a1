#include "PlatformClasses.h"

#include "Accessibility.h"
#include "PSControlCells.h"
#include "PSListItemsController.h"
#include "UINavigationController.h"

void registerPlatformClasses()
{
    NSObject::staticClass();
    UIViewController::staticClass();
    UINavigationController::staticClass();
    PSListController::staticClass();
    PSListItemsController::staticClass();
    PSTableCell::staticClass();
    PSControlTableCell::staticClass();
    PSSwitchTableCell::staticClass();
    PSSliderTableCell::staticClass();
    installAccessibility();
}
