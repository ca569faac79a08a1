#pragma once

#include "NSObject.h"
#include "PSSpecifier.h"

#include <QPainterPath>
#include <QPointer>
#include <QWidget>

class QLabel;
class UIImageView;

enum UITableViewCellStyle {
    UITableViewCellStyleDefault = 0,
    UITableViewCellStyleValue1 = 1,
    UITableViewCellStyleValue2 = 2,
    UITableViewCellStyleSubtitle = 3,
};

enum UITableViewCellAccessoryType {
    UITableViewCellAccessoryNone = 0,
    UITableViewCellAccessoryDisclosureIndicator = 1,
    UITableViewCellAccessoryCheckmark = 3,
};

// One row of a settings table, made for its page entry: a label, an optional detail text on
// the right, an optional picture on the left, and an accessory (a disclosure mark, a
// checkmark, or a view such as a switch). Rows are focusable: Enter or Space activates them.
class PSTableCell : public QWidget, public NSObject {
    Q_OBJECT
    AMPWELL_OBJC_CLASS()

public:
    PSTableCell(int style, const std::string& reuseIdentifier, std::shared_ptr<PSSpecifier> specifier);

    // The cell class the table uses for an entry with no "cellClass".
    static const ObjCClass& cellClassForSpecifier(const PSSpecifier& specifier);

    std::shared_ptr<PSSpecifier> specifier() const { return specifier_; }
    const std::string& reuseIdentifier() const { return reuseIdentifier_; }
    int style() const { return style_; }
    PSCellType type() const { return specifier_ ? specifier_->cellType() : PSGroupCell; }

    QWidget* contentView() const { return content_; }
    QLabel* textLabel() const { return textLabel_; }
    QLabel* detailTextLabel() const { return detailLabel_; }
    UIImageView* imageView() const { return imageView_; }
    QWidget* accessoryView() const { return accessoryView_; }
    void setAccessoryView(QWidget* view);
    UITableViewCellAccessoryType accessoryType() const { return accessoryType_; }
    void setAccessoryType(UITableViewCellAccessoryType type);
    bool isChecked() const { return accessoryType_ == UITableViewCellAccessoryCheckmark; }

    // Shows the entry's name, picture and kind of row.
    virtual void refreshCellContentsWithSpecifier(const std::shared_ptr<PSSpecifier>& specifier);
    // Shows the entry's current value (the title of a list value, a text value).
    virtual void setValue(const Id& value);
    virtual Id value() const { return value_; }

    // Called right after a cell is made by its class (overridden methods work here, unlike
    // in a constructor).
    virtual void didFinishInitialising() {}
    // Called once the table has placed the row in its view hierarchy.
    virtual void didMoveToSuperview() {}
    // Lays the row's parts out; called on every size change.
    virtual void layoutSubviews();

    // Whether tapping the row does something (links, buttons, list items).
    virtual bool isSelectable() const;
    // Whether the keyboard stops on the row: rows that can be tapped or hold a control; text
    // and pictures are passed over.
    virtual bool acceptsKeyboardFocus() const;
    // The row's height for a table of this width; 0 leaves it to the table.
    virtual double preferredHeightForWidth(double) const { return 0; }
    // A tap, Enter or Space on the row.
    virtual void activate();
    // The class of the page a tap on the row opens, when the row opens one itself rather than
    // through its entry's "detail".
    virtual const ObjCClass* openedPageClass() const { return nullptr; }

    // The rounded shape of the row inside its group, in the row's coordinates.
    QPainterPath backgroundShape() const;
    void setGroupPosition(bool first, bool last, double radius);
    void setSeparatorInset(double inset) { separatorInset_ = inset; }

    // What assistive technology reads as the row's value.
    virtual QString accessibleValue() const;
    // What assistive technology reads as the row's name when the row shows no label of its
    // own (a slider captioned by the row above it).
    virtual void setAccessibilityLabel(const QString& label);

signals:
    void tapped(PSTableCell* cell);

protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;

    Id value_;

    void updateAccessibility();

private:

    std::shared_ptr<PSSpecifier> specifier_;
    std::string reuseIdentifier_;
    int style_;
    QWidget* content_;
    QLabel* textLabel_;
    QLabel* detailLabel_;
    UIImageView* imageView_;
    QPointer<QWidget> accessoryView_;
    UITableViewCellAccessoryType accessoryType_ = UITableViewCellAccessoryNone;
    bool firstInGroup_ = true;
    bool lastInGroup_ = true;
    double groupRadius_ = 10;
    double separatorInset_ = 16;
    bool pressed_ = false;
    QString accessibilityLabel_;
};
