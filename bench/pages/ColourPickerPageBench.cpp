// The colour picker page: a colour change until both preview halves are drawn again, and a
// drag across the map in which every event gets through the picker's throttle (as a drag
// slower than 15 events a second would), each event's work on the interface thread timed.
#include "BenchRoot.h"

#include "colour/CPColorMapView.h"
#include "colour/CPColorPickerView.h"
#include "colour/QLAWColorPickerViewController.h"
#include "colour/QLColorCell.h"
#include "pages/QLAWSettingsColorOptionsController.h"
#include "render/QLAWBatteryRenderer.h"

#include "platform/core/UIScreen.h"
#include "platform/qt/UIApplication.h"
#include "platform/qt/UINavigationController.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QMouseEvent>

#include <benchmark/benchmark.h>

#include <algorithm>
#include <chrono>

namespace {

// The colour options page in a phone-sized window, with the picker of its first colour open.
class PickerWindow {
public:
    PickerWindow()
    {
        window_.resize(390, 844);
        UIApplication::sharedApplication().setKeyWindow(&window_);
        auto* options = new QLAWSettingsColorOptionsController();
        navigation_ = new UINavigationController(options, &window_);
        navigation_->resize(390, 844);
        window_.show();
        navigation_->viewWillAppear(false);
        navigation_->viewDidAppear(false);
        for (const auto& entry : options->specifiers())
            if (auto* row = dynamic_cast<QLColorCell*>(options->cachedCellForSpecifier(entry))) {
                row->openColorPicker();
                break;
            }
        picker_ = dynamic_cast<QLAWColorPickerViewController*>(navigation_->topViewController());
        QCoreApplication::processEvents();
    }
    ~PickerWindow() { UIApplication::sharedApplication().setKeyWindow(nullptr); }

    QLAWColorPickerViewController* picker() const { return picker_; }
    QWidget& window() { return window_; }

private:
    QWidget window_;
    UINavigationController* navigation_;
    QLAWColorPickerViewController* picker_ = nullptr;
};

void BM_PickerColourChangeRedrawsThePreview(benchmark::State& state)
{
    BenchRoot root(0);
    UIScreen::mainScreen().setScale(2);
    PickerWindow window;
    QLAWColorPickerViewController* picker = window.picker();
    if (!picker) {
        state.SkipWithError("the picker did not open");
        return;
    }
    std::uint64_t before = QLAWBatteryRenderer::evaluationCount();
    int step = 0;
    for (auto _ : state) {
        double hue = (step++ % 100) / 100.0;
        picker->colorPickerView()->setColor(UIColor::colorWithRedGreenBlueAlpha(hue, 1 - hue, 0.5, 1));
        picker->colorWasChanged();
    }
    state.counters["renders"] = benchmark::Counter(
        static_cast<double>(QLAWBatteryRenderer::evaluationCount() - before), benchmark::Counter::kAvgIterations);
}

void sendMouse(QWidget* widget, QEvent::Type type, QPointF point)
{
    Qt::MouseButtons buttons = type == QEvent::MouseButtonRelease ? Qt::NoButton : Qt::LeftButton;
    QMouseEvent event(type, point, widget->mapToGlobal(point), Qt::LeftButton, buttons, Qt::NoModifier);
    QCoreApplication::sendEvent(widget, &event);
}

void BM_PickerPageDragOf60Events(benchmark::State& state)
{
    BenchRoot root(0);
    UIScreen::mainScreen().setScale(3);
    PickerWindow window;
    QLAWColorPickerViewController* picker = window.picker();
    CPColorMapView* map = picker ? picker->colorPickerView()->colorMapView() : nullptr;
    if (!map) {
        state.SkipWithError("the picker did not open");
        return;
    }
    QElapsedTimer waited;
    waited.start();
    while ((map->colorMapImage().isNil() || map->isMakingColorMap()) && waited.elapsed() < 30000)
        QCoreApplication::processEvents(QEventLoop::AllEvents, 10);
    // Each event comes 70 ms after the last, so none is held back by the throttle.
    std::chrono::microseconds clock{0};
    picker->colorPickerView()->setClockForTesting([&clock] { return clock += std::chrono::milliseconds(70); });

    std::vector<double> perEvent;
    std::uint64_t before = QLAWBatteryRenderer::evaluationCount();
    for (auto _ : state)
        for (int i = 0; i < 60; ++i) {
            double t = i / 59.0;
            QPointF point(2 + t * (map->width() - 4), 2 + t * (map->height() - 4));
            QEvent::Type type = i == 0 ? QEvent::MouseButtonPress
                                       : i == 59 ? QEvent::MouseButtonRelease : QEvent::MouseMove;
            auto start = std::chrono::steady_clock::now();
            sendMouse(map, type, point);
            window.window().repaint();
            perEvent.push_back(std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - start).count());
        }
    std::sort(perEvent.begin(), perEvent.end());
    state.counters["median_event_ms"] = perEvent[perEvent.size() / 2];
    state.counters["max_event_ms"] = perEvent.back();
    state.counters["renders_per_drag"] = benchmark::Counter(
        static_cast<double>(QLAWBatteryRenderer::evaluationCount() - before), benchmark::Counter::kAvgIterations);
    UIScreen::mainScreen().setScale(2);
}

} // namespace

BENCHMARK(BM_PickerColourChangeRedrawsThePreview)->Unit(benchmark::kMicrosecond)->Repetitions(9)
    ->ReportAggregatesOnly(true);
BENCHMARK(BM_PickerPageDragOf60Events)->Unit(benchmark::kMillisecond)->Iterations(10);
