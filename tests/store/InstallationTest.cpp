#include "support/PlistPrinting.h"
#include "support/TemporaryRoot.h"

#include "store/EmbeddedFile.h"
#include "store/Installation.h"
#include "store/PreferencesStore.h"
#include "store/Profiles.h"
#include "store/ThemeScripts.h"

#include <gtest/gtest.h>

#include <filesystem>

TEST(Installation, InstallsThemesAndTheProfileFolderAndNothingMore)
{
    TemporaryRoot root;
    EXPECT_TRUE(installComponent().empty());
    EXPECT_TRUE(std::filesystem::is_directory(profileDirectoryPath()));
    EXPECT_FALSE(root.exists(kPreferencesFile));
    for (const EmbeddedFile& theme : bundledThemes()) {
        std::string name(theme.name.substr(0, theme.name.size() - 3));
        EXPECT_EQ(getThemeScriptWithName(name), std::string(theme.contents)) << name;
    }
}

TEST(Installation, LeavesWhatIsThere)
{
    TemporaryRoot root;
    if (bundledThemes().empty())
        GTEST_SKIP() << "no bundled themes";
    const EmbeddedFile& theme = bundledThemes().front();
    root.writeFile(std::string(kThemesFolder) + "/" + std::string(theme.name), "(mine){}");
    EXPECT_TRUE(installComponent().empty());
    EXPECT_EQ(getThemeScriptWithName(theme.name.substr(0, theme.name.size() - 3)), "(mine){}");
}
