// The colour picker: its map image at phone size and scale 3, and the interface thread's work
// per mouse event while a drag crosses the map.
#include "colour/CPColorMapImageQueue.h"
#include "colour/CPColorMapView.h"
#include "colour/CPColorPickerView.h"

#include "platform/core/UIScreen.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QMouseEvent>
#include <QWidget>

#include <benchmark/benchmark.h>

#include <algorithm>
#include <chrono>
#include <memory>
#include <vector>

namespace {

constexpr CGSize kPhoneMap{390, 600};

class ScreenScale {
public:
    explicit ScreenScale(double scale) : saved_(UIScreen::mainScreen().scale()) { UIScreen::mainScreen().setScale(scale); }
    ~ScreenScale() { UIScreen::mainScreen().setScale(saved_); }

private:
    double saved_;
};

void BM_ColourMapImage_Phone_Scale3(benchmark::State& state)
{
    ScreenScale scale(3);
    for (auto _ : state) {
        UIImage image = CPColorMapView::colorMapImageWithSizeTileSizeSaturationUpperLimit(kPhoneMap, 1, 1);
        benchmark::DoNotOptimize(image.CGImage());
    }
    state.counters["pixels"] = 1170.0 * 1800.0;
}
BENCHMARK(BM_ColourMapImage_Phone_Scale3)->Unit(benchmark::kMillisecond)->Repetitions(7)->ReportAggregatesOnly(true);

void BM_ColourMapBackgroundImage_Phone_Scale3(benchmark::State& state)
{
    ScreenScale scale(3);
    for (auto _ : state) {
        UIImage image = CPColorMapView::backgroundImageWithSizeTileSize(kPhoneMap, 1);
        benchmark::DoNotOptimize(image.CGImage());
    }
}
BENCHMARK(BM_ColourMapBackgroundImage_Phone_Scale3)->Unit(benchmark::kMillisecond)->Repetitions(7)->ReportAggregatesOnly(true);

// Everything the image queue's worker does for one map: both images at scale 3 and both again
// at the offscreen display's ratio of 1, ready to paint.
void BM_ColourMapQueueDrawing_Phone_Scale3(benchmark::State& state)
{
    CPColorMapImageQueue::Request request;
    request.size = kPhoneMap;
    request.tileSize = 1;
    request.saturationUpperLimit = 1;
    request.scale = 3;
    request.displayRatio = 1;
    for (auto _ : state) {
        CPColorMapImageQueue::Result result = CPColorMapImageQueue::draw(request);
        benchmark::DoNotOptimize(result.colorMapPicture.constBits());
    }
}
BENCHMARK(BM_ColourMapQueueDrawing_Phone_Scale3)->Unit(benchmark::kMillisecond)->Repetitions(5)->ReportAggregatesOnly(true);

double milliseconds(std::chrono::steady_clock::duration duration)
{
    return std::chrono::duration<double, std::milli>(duration).count();
}

void sendMouse(QWidget* widget, QEvent::Type type, QPointF point)
{
    Qt::MouseButtons buttons = type == QEvent::MouseButtonRelease ? Qt::NoButton : Qt::LeftButton;
    QMouseEvent event(type, point, widget->mapToGlobal(point), Qt::LeftButton, buttons, Qt::NoModifier);
    QCoreApplication::sendEvent(widget, &event);
}

// 60 mouse events (press, 58 moves, release) across a phone-sized picker at scale 3, timed one
// by one on the interface thread. range(0) = 1 also paints the window after each event, as the
// event loop would before the next one.
void BM_ColourPickerDragReplay(benchmark::State& state)
{
    const bool paint = state.range(0) != 0;
    ScreenScale scale(3);
    auto window = std::make_unique<QWidget>();
    window->resize(390, 844);
    auto* picker = new CPColorPickerView(window.get());
    picker->resize(390, 844);
    window->show();
    CPColorMapView* map = picker->colorMapView();
    QElapsedTimer waited;
    waited.start();
    while ((map->colorMapImage().isNil() || map->isMakingColorMap()) && waited.elapsed() < 30000)
        QCoreApplication::processEvents(QEventLoop::AllEvents, 10);
    if (map->colorMapImage().isNil()) {
        state.SkipWithError("the map image never arrived");
        return;
    }
    int sent = 0;
    QObject::connect(picker, &CPColorPickerView::valueChanged, [&sent] { ++sent; });

    std::vector<double> perEvent;
    for (auto _ : state) {
        for (int i = 0; i < 60; ++i) {
            double t = i / 59.0;
            QPointF point(2 + t * (map->width() - 4), 2 + t * (map->height() - 4));
            QEvent::Type type = i == 0 ? QEvent::MouseButtonPress : i == 59 ? QEvent::MouseButtonRelease : QEvent::MouseMove;
            auto start = std::chrono::steady_clock::now();
            sendMouse(map, type, point);
            if (paint)
                window->repaint();
            perEvent.push_back(milliseconds(std::chrono::steady_clock::now() - start));
        }
    }
    std::sort(perEvent.begin(), perEvent.end());
    state.counters["median_event_ms"] = perEvent[perEvent.size() / 2];
    state.counters["p95_event_ms"] = perEvent[perEvent.size() * 95 / 100];
    state.counters["max_event_ms"] = perEvent.back();
    state.counters["events_sent_per_drag"] = static_cast<double>(sent) / static_cast<double>(state.iterations());
}
BENCHMARK(BM_ColourPickerDragReplay)->Arg(0)->Arg(1)->Unit(benchmark::kMillisecond)->Iterations(20);

} // namespace
