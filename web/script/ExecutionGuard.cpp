#include "web/script/ExecutionGuard.h"

#include <fcntl.h>
#include <time.h>
#include <unistd.h>

#include <algorithm>
#include <cstdlib>

namespace script {

namespace {

using namespace std::chrono_literals;

// How often a running script is looked at: at most this much CPU time apart, and never closer
// than kShortestPeriod (the watchdog's timers run on a GLib loop, which rounds every timeout
// up to whole milliseconds; asking for less only costs wake-ups).
constexpr std::chrono::nanoseconds kRunningPeriod = 10ms;
constexpr std::chrono::nanoseconds kShortestPeriod = 1ms;
// When we want the current entry stopped: a timer that is due at once. Anything above zero but
// below a millisecond would wait for the next whole millisecond of the timer loop.
constexpr double kStopPeriod = 0;
constexpr auto kMemoryCheckInterval = 5ms;

std::chrono::steady_clock::time_point steadyNow()
{
    return std::chrono::steady_clock::now();
}

ExecutionGuard::WallClock wallClock = steadyNow;

double seconds(std::chrono::nanoseconds duration)
{
    return std::chrono::duration<double>(duration).count();
}

} // namespace

ExecutionGuard::ExecutionGuard(JSContextGroupRef group)
    : group_(group)
{
    // The watchdog only notices limits set inside an entry if it existed when the entry began;
    // make it now, so that stopSoon() works in the first checkpoint too.
    JSContextGroupSetExecutionTimeLimit(group_, seconds(kRunningPeriod), &ExecutionGuard::shouldTerminate, this);
    JSContextGroupClearExecutionTimeLimit(group_);
}

ExecutionGuard::~ExecutionGuard()
{
    JSContextGroupClearExecutionTimeLimit(group_);
}

void ExecutionGuard::setWallClockForTesting(WallClock clock)
{
    wallClock = clock ? clock : steadyNow;
}

std::chrono::nanoseconds ExecutionGuard::threadCPUTime()
{
    timespec now{};
    ::clock_gettime(CLOCK_THREAD_CPUTIME_ID, &now);
    return std::chrono::seconds(now.tv_sec) + std::chrono::nanoseconds(now.tv_nsec);
}

void ExecutionGuard::begin(std::chrono::milliseconds limit)
{
    stop_ = Stop::None;
    stopping_ = false;
    active_ = true;
    cpuLimit_ = limit;
    cpuStart_ = threadCPUTime();
    auto now = wallClock();
    wallDeadline_ = now + limit * kWallBackstopFactor;
    // Reading the resident size costs microseconds: a script short enough never to reach the
    // first check never pays for it, a longer one is measured from there.
    nextMemoryCheck_ = now;
    memoryCeiling_ = 0;
    armForRemainingBudget(std::chrono::nanoseconds(0));
}

void ExecutionGuard::end()
{
    stopping_ = false;
    active_ = false;
    JSContextGroupClearExecutionTimeLimit(group_);
}

void ExecutionGuard::stopSoon()
{
    stopping_ = true;
    arm(kStopPeriod);
}

void ExecutionGuard::arm(double periodSeconds)
{
    JSContextGroupSetExecutionTimeLimit(group_, periodSeconds, &ExecutionGuard::shouldTerminate, this);
}

void ExecutionGuard::armForRemainingBudget(std::chrono::nanoseconds used)
{
    // The next look comes when the budget would run out, so that a stop lands close to the
    // limit, but not sooner than the timers can tell apart.
    arm(seconds(std::clamp(cpuLimit_ - used, kShortestPeriod, kRunningPeriod)));
}

bool ExecutionGuard::shouldTerminate(JSContextRef, void* context)
{
    auto* guard = static_cast<ExecutionGuard*>(context);
    if (guard->check())
        return true;
    // Returning false alone does not start another period; setting the limit again does.
    guard->armForRemainingBudget(threadCPUTime() - guard->cpuStart_);
    return false;
}

bool ExecutionGuard::check()
{
    if (stopping_ || stop_ != Stop::None)
        return true;
    auto now = wallClock();
    if (threadCPUTime() - cpuStart_ >= cpuLimit_ || now >= wallDeadline_) {
        stop_ = Stop::Time;
        return true;
    }
    if (now >= nextMemoryCheck_) {
        nextMemoryCheck_ = now + kMemoryCheckInterval;
        std::size_t resident = residentBytes();
        if (!memoryCeiling_)
            memoryCeiling_ = resident ? resident + kMemoryGrowthLimit : 0;
        else if (resident > memoryCeiling_) {
            stop_ = Stop::Memory;
            return true;
        }
    }
    return false;
}

std::size_t ExecutionGuard::residentBytes()
{
    static const int statm = ::open("/proc/self/statm", O_RDONLY | O_CLOEXEC);
    static const long pageSize = ::sysconf(_SC_PAGESIZE);
    if (statm < 0 || pageSize <= 0)
        return 0;
    char text[128];
    ssize_t length = ::pread(statm, text, sizeof text - 1, 0);
    if (length <= 0)
        return 0;
    text[length] = '\0';
    char* end = nullptr;
    std::strtoull(text, &end, 10); // total size; the resident size follows
    unsigned long long pages = std::strtoull(end, nullptr, 10);
    return std::size_t(pages) * std::size_t(pageSize);
}

} // namespace script
