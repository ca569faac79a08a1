#include "PageKitClasses.h"

#include "PKListItemsController.h"
#include "PKPersonCell.h"
#include "PKSpecifierParser.h"
#include "PKStandardController.h"
#include "PKTintedCells.h"
#include "PKTintedListController.h"
#include "PKTypeInSliderTableCell.h"

#include "platform/qt/PlatformClasses.h"

void registerPageKitClasses()
{
    registerPlatformClasses();
    PKSpecifierParser::staticClass();
    PKTintedListController::staticClass();
    PKListItemsController::staticClass();
    PKStandardController::staticClass();
    PKTintedCell::staticClass();
    PKTintedSwitchCell::staticClass();
    PKTintedControlCell::staticClass();
    PKPersonCell::staticClass();
    PKTypeInSliderTableCell::staticClass();
}
