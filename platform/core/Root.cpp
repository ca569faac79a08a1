#include "Root.h"

#include <cstdlib>
#include <filesystem>

namespace Root {
namespace {

std::string& current()
{
    static std::string folder;
    return folder;
}

std::string environment(const char* name)
{
    const char* value = std::getenv(name);
    return value ? value : "";
}

} // namespace

std::string resolve(const std::optional<std::string>& commandLineRoot)
{
    std::string chosen;
    if (commandLineRoot && !commandLineRoot->empty())
        chosen = *commandLineRoot;
    else if (!environment("AMPWELL_ROOT").empty())
        chosen = environment("AMPWELL_ROOT");
    else {
        std::string dataHome = environment("XDG_DATA_HOME");
        if (dataHome.empty())
            dataHome = environment("HOME") + "/.local/share";
        chosen = dataHome + "/ampwell/root";
    }
    std::error_code error;
    std::filesystem::path absolute = std::filesystem::absolute(chosen, error);
    return error ? chosen : absolute.lexically_normal().string();
}

void set(std::string folder)
{
    while (folder.size() > 1 && folder.back() == '/')
        folder.pop_back();
    current() = std::move(folder);
}

const std::string& folder()
{
    return current();
}

std::string path(std::string_view absolutePath)
{
    std::string joined = current();
    if (!absolutePath.starts_with('/'))
        joined += '/';
    joined += absolutePath;
    return joined;
}

} // namespace Root
