#include "PSTableCell.h"

#include "QtConversions.h"
#include "UIImageView.h"
#include "UIView.h"

#include <QAbstractButton>
#include <QAccessible>
#include <QKeyEvent>
#include <QLabel>
#include <QPainter>

namespace {

constexpr double kMargin = 16;
// Room for an icon, or for a picture a page reserves beside the label (a preview).
constexpr int kMaxImageWidth = 120;
const QColor kLabelColor(0, 0, 0);
const QColor kDetailColor(138, 138, 142);

void setLabelColor(QLabel* label, const QColor& color)
{
    if (label->palette().color(QPalette::WindowText) == color)
        return;
    QPalette palette = label->palette();
    palette.setColor(QPalette::WindowText, color);
    label->setPalette(palette);
}

} // namespace

const ObjCClass& PSTableCell::staticClass()
{
    static const ObjCClass& cls = ClassBuilder<PSTableCell>("PSTableCell", &NSObject::staticClass()).build();
    return cls;
}

PSTableCell::PSTableCell(int style, const std::string& reuseIdentifier, std::shared_ptr<PSSpecifier> specifier)
    : specifier_(std::move(specifier)), reuseIdentifier_(reuseIdentifier), style_(style)
{
    setFocusPolicy(Qt::StrongFocus);
    content_ = new QWidget(this);
    content_->setAttribute(Qt::WA_TransparentForMouseEvents, false);
    imageView_ = new UIImageView(UIImage(), content_);
    imageView_->hide();
    textLabel_ = new QLabel(content_);
    textLabel_->setFont(systemFont(17));
    textLabel_->setTextFormat(Qt::PlainText);
    setLabelColor(textLabel_, kLabelColor);
    detailLabel_ = new QLabel(content_);
    detailLabel_->setFont(systemFont(17));
    detailLabel_->setTextFormat(Qt::PlainText);
    detailLabel_->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    setLabelColor(detailLabel_, kDetailColor);
    for (QWidget* part : {static_cast<QWidget*>(imageView_), static_cast<QWidget*>(textLabel_),
                          static_cast<QWidget*>(detailLabel_)})
        part->setAttribute(Qt::WA_TransparentForMouseEvents);
    content_->setAttribute(Qt::WA_TransparentForMouseEvents);
    if (specifier_)
        refreshCellContentsWithSpecifier(specifier_);
}

const ObjCClass& PSTableCell::cellClassForSpecifier(const PSSpecifier& specifier)
{
    const char* name = "PSTableCell";
    if (specifier.cellType() == PSSwitchCell)
        name = "PSSwitchTableCell";
    else if (specifier.cellType() == PSSliderCell)
        name = "PSSliderTableCell";
    const ObjCClass* cls = ObjCClass::named(name);
    return cls ? *cls : staticClass();
}

void PSTableCell::setAccessoryView(QWidget* view)
{
    if (accessoryView_ && accessoryView_ != view && accessoryView_->parent() == this)
        accessoryView_->deleteLater();
    accessoryView_ = view;
    if (view) {
        view->setParent(this);
        view->show();
    }
    layoutSubviews();
    update();
}

void PSTableCell::setAccessoryType(UITableViewCellAccessoryType type)
{
    accessoryType_ = type;
    layoutSubviews();
    updateAccessibility();
    update();
}

void PSTableCell::refreshCellContentsWithSpecifier(const std::shared_ptr<PSSpecifier>& specifier)
{
    if (!specifier)
        return;
    textLabel_->setText(QString::fromStdString(specifier->name()));
    Id icon = specifier->propertyForKey("iconImage");
    if (const UIImage* picture = icon.image(); picture && *picture) {
        imageView_->setImage(*picture);
        imageView_->show();
    }
    switch (specifier->cellType()) {
    case PSLinkCell:
    case PSLinkListCell:
        if (specifier->detailControllerClass() || specifier->cellType() == PSLinkListCell
            || specifier->propertyForKey("isController").boolValue())
            setAccessoryType(UITableViewCellAccessoryDisclosureIndicator);
        break;
    case PSButtonCell:
        setLabelColor(textLabel_, toQColor(UIView::effectiveTintColor(this)));
        break;
    default:
        break;
    }
    updateAccessibility();
    layoutSubviews();
}

void PSTableCell::setValue(const Id& value)
{
    value_ = value;
    QString shown;
    if (specifier_ && specifier_->cellType() == PSLinkListCell) {
        if (std::optional<std::string> title = specifier_->titleForValue(value.plistValue()))
            shown = QString::fromStdString(*title);
        else if (const std::string* text = value.string())
            shown = QString::fromStdString(*text);
    } else if (const std::string* text = value.string()) {
        shown = QString::fromStdString(*text);
    } else if (const PlistValue* number = value.plist(); number && number->isNumber()) {
        shown = QString::number(number->doubleValue());
    }
    detailLabel_->setText(shown);
    updateAccessibility();
    layoutSubviews();
}

bool PSTableCell::isSelectable() const
{
    if (!specifier_)
        return false;
    switch (specifier_->cellType()) {
    case PSLinkCell:
    case PSLinkListCell:
    case PSListItemCell:
    case PSButtonCell:
        return true;
    default:
        return !specifier_->action().empty();
    }
}

bool PSTableCell::acceptsKeyboardFocus() const
{
    if (isSelectable())
        return true;
    switch (type()) {
    case PSSwitchCell:
    case PSSliderCell:
    case PSEditTextCell:
    case PSSecureEditTextCell:
    case PSEditTextViewCell:
    case PSSegmentCell:
        return true;
    default:
        return false;
    }
}

void PSTableCell::activate()
{
    if (isSelectable())
        emit tapped(this);
}

void PSTableCell::layoutSubviews()
{
    content_->setGeometry(rect());
    double left = kMargin;
    if (!imageView_->isHidden() && imageView_->image()) {
        QSize size = imageView_->sizeHint().boundedTo(QSize(kMaxImageWidth, std::max(1, height() - 8)));
        imageView_->setGeometry(static_cast<int>(left), (height() - size.height()) / 2, size.width(), size.height());
        left += size.width() + 15;
    }
    separatorInset_ = left;

    double right = width() - kMargin;
    if (accessoryView_) {
        QSize size = accessoryView_->size().isEmpty() ? accessoryView_->sizeHint() : accessoryView_->size();
        accessoryView_->resize(size);
        right -= size.width();
        accessoryView_->move(static_cast<int>(right), (height() - size.height()) / 2);
        right -= 8;
    } else if (accessoryType_ == UITableViewCellAccessoryDisclosureIndicator) {
        right -= 8 + 12;
    } else if (accessoryType_ == UITableViewCellAccessoryCheckmark) {
        right -= 14 + 10;
    }

    int textWidth = textLabel_->sizeHint().width();
    int detailWidth = detailLabel_->text().isEmpty() ? 0 : detailLabel_->sizeHint().width();
    double available = std::max(0.0, right - left);
    detailWidth = std::min<int>(detailWidth, static_cast<int>(available * 0.6));
    textWidth = std::min<int>(textWidth, static_cast<int>(available - (detailWidth ? detailWidth + 8 : 0)));
    textLabel_->setGeometry(static_cast<int>(left), 0, std::max(0, textWidth), height());
    detailLabel_->setGeometry(static_cast<int>(right) - detailWidth, 0, detailWidth, height());
    if (specifier_ && specifier_->cellType() == PSButtonCell)
        setLabelColor(textLabel_, toQColor(UIView::effectiveTintColor(this)));
}

QPainterPath PSTableCell::backgroundShape() const
{
    QPainterPath path;
    QRectF area(rect());
    double radius = UIView::masksToBounds(this) ? UIView::cornerRadius(this) : 0;
    double top = firstInGroup_ ? std::max(radius, groupRadius_) : radius;
    double bottom = lastInGroup_ ? std::max(radius, groupRadius_) : radius;
    path.moveTo(area.left(), area.top() + top);
    path.arcTo(QRectF(area.left(), area.top(), 2 * top, 2 * top), 180, -90);
    path.lineTo(area.right() - top, area.top());
    path.arcTo(QRectF(area.right() - 2 * top, area.top(), 2 * top, 2 * top), 90, -90);
    path.lineTo(area.right(), area.bottom() - bottom);
    path.arcTo(QRectF(area.right() - 2 * bottom, area.bottom() - 2 * bottom, 2 * bottom, 2 * bottom), 0, -90);
    path.lineTo(area.left() + bottom, area.bottom());
    path.arcTo(QRectF(area.left(), area.bottom() - 2 * bottom, 2 * bottom, 2 * bottom), 270, -90);
    path.closeSubpath();
    return path;
}

void PSTableCell::setGroupPosition(bool first, bool last, double radius)
{
    firstInGroup_ = first;
    lastInGroup_ = last;
    groupRadius_ = radius;
    update();
}

void PSTableCell::paintEvent(QPaintEvent*)
{
    // Button rows follow the tint of whatever page they are on now.
    if (specifier_ && specifier_->cellType() == PSButtonCell)
        setLabelColor(textLabel_, toQColor(UIView::effectiveTintColor(this)));
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(pressed_ && isSelectable() ? QColor(209, 209, 214) : QColor(Qt::white));
    painter.drawPath(backgroundShape());

    if (!lastInGroup_)
        painter.fillRect(QRectF(separatorInset_, height() - 0.5, width() - separatorInset_, 0.5), QColor(198, 198, 200));

    QColor tint = toQColor(UIView::effectiveTintColor(this));
    if (accessoryType_ == UITableViewCellAccessoryDisclosureIndicator && !accessoryView_) {
        QPen pen(QColor(196, 196, 199), 2.2, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin);
        painter.setPen(pen);
        double x = width() - kMargin - 8;
        double y = height() / 2.0;
        painter.drawPolyline(QPolygonF({QPointF(x + 1, y - 6), QPointF(x + 7, y), QPointF(x + 1, y + 6)}));
    } else if (accessoryType_ == UITableViewCellAccessoryCheckmark && !accessoryView_) {
        QPen pen(tint, 2.2, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin);
        painter.setPen(pen);
        double x = width() - kMargin - 14;
        double y = height() / 2.0;
        painter.drawPolyline(QPolygonF({QPointF(x, y), QPointF(x + 5, y + 5), QPointF(x + 14, y - 6)}));
    }
    if (hasFocus()) {
        painter.setPen(QPen(tint, 2));
        painter.setBrush(Qt::NoBrush);
        painter.drawPath(backgroundShape());
    }
}

void PSTableCell::resizeEvent(QResizeEvent* event)
{
    QWidget::resizeEvent(event);
    layoutSubviews();
}

void PSTableCell::mousePressEvent(QMouseEvent* event)
{
    if (event->button() == Qt::LeftButton && isSelectable()) {
        pressed_ = true;
        update();
    }
    event->accept();
}

void PSTableCell::mouseReleaseEvent(QMouseEvent* event)
{
    bool wasPressed = pressed_;
    pressed_ = false;
    update();
    if (wasPressed && rect().contains(event->position().toPoint()))
        activate();
    event->accept();
}

void PSTableCell::keyPressEvent(QKeyEvent* event)
{
    switch (event->key()) {
    case Qt::Key_Return:
    case Qt::Key_Enter:
        activate();
        return;
    case Qt::Key_Space:
        if (auto* button = qobject_cast<QAbstractButton*>(accessoryView_.data()))
            button->click();
        else
            activate();
        return;
    default:
        QWidget::keyPressEvent(event);
    }
}

void PSTableCell::focusInEvent(QFocusEvent* event)
{
    QWidget::focusInEvent(event);
    update();
}

void PSTableCell::focusOutEvent(QFocusEvent* event)
{
    QWidget::focusOutEvent(event);
    update();
}

QString PSTableCell::accessibleValue() const
{
    if (accessoryType_ == UITableViewCellAccessoryCheckmark)
        return QStringLiteral("selected");
    return detailLabel_->text();
}

void PSTableCell::setAccessibilityLabel(const QString& label)
{
    accessibilityLabel_ = label;
    updateAccessibility();
}

void PSTableCell::updateAccessibility()
{
    setAccessibleName(textLabel_->text().isEmpty() ? accessibilityLabel_ : textLabel_->text());
    setAccessibleDescription(accessibleValue());
    if (QAccessible::isActive()) {
        QAccessibleValueChangeEvent change(this, accessibleValue());
        QAccessible::updateAccessibility(&change);
    }
}
