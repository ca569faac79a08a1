#include "support/PlistPrinting.h"
#include "support/TemporaryRoot.h"

#include "store/ThemeScripts.h"

#include <gtest/gtest.h>

#include <filesystem>

namespace {

class ThemeScripts : public ::testing::Test {
protected:
    TemporaryRoot root;
    void writeTheme(std::string_view folder, const std::string& name, const std::string& text)
    {
        root.writeFile(std::string(folder) + "/" + name + ".js", text);
    }
};

} // namespace

TEST_F(ThemeScripts, TheProductsFolderWinsOverTheUsersFolders)
{
    writeTheme(kInstalledThemesFolder, "Both", "(installed){}");
    writeTheme(kThemesFolder, "Both", "(themes){}");
    writeTheme(kCreatorThemesFolder, "Mine", "(creator){}");
    EXPECT_EQ(getThemeScriptWithName("Both"), "(themes){}");
    EXPECT_EQ(getThemeScriptWithName("Mine"), "(creator){}");
    EXPECT_FALSE(getThemeScriptWithName("Nowhere"));
}

TEST_F(ThemeScripts, TheFirstFileFoundIsTheOnlyOneRead)
{
    writeTheme(kThemesFolder, "Broken", "bad \xFF\xFE utf-8");
    writeTheme(kInstalledThemesFolder, "Broken", "(fine){}");
    EXPECT_FALSE(getThemeScriptWithName("Broken"));
}

TEST_F(ThemeScripts, NamesAreJoinedAsTheyStand)
{
    writeTheme(std::string(kThemesFolder) + "/sub", "Nested", "(n){}");
    EXPECT_EQ(getThemeScriptWithName("sub/Nested"), "(n){}");
}

TEST(BuiltInPreviewScript, IsTheOneLineRingScript)
{
    EXPECT_EQ(kBuiltInPreviewScript.size(), 655u);
    EXPECT_TRUE(kBuiltInPreviewScript.starts_with("(c,g,l,m,e){"));
    EXPECT_TRUE(kBuiltInPreviewScript.ends_with("return f.toDataURL(\"image/png\")}"));
}
