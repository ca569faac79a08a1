#include "Screenshot.h"

#include "SettingsWindow.h"

#include "platform/qt/UIAlertView.h"

#include <QAbstractAnimation>
#include <QCoreApplication>
#include <QImage>
#include <QImageWriter>
#include <QPainter>

#include <cmath>

namespace {

// Lets the appearance animations (the logo's fade) reach their end at once.
void finishAnimations(QObject* root)
{
    for (QAbstractAnimation* animation : root->findChildren<QAbstractAnimation*>())
        if (animation->state() == QAbstractAnimation::Running && animation->totalDuration() > 0)
            animation->setCurrentTime(animation->totalDuration());
}

} // namespace

bool writeScreenshot(SettingsWindow& window, const std::string& path, double scale, std::string* error)
{
    QCoreApplication::processEvents();
    finishAnimations(&window);
    QCoreApplication::processEvents();
    std::vector<UIAlertView*> alerts;
    for (UIAlertView* alert : UIAlertView::visibleAlerts())
        if (alert->isVisible()) {
            alerts.push_back(alert);
            alert->hide();
        }

    QImage image(static_cast<int>(std::lround(window.width() * scale)),
                 static_cast<int>(std::lround(window.height() * scale)), QImage::Format_ARGB32_Premultiplied);
    image.setDevicePixelRatio(scale);
    image.fill(Qt::white);
    window.render(&image);
    for (UIAlertView* alert : alerts)
        alert->setVisible(true);

    QImageWriter writer(QString::fromStdString(path), "png");
    if (!writer.write(image)) {
        *error = writer.errorString().toStdString();
        return false;
    }
    return true;
}
