#include "support/PlistPrinting.h"
#include "support/TemporaryRoot.h"

#include "store/PreferencesStore.h"
#include "store/Profiles.h"
#include "store/SettingsCatalogue.h"

#include "platform/core/PropertyListFile.h"

#include <gtest/gtest.h>

namespace {

class Profiles : public ::testing::Test {
protected:
    TemporaryRoot root;

    void SetUp() override { root.makeFolder(kProfileDirectory); }
    void writePreferences(const PlistDict& dict)
    {
        root.makeFolderFor(kPreferencesFile);
        ASSERT_TRUE(writePropertyListAtomically(preferencesPath(), dict));
    }
    PlistDict preferences() { return readPropertyListDictionary(preferencesPath()).value_or(PlistDict()); }

    // What the restore action does: keep the current settings as "Most Recent", then apply.
    void restore(std::string_view name, bool colorsOnly)
    {
        PlistDict profile = *readProfile(name);
        ASSERT_TRUE(writeProfile(kMostRecentProfileName, currentCompleteProfile()));
        colorsOnly ? applyOnlyColorProfile(profile) : applyProfile(profile);
    }
};

} // namespace

TEST_F(Profiles, SnapshotsOfAnEmptyFileAreTheTemplates)
{
    writePreferences({});
    EXPECT_EQ(currentColorProfile(), colorProfileTemplate());
    EXPECT_EQ(currentCompleteProfile(), defaultProfile());
}

TEST_F(Profiles, SnapshotsTakeOnlyTemplateKeysFromTheFile)
{
    writePreferences({{"lightColor", "#123456"}, {"theme", "Mine"}, {"viewedTP", 2}});
    PlistDict colours = currentColorProfile();
    EXPECT_EQ(colours.size(), 18u);
    EXPECT_EQ(colours.value("lightColor"), PlistValue("#123456"));
    EXPECT_FALSE(colours.contains("theme"));
    EXPECT_FALSE(isCompleteProfile(colours));

    PlistDict complete = currentCompleteProfile();
    EXPECT_EQ(complete.size(), 49u);
    EXPECT_EQ(complete.value("theme"), PlistValue("Mine"));
    EXPECT_FALSE(complete.contains("viewedTP"));
    EXPECT_TRUE(isCompleteProfile(complete));
}

TEST_F(Profiles, RestoringMostRecentTwiceReturnsToTheStart)
{
    writePreferences({{"lightColor", "#111111"}});
    ASSERT_TRUE(writeProfile("Work", PlistDict{{"theme", "Work"}, {"lightColor", "#222222"}}));
    restore("Work", false);
    EXPECT_EQ(preferences().value("lightColor"), PlistValue("#222222"));

    restore(kMostRecentProfileName, false);
    EXPECT_EQ(preferences().value("lightColor"), PlistValue("#111111"));
    restore(kMostRecentProfileName, false);
    EXPECT_EQ(preferences().value("lightColor"), PlistValue("#222222"));
}

TEST_F(Profiles, RestoringDefaultResetsCatalogueKeysOnly)
{
    writePreferences({{"lightColor", "#111111"}, {"lowLevel", 5}, {"viewedTP", 2}, {"enabled", true}});
    applyProfile(defaultProfile());
    PlistDict after = preferences();
    EXPECT_EQ(after.value("lightColor"), PlistValue("#FFFFFF"));
    EXPECT_EQ(after.value("lowLevel"), PlistValue(20));
    EXPECT_EQ(after.value("viewedTP"), PlistValue(2));
    EXPECT_EQ(after.value("enabled"), PlistValue(true));
    EXPECT_EQ(after.size(), 51u);
}

TEST_F(Profiles, ColourProfileWithResetOthersSetsOtherKeysToDefaults)
{
    writePreferences({{"theme", "Custom"}, {"flipX", true}, {"lightColor", "#111111"}});
    PlistDict colours = colorProfileTemplate();
    colours.set("lightColor", "#abcdef");
    PlistDict withDefaults = colours;
    withDefaults.addEntriesFrom(otherProfileTemplate());
    applyProfile(withDefaults);
    PlistDict after = preferences();
    EXPECT_EQ(after.value("theme"), PlistValue("Amp Connect"));
    EXPECT_EQ(after.value("flipX"), PlistValue(false));
    EXPECT_EQ(after.value("lightColor"), PlistValue("#abcdef"));
}

TEST_F(Profiles, ColoursOnlyRestoreFollowsTheKeyListNotTheTemplate)
{
    writePreferences({{"useSBC", true}, {"sbcLight", "#010101"}, {"darkSpring", true}, {"theme", "Mine"}});
    PlistDict profile = defaultProfile();
    profile.set("lightColor", "#00ff00");
    profile.set("passMain", true);
    profile.set("extraKey", "x");
    applyOnlyColorProfile(profile);
    PlistDict after = preferences();
    EXPECT_EQ(after.value("lightColor"), PlistValue("#00ff00"));
    EXPECT_EQ(after.value("passMain"), PlistValue(true));
    EXPECT_EQ(after.value("useSBC"), PlistValue(true));
    EXPECT_EQ(after.value("sbcLight"), PlistValue("#010101"));
    EXPECT_EQ(after.value("darkSpring"), PlistValue(true));
    EXPECT_EQ(after.value("theme"), PlistValue("Mine"));
    EXPECT_FALSE(after.contains("extraKey"));

    applyProfile(profile);
    EXPECT_EQ(preferences().value("extraKey"), PlistValue("x"));
}

TEST_F(Profiles, ApplyingWithoutAPreferencesFileWritesNothing)
{
    root.makeFolderFor(kPreferencesFile);
    applyProfile(defaultProfile());
    applyOnlyColorProfile(defaultProfile());
    EXPECT_FALSE(root.exists(kPreferencesFile));
    EXPECT_EQ(currentCompleteProfile(), defaultProfile());
}

TEST_F(Profiles, NamesThatCannotBeFileNamesAreRefused)
{
    for (std::string bad : std::vector<std::string>{"", "/", "../x", "a/b", ".hidden", "..", "tab\there", std::string(201, 'n')})
        EXPECT_TRUE(profileNameProblem(bad).has_value()) << bad;
    for (std::string good : std::vector<std::string>{"Work", "Most Recent", "Nacht ☾", std::string(200, 'n'), "x.y"})
        EXPECT_FALSE(profileNameProblem(good).has_value()) << good;
}
