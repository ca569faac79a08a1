#include "IndicatorIcon.h"

#include "platform/qt/QtConversions.h"

#include <QFont>
#include <QFontMetricsF>
#include <QIcon>
#include <QPainter>
#include <QPainterPath>

#include <algorithm>
#include <cmath>

namespace {

constexpr double kGap = 2;            // points between the parts
constexpr double kTextHeight = 0.62;  // of the icon's height
constexpr double kBoltWidth = 0.45;   // of the icon's height

QFont percentFont(double height)
{
    QFont font(QStringLiteral("Inter"));
    font.setStyleHint(QFont::SansSerif);
    font.setWeight(QFont::DemiBold);
    font.setPixelSize(std::max(1, static_cast<int>(std::lround(height * kTextHeight))));
    return font;
}

QPainterPath boltShape(QRectF box)
{
    // A lightning bolt: down from the top right, a step to the right, down to the bottom left.
    auto at = [&box](double x, double y) { return QPointF(box.left() + x * box.width(), box.top() + y * box.height()); };
    QPainterPath path;
    path.moveTo(at(0.62, 0.0));
    path.lineTo(at(0.05, 0.58));
    path.lineTo(at(0.45, 0.58));
    path.lineTo(at(0.30, 1.0));
    path.lineTo(at(0.95, 0.38));
    path.lineTo(at(0.55, 0.38));
    path.closeSubpath();
    return path;
}

QColor partColour(const std::optional<UIColor>& own, const QColor& panelText)
{
    return own ? toQColor(*own) : panelText;
}

} // namespace

QImage composeIndicatorIcon(const IndicatorState& state, const UIImage& battery, double height, double scale,
                            const QColor& panelText)
{
    QFont font = percentFont(height);
    QString percent = QString::fromStdString(state.percentText);
    double textWidth = state.showPercent ? QFontMetricsF(font).horizontalAdvance(percent) : 0;
    CGSize batterySize = battery ? battery.size() : CGSize{0, 0};
    double boltWidth = state.showBolt ? height * kBoltWidth : 0;

    double width = textWidth + batterySize.width + boltWidth;
    int parts = (textWidth > 0) + (batterySize.width > 0) + (boltWidth > 0);
    width += std::max(0, parts - 1) * kGap;
    width = std::max(width, height * 0.5);

    QImage icon(static_cast<int>(std::ceil(width * scale)), static_cast<int>(std::ceil(height * scale)),
                QImage::Format_ARGB32_Premultiplied);
    icon.setDevicePixelRatio(scale);
    icon.fill(Qt::transparent);
    QPainter painter(&icon);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setRenderHint(QPainter::TextAntialiasing);
    double x = 0;
    if (textWidth > 0) {
        painter.setFont(font);
        painter.setPen(partColour(state.percentColor, panelText));
        painter.drawText(QRectF(x, 0, textWidth, height), Qt::AlignCenter, percent);
        x += textWidth + kGap;
    }
    if (battery) {
        QImage picture = toQImage(battery);
        painter.drawImage(QRectF(x, (height - batterySize.height) / 2, batterySize.width, batterySize.height), picture);
        x += batterySize.width + kGap;
    }
    if (boltWidth > 0) {
        painter.setPen(Qt::NoPen);
        painter.setBrush(partColour(state.boltColor, panelText));
        painter.drawPath(boltShape(QRectF(x, height * 0.15, boltWidth, height * 0.7)));
    }
    return icon;
}

QStringList standardBatteryIconNames(int level, bool charging)
{
    int tens = std::clamp(static_cast<int>(std::lround(level / 10.0)) * 10, 0, 100);
    QString ten = QString::number(tens);
    QString padded = QStringLiteral("%1").arg(tens, 3, 10, QLatin1Char('0'));
    QString coarse = level >= 90 ? QStringLiteral("full") : level >= 40 ? QStringLiteral("good")
                   : level >= 20 ? QStringLiteral("low") : level >= 5 ? QStringLiteral("caution")
                                 : QStringLiteral("empty");
    QString state = charging ? (tens == 100 ? QStringLiteral("-charged") : QStringLiteral("-charging")) : QString();
    QString oldState = charging ? QStringLiteral("-charging") : QString();
    return {
        QStringLiteral("battery-level-") + ten + state + QStringLiteral("-symbolic"),
        QStringLiteral("battery-level-") + ten + QStringLiteral("-symbolic"),
        QStringLiteral("battery-") + padded + oldState,
        QStringLiteral("battery-") + coarse + oldState + QStringLiteral("-symbolic"),
        QStringLiteral("battery-") + coarse + oldState,
    };
}

QImage standardBatteryIcon(int level, bool charging, double height, double scale, const QColor& panelText)
{
    QSize size(static_cast<int>(std::lround(height)), static_cast<int>(std::lround(height)));
    for (const QString& name : standardBatteryIconNames(level, charging)) {
        QIcon themed = QIcon::fromTheme(name);
        if (themed.isNull())
            continue;
        QPixmap picture = themed.pixmap(size, scale);
        if (!picture.isNull())
            return picture.toImage();
    }
    // A plain battery: an outline with a tip, filled as far as the level.
    QImage icon(static_cast<int>(std::ceil(height * 1.6 * scale)), static_cast<int>(std::ceil(height * scale)),
                QImage::Format_ARGB32_Premultiplied);
    icon.setDevicePixelRatio(scale);
    icon.fill(Qt::transparent);
    QPainter painter(&icon);
    painter.setRenderHint(QPainter::Antialiasing);
    double line = std::max(1.0, height / 12);
    QRectF body(line / 2, height * 0.25, height * 1.4, height * 0.5);
    painter.setPen(QPen(panelText, line));
    painter.setBrush(Qt::NoBrush);
    painter.drawRoundedRect(body, line * 1.5, line * 1.5);
    painter.setPen(Qt::NoPen);
    painter.setBrush(panelText);
    painter.drawRect(QRectF(body.right() + line / 2, height * 0.4, line * 1.2, height * 0.2));
    QRectF fill = body.adjusted(line * 1.5, line * 1.5, -line * 1.5, -line * 1.5);
    fill.setWidth(fill.width() * std::clamp(level, 0, 100) / 100.0);
    painter.drawRect(fill);
    return icon;
}
