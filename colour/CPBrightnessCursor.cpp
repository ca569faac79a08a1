#include "CPBrightnessCursor.h"

#include "platform/qt/QtConversions.h"
#include "platform/qt/UIView.h"

#include <QPainter>

#include <cmath>

CPBrightnessCursor::CPBrightnessCursor(QWidget* parent) : QWidget(parent)
{
    setAttribute(Qt::WA_TransparentForMouseEvents);
    setAttribute(Qt::WA_TranslucentBackground);
    setFocusPolicy(Qt::NoFocus);
    int side = static_cast<int>(std::ceil(cursorSize()));
    resize(side, side);
}

double CPBrightnessCursor::cursorSize()
{
    return 28;
}

void CPBrightnessCursor::setColor(const UIColor& color)
{
    if (color == color_)
        return;
    color_ = color;
    update();
}

void CPBrightnessCursor::setShowsFocus(bool shows)
{
    if (shows == showsFocus_)
        return;
    showsFocus_ = shows;
    update();
}

void CPBrightnessCursor::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    QRectF knob = QRectF(rect()).adjusted(2, 1, -2, -3);

    painter.setPen(Qt::NoPen);
    for (int i = 3; i > 0; --i) {
        painter.setBrush(QColor(0, 0, 0, 12));
        painter.drawEllipse(knob.translated(0, i * 0.6).adjusted(-i * 0.3, -i * 0.3, i * 0.3, i * 0.3));
    }
    painter.setBrush(Qt::white);
    painter.drawEllipse(knob);
    painter.setBrush(toQColor(color_.colorWithAlphaComponent(1)));
    painter.drawEllipse(knob.adjusted(5, 5, -5, -5));

    if (showsFocus_) {
        painter.setBrush(Qt::NoBrush);
        painter.setPen(QPen(toQColor(UIView::effectiveTintColor(this)), 2));
        painter.drawEllipse(knob.adjusted(1, 1, -1, -1));
    }
}
