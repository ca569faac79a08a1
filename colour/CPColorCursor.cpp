#include "CPColorCursor.h"

#include "platform/qt/QtConversions.h"
#include "platform/qt/UIView.h"

#include <QPainter>

#include <cmath>

namespace {

double finiteOr(double value, double fallback)
{
    return std::isfinite(value) ? value : fallback;
}

} // namespace

CPColorCursor::CPColorCursor(QWidget* parent) : QWidget(parent)
{
    setAttribute(Qt::WA_TransparentForMouseEvents);
    setAttribute(Qt::WA_TranslucentBackground);
    setFocusPolicy(Qt::NoFocus);
    int side = static_cast<int>(std::ceil(cursorSize()));
    resize(side, side);
    place();
}

double CPColorCursor::cursorSize()
{
    return 28;
}

CPColorCursor* CPColorCursor::colorCursorWithPoint(CGPoint point, QWidget* parent)
{
    auto* cursor = new CPColorCursor(parent);
    cursor->start_ = {finiteOr(point.x, 0), finiteOr(point.y, 0)};
    cursor->place();
    return cursor;
}

void CPColorCursor::setColor(const UIColor& color)
{
    if (color == color_)
        return;
    color_ = color;
    update();
}

void CPColorCursor::setEditing(bool editing)
{
    if (editing == editing_)
        return;
    editing_ = editing;
    update();
}

void CPColorCursor::setGrayCursor(bool gray)
{
    if (gray == grayCursor_)
        return;
    grayCursor_ = gray;
    update();
}

void CPColorCursor::setShowsFocus(bool shows)
{
    if (shows == showsFocus_)
        return;
    showsFocus_ = shows;
    update();
}

void CPColorCursor::setTranslation(CGPoint translation)
{
    translation_ = {finiteOr(translation.x, 0), finiteOr(translation.y, 0)};
    place();
}

CGPoint CPColorCursor::center() const
{
    return {start_.x + translation_.x, start_.y + translation_.y};
}

void CPColorCursor::setCoordinateOrigin(QPoint origin)
{
    coordinateOrigin_ = origin;
    place();
}

void CPColorCursor::place()
{
    CGPoint middle = center();
    move(coordinateOrigin_.x() + static_cast<int>(std::lround(middle.x - width() / 2.0)),
         coordinateOrigin_.y() + static_cast<int>(std::lround(middle.y - height() / 2.0)));
}

void CPColorCursor::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    QRectF bounds = QRectF(rect()).adjusted(1, 1, -1, -1);
    // Not editing, the ring is drawn smaller inside the same square so that it can grow in place.
    QRectF ring = editing_ ? bounds : bounds.adjusted(4, 4, -4, -4);

    painter.setPen(Qt::NoPen);
    painter.setBrush(QColor(0, 0, 0, 40));
    painter.drawEllipse(ring.translated(0, 0.75));

    QColor outline = grayCursor_ ? QColor(142, 142, 147) : QColor(Qt::white);
    painter.setBrush(outline);
    painter.drawEllipse(ring);
    painter.setBrush(toQColor(color_.colorWithAlphaComponent(1)));
    painter.drawEllipse(ring.adjusted(3, 3, -3, -3));

    if (showsFocus_) {
        painter.setBrush(Qt::NoBrush);
        painter.setPen(QPen(toQColor(UIView::effectiveTintColor(this)), 2));
        painter.drawEllipse(ring.adjusted(1, 1, -1, -1));
    }
}
