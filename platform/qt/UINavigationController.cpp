#include "UINavigationController.h"

#include "QtConversions.h"
#include "UIButton.h"
#include "UIView.h"

#include <QKeySequence>
#include <QLabel>
#include <QPainter>
#include <QShortcut>
#include <QStackedLayout>
#include <QVBoxLayout>

namespace {

// The platform shortens the back button's title to "Back" when the page has none or a long one.
QString backButtonTitle(const std::string& title)
{
    QString text = QString::fromStdString(title);
    if (text.isEmpty() || text.size() > 14)
        return QStringLiteral("Back");
    return text;
}

} // namespace

UINavigationBar::UINavigationBar(QWidget* parent) : QWidget(parent)
{
    setFixedHeight(kHeight);
    back_ = new UIButton(QStringLiteral("Back"), this);
    back_->setBackChevron(true);
    back_->setFocusPolicy(Qt::TabFocus);
    back_->hide();
    title_ = new QLabel(this);
    title_->setAlignment(Qt::AlignCenter);
    title_->setFont(systemFont(17, QFont::DemiBold));
}

void UINavigationBar::setTitleTextColor(std::optional<UIColor> color)
{
    titleColor_ = color;
    QPalette palette = title_->palette();
    palette.setColor(QPalette::WindowText, color ? toQColor(*color) : QColor(Qt::black));
    title_->setPalette(palette);
}

QString UINavigationBar::shownTitle() const
{
    return !title_->isHidden() ? fullTitle_ : QString();
}

void UINavigationBar::show(UINavigationItem* item, const std::string& backTitle)
{
    if (titleView_ && titleView_->parent() == this && (!item || titleView_ != item->titleView()))
        titleView_->hide();
    for (const QPointer<QWidget>& view : rightViews_)
        if (view && view->parent() == this)
            view->hide();
    rightViews_.clear();
    for (const QPointer<QWidget>& button : madeButtons_)
        delete button.data();
    madeButtons_.clear();

    item_ = item;
    back_->setVisible(!backTitle.empty());
    backTitle_ = backButtonTitle(backTitle);
    back_->setAccessibleName(backTitle_);
    fullTitle_ = item ? QString::fromStdString(item->title()) : QString();
    title_->setText(fullTitle_);
    title_->setAccessibleName(fullTitle_);
    titleView_ = item ? item->titleView() : nullptr;
    if (titleView_) {
        titleView_->setParent(this);
        titleView_->show();
    }
    title_->setVisible(!titleView_);
    if (item)
        for (const QPointer<UIBarButtonItem>& barItem : item->rightBarButtonItems()) {
            if (!barItem)
                continue;
            QWidget* view = barItem->customView();
            if (barItem->kind() == UIBarButtonItem::Kind::Title) {
                auto* button = new UIButton(QString::fromStdString(barItem->title()), this);
                QObject::connect(button, &QAbstractButton::clicked, barItem, [item = barItem.data()] { item->trigger(); });
                madeButtons_.push_back(button);
                view = button;
            }
            if (view) {
                view->setParent(this);
                view->show();
            }
            rightViews_.push_back(view);
            if (barItem->kind() == UIBarButtonItem::Kind::FixedSpace)
                rightViews_.back() = nullptr;
        }
    arrange();
    update();
}

void UINavigationBar::arrange()
{
    constexpr int margin = 16;
    back_->setText(backTitle_);
    back_->adjustSize();
    back_->move(8, (height() - back_->height()) / 2);

    // Right items from the edge inwards; a negative fixed space pulls them toward the edge.
    double right = width() - margin;
    if (item_) {
        const auto& items = item_->rightBarButtonItems();
        for (std::size_t i = items.size(); i-- > 0;) {
            if (!items[i])
                continue;
            if (items[i]->kind() == UIBarButtonItem::Kind::FixedSpace) {
                right -= items[i]->width();
                continue;
            }
            QWidget* view = i < rightViews_.size() ? rightViews_[i].data() : nullptr;
            if (!view)
                continue;
            QSize size = view->size().isEmpty() ? view->sizeHint() : view->size();
            view->resize(size);
            right -= size.width();
            view->move(static_cast<int>(right), (height() - size.height()) / 2);
            right -= 8;
        }
    }
    auto sideFor = [&] { return std::max(!back_->isHidden() ? back_->width() + 8 : margin, width() - static_cast<int>(right)); };
    int side = sideFor();
    int titleWidth = title_->fontMetrics().horizontalAdvance(fullTitle_);
    // As on the phone, a long back title gives way to "Back" before the page's title is cut.
    if (!back_->isHidden() && titleWidth > width() - 2 * side) {
        back_->setText(QStringLiteral("Back"));
        back_->adjustSize();
        side = sideFor();
    }
    int room = std::max(0, width() - 2 * side);
    title_->setText(title_->fontMetrics().elidedText(fullTitle_, Qt::ElideRight, room));
    title_->setGeometry(side, 0, room, height());
    if (titleView_) {
        QSize size = titleView_->size().isEmpty() ? titleView_->sizeHint() : titleView_->size();
        titleView_->setGeometry((width() - size.width()) / 2, (height() - size.height()) / 2, size.width(), size.height());
    }
}

void UINavigationBar::resizeEvent(QResizeEvent* event)
{
    QWidget::resizeEvent(event);
    arrange();
}

void UINavigationBar::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.fillRect(rect(), QColor(249, 249, 249, 240));
    painter.fillRect(QRectF(0, height() - 0.5, width(), 0.5), QColor(0, 0, 0, 77));
}

const ObjCClass& UINavigationController::staticClass()
{
    static const ObjCClass& cls =
        ClassBuilder<UINavigationController>("UINavigationController", &UIViewController::staticClass()).build();
    return cls;
}

UINavigationController::UINavigationController(UIViewController* root, QWidget* parent) : UIViewController(parent)
{
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    bar_ = new UINavigationBar(this);
    layout->addWidget(bar_);
    pages_ = new QStackedLayout();
    layout->addLayout(pages_, 1);
    connect(bar_->backButton(), &QAbstractButton::clicked, this, [this] { popViewControllerAnimated(true); });
    // The desktop's own Back keys may include Alt+Left; one shortcut per sequence, since two
    // shortcuts on the same keys are ambiguous and neither fires.
    QList<QKeySequence> backKeys{QKeySequence(Qt::ALT | Qt::Key_Left)};
    for (const QKeySequence& keys : QKeySequence::keyBindings(QKeySequence::Back))
        if (!backKeys.contains(keys) && keys != QKeySequence(Qt::Key_Escape))
            backKeys.append(keys);
    for (const QKeySequence& keys : backKeys) {
        auto* shortcut = new QShortcut(keys, this);
        shortcut->setContext(Qt::WidgetWithChildrenShortcut);
        connect(shortcut, &QShortcut::activated, this, [this] { popViewControllerAnimated(true); });
    }
    auto* escape = new QShortcut(QKeySequence(Qt::Key_Escape), this);
    escape->setContext(Qt::WidgetWithChildrenShortcut);
    connect(escape, &QShortcut::activated, this, [this] {
        UIViewController* top = topViewController();
        if (!top || !top->escapePressed())
            popViewControllerAnimated(true);
    });
    if (root)
        adopt(root);
}

void UINavigationController::adopt(UIViewController* controller)
{
    controller->setNavigationController(this);
    controller->setInterfaceOrientation(interfaceOrientation());
    controller->loadViewIfNeeded();
    connect(controller->navigationItem(), &UINavigationItem::changed, this, [this, controller] {
        if (controller == topViewController())
            refreshBar();
    });
    stack_.push_back(controller);
    pages_->addWidget(controller);
    pages_->setCurrentWidget(controller);
    refreshBar();
}

UINavigationController::~UINavigationController()
{
    // The pages go with the stacked layout's widgets; the bar items they own go with them.
    stack_.clear();
}

void UINavigationController::refreshBar()
{
    UIViewController* top = topViewController();
    std::string backTitle;
    if (stack_.size() > 1) {
        UIViewController* below = stack_[stack_.size() - 2];
        backTitle = below->navigationItem()->title().empty() ? std::string("Back") : below->navigationItem()->title();
    }
    bar_->show(top ? top->navigationItem() : nullptr, backTitle);
}

void UINavigationController::pushViewController(UIViewController* controller, bool animated)
{
    if (!controller)
        return;
    UIViewController* previous = topViewController();
    if (previous) {
        focusBeforePush_[previous] = window()->focusWidget();
        previous->viewWillDisappear(animated);
    }
    adopt(controller);
    controller->viewWillAppear(animated);
    pages_->setCurrentWidget(controller);
    refreshBar();
    if (previous)
        previous->viewDidDisappear(animated);
    controller->viewDidAppear(animated);
    keepKeyboardOn(controller);
}

bool UINavigationController::popViewControllerAnimated(bool animated)
{
    if (stack_.size() < 2)
        return false;
    UIViewController* leaving = stack_.back();
    UIViewController* below = stack_[stack_.size() - 2];
    leaving->viewWillDisappear(animated);
    stack_.pop_back();
    below->viewWillAppear(animated);
    pages_->setCurrentWidget(below);
    pages_->removeWidget(leaving);
    refreshBar();
    // The row that opened the page above gets the keyboard back.
    if (QPointer<QWidget> opener = focusBeforePush_[below]; opener && below->isAncestorOf(opener))
        opener->setFocus(Qt::OtherFocusReason);
    focusBeforePush_.erase(below);
    leaving->viewDidDisappear(animated);
    below->viewDidAppear(animated);
    keepKeyboardOn(below);
    leaving->deleteLater();
    return true;
}

void UINavigationController::keepKeyboardOn(UIViewController* page)
{
    // An alert standing over the window keeps the keyboard.
    QWidget* focused = window()->focusWidget();
    if (!focused || (isAncestorOf(focused) && !page->isAncestorOf(focused)))
        page->setFocus(Qt::OtherFocusReason);
}

void UINavigationController::rotate(UIInterfaceOrientation to)
{
    UIInterfaceOrientation from = interfaceOrientation();
    if (from == to)
        return;
    UIViewController* top = topViewController();
    if (top)
        top->willRotateToInterfaceOrientation(to);
    setInterfaceOrientation(to);
    for (UIViewController* controller : stack_)
        controller->setInterfaceOrientation(to);
    if (top)
        top->didRotateFromInterfaceOrientation(from);
}

void UINavigationController::viewWillAppear(bool animated)
{
    if (UIViewController* top = topViewController())
        top->viewWillAppear(animated);
}

void UINavigationController::viewDidAppear(bool animated)
{
    if (UIViewController* top = topViewController())
        top->viewDidAppear(animated);
}
