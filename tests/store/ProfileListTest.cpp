#include "support/PlistPrinting.h"
#include "support/TemporaryRoot.h"

#include "store/ProfileList.h"
#include "store/Profiles.h"

#include "platform/core/PropertyListFile.h"

#include <gtest/gtest.h>

#include <filesystem>

namespace {

class ProfileList : public ::testing::Test {
protected:
    TemporaryRoot root;
    void SetUp() override { root.makeFolder(kProfileDirectory); }
    void touch(const std::string& file) { root.writeFile(std::string(kProfileDirectory) + file, "x"); }
};

} // namespace

TEST_F(ProfileList, MostRecentThenDefaultThenTheOthers)
{
    touch("Work.awProfile");
    touch("Default.awProfile");
    touch("Most Recent.awProfile");
    std::vector<std::string> names = loadProfiles();
    ASSERT_EQ(names.size(), 3u);
    EXPECT_EQ(names[0], "Most Recent");
    EXPECT_EQ(names[1], "Default");
    EXPECT_EQ(names[2], "Work");
}

TEST_F(ProfileList, DefaultIsListedAndRewrittenEveryTime)
{
    touch("Work.awProfile");
    touch("notes.txt");
    touch("Other.awProfile.bak");
    EXPECT_EQ(loadProfiles(), (std::vector<std::string>{"Default", "Work"}));
    EXPECT_EQ(readProfile("Default"), defaultProfile());

    ASSERT_TRUE(writeProfile("Default", PlistDict{{"theme", "Changed"}}));
    loadProfiles();
    EXPECT_EQ(readProfile("Default"), defaultProfile());
}

TEST_F(ProfileList, AMissingFolderListsDefaultAlone)
{
    std::filesystem::remove_all(profileDirectoryPath());
    EXPECT_EQ(loadProfiles(), (std::vector<std::string>{"Default"}));
    EXPECT_TRUE(profileTitles().empty());
}

TEST_F(ProfileList, TitlesAreEveryProfileWithoutSpecialPlaces)
{
    touch("A.awProfile");
    touch("Default.awProfile");
    std::vector<std::string> titles = profileTitles();
    std::sort(titles.begin(), titles.end());
    EXPECT_EQ(titles, (std::vector<std::string>{"A", "Default"}));
}
