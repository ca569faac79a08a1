#include "SystemLog.h"

#include <mutex>
#include <syslog.h>

namespace {

std::mutex observerMutex;
std::function<void(const std::string&)>& observer()
{
    static std::function<void(const std::string&)> instance;
    return instance;
}

} // namespace

void systemLog(const std::string& line)
{
    static std::once_flag opened;
    std::call_once(opened, [] { openlog("ampwell", LOG_PID, LOG_USER); });
    syslog(LOG_NOTICE, "%s", line.c_str());
    std::lock_guard lock(observerMutex);
    if (observer())
        observer()(line);
}

void setSystemLogObserver(std::function<void(const std::string&)> newObserver)
{
    std::lock_guard lock(observerMutex);
    observer() = std::move(newObserver);
}
