#include "platform/web/script/ExecutionGuard.h"

#include <fcntl.h>
#include <unistd.h>

#include <cstdlib>

namespace script {

namespace {

// While a script runs: how often its entry is looked at (CPU time of the entry).
constexpr double kRunningPeriod = 0.010;
// While promise jobs run: every entry is looked at as soon as a trap lands on it.
constexpr double kMicrotaskPeriod = 1e-9;
constexpr auto kMemoryCheckInterval = std::chrono::milliseconds(5);

} // namespace

ExecutionGuard::ExecutionGuard(JSContextGroupRef group)
    : group_(group)
{
    end();
}

ExecutionGuard::~ExecutionGuard()
{
    JSContextGroupClearExecutionTimeLimit(group_);
}

void ExecutionGuard::begin(std::chrono::milliseconds limit)
{
    stop_ = Stop::None;
    auto now = std::chrono::steady_clock::now();
    deadline_ = now + limit;
    nextMemoryCheck_ = now + kMemoryCheckInterval;
    std::size_t resident = residentBytes();
    memoryCeiling_ = resident ? resident + kMemoryGrowthLimit : 0;
    watchRunning();
}

void ExecutionGuard::watchRunning()
{
    arm(kRunningPeriod);
}

void ExecutionGuard::watchMicrotasks()
{
    arm(kMicrotaskPeriod);
}

void ExecutionGuard::end()
{
    memoryCeiling_ = 0;
    JSContextGroupClearExecutionTimeLimit(group_);
}

void ExecutionGuard::arm(double periodSeconds)
{
    period_ = periodSeconds;
    JSContextGroupSetExecutionTimeLimit(group_, periodSeconds, &ExecutionGuard::shouldTerminate, this);
}

bool ExecutionGuard::shouldTerminate(JSContextRef, void* context)
{
    auto* guard = static_cast<ExecutionGuard*>(context);
    if (guard->check())
        return true;
    // Returning false alone does not start another period; setting the limit again does.
    guard->arm(guard->period_);
    return false;
}

bool ExecutionGuard::check()
{
    if (stop_ != Stop::None)
        return true;
    auto now = std::chrono::steady_clock::now();
    if (now >= deadline_) {
        stop_ = Stop::Time;
        return true;
    }
    if (memoryCeiling_ && now >= nextMemoryCheck_) {
        nextMemoryCheck_ = now + kMemoryCheckInterval;
        if (residentBytes() > memoryCeiling_) {
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
