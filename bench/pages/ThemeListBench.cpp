// Opening a theme list of 50 themes until the previews in sight are painted, and one preview
// panel's refresh. Each list row renders its theme twice (light and dark) at 20 points.
#include "pages/QLAWSettingThemeListController.h"
#include "pages/QLAWSettingsThemeOptionsController.h"
#include "render/QLAWBatteryRenderer.h"
#include "BenchRoot.h"
#include "render/preview/QLAWBatteryPreView.h"
#include "store/EmbeddedFile.h"
#include "store/Installation.h"
#include "store/PreferencesStore.h"
#include "store/RenderSettings.h"
#include "store/ThemeScripts.h"

#include "platform/core/PropertyListUpdate.h"
#include "platform/core/Root.h"
#include "platform/core/UIScreen.h"
#include "platform/qt/PSTableCell.h"
#include "platform/qt/UIApplication.h"
#include "platform/qt/UINavigationController.h"

#include <QApplication>
#include <QLabel>

#include <benchmark/benchmark.h>

#include <chrono>
#include <filesystem>
#include <fstream>

namespace {

namespace fs = std::filesystem;

// A phone-sized window on the theme options page.
class OptionsWindow {
public:
    OptionsWindow()
    {
        window_.resize(390, 844);
        UIApplication::sharedApplication().setKeyWindow(&window_);
        options_ = new QLAWSettingsThemeOptionsController();
        navigation_ = new UINavigationController(options_, &window_);
        navigation_->resize(390, 844);
        window_.show();
        navigation_->viewWillAppear(false);
        navigation_->viewDidAppear(false);
        QCoreApplication::processEvents();
    }
    ~OptionsWindow() { UIApplication::sharedApplication().setKeyWindow(nullptr); }

    // Opens the list of the "Theme" row and paints what is in sight.
    void openList()
    {
        for (PSTableCell* cell : options_->table()->visibleCells())
            if (cell->textLabel()->text() == QStringLiteral("Theme")) {
                cell->activate();
                break;
            }
        window_.repaint();
    }
    UIViewController* top() const { return navigation_->topViewController(); }

private:
    QWidget window_;
    QLAWSettingsThemeOptionsController* options_;
    UINavigationController* navigation_;
};

void BM_OpenThemeListOf50(benchmark::State& state)
{
    BenchRoot root(50);
    UIScreen::mainScreen().setScale(2);
    UIScreen::mainScreen().setBounds(CGRectMake(0, 0, 390, 844));
    std::uint64_t renders = 0;
    for (auto _ : state) {
        OptionsWindow window;
        std::uint64_t before = QLAWBatteryRenderer::evaluationCount();
        auto start = std::chrono::steady_clock::now();
        window.openList();
        renders += QLAWBatteryRenderer::evaluationCount() - before;
        state.SetIterationTime(std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count());
        if (!dynamic_cast<QLAWSettingThemeListController*>(window.top())) {
            state.SkipWithError("the theme list did not open");
            return;
        }
    }
    state.counters["renders"] = benchmark::Counter(static_cast<double>(renders), benchmark::Counter::kAvgIterations);
}

void BM_PreviewPanelRefresh(benchmark::State& state)
{
    BenchRoot root(0);
    UIScreen::mainScreen().setScale(2);
    QWidget host;
    host.resize(200, 100);
    auto* preview = new QLAWBatteryPreView(CGRectMake(0, 0, 110, 40), &host);
    PlistDict settings = getBatteryRenderSettings(); // the default theme in the default colours
    preview->setLightSettings(std::make_shared<PlistDict>(*settings.value("lightSettings").asDict()));
    preview->setDarkSettings(std::make_shared<PlistDict>(*settings.value("darkSettings").asDict()));
    preview->setBatteryImageHeight(20);
    host.show();
    QCoreApplication::processEvents();
    for (auto _ : state)
        preview->refreshBattery();
    if (preview->lightBatteryView() && preview->isRefreshPending())
        state.SkipWithError("the panel was not on screen");
}

} // namespace

BENCHMARK(BM_OpenThemeListOf50)->Unit(benchmark::kMillisecond)->UseManualTime()->Iterations(10)->Repetitions(5)
    ->ReportAggregatesOnly(true);
BENCHMARK(BM_PreviewPanelRefresh)->Unit(benchmark::kMicrosecond)->Repetitions(9)->ReportAggregatesOnly(true);
