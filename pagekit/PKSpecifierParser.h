#pragma once

#include "platform/qt/NSObject.h"
#include "platform/qt/PSSpecifier.h"

#include <optional>

// Turns a page's entry table into its entries: one entry per dictionary, in order.
class PKSpecifierParser : public NSObject {
    AMPWELL_OBJC_CLASS()

public:
    static SpecifierList specifiersFromArrayForTarget(const EntryTable& table, NSObject* target);
    // The cell type a "cell" name stands for; unknown names (and none) make a group.
    static PSCellType PSCellTypeFromString(const Id& name);
};
