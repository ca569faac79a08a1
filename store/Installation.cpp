#include "Installation.h"

#include "EmbeddedFile.h"
#include "Profiles.h"
#include "ThemeScripts.h"

#include "platform/core/InstalledData.h"
#include "platform/core/Root.h"

#include <filesystem>
#include <fstream>

namespace fs = std::filesystem;

namespace {

bool ensureFolder(const fs::path& folder, std::vector<std::string>* problems)
{
    std::error_code error;
    fs::create_directories(folder, error);
    if (error || !fs::is_directory(folder)) {
        problems->push_back("cannot create " + folder.string() + (error ? ": " + error.message() : ""));
        return false;
    }
    return true;
}

void installFile(const fs::path& path, std::string_view contents, std::vector<std::string>* problems)
{
    if (fs::exists(path))
        return;
    fs::path temporary = path;
    temporary += ".installing";
    {
        std::ofstream out(temporary, std::ios::binary | std::ios::trunc);
        out.write(contents.data(), static_cast<std::streamsize>(contents.size()));
        if (!out) {
            problems->push_back("cannot write " + path.string());
            return;
        }
    }
    std::error_code error;
    fs::rename(temporary, path, error);
    if (error)
        problems->push_back("cannot write " + path.string() + ": " + error.message());
}

// The themes an installation keeps in its shared data, read whole; none from a build folder.
std::vector<std::pair<std::string, std::string>> installedThemes()
{
    std::vector<std::pair<std::string, std::string>> themes;
    std::optional<std::string> data = installedDataFolder();
    if (!data)
        return themes;
    std::error_code error;
    for (fs::directory_iterator entry(fs::path(*data) / "themes", error); !error && entry != fs::directory_iterator();
         entry.increment(error))
        if (entry->path().extension() == ".js" && entry->is_regular_file()) {
            std::ifstream in(entry->path(), std::ios::binary);
            themes.emplace_back(entry->path().filename().string(), std::string(std::istreambuf_iterator<char>(in), {}));
        }
    return themes;
}

} // namespace

std::vector<std::string> installComponent()
{
    std::vector<std::string> problems;
    fs::path themes = Root::path(kThemesFolder);
    if (ensureFolder(themes, &problems)) {
        // An installation's themes folder is the one to copy; a build uses the built-in copies.
        std::vector<std::pair<std::string, std::string>> installed = installedThemes();
        if (!installed.empty())
            for (const auto& [name, contents] : installed)
                installFile(themes / name, contents, &problems);
        else
            for (const EmbeddedFile& theme : bundledThemes())
                installFile(themes / std::string(theme.name), theme.contents, &problems);
    }
    ensureFolder(profileDirectoryPath(), &problems);
    return problems;
}
