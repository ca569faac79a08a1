#pragma once

#include "platform/web/script/JSCPrivate.h"

#include <chrono>
#include <cstddef>

namespace script {

// The time and memory budget of script code, enforced from JavaScriptCore's watchdog.
//
// The watchdog calls back when one entry into the engine has used a period of CPU time; the
// callback decides, and must set the limit again to be called once more. The guard asks for a
// callback every few milliseconds and keeps its own wall clock and memory ceiling.
//
// The period must never be tiny: a new timer firing while the engine still handles the last
// one trips an assertion in the engine and aborts the process.
class ExecutionGuard {
public:
    enum class Stop { None, Time, Memory };

    // How much the process may grow during one evaluation before the script is stopped.
    static constexpr std::size_t kMemoryGrowthLimit = std::size_t(512) << 20;

    explicit ExecutionGuard(JSContextGroupRef group);
    ~ExecutionGuard();
    ExecutionGuard(const ExecutionGuard&) = delete;
    ExecutionGuard& operator=(const ExecutionGuard&) = delete;

    // Starts a budget: `limit` of wall time from now, and the memory growth limit from the
    // resident size at the first check.
    void begin(std::chrono::milliseconds limit);
    // Ends the budget. Our own calls into the engine in between run unwatched: they never run
    // script code.
    void end();
    // Stops whatever runs at the next check, soon (the caller is inside an entry).
    void stopSoon();

    Stop stop() const { return stop_; }

    // Resident size of the process, 0 when it cannot be read.
    static std::size_t residentBytes();

private:
    static bool shouldTerminate(JSContextRef ctx, void* context);
    bool check();
    void arm(double periodSeconds);

    JSContextGroupRef group_;
    Stop stop_ = Stop::None;
    bool stopping_ = false;
    double period_ = 0;
    std::chrono::steady_clock::time_point deadline_;
    std::chrono::steady_clock::time_point nextMemoryCheck_;
    std::size_t memoryCeiling_ = 0;
};

} // namespace script
