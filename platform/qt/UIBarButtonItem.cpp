#include "UIBarButtonItem.h"

#include "QtConversions.h"
#include "UIButton.h"
#include "UIView.h"

#include <QHBoxLayout>
#include <QPainter>

UIBarButtonItem* UIBarButtonItem::withTitle(std::string title, std::function<void()> action, QObject* owner)
{
    auto* item = new UIBarButtonItem(Kind::Title, owner);
    item->title_ = std::move(title);
    item->action_ = std::move(action);
    return item;
}

UIBarButtonItem* UIBarButtonItem::withCustomView(QWidget* view, QObject* owner)
{
    auto* item = new UIBarButtonItem(Kind::CustomView, owner);
    item->customView_ = view;
    return item;
}

UIBarButtonItem* UIBarButtonItem::fixedSpace(double width, QObject* owner)
{
    auto* item = new UIBarButtonItem(Kind::FixedSpace, owner);
    item->width_ = width;
    return item;
}

void UIBarButtonItem::trigger() const
{
    if (action_)
        action_();
}

UIToolbar::UIToolbar(QWidget* parent) : QWidget(parent)
{
    setFixedHeight(44);
    auto* layout = new QHBoxLayout(this);
    layout->setContentsMargins(16, 0, 16, 0);
    layout->setSpacing(24);
}

void UIToolbar::setItems(const std::vector<UIBarButtonItem*>& items, bool)
{
    QLayoutItem* old;
    while ((old = layout()->takeAt(0))) {
        delete old->widget();
        delete old;
    }
    items_ = items;
    auto* row = static_cast<QHBoxLayout*>(layout());
    for (UIBarButtonItem* item : items_) {
        if (item->kind() == UIBarButtonItem::Kind::FixedSpace) {
            row->addSpacing(static_cast<int>(item->width()));
        } else if (item->kind() == UIBarButtonItem::Kind::CustomView && item->customView()) {
            row->addWidget(item->customView());
        } else {
            auto* button = new UIButton(QString::fromStdString(item->title()), this);
            connect(button, &QAbstractButton::clicked, item, [item] { item->trigger(); });
            row->addWidget(button);
        }
    }
    row->addStretch();
}

void UIToolbar::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.fillRect(rect(), QColor(246, 246, 248));
    painter.fillRect(QRectF(0, 0, width(), 0.5), QColor(0, 0, 0, 60));
}
