#include "PropertyListUpdate.h"

#include "FileLock.h"
#include "PropertyListFile.h"
#include "SystemLog.h"

#include <ctime>
#include <filesystem>

namespace {

std::string timeStamp()
{
    std::time_t now = std::time(nullptr);
    std::tm local{};
    localtime_r(&now, &local);
    char buffer[32];
    std::strftime(buffer, sizeof buffer, "%Y%m%d-%H%M%S", &local);
    return buffer;
}

// Keeps what the user had: the unparseable file is copied next to itself under a new name.
bool copyAside(const std::string& path, std::string* error)
{
    std::string base = path + ".corrupt." + timeStamp();
    std::string target = base;
    for (int n = 2; std::filesystem::exists(target); ++n)
        target = base + "-" + std::to_string(n);
    std::error_code failure;
    if (!std::filesystem::copy_file(path, target, failure)) {
        if (error)
            *error = "cannot keep a copy of the unreadable " + path + ": " + failure.message();
        return false;
    }
    systemLog("AMPW: unreadable settings file kept as " + target);
    return true;
}

} // namespace

bool updatePropertyListFile(const std::string& path, MissingFilePolicy policy,
                            const std::function<void(PlistDict&)>& change, std::string* error)
{
    FileLock lock(path + ".lock");
    PlistReadResult current = readPropertyListFile(path);
    bool isDictionary = current.status == PlistReadStatus::Ok && current.value.asDict();

    PlistDict dict;
    if (isDictionary) {
        dict = std::move(*current.value.asDict());
    } else if (policy == MissingFilePolicy::WriteNothing) {
        return true;
    } else if (current.status != PlistReadStatus::Missing && !copyAside(path, error)) {
        return false;
    }
    change(dict);
    return writePropertyListAtomically(path, dict, error);
}
