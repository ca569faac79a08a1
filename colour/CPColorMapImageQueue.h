#pragma once

#include "platform/core/CGGeometry.h"
#include "platform/core/UIImage.h"

#include <QImage>
#include <QPointer>
#include <QThreadPool>

#include <atomic>
#include <cstdint>
#include <functional>
#include <memory>

// The colour map's own queue for drawing its images away from the interface thread. It holds
// at most one drawing at a time and remembers only the newest request; a finished drawing is
// handed back on the interface thread, and only while the owner still exists. While suspended,
// requests wait.
class CPColorMapImageQueue {
public:
    // Everything a drawing needs, taken on the interface thread: the drawing never reads the
    // owner or the screen.
    struct Request {
        CGSize size;
        double tileSize = 0;
        double saturationUpperLimit = 0;
        double scale = 1;        // of the images kept as the map's images
        double displayRatio = 1; // device pixels per point where they are shown
        bool operator==(const Request&) const = default;
    };
    struct Result {
        Request request;
        UIImage colorMapImage;
        UIImage backgroundImage;
        // The same pictures at the display's pixel ratio, ready to paint.
        QImage colorMapPicture;
        QImage backgroundPicture;
    };
    using Delivery = std::function<void(Result)>;

    // The delivery runs on the owner's thread and never after the owner is destroyed.
    CPColorMapImageQueue(QObject* owner, Delivery delivery);
    // Abandons a drawing under way and waits for it to stop.
    ~CPColorMapImageQueue();
    CPColorMapImageQueue(const CPColorMapImageQueue&) = delete;
    CPColorMapImageQueue& operator=(const CPColorMapImageQueue&) = delete;

    bool isSuspended() const { return suspended_; }
    void setSuspended(bool suspended);

    // Replaces any request still waiting. A request equal to the one being drawn is dropped.
    void request(const Request& request);
    // A drawing under way or waiting.
    bool isBusy() const { return running_ || hasWaiting_; }

    // Draws synchronously on the calling thread (benchmarks, and what the worker runs).
    static Result draw(const Request& request, const std::atomic<bool>* cancelled = nullptr);

private:
    void startWaiting();
    void finished(Result result);

    QPointer<QObject> owner_;
    Delivery delivery_;
    QThreadPool pool_;
    std::shared_ptr<std::atomic<bool>> cancelled_ = std::make_shared<std::atomic<bool>>(false);
    bool suspended_ = true;
    bool running_ = false;
    Request runningRequest_;
    bool hasWaiting_ = false;
    Request waiting_;
};
