#include "CPBackdropView.h"

#include "HSVColor.h"

#include "platform/qt/QtConversions.h"

#include <QPainter>

#include <cmath>

CPBackdropView::CPBackdropView(QWidget* parent) : QWidget(parent)
{
    setAttribute(Qt::WA_TransparentForMouseEvents);
    setFocusPolicy(Qt::NoFocus);
}

void CPBackdropView::setBackgroundColor(const UIColor& color)
{
    if (color == backgroundColor_)
        return;
    backgroundColor_ = color;
    update();
}

void CPBackdropView::setOpacity(double opacity)
{
    if (std::isnan(opacity))
        return;
    opacity_ = clampUnit(opacity);
    update();
}

void CPBackdropView::paintEvent(QPaintEvent*)
{
    if (opacity_ <= 0)
        return;
    QPainter painter(this);
    painter.setOpacity(opacity_);
    painter.fillRect(rect(), toQColor(backgroundColor_));
}
