#include "QLProfileCell.h"

#include "platform/qt/NSBundle.h"

#include <QContextMenuEvent>
#include <QKeyEvent>
#include <QLabel>
#include <QMenu>

const ObjCClass& QLProfileCell::staticClass()
{
    static const ObjCClass& cls = ClassBuilder<QLProfileCell>("QLProfileCell", &PSTableCell::staticClass()).build();
    return cls;
}

void QLProfileCell::describeProfile(bool complete, bool deletable)
{
    complete_ = complete;
    deletable_ = deletable;
    updateAccessibility();
}

QString QLProfileCell::localized(const char* key) const
{
    return QString::fromStdString(NSBundle::bundleForClass(isa()).localizedStringForKey(key, key));
}

QString QLProfileCell::accessibleValue() const
{
    return localized(complete_ ? "PROFILE_SPOKEN_ALL" : "PROFILE_SPOKEN_COLORS") + QStringLiteral(", ")
        + localized(deletable_ ? "PROFILE_SPOKEN_DELETABLE" : "PROFILE_SPOKEN_KEPT");
}

QMenu* QLProfileCell::makeContextMenu()
{
    if (!deletable_)
        return nullptr;
    auto* menu = new QMenu(this);
    menu->setAttribute(Qt::WA_DeleteOnClose);
    QAction* remove = menu->addAction(localized("Delete"));
    connect(remove, &QAction::triggered, this, [this] { emit deleteRequested(this); });
    return menu;
}

void QLProfileCell::keyPressEvent(QKeyEvent* event)
{
    if (event->key() == Qt::Key_Delete && (event->modifiers() & ~Qt::KeypadModifier) == Qt::NoModifier) {
        if (deletable_)
            emit deleteRequested(this);
        event->accept();
        return;
    }
    PSTableCell::keyPressEvent(event);
}

void QLProfileCell::contextMenuEvent(QContextMenuEvent* event)
{
    event->accept();
    QMenu* menu = makeContextMenu();
    if (!menu)
        return;
    QPoint at = event->reason() == QContextMenuEvent::Keyboard ? mapToGlobal(rect().center()) : event->globalPos();
    menu->popup(at);
}
