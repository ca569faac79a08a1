#include "UITableView.h"

#include "PSTableCell.h"
#include "UIView.h"

#include <QKeyEvent>
#include <QLabel>
#include <QPainter>
#include <QScrollBar>

#include <cmath>

namespace {

const QColor kGroundColor(242, 242, 247);
const QColor kHeadingColor(109, 109, 114);

QLabel* sectionLabel(const QString& text, bool heading, QWidget* parent)
{
    auto* label = new QLabel(heading ? text.toUpper() : text, parent);
    label->setFont(systemFont(13));
    label->setWordWrap(!heading);
    label->setTextFormat(Qt::PlainText);
    QPalette palette = label->palette();
    palette.setColor(QPalette::WindowText, kHeadingColor);
    label->setPalette(palette);
    label->setAccessibleName(text);
    return label;
}

} // namespace

class UITableView::Content : public QWidget {
public:
    explicit Content(UITableView* table) : QWidget(table), table_(table) {}

    std::vector<std::pair<QLabel*, QLabel*>> labels; // heading and footer of each section

protected:
    void paintEvent(QPaintEvent*) override
    {
        QPainter painter(this);
        painter.fillRect(rect(), kGroundColor);
    }

private:
    UITableView* table_;
};

UITableView::UITableView(UITableViewDataSource* dataSource, QWidget* parent)
    : QScrollArea(parent), dataSource_(dataSource)
{
    setFrameShape(QFrame::NoFrame);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setVerticalScrollBarPolicy(Qt::ScrollBarAsNeeded);
    setWidgetResizable(false);
    content_ = new Content(this);
    setWidget(content_);
    QPalette palette = viewport()->palette();
    palette.setColor(QPalette::Window, kGroundColor);
    viewport()->setPalette(palette);
    viewport()->setAutoFillBackground(true);
    setFocusPolicy(Qt::NoFocus);
}

int UITableView::numberOfRowsInSection(int section) const
{
    return section >= 0 && section < numberOfSections()
        ? static_cast<int>(sections_[static_cast<std::size_t>(section)].cells.size())
        : 0;
}

PSTableCell* UITableView::cellForRowAtIndexPath(NSIndexPath indexPath) const
{
    if (indexPath.row < 0 || indexPath.row >= numberOfRowsInSection(indexPath.section))
        return nullptr;
    return sections_[static_cast<std::size_t>(indexPath.section)].cells[static_cast<std::size_t>(indexPath.row)];
}

std::vector<PSTableCell*> UITableView::visibleCells() const
{
    std::vector<PSTableCell*> cells;
    for (const Section& section : sections_)
        for (const QPointer<PSTableCell>& cell : section.cells)
            if (cell)
                cells.push_back(cell);
    return cells;
}

std::optional<NSIndexPath> UITableView::indexPathForCell(const PSTableCell* cell) const
{
    for (std::size_t s = 0; s < sections_.size(); ++s)
        for (std::size_t r = 0; r < sections_[s].cells.size(); ++r)
            if (sections_[s].cells[r] == cell)
                return NSIndexPath{static_cast<int>(s), static_cast<int>(r)};
    return std::nullopt;
}

void UITableView::reloadData()
{
    int scrolled = verticalScrollBar()->value();
    QWidget* focused = content_->focusWidget();
    std::optional<NSIndexPath> focusedPath;
    if (auto* cell = dynamic_cast<PSTableCell*>(focused))
        focusedPath = indexPathForCell(cell);

    // The data source may hand back a row it made before; only the rows it no longer uses go.
    std::vector<QPointer<PSTableCell>> previous;
    for (Section& section : sections_)
        for (QPointer<PSTableCell>& cell : section.cells)
            if (cell)
                previous.push_back(cell);
    for (auto& [heading, footer] : content_->labels) {
        delete heading;
        delete footer;
    }
    content_->labels.clear();
    sections_.clear();

    std::vector<PSTableCell*> adopted;
    int sectionCount = dataSource_->numberOfSectionsInTableView(this);
    for (int s = 0; s < sectionCount; ++s) {
        Section section;
        section.header = QString::fromStdString(dataSource_->tableViewTitleForHeaderInSection(this, s));
        section.footer = QString::fromStdString(dataSource_->tableViewTitleForFooterInSection(this, s));
        content_->labels.emplace_back(section.header.isEmpty() ? nullptr : sectionLabel(section.header, true, content_),
                                      section.footer.isEmpty() ? nullptr : sectionLabel(section.footer, false, content_));
        sections_.push_back(std::move(section));
        int rows = dataSource_->tableViewNumberOfRowsInSection(this, s);
        for (int r = 0; r < rows; ++r) {
            PSTableCell* cell = dataSource_->tableViewCellForRowAtIndexPath(this, {s, r});
            if (!cell)
                continue;
            if (cell->parentWidget() != content_) {
                adopt(cell);
                adopted.push_back(cell);
            }
            sections_.back().cells.push_back(cell);
        }
    }
    for (QPointer<PSTableCell>& old : previous)
        if (old && !indexPathForCell(old)) {
            old->hide();
            old->deleteLater();
        }
    for (auto& [heading, footer] : content_->labels) {
        if (heading)
            heading->show();
        if (footer)
            footer->show();
    }
    relayout();
    // A reload shows the same place of the page, not its top.
    verticalScrollBar()->setValue(scrolled);
    for (std::size_t s = 0; s < sections_.size(); ++s)
        for (std::size_t r = 0; r < sections_[s].cells.size(); ++r)
            if (PSTableCell* cell = sections_[s].cells[r]) {
                cell->show();
                if (std::find(adopted.begin(), adopted.end(), cell) != adopted.end())
                    cell->didMoveToSuperview();
                cell->layoutSubviews();
                dataSource_->tableViewWillDisplayCell(this, cell, {static_cast<int>(s), static_cast<int>(r)});
            }
    if (focusedPath) {
        PSTableCell* again = cellForRowAtIndexPath(*focusedPath);
        if (again && again->focusPolicy() != Qt::NoFocus)
            again->setFocus();
    }
}

void UITableView::adopt(PSTableCell* cell)
{
    cell->setParent(content_);
    cell->setFocusPolicy(cell->acceptsKeyboardFocus() ? Qt::StrongFocus : Qt::NoFocus);
    cell->installEventFilter(this);
    connect(cell, &PSTableCell::tapped, this, [this](PSTableCell* tapped) {
        if (std::optional<NSIndexPath> path = indexPathForCell(tapped))
            dataSource_->tableViewDidSelectRowAtIndexPath(this, *path);
    });
}

void UITableView::relayout()
{
    double width = viewport()->width();
    double groupWidth = std::max(0.0, width - 2 * kSideInset);
    double y = insetTop_;
    if (header_) {
        header_->setParent(content_);
        int headerHeight = header_->height();
        header_->setGeometry(0, static_cast<int>(y), static_cast<int>(width), headerHeight);
        header_->show();
        y += headerHeight;
    }
    for (std::size_t s = 0; s < sections_.size(); ++s) {
        auto [heading, footer] = content_->labels[s];
        bool previousHadFooter = s > 0 && content_->labels[s - 1].second;
        if (heading) {
            y += s == 0 ? 17 : (previousHadFooter ? 22 : 28);
            int lineHeight = heading->sizeHint().height();
            heading->setGeometry(static_cast<int>(kSideInset * 2), static_cast<int>(y), static_cast<int>(groupWidth - kSideInset * 2), lineHeight);
            y += lineHeight + 7;
        } else {
            y += s == 0 ? 35 : (previousHadFooter ? 24 : 35);
        }
        const auto& cells = sections_[s].cells;
        for (std::size_t r = 0; r < cells.size(); ++r) {
            PSTableCell* cell = cells[r];
            if (!cell)
                continue;
            double rowHeight = dataSource_->tableViewHeightForRowAtIndexPath(this, {static_cast<int>(s), static_cast<int>(r)});
            if (!std::isfinite(rowHeight) || rowHeight < 0)
                rowHeight = 44;
            cell->setGroupPosition(r == 0, r + 1 == cells.size(), kGroupRadius);
            cell->setGeometry(static_cast<int>(kSideInset), static_cast<int>(std::round(y)), static_cast<int>(groupWidth),
                              static_cast<int>(std::round(rowHeight)));
            y += std::round(rowHeight);
        }
        if (footer) {
            y += 7;
            int footerWidth = static_cast<int>(groupWidth - kSideInset * 2);
            int footerHeight = footer->heightForWidth(footerWidth);
            footer->setGeometry(static_cast<int>(kSideInset * 2), static_cast<int>(y), footerWidth, footerHeight);
            y += footerHeight;
        }
    }
    y += 35;
    content_->resize(static_cast<int>(width), static_cast<int>(std::ceil(y)));
}

void UITableView::setTableHeaderView(QWidget* header)
{
    if (header_ && header_ != header)
        header_->deleteLater();
    header_ = header;
    relayout();
}

void UITableView::setContentInsetTop(double inset)
{
    insetTop_ = std::isfinite(inset) ? std::max(0.0, inset) : 0;
    relayout();
}

void UITableView::setContentOffsetY(double y)
{
    // The inset area is part of the content here, so an offset of -inset is the very top.
    verticalScrollBar()->setValue(static_cast<int>(std::round(y + insetTop_)));
}

double UITableView::contentOffsetY() const
{
    return verticalScrollBar()->value() - insetTop_;
}

void UITableView::resizeEvent(QResizeEvent* event)
{
    QScrollArea::resizeEvent(event);
    relayout();
}

std::vector<PSTableCell*> UITableView::focusableCells() const
{
    std::vector<PSTableCell*> cells;
    for (PSTableCell* cell : visibleCells())
        if (cell->focusPolicy() != Qt::NoFocus && !cell->isHidden())
            cells.push_back(cell);
    return cells;
}

void UITableView::focusCell(PSTableCell* cell)
{
    if (!cell)
        return;
    cell->setFocus(Qt::OtherFocusReason);
    ensureWidgetVisible(cell, 0, 20);
}

void UITableView::moveFocus(const PSTableCell* from, int step)
{
    std::vector<PSTableCell*> cells = focusableCells();
    auto at = std::find(cells.begin(), cells.end(), from);
    if (at == cells.end() || cells.empty())
        return;
    std::ptrdiff_t index = std::clamp<std::ptrdiff_t>((at - cells.begin()) + step, 0,
                                                      static_cast<std::ptrdiff_t>(cells.size()) - 1);
    focusCell(cells[static_cast<std::size_t>(index)]);
}

void UITableView::moveFocusByPage(const PSTableCell* from, int direction)
{
    // The row a screen's height away, or the last one before it, as the platform's lists page.
    std::vector<PSTableCell*> cells = focusableCells();
    auto at = std::find(cells.begin(), cells.end(), from);
    if (at == cells.end())
        return;
    int target = from->y() + direction * std::max(1, viewport()->height() - from->height());
    PSTableCell* chosen = *at;
    if (direction > 0) {
        for (auto it = at + 1; it != cells.end() && (*it)->y() <= target; ++it)
            chosen = *it;
        if (chosen == *at && at + 1 != cells.end())
            chosen = *(at + 1);
    } else {
        for (auto it = std::make_reverse_iterator(at); it != cells.rend() && (*it)->y() >= target; ++it)
            chosen = *it;
        if (chosen == *at && at != cells.begin())
            chosen = *(at - 1);
    }
    focusCell(chosen);
}

bool UITableView::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() == QEvent::KeyPress) {
        auto* key = static_cast<QKeyEvent*>(event);
        auto* cell = dynamic_cast<PSTableCell*>(watched);
        if (cell && key->modifiers() == Qt::NoModifier) {
            std::vector<PSTableCell*> cells;
            switch (key->key()) {
            case Qt::Key_Up:
                moveFocus(cell, -1);
                return true;
            case Qt::Key_Down:
                moveFocus(cell, 1);
                return true;
            case Qt::Key_PageUp:
                moveFocusByPage(cell, -1);
                return true;
            case Qt::Key_PageDown:
                moveFocusByPage(cell, 1);
                return true;
            case Qt::Key_Home:
            case Qt::Key_End:
                cells = focusableCells();
                if (!cells.empty())
                    focusCell(key->key() == Qt::Key_Home ? cells.front() : cells.back());
                return true;
            default:
                break;
            }
        }
    } else if (event->type() == QEvent::FocusIn) {
        if (auto* cell = dynamic_cast<PSTableCell*>(watched))
            ensureWidgetVisible(cell, 0, 20);
    }
    return QScrollArea::eventFilter(watched, event);
}
