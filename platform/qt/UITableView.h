#pragma once

#include <QPointer>
#include <QScrollArea>

#include <string>
#include <vector>

class PSTableCell;
class UITableView;

struct NSIndexPath {
    int section = 0;
    int row = 0;
    bool operator==(const NSIndexPath&) const = default;
};

// What a table asks of its page.
class UITableViewDataSource {
public:
    virtual ~UITableViewDataSource() = default;
    virtual int numberOfSectionsInTableView(UITableView* table) = 0;
    virtual int tableViewNumberOfRowsInSection(UITableView* table, int section) = 0;
    // A new cell; the table takes it over.
    virtual PSTableCell* tableViewCellForRowAtIndexPath(UITableView* table, NSIndexPath indexPath) = 0;
    virtual double tableViewHeightForRowAtIndexPath(UITableView* table, NSIndexPath indexPath) = 0;
    virtual std::string tableViewTitleForHeaderInSection(UITableView* table, int section) = 0;
    virtual std::string tableViewTitleForFooterInSection(UITableView* table, int section) = 0;
    virtual void tableViewWillDisplayCell(UITableView*, PSTableCell*, NSIndexPath) {}
    virtual void tableViewDidSelectRowAtIndexPath(UITableView* table, NSIndexPath indexPath) = 0;
};

// A grouped table in the inset style of the phone's settings: rows in white rounded groups
// on a grey ground, headings above the groups in small capitals, footers below them. Every
// row is a widget; Up/Down, Page Up/Page Down and Home/End move the keyboard between the rows
// that take it. A data source may hand the same row back on a reload: it is kept as it is.
class UITableView : public QScrollArea {
    Q_OBJECT

public:
    explicit UITableView(UITableViewDataSource* dataSource, QWidget* parent = nullptr);

    // Makes every row anew from the data source.
    void reloadData();
    // Lays the rows out again (heights or the header may have changed).
    void relayout();

    int numberOfSections() const { return static_cast<int>(sections_.size()); }
    int numberOfRowsInSection(int section) const;
    PSTableCell* cellForRowAtIndexPath(NSIndexPath indexPath) const;
    std::vector<PSTableCell*> visibleCells() const;
    std::optional<NSIndexPath> indexPathForCell(const PSTableCell* cell) const;
    void deselectRowAtIndexPath(NSIndexPath, bool) {}

    QWidget* tableHeaderView() const { return header_; }
    void setTableHeaderView(QWidget* header);

    double contentInsetTop() const { return insetTop_; }
    void setContentInsetTop(double inset);
    void setContentOffsetY(double y);
    double contentOffsetY() const;

    // The grouped style's measures, in points.
    static constexpr double kSideInset = 16;
    static constexpr double kGroupRadius = 10;

protected:
    void resizeEvent(QResizeEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    struct Section {
        QString header;
        QString footer;
        std::vector<QPointer<PSTableCell>> cells;
    };
    class Content;

    void adopt(PSTableCell* cell);
    // The rows the keyboard stops on, top to bottom.
    std::vector<PSTableCell*> focusableCells() const;
    void focusCell(PSTableCell* cell);
    void moveFocus(const PSTableCell* from, int step);
    void moveFocusByPage(const PSTableCell* from, int direction);

    UITableViewDataSource* dataSource_;
    Content* content_;
    std::vector<Section> sections_;
    QPointer<QWidget> header_;
    double insetTop_ = 0;
};
