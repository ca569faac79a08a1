#pragma once

#include "platform/qt/PSTableCell.h"

#include <QPointer>

class UIImageView;

// The picture at the top of the main page: the image named by the entry's "ampwellHeader",
// filling the row. The latest header cell and its picture are shared with the main page,
// which rounds the header's corners in landscape.
class QLHeaderCell : public PSTableCell {
    Q_OBJECT
    AMPWELL_OBJC_CLASS()

public:
    using PSTableCell::PSTableCell;

    void didMoveToSuperview() override;
    void layoutSubviews() override;

    // The header cell last attached to a table, and its picture.
    static QLHeaderCell* current();
    static UIImageView* sharedImageView();
};
