#include "CPAccessibility.h"

#include <QAccessibleWidget>
#include <QWidget>

namespace {

constexpr const char* kRoleProperty = "ampwellAccessibleRole";

// Reports the part's description as its value too, which a plain widget does not.
class PartInterface : public QAccessibleWidget {
public:
    PartInterface(QWidget* part, QAccessible::Role role) : QAccessibleWidget(part, role) {}

    QString text(QAccessible::Text kind) const override
    {
        if (kind == QAccessible::Value)
            return widget()->accessibleDescription();
        return QAccessibleWidget::text(kind);
    }
};

QAccessibleInterface* partFactory(const QString&, QObject* object)
{
    auto* widget = qobject_cast<QWidget*>(object);
    if (!widget)
        return nullptr;
    QVariant role = widget->property(kRoleProperty);
    if (!role.isValid())
        return nullptr;
    return new PartInterface(widget, static_cast<QAccessible::Role>(role.toInt()));
}

} // namespace

void registerAccessiblePart(QWidget* part, QAccessible::Role role, const QString& name)
{
    static bool installed = false;
    if (!installed) {
        installed = true;
        QAccessible::installFactory(partFactory);
    }
    if (!part)
        return;
    part->setProperty(kRoleProperty, static_cast<int>(role));
    part->setAccessibleName(name);
}

void setAccessibleValue(QWidget* part, const QString& value)
{
    if (!part || part->accessibleDescription() == value)
        return;
    part->setAccessibleDescription(value);
    if (!QAccessible::isActive())
        return;
    QAccessibleValueChangeEvent event(part, value);
    QAccessible::updateAccessibility(&event);
}
