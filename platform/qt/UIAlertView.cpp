#include "UIAlertView.h"

#include "UIApplication.h"
#include "UIButton.h"
#include "UITextField.h"
#include "UIView.h"

#include <QApplication>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QPainter>
#include <QVBoxLayout>

#include <algorithm>

namespace {

std::vector<UIAlertView*>& shownAlerts()
{
    static std::vector<UIAlertView*> alerts;
    return alerts;
}

// A button of the alert with the hairlines that separate it from the text and its neighbour.
class AlertButton : public UIButton {
public:
    AlertButton(const QString& title, bool leftLine, QWidget* parent) : UIButton(title, parent), leftLine_(leftLine)
    {
        setFixedHeight(44);
        setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    }

protected:
    void paintEvent(QPaintEvent* event) override
    {
        {
            QPainter painter(this);
            if (isDown())
                painter.fillRect(rect(), QColor(0, 0, 0, 20));
            painter.fillRect(QRectF(0, 0, width(), 0.5), QColor(60, 60, 67, 74));
            if (leftLine_)
                painter.fillRect(QRectF(0, 0, 0.5, height()), QColor(60, 60, 67, 74));
        }
        UIButton::paintEvent(event);
    }

private:
    bool leftLine_;
};

class AlertBox : public QWidget {
public:
    using QWidget::QWidget;

protected:
    void paintEvent(QPaintEvent*) override
    {
        QPainter painter(this);
        painter.setRenderHint(QPainter::Antialiasing);
        painter.setPen(Qt::NoPen);
        painter.setBrush(QColor(242, 242, 242));
        painter.drawRoundedRect(QRectF(rect()), 14, 14);
    }
};

QLabel* wrappedLabel(const std::string& text, const QFont& font, QWidget* parent)
{
    auto* label = new QLabel(QString::fromStdString(text), parent);
    label->setFont(font);
    label->setWordWrap(true);
    label->setAlignment(Qt::AlignCenter);
    label->setTextFormat(Qt::PlainText);
    label->setVisible(!text.empty());
    return label;
}

} // namespace

UIAlertView::UIAlertView(std::string title, std::string message, UIAlertViewDelegate* delegate,
                         std::optional<std::string> cancelButtonTitle, std::vector<std::string> otherButtonTitles)
    : title_(std::move(title)), message_(std::move(message)), delegate_(delegate), hasCancel_(cancelButtonTitle.has_value())
{
    if (auto* object = dynamic_cast<QObject*>(delegate)) {
        delegateObject_ = object;
        delegateWatched_ = true;
    }
    if (cancelButtonTitle)
        buttonTitles_.push_back(*cancelButtonTitle);
    for (std::string& other : otherButtonTitles)
        buttonTitles_.push_back(std::move(other));
    setAttribute(Qt::WA_DeleteOnClose, false);
    setFocusPolicy(Qt::StrongFocus);
    setAccessibleName(QString::fromStdString(title_));
    setAccessibleDescription(QString::fromStdString(message_));
}

UIAlertView::~UIAlertView()
{
    std::erase(shownAlerts(), this);
}

UIAlertViewDelegate* UIAlertView::delegate() const
{
    return delegateWatched_ && !delegateObject_ ? nullptr : delegate_;
}

void UIAlertView::setAlertViewStyle(Style style)
{
    style_ = style;
    if (style_ == UIAlertViewStylePlainTextInput && !field_) {
        field_ = new UITextField(this);
        field_->hide();
    }
}

UITextField* UIAlertView::textFieldAtIndex(int index) const
{
    return index == 0 && style_ == UIAlertViewStylePlainTextInput ? field_ : nullptr;
}

std::string UIAlertView::buttonTitleAtIndex(int index) const
{
    return index >= 0 && index < numberOfButtons() ? buttonTitles_[static_cast<std::size_t>(index)] : std::string();
}

void UIAlertView::build()
{
    box_ = new AlertBox(this);
    box_->setFixedWidth(270);
    auto* column = new QVBoxLayout(box_);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(0);

    auto* text = new QVBoxLayout();
    text->setContentsMargins(16, 19, 16, 18);
    text->setSpacing(4);
    text->addWidget(wrappedLabel(title_, systemFont(17, QFont::DemiBold), box_));
    text->addWidget(wrappedLabel(message_, systemFont(13), box_));
    if (field_) {
        field_->setParent(box_);
        field_->show();
        text->addSpacing(12);
        text->addWidget(field_);
        accessoryHolder_ = new QVBoxLayout();
        text->addLayout(accessoryHolder_);
        auto showAccessory = [this] {
            if (QWidget* accessory = field_->inputAccessoryView()) {
                accessory->setParent(box_);
                accessoryHolder_->addWidget(accessory);
                accessory->show();
            }
        };
        connect(field_, &UITextField::accessoryViewChanged, this, showAccessory);
        showAccessory();
    }
    column->addLayout(text);

    // Two buttons share a row, cancel on the left; otherwise they stack, cancel last.
    std::vector<int> order;
    for (int i = hasCancel_ ? 1 : 0; i < numberOfButtons(); ++i)
        order.push_back(i);
    bool row = numberOfButtons() == 2;
    if (hasCancel_) {
        if (row)
            order.insert(order.begin(), 0);
        else
            order.push_back(0);
    }
    QBoxLayout* buttonLayout = row ? static_cast<QBoxLayout*>(new QHBoxLayout()) : new QVBoxLayout();
    buttonLayout->setSpacing(0);
    buttons_.assign(static_cast<std::size_t>(numberOfButtons()), nullptr);
    for (std::size_t position = 0; position < order.size(); ++position) {
        int index = order[position];
        auto* button = new AlertButton(QString::fromStdString(buttonTitleAtIndex(index)), row && position > 0, box_);
        button->setEmphasised(index == cancelButtonIndex());
        connect(button, &QAbstractButton::clicked, this, [this, index] { clickButtonAtIndex(index); });
        buttons_[static_cast<std::size_t>(index)] = button;
        buttonLayout->addWidget(button);
    }
    column->addLayout(buttonLayout);
}

void UIAlertView::show()
{
    if (shown_)
        return;
    if (!box_)
        build();
    QWidget* window = UIApplication::sharedApplication().keyWindow();
    if (window) {
        setParent(window);
        UIView::setTintColor(this, UIView::effectiveTintColor(window));
        window->installEventFilter(this);
    } else {
        setWindowFlags(Qt::Dialog);
        setWindowTitle(QString::fromStdString(title_));
    }
    shown_ = true;
    // The window's focus child, which is kept even while the window is not the active one.
    previousFocus_ = window ? window->focusWidget() : QApplication::focusWidget();
    // One alert at a time: the newest stands, the ones below wait for it to go.
    for (UIAlertView* below : shownAlerts())
        below->QWidget::hide();
    shownAlerts().push_back(this);
    place();
    QWidget::show();
    raise();
    if (field_)
        field_->setFocus();
    else
        setFocus();
}

void UIAlertView::place()
{
    // Wrapped texts need their height for the box's width, which adjustSize does not ask.
    box_->setFixedHeight(box_->layout()->heightForWidth(box_->width()));
    QWidget* window = parentWidget();
    if (window)
        setGeometry(window->rect());
    else
        resize(box_->width() + 40, box_->height() + 40);
    box_->move((width() - box_->width()) / 2, (height() - box_->height()) / 2);
}

bool UIAlertView::eventFilter(QObject* watched, QEvent* event)
{
    if (watched == parentWidget() && event->type() == QEvent::Resize)
        place();
    return QWidget::eventFilter(watched, event);
}

void UIAlertView::clickButtonAtIndex(int index)
{
    if (!shown_ || index < 0 || index >= numberOfButtons())
        return;
    QPointer<UIAlertView> self(this);
    if (UIAlertViewDelegate* listener = delegate())
        listener->alertViewClickedButtonAtIndex(this, index);
    if (self && shown_)
        dismissWithClickedButtonIndex(index, true);
}

void UIAlertView::dismissWithClickedButtonIndex(int index, bool)
{
    if (!shown_)
        return;
    shown_ = false;
    std::erase(shownAlerts(), this);
    if (parentWidget())
        parentWidget()->removeEventFilter(this);
    hide();
    if (!shownAlerts().empty()) {
        UIAlertView* next = shownAlerts().back();
        next->QWidget::show();
        next->raise();
        if (next->field_)
            next->field_->setFocus();
        else
            next->setFocus();
    } else if (previousFocus_ && previousFocus_->isVisible() && !isAncestorOf(previousFocus_)) {
        previousFocus_->setFocus(Qt::OtherFocusReason);
    }
    if (UIAlertViewDelegate* listener = delegate())
        listener->alertViewDidDismissWithButtonIndex(this, index);
    deleteLater();
}

std::vector<UIAlertView*> UIAlertView::visibleAlerts()
{
    return shownAlerts();
}

void UIAlertView::paintEvent(QPaintEvent*)
{
    if (!parentWidget())
        return;
    QPainter painter(this);
    painter.fillRect(rect(), QColor(0, 0, 0, 51));
}

void UIAlertView::keyPressEvent(QKeyEvent* event)
{
    if (event->key() == Qt::Key_Escape && hasCancel_) {
        clickButtonAtIndex(0);
        return;
    }
    if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) {
        // Enter presses the first button that is not the cancel button.
        clickButtonAtIndex(numberOfButtons() > (hasCancel_ ? 1 : 0) ? (hasCancel_ ? 1 : 0) : 0);
        return;
    }
    QWidget::keyPressEvent(event);
}
