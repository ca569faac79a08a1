// One battery render the whole way (the script's function called with the state, its canvas's
// PNG data URL, the picture, the flip), the engine's start-up, and a theme list's worth of
// previews.
#include "render/QLAWBatteryRenderer.h"
#include "store/EmbeddedFile.h"
#include "store/ThemeScripts.h"

#include "platform/core/UIScreen.h"
#include "platform/web/UIWebView.h"

#include <benchmark/benchmark.h>

#include <chrono>
#include <cstdio>
#include <fstream>
#include <spawn.h>
#include <sstream>
#include <sys/wait.h>
#include <unistd.h>
#include <vector>

extern char** environ;

namespace {

PlistDict previewSettings(std::string script, double height)
{
    return PlistDict{{"script", std::move(script)}, {"height", height}, {"level", 55}, {"charging", false},
                     {"low", false}, {"lpm", false}, {"color", UIColor::whiteColor()},
                     {"baseColor", UIColor::blackColor()}};
}

void renderEach(benchmark::State& state, const PlistDict& settings)
{
    UIScreen::mainScreen().setScale(2);
    if (QLAWBatteryRenderer::renderBatteryImageWithSettingsForStyle(settings, 0).isNil()) {
        state.SkipWithError("the script gives no image");
        return;
    }
    for (auto _ : state)
        benchmark::DoNotOptimize(QLAWBatteryRenderer::renderBatteryImageWithSettingsForStyle(settings, 0));
}

void BM_RenderBuiltInScript(benchmark::State& state)
{
    renderEach(state, previewSettings(std::string(kBuiltInPreviewScript), 26));
}

// The same script at a new level each time, as the indicator draws it while a battery charges:
// only the parts that stay (the ring behind) come out of the drawing caches.
void BM_RenderBuiltInScriptEachLevel(benchmark::State& state)
{
    UIScreen::mainScreen().setScale(2);
    std::vector<PlistDict> levels;
    for (int level = 0; level <= 100; ++level) {
        levels.push_back(previewSettings(std::string(kBuiltInPreviewScript), 26));
        levels.back().set("level", level);
    }
    std::size_t next = 0;
    for (auto _ : state) {
        benchmark::DoNotOptimize(QLAWBatteryRenderer::renderBatteryImageWithSettingsForStyle(levels[next], 0));
        next = (next + 1) % levels.size();
    }
}

void BM_RenderBuiltInScriptFlipped(benchmark::State& state)
{
    PlistDict settings = previewSettings(std::string(kBuiltInPreviewScript), 26);
    settings.set("flipY", true);
    renderEach(state, settings);
}

// The long form, with the same seven-parameter script the peers run.
void BM_RenderLongForm(benchmark::State& state)
{
    std::ifstream in(AMPWELL_SOURCE_DIR "/bench/peers/long-form.js");
    std::stringstream script;
    script << in.rdbuf();
    PlistDict settings = previewSettings(script.str(), 26);
    settings.set("baseColor", UIColor::colorWithRedGreenBlueAlpha(0, 0, 0, 0.33));
    renderEach(state, settings);
}

// The theme list: 50 rows, each previewed on the light and the dark side at 20 points.
void BM_RenderThemeList(benchmark::State& state)
{
    UIScreen::mainScreen().setScale(2);
    const auto& themes = bundledThemes();
    if (themes.empty()) {
        state.SkipWithError("no bundled themes");
        return;
    }
    std::vector<PlistDict> rows;
    for (std::size_t i = 0; i < 50; ++i) {
        PlistDict light = previewSettings(std::string(themes[i % themes.size()].contents), 20);
        light.set("color", UIColor::blackColor());
        light.set("baseColor", UIColor::colorWithRedGreenBlueAlpha(0, 0, 0, 0x55 / 255.0));
        PlistDict dark = previewSettings(std::string(themes[i % themes.size()].contents), 20);
        dark.set("baseColor", UIColor::colorWithRedGreenBlueAlpha(1, 1, 1, 0x55 / 255.0));
        rows.push_back(std::move(light));
        rows.push_back(std::move(dark));
    }
    for (auto _ : state)
        for (std::size_t i = 0; i < rows.size(); ++i)
            benchmark::DoNotOptimize(QLAWBatteryRenderer::renderBatteryImageWithSettingsForStyle(rows[i], i % 2));
}

// Start-up happens once per process, so each iteration is a fresh process that makes the
// engine and evaluates one expression, and reports how long that took.
const char* selfPath = nullptr;

double measureStartUpInChild()
{
    int fds[2];
    if (::pipe(fds) != 0)
        return -1;
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_adddup2(&actions, fds[1], 1);
    posix_spawn_file_actions_addclose(&actions, fds[0]);
    char flag[] = "--measure-start-up";
    char* argv[] = {const_cast<char*>(selfPath), flag, nullptr};
    pid_t child = 0;
    int spawned = posix_spawn(&child, selfPath, &actions, nullptr, argv, environ);
    posix_spawn_file_actions_destroy(&actions);
    ::close(fds[1]);
    char buffer[64] = {};
    ssize_t n = spawned == 0 ? ::read(fds[0], buffer, sizeof buffer - 1) : -1;
    ::close(fds[0]);
    if (spawned == 0)
        ::waitpid(child, nullptr, 0);
    return n > 0 ? std::atof(buffer) : -1;
}

int measureStartUp()
{
    auto start = std::chrono::steady_clock::now();
    UIWebView webView(CGRect{});
    webView.loadHTMLStringBaseURL(std::nullopt, std::nullopt);
    webView.stringByEvaluatingJavaScriptFromString("document.createElement('canvas').getContext('2d') ? 'ok' : ''");
    double seconds = std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
    std::printf("%.9f\n", seconds);
    return 0;
}

void BM_EngineStartUp(benchmark::State& state)
{
    for (auto _ : state) {
        double seconds = measureStartUpInChild();
        if (seconds < 0) {
            state.SkipWithError("could not run the start-up probe");
            return;
        }
        state.SetIterationTime(seconds);
    }
}

} // namespace

BENCHMARK(BM_RenderBuiltInScript)->Unit(benchmark::kMicrosecond)->Repetitions(15)->ReportAggregatesOnly(true);
BENCHMARK(BM_RenderBuiltInScriptEachLevel)->Unit(benchmark::kMicrosecond)->Repetitions(15)->ReportAggregatesOnly(true);
BENCHMARK(BM_RenderBuiltInScriptFlipped)->Unit(benchmark::kMicrosecond)->Repetitions(5)->ReportAggregatesOnly(true);
BENCHMARK(BM_RenderLongForm)->Unit(benchmark::kMicrosecond)->Repetitions(15)->ReportAggregatesOnly(true);
BENCHMARK(BM_RenderThemeList)->Unit(benchmark::kMillisecond)->Repetitions(5)->ReportAggregatesOnly(true);
BENCHMARK(BM_EngineStartUp)->Unit(benchmark::kMillisecond)->UseManualTime()->Iterations(10)->Repetitions(3)
    ->ReportAggregatesOnly(true);

int main(int argc, char** argv)
{
    selfPath = argv[0];
    if (argc > 1 && std::string_view(argv[1]) == "--measure-start-up")
        return measureStartUp();
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv))
        return 1;
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}
