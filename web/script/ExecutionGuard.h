#pragma once

#include "web/script/JSCPrivate.h"

#include <chrono>
#include <cstddef>

namespace script {

// The time and memory budget of script code, enforced from JavaScriptCore's watchdog.
//
// Time is the evaluating thread's own CPU time: a script is stopped for what it did, not for
// how long the machine kept it waiting. A busy machine (two test processes on two cores, a
// build next to the app) may stretch a 150 ms script to seconds of wall time; it must still
// run to its end. Nothing a script can do waits without using the CPU (there are no timers,
// no shared memory to wait on, no synchronous I/O), so the CPU clock bounds it; a wall-clock
// backstop of kWallBackstopFactor times the limit stays in case something does.
//
// The watchdog calls back once an entry into the engine has used a period of CPU time (and as
// much wall time); the callback decides, and must set the limit again to be called once more.
// The guard asks for a callback every few milliseconds and keeps its own clocks and memory
// ceiling.
class ExecutionGuard {
public:
    enum class Stop { None, Time, Memory };

    // How much the process may grow during one evaluation before the script is stopped.
    static constexpr std::size_t kMemoryGrowthLimit = std::size_t(512) << 20;
    // How many times the CPU time limit may pass in wall time before a script is stopped.
    static constexpr int kWallBackstopFactor = 10;

    explicit ExecutionGuard(JSContextGroupRef group);
    ~ExecutionGuard();
    ExecutionGuard(const ExecutionGuard&) = delete;
    ExecutionGuard& operator=(const ExecutionGuard&) = delete;

    // Starts a budget: `limit` of this thread's CPU time from now (and kWallBackstopFactor
    // times that of wall time), and the memory growth limit from the resident size at the
    // first check.
    void begin(std::chrono::milliseconds limit);
    // Ends the budget. Our own calls into the engine in between run unwatched: they never run
    // script code.
    void end();
    // Stops whatever runs at its next check, within microseconds (the caller is inside an
    // entry into the engine).
    void stopSoon();

    Stop stop() const { return stop_; }

    // For native work inside an evaluation that takes long (drawing a path of many thousand
    // segments): whether the budget has run out, in which case the script stops at its next
    // check. False outside an evaluation.
    bool overBudget() { return active_ && check(); }

    // Resident size of the process, 0 when it cannot be read.
    static std::size_t residentBytes();
    // CPU time the calling thread has used.
    static std::chrono::nanoseconds threadCPUTime();

    // Where the guard reads wall time; tests put a clock there that jumps ahead, as a busy
    // machine's does. Null restores the steady clock.
    using WallClock = std::chrono::steady_clock::time_point (*)();
    static void setWallClockForTesting(WallClock clock);

private:
    static bool shouldTerminate(JSContextRef ctx, void* context);
    bool check();
    void arm(double periodSeconds);
    void armForRemainingBudget(std::chrono::nanoseconds used);

    JSContextGroupRef group_;
    Stop stop_ = Stop::None;
    bool stopping_ = false;
    bool active_ = false;
    std::chrono::nanoseconds cpuLimit_{0};
    std::chrono::nanoseconds cpuStart_{0};
    std::chrono::steady_clock::time_point wallDeadline_;
    std::chrono::steady_clock::time_point nextMemoryCheck_;
    std::size_t memoryCeiling_ = 0;
};

} // namespace script
