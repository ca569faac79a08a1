#include "UIViewController.h"

void UINavigationItem::setTitle(std::string title)
{
    title_ = std::move(title);
    emit changed();
}

void UINavigationItem::setTitleView(QWidget* view)
{
    titleView_ = view;
    emit changed();
}

void UINavigationItem::setRightBarButtonItems(const std::vector<UIBarButtonItem*>& items, bool)
{
    rightItems_.assign(items.begin(), items.end());
    emit changed();
}

const ObjCClass& UIViewController::staticClass()
{
    static const ObjCClass& cls = ClassBuilder<UIViewController>("UIViewController", &NSObject::staticClass()).build();
    return cls;
}

UIViewController::UIViewController(QWidget* parent) : QWidget(parent), navigationItem_(new UINavigationItem(this))
{
    setAutoFillBackground(false);
}

void UIViewController::loadViewIfNeeded()
{
    if (viewLoaded_)
        return;
    viewLoaded_ = true;
    loadView();
    viewDidLoad();
}

void UIViewController::setTitle(std::string title)
{
    title_ = title;
    navigationItem_->setTitle(std::move(title));
}

void UIViewController::resizeEvent(QResizeEvent* event)
{
    QWidget::resizeEvent(event);
    viewDidLayoutSubviews();
}
