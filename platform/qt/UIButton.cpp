#include "UIButton.h"

#include "QtConversions.h"
#include "UIView.h"

#include <QPainter>

#include <cmath>

UIButton::UIButton(const QString& title, QWidget* parent) : QAbstractButton(parent)
{
    setText(title);
    setFont(systemFont(17));
    setCursor(Qt::PointingHandCursor);
    setFocusPolicy(Qt::StrongFocus);
    setAccessibleName(title);
}

void UIButton::setBackgroundImage(UIImage image)
{
    background_ = std::move(image);
    updateGeometry();
    update();
}

void UIButton::setTitleFont(const QFont& font)
{
    setFont(font);
    updateGeometry();
}

void UIButton::setEmphasised(bool emphasised)
{
    emphasised_ = emphasised;
    QFont bold = font();
    bold.setWeight(emphasised ? QFont::DemiBold : QFont::Normal);
    setFont(bold);
}

void UIButton::setBackChevron(bool chevron)
{
    chevron_ = chevron;
    updateGeometry();
    update();
}

QSize UIButton::sizeHint() const
{
    if (background_ && text().isEmpty()) {
        CGSize size = background_.size();
        return QSize(static_cast<int>(std::ceil(size.width)), static_cast<int>(std::ceil(size.height)));
    }
    QFontMetrics metrics(font());
    return QSize(metrics.horizontalAdvance(text()) + 4 + (chevron_ ? 20 : 0), std::max(metrics.height(), 30));
}

void UIButton::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    if (isDown())
        painter.setOpacity(0.3);
    if (background_)
        painter.drawImage(QRectF(rect()), toQImage(background_));
    QColor colour = isEnabled() ? toQColor(UIView::effectiveTintColor(this)) : QColor(0, 0, 0, 70);
    QRectF area(rect());
    if (chevron_) {
        double middle = height() / 2.0;
        painter.setPen(QPen(colour, 3, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
        painter.drawPolyline(QPolygonF({QPointF(11, middle - 10), QPointF(2, middle), QPointF(11, middle + 10)}));
        area.setLeft(20);
    }
    if (!text().isEmpty()) {
        painter.setPen(colour);
        painter.setFont(font());
        painter.drawText(area, chevron_ ? Qt::AlignLeft | Qt::AlignVCenter : Qt::AlignCenter, text());
    }
    if (hasFocus()) {
        painter.setOpacity(1);
        painter.setPen(QPen(toQColor(UIView::effectiveTintColor(this)), 1, Qt::DotLine));
        painter.setBrush(Qt::NoBrush);
        painter.drawRoundedRect(QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5), 4, 4);
    }
}
