#include "platform/web/script/ExecutionGuard.h"

#include <fcntl.h>
#include <unistd.h>

#include <cstdlib>

namespace script {

namespace {

// How often a running script is looked at (CPU time of its entry into the engine).
constexpr double kRunningPeriod = 0.010;
// When we want the current entry stopped: one short period, one timer.
constexpr double kStopPeriod = 0.0001;
constexpr auto kMemoryCheckInterval = std::chrono::milliseconds(5);

} // namespace

ExecutionGuard::ExecutionGuard(JSContextGroupRef group)
    : group_(group)
{
}

ExecutionGuard::~ExecutionGuard()
{
    JSContextGroupClearExecutionTimeLimit(group_);
}

void ExecutionGuard::begin(std::chrono::milliseconds limit)
{
    stop_ = Stop::None;
    stopping_ = false;
    auto now = std::chrono::steady_clock::now();
    deadline_ = now + limit;
    // Reading the resident size costs microseconds: a script short enough never to reach the
    // first check never pays for it, a longer one is measured from there.
    nextMemoryCheck_ = now;
    memoryCeiling_ = 0;
    arm(kRunningPeriod);
}

void ExecutionGuard::end()
{
    stopping_ = false;
    JSContextGroupClearExecutionTimeLimit(group_);
}

void ExecutionGuard::stopSoon()
{
    stopping_ = true;
    arm(kStopPeriod);
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
    if (stopping_ || stop_ != Stop::None)
        return true;
    auto now = std::chrono::steady_clock::now();
    if (now >= deadline_) {
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
