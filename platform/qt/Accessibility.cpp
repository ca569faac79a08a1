#include "Accessibility.h"

#include "PSTableCell.h"

#include <QAccessible>
#include <QAccessibleWidget>

namespace {

class RowInterface : public QAccessibleWidget {
public:
    explicit RowInterface(PSTableCell* cell) : QAccessibleWidget(cell, QAccessible::ListItem) {}

    QString text(QAccessible::Text kind) const override
    {
        auto* cell = static_cast<PSTableCell*>(widget());
        if (kind == QAccessible::Name)
            return cell->accessibleName();
        if (kind == QAccessible::Value)
            return cell->accessibleValue();
        return QAccessibleWidget::text(kind);
    }

    QAccessible::State state() const override
    {
        QAccessible::State state = QAccessibleWidget::state();
        auto* cell = static_cast<PSTableCell*>(widget());
        state.selectable = cell->isSelectable();
        state.checked = cell->isChecked();
        return state;
    }
};

QAccessibleInterface* rowFactory(const QString&, QObject* object)
{
    if (auto* cell = qobject_cast<PSTableCell*>(object))
        return new RowInterface(cell);
    return nullptr;
}

} // namespace

void installAccessibility()
{
    static bool installed = false;
    if (installed)
        return;
    installed = true;
    QAccessible::installFactory(rowFactory);
}
