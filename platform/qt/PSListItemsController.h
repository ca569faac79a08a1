#pragma once

#include "PSListController.h"

// The choose-one page of a list row: one row per title of the row's entry, a checkmark on
// the current value. Picking a row stores its value through the entry's setter.
class PSListItemsController : public PSListController {
    Q_OBJECT
    AMPWELL_OBJC_CLASS()

public:
    SpecifierList& specifiers() override;
    void tableViewDidSelectRowAtIndexPath(UITableView* table, NSIndexPath indexPath) override;
    PSTableCell* tableViewCellForRowAtIndexPath(UITableView* table, NSIndexPath indexPath) override;

    // The value the list row currently holds.
    PlistValue currentValue();
};
