#pragma once

#include "platform/qt/PSControlCells.h"
#include "platform/qt/PSTableCell.h"

// Rows that entry tables name in "cellClass" to take their page's tint.
class PKTintedCell : public PSTableCell {
    Q_OBJECT
    AMPWELL_OBJC_CLASS()

public:
    using PSTableCell::PSTableCell;
};

class PKTintedSwitchCell : public PSSwitchTableCell {
    Q_OBJECT
    AMPWELL_OBJC_CLASS()

public:
    using PSSwitchTableCell::PSSwitchTableCell;
};

// Shows its label in the tint colour it inherits, unless that is the system blue.
class PKTintedControlCell : public PSControlTableCell {
    Q_OBJECT
    AMPWELL_OBJC_CLASS()

public:
    using PSControlTableCell::PSControlTableCell;
    void layoutSubviews() override;
};

// Whether two colours differ by at most `fraction` in each of red, green, blue and alpha.
bool isSimilarToColor(const UIColor& a, const UIColor& b, double fraction);
