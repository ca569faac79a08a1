#include "InstalledData.h"

#include <filesystem>

std::optional<std::string> installedDataFolder()
{
    std::error_code error;
    std::filesystem::path program = std::filesystem::read_symlink("/proc/self/exe", error);
    if (error)
        return std::nullopt;
    std::filesystem::path folder = program.parent_path().parent_path() / "share" / "ampwell";
    if (!std::filesystem::is_directory(folder, error))
        return std::nullopt;
    return folder.string();
}
