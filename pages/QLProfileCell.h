#pragma once

#include "platform/qt/PSTableCell.h"

class QMenu;

// A row of the profile list. Besides the profile's name it tells screen readers what the
// profile holds and whether it can be deleted; a deletable row also asks for its deletion on
// the Delete key and offers "Delete" in its context menu. The page decides what a request
// does: it is the one that knows which rows are kept.
class QLProfileCell : public PSTableCell {
    Q_OBJECT
    AMPWELL_OBJC_CLASS()

public:
    using PSTableCell::PSTableCell;

    void describeProfile(bool complete, bool deletable);
    bool isComplete() const { return complete_; }
    bool isDeletable() const { return deletable_; }

    QString accessibleValue() const override;

    // The menu a right click or the menu key opens on a deletable row, or null on a kept one.
    QMenu* makeContextMenu();

signals:
    void deleteRequested(QLProfileCell* cell);

protected:
    void keyPressEvent(QKeyEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;

private:
    QString localized(const char* key) const;

    bool complete_ = false;
    bool deletable_ = false;
};
