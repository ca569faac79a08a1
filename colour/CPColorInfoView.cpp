#include "CPColorInfoView.h"

#include "CPAccessibility.h"
#include "HSVColor.h"

#include "platform/qt/QtConversions.h"
#include "platform/qt/UIView.h"

#include <QPainter>

#include <cstdio>

namespace {

unsigned channel(double component)
{
    return static_cast<unsigned>(clampUnit(component) * 255);
}

} // namespace

CPColorInfoView::CPColorInfoView(QWidget* parent) : QWidget(parent)
{
    setAttribute(Qt::WA_TransparentForMouseEvents);
    setFocusPolicy(Qt::NoFocus);
    registerAccessiblePart(this, QAccessible::StaticText, QStringLiteral("Colour"));
    setAccessibleValue(this, text());
}

QString CPColorInfoView::hexTextForColor(const UIColor& color)
{
    unsigned packed = channel(color.red()) << 16 | channel(color.green()) << 8 | channel(color.blue());
    char text[16];
    std::snprintf(text, sizeof text, "#%06x", packed);
    return QString::fromLatin1(text);
}

void CPColorInfoView::setColor(const UIColor& color)
{
    color_ = color;
    setAccessibleValue(this, text());
    update();
}

void CPColorInfoView::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    QRectF bounds = QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5);
    constexpr double textHeight = 22;
    QRectF swatch(bounds.left(), bounds.top(), bounds.width(), std::max(0.0, bounds.height() - textHeight));

    painter.setPen(QPen(QColor(0, 0, 0, 40), 1));
    painter.setBrush(QColor(255, 255, 255, 235));
    painter.drawRoundedRect(bounds, 8, 8);
    painter.setPen(Qt::NoPen);
    painter.setBrush(toQColor(color_.colorWithAlphaComponent(1)));
    painter.drawRoundedRect(swatch.adjusted(4, 4, -4, 0), 5, 5);

    painter.setPen(QColor(28, 28, 30));
    painter.setFont(systemFont(12, QFont::Medium));
    painter.drawText(QRectF(bounds.left(), bounds.bottom() - textHeight, bounds.width(), textHeight),
                     Qt::AlignCenter, text());
}
