#include "support/PlistPrinting.h"
#include "support/TemporaryRoot.h"

#include "store/PreferencesStore.h"

#include "platform/core/DarwinNotifyCenter.h"
#include "platform/core/PropertyListFile.h"

#include <gtest/gtest.h>

using namespace std::chrono_literals;

namespace {

class PreferencesStore : public ::testing::Test {
protected:
    TemporaryRoot root;

    void writePreferences(const PlistDict& dict)
    {
        root.makeFolderFor(kPreferencesFile);
        ASSERT_TRUE(writePropertyListAtomically(preferencesPath(), dict));
    }
    PlistDict preferences() { return readPropertyListDictionary(preferencesPath()).value_or(PlistDict()); }
};

} // namespace

TEST_F(PreferencesStore, GetsOnlyTheKeysTheFileHolds)
{
    writePreferences({{"lightColor", "#ff0000"}, {"enabled", true}});
    EXPECT_TRUE(getSettingsForKeys({}).empty());
    PlistDict got = getSettingsForKeys({"enabled", "missing", "lightColor"});
    EXPECT_EQ(got.keys(), (std::vector<std::string>{"enabled", "lightColor"}));
    EXPECT_EQ(getPreferenceValueForKey(preferencesPath(), "enabled"), PlistValue(true));
    EXPECT_TRUE(getPreferenceValueForKey(preferencesPath(), "missing").isNil());
}

TEST_F(PreferencesStore, WritingKeepsEveryOtherKeyAndEachWriteRereads)
{
    writePreferences({{"unknownToUs", PlistData{1, 2}}, {"viewedTP", 1}});
    setSettingsWithDictionary({{"lightColor", "#00ff00"}});
    setSettingsForKeys({"darkColor", "lowLevel"}, {PlistValue("#111111"), PlistValue(15), PlistValue("extra")});
    setPreferenceValueForKey(preferencesPath(), "viewedTP", 2);
    PlistDict expected{{"unknownToUs", PlistData{1, 2}}, {"viewedTP", 2}, {"lightColor", "#00ff00"},
                       {"darkColor", "#111111"}, {"lowLevel", 15}};
    EXPECT_EQ(preferences(), expected);
}

TEST_F(PreferencesStore, WithoutAFileNothingIsWritten)
{
    root.makeFolderFor(kPreferencesFile);
    setSettingsWithDictionary({{"a", 1}});
    setSettingsForKeys({"a"}, {PlistValue(1)});
    setPreferenceValueForKey(preferencesPath(), "viewedPP", 1);
    EXPECT_FALSE(root.exists(kPreferencesFile));
    EXPECT_TRUE(getSettingsForKeys({"a"}).empty());
}

TEST_F(PreferencesStore, WritesNeverPostButTheNotificationCallDoes)
{
    writePreferences({});
    DarwinNotificationListener listener{std::string(kSettingsChangedNotification)};
    ASSERT_TRUE(listener.isListening());
    setSettingsWithDictionary({{"a", 1}});
    setPreferenceValueForKey(preferencesPath(), "b", 2);
    EXPECT_FALSE(listener.waitForNext(300ms));
    postSettingsChangedNotification();
    EXPECT_EQ(listener.waitForNext(5s), std::string(kSettingsChangedNotification));
}
