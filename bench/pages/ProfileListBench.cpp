// The profile list with 100 saved profiles: opening it from the main page until the previews
// in sight are painted, and the reload that follows every save, restore and delete. Each row
// reads its profile file and the theme it names; only rows in sight render (twice, light and
// dark, at 20 points).
#include "pages/QLAWSettingProfileListController.h"
#include "pages/QLAWSettingsMainController.h"
#include "render/QLAWBatteryRenderer.h"
#include "store/EmbeddedFile.h"
#include "store/Installation.h"
#include "store/PreferencesStore.h"
#include "store/Profiles.h"

#include "platform/core/PropertyListUpdate.h"
#include "platform/core/Root.h"
#include "platform/core/UIScreen.h"
#include "platform/qt/PSTableCell.h"
#include "platform/qt/UIApplication.h"
#include "platform/qt/UINavigationController.h"

#include <QApplication>

#include <benchmark/benchmark.h>

#include <chrono>
#include <filesystem>

namespace {

namespace fs = std::filesystem;

// A root of its own with the bundled themes and the profiles: every third one colours only,
// the others complete, their themes taken in turn from the bundled ones. Both notices seen.
class ProfilesRoot {
public:
    explicit ProfilesRoot(int profiles)
    {
        std::string pattern = (fs::temp_directory_path() / "ampwell-bench-XXXXXX").string();
        folder_ = ::mkdtemp(pattern.data()) ? pattern : std::string();
        Root::set(folder_);
        installComponent();
        const auto& themes = bundledThemes();
        for (int i = 0; i < profiles; ++i) {
            PlistDict profile = i % 3 == 2 ? currentColorProfile() : currentCompleteProfile();
            if (isCompleteProfile(profile)) {
                std::string_view file = themes[static_cast<std::size_t>(i) % themes.size()].name;
                profile.set("theme", std::string(file.substr(0, file.size() - 3)));
            }
            profile.set("lightColor", i % 2 ? "#ff8800" : "#33cc66");
            writeProfile("Profile " + std::to_string(i), profile);
        }
        updatePropertyListFile(preferencesPath(), MissingFilePolicy::StartEmpty, [](PlistDict& preferences) {
            preferences.set("viewedPP", PlistValue(2));
            preferences.set("viewed10P", PlistValue(2));
        });
    }
    ~ProfilesRoot()
    {
        std::error_code ignored;
        fs::remove_all(folder_, ignored);
    }

private:
    std::string folder_;
};

// A phone-sized window on the main page.
class MainWindow {
public:
    MainWindow()
    {
        window_.resize(390, 844);
        UIApplication::sharedApplication().setKeyWindow(&window_);
        main_ = new QLAWSettingsMainController();
        navigation_ = new UINavigationController(main_, &window_);
        navigation_->resize(390, 844);
        window_.show();
        navigation_->viewWillAppear(false);
        navigation_->viewDidAppear(false);
        QCoreApplication::processEvents();
    }
    ~MainWindow() { UIApplication::sharedApplication().setKeyWindow(nullptr); }

    // Opens the profile list through the main page's row and paints what is in sight.
    QLAWSettingProfileListController* openList()
    {
        for (PSTableCell* cell : main_->table()->visibleCells())
            if (cell->specifier() && cell->specifier()->name() == "Profiles") {
                cell->activate();
                break;
            }
        window_.repaint();
        return dynamic_cast<QLAWSettingProfileListController*>(navigation_->topViewController());
    }
    void repaint() { window_.repaint(); }

private:
    QWidget window_;
    QLAWSettingsMainController* main_;
    UINavigationController* navigation_;
};

void setPhoneScreen()
{
    UIScreen::mainScreen().setScale(2);
    UIScreen::mainScreen().setBounds(CGRectMake(0, 0, 390, 844));
}

void BM_OpenProfileListOf100(benchmark::State& state)
{
    ProfilesRoot root(100);
    setPhoneScreen();
    std::uint64_t renders = 0;
    for (auto _ : state) {
        MainWindow window;
        std::uint64_t before = QLAWBatteryRenderer::evaluationCount();
        auto start = std::chrono::steady_clock::now();
        QLAWSettingProfileListController* list = window.openList();
        state.SetIterationTime(std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count());
        renders += QLAWBatteryRenderer::evaluationCount() - before;
        if (!list || list->profiles().size() != 101) {
            state.SkipWithError("the profile list did not open with every profile");
            return;
        }
    }
    state.counters["renders"] = benchmark::Counter(static_cast<double>(renders), benchmark::Counter::kAvgIterations);
}

void BM_ProfileListReloadOf100(benchmark::State& state)
{
    ProfilesRoot root(100);
    setPhoneScreen();
    MainWindow window;
    QLAWSettingProfileListController* list = window.openList();
    if (!list) {
        state.SkipWithError("the profile list did not open");
        return;
    }
    for (auto _ : state) {
        list->reload();
        window.repaint();
    }
}

} // namespace

BENCHMARK(BM_OpenProfileListOf100)->Unit(benchmark::kMillisecond)->UseManualTime()->Iterations(10)->Repetitions(5)
    ->ReportAggregatesOnly(true);
BENCHMARK(BM_ProfileListReloadOf100)->Unit(benchmark::kMillisecond)->Iterations(10)->Repetitions(5)
    ->ReportAggregatesOnly(true);
