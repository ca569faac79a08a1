#include "ThemeCatalog.h"

#include "render/ThemeScriptCall.h"
#include "store/ThemeScripts.h"

#include "platform/core/Root.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <set>
#include <sstream>

namespace {

std::string callFormOf(const std::filesystem::path& file)
{
    std::ifstream in(file, std::ios::binary);
    std::stringstream text;
    text << in.rdbuf();
    std::string script = text.str();
    std::optional<std::string_view> parameters = themeScriptParameterList(script);
    if (!parameters)
        return "invalid";
    return usesLongCallForm(*parameters) ? "long" : "short";
}

} // namespace

std::vector<InstalledTheme> installedThemes()
{
    std::vector<InstalledTheme> themes;
    std::set<std::string> seen;
    for (std::string_view folder : kThemeFolders) {
        std::vector<InstalledTheme> inFolder;
        std::error_code error;
        for (const auto& entry : std::filesystem::directory_iterator(Root::path(folder), error)) {
            std::string file = entry.path().filename().string();
            if (file.size() <= 3 || !file.ends_with(".js"))
                continue;
            std::string name = file.substr(0, file.size() - 3);
            inFolder.push_back({name, std::string(folder), callFormOf(entry.path()), seen.count(name) > 0});
        }
        std::sort(inFolder.begin(), inFolder.end(), [](const auto& a, const auto& b) { return a.name < b.name; });
        for (InstalledTheme& theme : inFolder) {
            seen.insert(theme.name);
            themes.push_back(std::move(theme));
        }
    }
    return themes;
}
