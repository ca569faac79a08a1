#include "TemporaryFiles.h"

#include <cerrno>
#include <csignal>
#include <filesystem>
#include <string_view>
#include <unistd.h>

namespace {

constexpr std::string_view kMarker = ".tmp-";

// The process a temporary's name names, or 0 when the name is not a temporary's.
pid_t writerOf(std::string_view name, std::string_view file)
{
    if (!name.starts_with(file) || name.substr(file.size()).find(kMarker) != 0)
        return 0;
    std::string_view rest = name.substr(file.size() + kMarker.size());
    std::size_t dash = rest.find('-');
    if (dash == 0 || dash == std::string_view::npos || dash > 10)
        return 0;
    long pid = 0;
    for (char digit : rest.substr(0, dash)) {
        if (digit < '0' || digit > '9')
            return 0;
        pid = pid * 10 + (digit - '0');
    }
    return pid > 0 && pid <= 0x7fffffff ? static_cast<pid_t>(pid) : 0;
}

bool isRunning(pid_t pid)
{
    return ::kill(pid, 0) == 0 || errno == EPERM;
}

} // namespace

std::string temporaryFilePattern(const std::string& path)
{
    return path + std::string(kMarker) + std::to_string(::getpid()) + "-XXXXXX";
}

void removeAbandonedTemporaries(const std::string& path)
{
    std::filesystem::path file(path);
    std::string name = file.filename().string();
    std::error_code error;
    std::filesystem::directory_iterator entries(file.has_parent_path() ? file.parent_path() : ".", error);
    for (; !error && entries != std::filesystem::directory_iterator(); entries.increment(error)) {
        std::string entry = entries->path().filename().string();
        pid_t writer = writerOf(entry, name);
        if (writer != 0 && !isRunning(writer)) {
            std::error_code ignored;
            std::filesystem::remove(entries->path(), ignored);
        }
    }
}
