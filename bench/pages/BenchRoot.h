#pragma once

#include "store/EmbeddedFile.h"
#include "store/Installation.h"
#include "store/PreferencesStore.h"
#include "store/ThemeScripts.h"

#include "platform/core/PropertyListUpdate.h"
#include "platform/core/Root.h"

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>

// A root of its own with the bundled themes, as many copies of them in the Installed folder as
// make up the count, and the theme list's notice already seen.
class BenchRoot {
public:
    explicit BenchRoot(int themes)
    {
        std::string pattern = (std::filesystem::temp_directory_path() / "ampwell-bench-XXXXXX").string();
        folder_ = ::mkdtemp(pattern.data()) ? pattern : std::string();
        Root::set(folder_);
        installComponent();
        std::filesystem::path installed = Root::path(kInstalledThemesFolder);
        std::filesystem::create_directories(installed);
        const auto& bundled = bundledThemes();
        for (int i = static_cast<int>(bundled.size()); i < themes; ++i) {
            const EmbeddedFile& theme = bundled[static_cast<std::size_t>(i) % bundled.size()];
            std::ofstream(installed / ("Copy " + std::to_string(i) + ".js")) << theme.contents;
        }
        updatePropertyListFile(preferencesPath(), MissingFilePolicy::StartEmpty,
                               [](PlistDict& preferences) { preferences.set("viewedTP", PlistValue(2)); });
    }
    ~BenchRoot()
    {
        std::error_code ignored;
        std::filesystem::remove_all(folder_, ignored);
    }

private:
    std::string folder_;
};

