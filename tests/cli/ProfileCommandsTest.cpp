#include "AmpwellRunner.h"

#include "store/Profiles.h"
#include "store/SettingsCatalogue.h"

#include "platform/core/DarwinNotifyCenter.h"

#include <gtest/gtest.h>

using namespace std::chrono_literals;

namespace {

class ProfileCommands : public ::testing::Test, protected AmpwellRunner {
protected:
    void SetUp() override
    {
        ASSERT_EQ(run({"set", "lightColor", "#111111"}).status, 0);
        ASSERT_EQ(run({"set", "lowLevel", "7"}).status, 0);
    }
    PlistValue stored(const char* key) { return preferences().value(key); }
};

} // namespace

TEST_F(ProfileCommands, ListPutsMostRecentAndDefaultFirst)
{
    ASSERT_EQ(run({"profile", "save", "Work", "--complete"}).status, 0);
    ASSERT_EQ(run({"profile", "save", "Colours", "--colors"}).status, 0);
    ASSERT_EQ(run({"profile", "restore", "Work"}).status, 0);
    ProcessResult list = run({"profile", "list"});
    ASSERT_EQ(list.status, 0);
    EXPECT_TRUE(list.out.starts_with("Most Recent\tall\nDefault\tall\n")) << list.out;
    EXPECT_NE(list.out.find("Work\tall\n"), std::string::npos);
    EXPECT_NE(list.out.find("Colours\tcolors\n"), std::string::npos);
    EXPECT_TRUE(run({"profile", "list", "--json"}).out.starts_with(R"(["Most Recent","Default",)"));
}

TEST_F(ProfileCommands, SavingRefusesTakenAndUnsafeNames)
{
    ASSERT_EQ(run({"profile", "save", "Work", "--complete"}).status, 0);
    EXPECT_EQ(run({"profile", "save", "Work", "--colors"}).status, 1);
    run({"profile", "list"});
    EXPECT_EQ(run({"profile", "save", "Default", "--colors"}).status, 1);
    for (std::string bad : std::vector<std::string>{"../x", "", ".secret", "a/b", std::string(201, 'x'), "new\nline"})
        EXPECT_EQ(run({"profile", "save", bad, "--complete"}).status, 2) << bad;
    EXPECT_EQ(run({"profile", "save", "Both", "--complete", "--colors"}).status, 2);
    EXPECT_FALSE(root.exists("/var/mobile/Library/Preferences/Ampwell/x.awProfile"));
}

TEST_F(ProfileCommands, RestoringACompleteProfileKeepsMostRecentAndPosts)
{
    ASSERT_EQ(run({"profile", "save", "Before", "--complete"}).status, 0);
    ASSERT_EQ(run({"set", "lightColor", "#222222"}).status, 0);
    ASSERT_EQ(run({"set", "lowLevel", "9"}).status, 0);

    DarwinNotificationListener listener{std::string(kSettingsChangedNotification)};
    ASSERT_EQ(run({"profile", "restore", "Before"}).status, 0);
    EXPECT_TRUE(listener.waitForNext(5s));
    EXPECT_EQ(stored("lightColor"), PlistValue("#111111"));
    EXPECT_EQ(stored("lowLevel"), PlistValue(7));
    EXPECT_EQ(readProfile("Most Recent")->value("lightColor"), PlistValue("#222222"));

    // Most Recent twice: back to where we were, then back again.
    ASSERT_EQ(run({"profile", "restore", "Most Recent"}).status, 0);
    EXPECT_EQ(stored("lightColor"), PlistValue("#222222"));
    ASSERT_EQ(run({"profile", "restore", "Most Recent"}).status, 0);
    EXPECT_EQ(stored("lightColor"), PlistValue("#111111"));
}

TEST_F(ProfileCommands, ChoicesFollowTheProfileKind)
{
    ASSERT_EQ(run({"profile", "save", "All", "--complete"}).status, 0);
    ASSERT_EQ(run({"profile", "save", "Tint", "--colors"}).status, 0);
    ASSERT_EQ(run({"set", "lightColor", "#333333"}).status, 0);
    ASSERT_EQ(run({"set", "lowLevel", "50"}).status, 0);

    ASSERT_EQ(run({"profile", "restore", "All", "--colors-only"}).status, 0);
    EXPECT_EQ(stored("lightColor"), PlistValue("#111111"));
    EXPECT_EQ(stored("lowLevel"), PlistValue(50));

    ASSERT_EQ(run({"set", "lightColor", "#333333"}).status, 0);
    ASSERT_EQ(run({"profile", "restore", "Tint"}).status, 0);
    EXPECT_EQ(stored("lightColor"), PlistValue("#111111"));
    EXPECT_EQ(stored("lowLevel"), PlistValue(50));

    ASSERT_EQ(run({"profile", "restore", "Tint", "--reset-others"}).status, 0);
    EXPECT_EQ(stored("lowLevel"), PlistValue(20));

    EXPECT_EQ(run({"profile", "restore", "All", "--reset-others"}).status, 2);
    EXPECT_EQ(run({"profile", "restore", "Tint", "--colors-only"}).status, 2);
    EXPECT_EQ(run({"profile", "restore", "Missing"}).status, 1);
}

TEST_F(ProfileCommands, RestoreWithoutSettingsSaysSo)
{
    ASSERT_EQ(run({"profile", "save", "Keep", "--complete"}).status, 0);
    std::filesystem::remove(preferencesPath());
    ProcessResult result = run({"profile", "restore", "Keep"});
    EXPECT_EQ(result.status, 1);
    EXPECT_NE(result.err.find("no settings"), std::string::npos);
    EXPECT_FALSE(readProfile("Most Recent"));
}

TEST_F(ProfileCommands, DeleteKeepsTheReservedProfiles)
{
    ASSERT_EQ(run({"profile", "save", "Old", "--colors"}).status, 0);
    ASSERT_EQ(run({"profile", "delete", "Old"}).status, 0);
    EXPECT_FALSE(readProfile("Old"));
    EXPECT_EQ(run({"profile", "delete", "Old"}).status, 1);
    run({"profile", "list"});
    EXPECT_EQ(run({"profile", "delete", "Default"}).status, 2);
    EXPECT_EQ(run({"profile", "delete", "Most Recent"}).status, 2);
    EXPECT_EQ(run({"profile", "delete", "../../com.mossgate.ampwell"}).status, 2);
    EXPECT_TRUE(readProfile("Default"));
}
