#pragma once

#include "platform/web/script/JSCPrivate.h"

#include <chrono>
#include <cstddef>

namespace script {

// The time and memory budget of script code, enforced from JavaScriptCore's watchdog.
//
// The watchdog measures each entry into the engine on its own, by CPU time: it calls back when
// one entry has used the configured period. That stops a long loop, but a chain of promise
// jobs is a chain of short entries. So the guard keeps its own wall clock for the whole
// evaluation, asks to be called back at a coarse period while the script runs, and at a period
// of almost nothing while the microtask queue drains, where any trap lands on a job.
class ExecutionGuard {
public:
    enum class Stop { None, Time, Memory };

    // How much the process may grow during one evaluation before the script is stopped.
    static constexpr std::size_t kMemoryGrowthLimit = std::size_t(512) << 20;

    explicit ExecutionGuard(JSContextGroupRef group);
    ~ExecutionGuard();
    ExecutionGuard(const ExecutionGuard&) = delete;
    ExecutionGuard& operator=(const ExecutionGuard&) = delete;

    // Starts a budget: `limit` of wall time from now and the memory growth limit from the
    // present resident size. Watching starts in the running phase.
    void begin(std::chrono::milliseconds limit);
    void watchRunning();
    void watchMicrotasks();
    // Ends the budget. Our own calls into the engine in between run unwatched: they never run
    // script code.
    void end();

    Stop stop() const { return stop_; }

    // Resident size of the process, 0 when it cannot be read.
    static std::size_t residentBytes();

private:
    static bool shouldTerminate(JSContextRef ctx, void* context);
    bool check();
    void arm(double periodSeconds);

    JSContextGroupRef group_;
    Stop stop_ = Stop::None;
    double period_ = 0;
    std::chrono::steady_clock::time_point deadline_;
    std::chrono::steady_clock::time_point nextMemoryCheck_;
    std::size_t memoryCeiling_ = 0;
};

} // namespace script
