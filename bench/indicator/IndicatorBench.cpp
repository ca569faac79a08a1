// The tray indicator: how long from a settings change or a new charge level to the new icon
// handed to the tray, and what the running program holds and spends while nothing changes.
#include "indicator/AmpwellIndicator.h"

#include "store/Installation.h"
#include "store/PreferencesStore.h"

#include "platform/core/PropertyListUpdate.h"
#include "platform/core/Root.h"

#include <QApplication>
#include <QProcess>
#include <QThread>

#include <benchmark/benchmark.h>

#include <filesystem>
#include <fstream>
#include <string>
#include <unistd.h>

namespace {

class BenchRoot {
public:
    BenchRoot()
    {
        std::string pattern = (std::filesystem::temp_directory_path() / "ampwell-indicator-bench-XXXXXX").string();
        folder_ = ::mkdtemp(pattern.data()) ? pattern : std::string();
        Root::set(folder_);
        installComponent();
        std::filesystem::create_directories(std::filesystem::path(preferencesPath()).parent_path());
        set("enabled", PlistValue(true));
    }
    ~BenchRoot()
    {
        std::error_code ignored;
        std::filesystem::remove_all(folder_, ignored);
    }
    void set(const std::string& key, const PlistValue& value)
    {
        updatePropertyListFile(preferencesPath(), MissingFilePolicy::StartEmpty,
                               [&](PlistDict& file) { file.set(key, value); });
    }
    const std::string& folder() const { return folder_; }

private:
    std::string folder_;
};

IndicatorOverrides batteryAt(double level)
{
    IndicatorOverrides overrides;
    overrides.level = level;
    overrides.charging = false;
    overrides.scale = 2;
    return overrides;
}

void BM_IndicatorSettingsChangeToIcon(benchmark::State& state)
{
    BenchRoot root;
    AmpwellIndicator indicator(batteryAt(55));
    int step = 0;
    for (auto _ : state) {
        state.PauseTiming();
        root.set("darkColor", PlistValue(step++ % 2 ? "#ff0000" : "#0000ff"));
        state.ResumeTiming();
        indicator.settingsChanged();
    }
}

void BM_IndicatorLevelChangeToIcon(benchmark::State& state)
{
    BenchRoot root;
    AmpwellIndicator indicator(batteryAt(55));
    int level = 30;
    for (auto _ : state) {
        state.PauseTiming();
        IndicatorOverrides overrides = batteryAt(30 + level++ % 60);
        state.ResumeTiming();
        indicator.setOverrides(overrides);
    }
}

// Resident memory and CPU time of a running indicator, read from /proc after it settled.
long procField(qint64 pid, const char* file, const std::string& field)
{
    std::ifstream in("/proc/" + std::to_string(pid) + "/" + file);
    std::string line;
    while (std::getline(in, line))
        if (line.rfind(field, 0) == 0)
            return std::stol(line.substr(field.size()));
    return -1;
}

long cpuTicks(qint64 pid)
{
    std::ifstream in("/proc/" + std::to_string(pid) + "/stat");
    std::string text((std::istreambuf_iterator<char>(in)), std::istreambuf_iterator<char>());
    std::size_t end = text.rfind(')');
    if (end == std::string::npos)
        return -1;
    std::istringstream fields(text.substr(end + 2));
    std::string skip;
    for (int i = 0; i < 11; ++i)
        fields >> skip;
    long user = 0, system = 0;
    fields >> user >> system;
    return user + system;
}

void BM_IndicatorIdle(benchmark::State& state)
{
    BenchRoot root;
    for (auto _ : state) {
        QProcess indicator;
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert(QStringLiteral("QT_QPA_PLATFORM"), QStringLiteral("offscreen"));
        indicator.setProcessEnvironment(environment);
        indicator.start(QStringLiteral(AMPWELL_BINARY_DIR "/indicator/ampwell-indicator"),
                        {QStringLiteral("--root"), QString::fromStdString(root.folder())});
        if (!indicator.waitForStarted(5000)) {
            state.SkipWithError("the indicator did not start");
            return;
        }
        QThread::sleep(2);
        long ticksBefore = cpuTicks(indicator.processId());
        QThread::sleep(5);
        long ticksAfter = cpuTicks(indicator.processId());
        state.counters["idle_rss_MiB"] = procField(indicator.processId(), "status", "VmRSS:") / 1024.0;
        state.counters["idle_cpu_ticks_in_5s"] = static_cast<double>(ticksAfter - ticksBefore);
        state.SetIterationTime(1);
        indicator.terminate();
        indicator.waitForFinished(5000);
    }
}

} // namespace

BENCHMARK(BM_IndicatorSettingsChangeToIcon)->Unit(benchmark::kMillisecond)->Repetitions(7)->ReportAggregatesOnly(true);
BENCHMARK(BM_IndicatorLevelChangeToIcon)->Unit(benchmark::kMillisecond)->Repetitions(7)->ReportAggregatesOnly(true);
BENCHMARK(BM_IndicatorIdle)->UseManualTime()->Iterations(1);

int main(int argc, char** argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    // As the program runs its engine (see indicator/main.cpp).
    setenv("JSC_useJIT", "0", 0);
    int qtArgc = 1;
    QApplication application(qtArgc, argv);
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv))
        return 1;
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}
