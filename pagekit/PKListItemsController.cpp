#include "PKListItemsController.h"

#include "PKTintedListController.h"

const ObjCClass& PKListItemsController::staticClass()
{
    static const ObjCClass& cls =
        ClassBuilder<PKListItemsController>("PKListItemsController", &PSListItemsController::staticClass()).build();
    return cls;
}

void PKListItemsController::viewWillAppear(bool animated)
{
    // Tinted before the platform's own appearance work, unlike the list page.
    PKTintedListController::applyTint(*this);
    PSListItemsController::viewWillAppear(animated);
}

void PKListItemsController::viewWillDisappear(bool animated)
{
    PSListItemsController::viewWillDisappear(animated);
    PKTintedListController::removeTint(*this);
}
