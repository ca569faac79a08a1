#pragma once

#include "platform/core/UIImage.h"

#include <QApplication>
#include <QCoreApplication>
#include <QElapsedTimer>
#include <QMouseEvent>
#include <QWidget>

#include <cairo.h>

#include <cstdint>
#include <functional>
#include <memory>

// One application for the whole binary (the offscreen platform, set by the test runner).
inline QApplication& colourTestApplication()
{
    static int argc = 1;
    static char name[] = "ampwell-colour-tests";
    static char* argv[] = {name, nullptr};
    static QApplication* application = new QApplication(argc, argv);
    return *application;
}

// For fixtures with widget members: a base that makes the application before them.
struct WithApplication {
    WithApplication() { colourTestApplication(); }
};

// A shown phone-sized window: map images are drawn only for a map inside one.
struct ShownWindow {
    std::unique_ptr<QWidget> window;

    ShownWindow()
    {
        colourTestApplication();
        window = std::make_unique<QWidget>();
        window->resize(390, 844);
        window->show();
        QCoreApplication::processEvents();
    }
    QWidget* get() const { return window.get(); }
};

// Processes events until the condition holds; generous, since the machine may be busy.
inline bool waitUntil(const std::function<bool()>& condition, int milliseconds = 30000)
{
    QElapsedTimer timer;
    timer.start();
    while (!condition()) {
        if (timer.elapsed() > milliseconds)
            return false;
        QCoreApplication::processEvents(QEventLoop::AllEvents, 10);
    }
    return true;
}

inline void sendMouse(QWidget* widget, QEvent::Type type, QPointF point)
{
    Qt::MouseButtons buttons = type == QEvent::MouseButtonRelease ? Qt::NoButton : Qt::LeftButton;
    QMouseEvent event(type, point, widget->mapToGlobal(point), Qt::LeftButton, buttons, Qt::NoModifier);
    QCoreApplication::sendEvent(widget, &event);
}

struct Pixel {
    int red = 0, green = 0, blue = 0, alpha = 0;
};

// A pixel of an image (premultiplied, as stored), by pixel coordinates.
inline Pixel pixelAt(const UIImage& image, int x, int y)
{
    cairo_surface_t* surface = image.CGImage();
    cairo_surface_flush(surface);
    const unsigned char* data = cairo_image_surface_get_data(surface);
    int stride = cairo_image_surface_get_stride(surface);
    std::uint32_t word = *reinterpret_cast<const std::uint32_t*>(data + y * stride + x * 4);
    return {int(word >> 16 & 0xFF), int(word >> 8 & 0xFF), int(word & 0xFF), int(word >> 24)};
}
