#include "CPColorMapImageQueue.h"

#include "CPColorMapImages.h"

#include "platform/qt/QtConversions.h"

#include <QCoreApplication>

#include <cmath>

namespace {

QImage pictureAtRatio(const UIImage& image, const CPColorMapImageQueue::Request& request,
                      const std::function<UIImage(double)>& redraw)
{
    if (!image)
        return {};
    // Redrawn rather than scaled: the tiles stay sharp and flat at any ratio.
    if (std::abs(request.displayRatio - image.scale()) < 1e-9)
        return toQImage(image);
    return toQImage(redraw(request.displayRatio));
}

} // namespace

CPColorMapImageQueue::CPColorMapImageQueue(QObject* owner, Delivery delivery)
    : owner_(owner), delivery_(std::move(delivery))
{
    pool_.setMaxThreadCount(1);
    pool_.setExpiryTimeout(5000);
}

CPColorMapImageQueue::~CPColorMapImageQueue()
{
    cancelled_->store(true);
    pool_.waitForDone();
}

void CPColorMapImageQueue::setSuspended(bool suspended)
{
    suspended_ = suspended;
    if (!suspended_)
        startWaiting();
}

void CPColorMapImageQueue::request(const Request& request)
{
    if (running_ && request == runningRequest_) {
        hasWaiting_ = false;
        return;
    }
    waiting_ = request;
    hasWaiting_ = true;
    startWaiting();
}

CPColorMapImageQueue::Result CPColorMapImageQueue::draw(const Request& request, const std::atomic<bool>* cancelled)
{
    auto stop = [cancelled] { return cancelled && cancelled->load(); };
    Result result;
    result.request = request;
    if (stop())
        return result;
    result.colorMapImage = CPColorMapImages::colorMapImage(request.size, request.tileSize,
                                                           request.saturationUpperLimit, request.scale);
    if (stop())
        return result;
    result.backgroundImage = CPColorMapImages::backgroundImage(request.size, request.tileSize, request.scale);
    if (stop())
        return result;
    result.colorMapPicture = pictureAtRatio(result.colorMapImage, request, [&](double ratio) {
        return CPColorMapImages::colorMapImage(request.size, request.tileSize, request.saturationUpperLimit, ratio);
    });
    result.backgroundPicture = pictureAtRatio(result.backgroundImage, request, [&](double ratio) {
        return CPColorMapImages::backgroundImage(request.size, request.tileSize, ratio);
    });
    return result;
}

void CPColorMapImageQueue::startWaiting()
{
    if (suspended_ || running_ || !hasWaiting_)
        return;
    running_ = true;
    runningRequest_ = waiting_;
    hasWaiting_ = false;

    // The worker holds only copies and shared flags; it reaches back through a queued call that
    // checks the owner on the interface thread, where the owner is destroyed.
    QPointer<QObject> owner = owner_;
    std::shared_ptr<std::atomic<bool>> cancelled = cancelled_;
    Request request = runningRequest_;
    pool_.start([this, owner, cancelled, request] {
        Result result = draw(request, cancelled.get());
        if (cancelled->load())
            return;
        QCoreApplication* application = QCoreApplication::instance();
        if (!application)
            return;
        QMetaObject::invokeMethod(
            application,
            [this, owner, cancelled, result = std::move(result)]() mutable {
                // The owner owns this queue: while it lives, so does the queue.
                if (!owner || cancelled->load())
                    return;
                finished(std::move(result));
            },
            Qt::QueuedConnection);
    });
}

void CPColorMapImageQueue::finished(Result result)
{
    running_ = false;
    bool superseded = hasWaiting_;
    if (!superseded && delivery_)
        delivery_(std::move(result));
    startWaiting();
}
