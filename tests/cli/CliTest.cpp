#include "AmpwellRunner.h"

#include "platform/core/DarwinNotifyCenter.h"

#include <gtest/gtest.h>
#include <plist/plist.h>

#include <atomic>
#include <thread>

using namespace std::chrono_literals;

namespace {

class Cli : public ::testing::Test, protected AmpwellRunner {};

// Writes the dictionary as a binary property list, as another program would.
void writeBinaryPreferences(const PlistDict& dict)
{
    std::string xml = *propertyListXML(dict);
    plist_t node = nullptr;
    plist_from_xml(xml.data(), static_cast<std::uint32_t>(xml.size()), &node);
    char* bytes = nullptr;
    std::uint32_t length = 0;
    plist_to_bin(node, &bytes, &length);
    std::ofstream(preferencesPath(), std::ios::binary).write(bytes, length);
    plist_to_bin_free(bytes);
    plist_free(node);
}

} // namespace

TEST_F(Cli, SetColourThenGetPrintsItAsTheColourRowsStoreIt)
{
    DarwinNotificationListener listener{std::string(kSettingsChangedNotification)};
    ProcessResult set = run({"set", "lightColor", "#FF0000"});
    EXPECT_EQ(set.status, 0) << set.err;
    EXPECT_EQ(listener.waitForNext(5s), std::string(kSettingsChangedNotification));
    EXPECT_FALSE(listener.waitForNext(200ms));

    ProcessResult get = run({"get", "lightColor"});
    EXPECT_EQ(get.status, 0);
    EXPECT_EQ(get.out, "#ff0000\n");
    EXPECT_EQ(run({"set", "baseLightColor", "00FF0080"}).status, 0);
    EXPECT_EQ(run({"get", "baseLightColor"}).out, "#00ff0080\n");
    EXPECT_EQ(run({"set", "baseDarkColor", "#00ff00"}).status, 0);
    EXPECT_EQ(run({"get", "baseDarkColor"}).out, "#00ff00ff\n"); // an alpha row writes alpha
}

TEST_F(Cli, GetFallsBackToTheCatalogueDefault)
{
    EXPECT_EQ(run({"get", "lowLevel"}).out, "20\n");
    EXPECT_EQ(run({"get", "baseLightColor"}).out, "#FFFFFF55\n");
    EXPECT_EQ(run({"get", "sharedColorAlpha"}).out, "0.30000001192092896\n");
    EXPECT_EQ(run({"get", "customLevel"}).out, "75\n");
    EXPECT_EQ(run({"get", "enabled", "--json"}).out, "false\n");
    ProcessResult unknown = run({"get", "passMain"});
    EXPECT_EQ(unknown.status, 1);
    EXPECT_NE(unknown.err.find("passMain"), std::string::npos);
}

TEST_F(Cli, BadInputIsRefusedAndLeavesTheFileUntouched)
{
    ASSERT_EQ(run({"set", "enabled", "yes"}).status, 0);
    std::string before = preferencesText();
    for (std::vector<std::string> arguments : std::vector<std::vector<std::string>>{
             {"set", "lightColor", "red"},
             {"set", "lightColor", "#ff000080"}, // an opaque colour given alpha
             {"set", "lightColor", "#fff"},
             {"set", "enabled", "maybe"},
             {"set", "lowLevel", "12.5"},
             {"set", "sharedColorAlpha", "nan"},
             {"set", "theme", "No Such Theme"},
             {"set", "mystery", "1"},
             {"set", "mystery", "1", "--type", "colour"},
             {"set", "lowLevel", "5", "--type", "real"},
             {"set", "lowLevel"},
             {"set", "--bogus", "x", "y"},
         }) {
        ProcessResult result = run(arguments);
        EXPECT_EQ(result.status, 2) << arguments[1] << " " << (arguments.size() > 2 ? arguments[2] : "");
        EXPECT_FALSE(result.err.empty());
    }
    EXPECT_EQ(preferencesText(), before);
}

TEST_F(Cli, ValuesAreTypedByTheCatalogueOrByTheirType)
{
    EXPECT_EQ(run({"set", "hideSecPerc", "No"}).status, 0);
    EXPECT_EQ(run({"set", "lowLevel", "-3"}).status, 0);
    EXPECT_EQ(run({"set", "sharedColorAlpha", "0.5"}).status, 0);
    EXPECT_EQ(run({"set", "note", "hello world", "--type", "string"}).status, 0);
    EXPECT_EQ(run({"set", "ratio", "1.25", "--type=real"}).status, 0);
    PlistDict expected{{"hideSecPerc", false}, {"lowLevel", -3}, {"sharedColorAlpha", 0.5},
                       {"note", "hello world"}, {"ratio", 1.25}};
    EXPECT_EQ(preferences(), expected);
}

TEST_F(Cli, ABinaryFileComesBackAsXMLWithEveryOtherKeyIntact)
{
    root.makeFolderFor(kPreferencesFile);
    PlistDict original{{"theme", "Amp Connect"}, {"viewedTP", 2}, {"sharedColorAlpha", 0.3f},
                       {"someoneElses", PlistData{9, 8, 7}}, {"when", PlistDate{1234.0}},
                       {"nested", PlistDict{{"list", PlistArray{PlistValue(true), PlistValue("x")}}}}};
    writeBinaryPreferences(original);
    ASSERT_EQ(run({"set", "darkColor", "#123456"}).status, 0);
    EXPECT_TRUE(preferencesText().starts_with("<?xml"));
    PlistDict expected = original;
    expected.set("darkColor", "#123456");
    EXPECT_EQ(preferences(), expected);
}

TEST_F(Cli, SettingsListsTheCatalogueThenTheFilesOtherKeys)
{
    ASSERT_EQ(run({"set", "lowLevel", "30"}).status, 0);
    ASSERT_EQ(run({"set", "lightColor", "FFFFFF"}).status, 0);
    ASSERT_EQ(run({"set", "extra", "1", "--type", "int"}).status, 0);
    ProcessResult result = run({"settings", "--json"});
    ASSERT_EQ(result.status, 0);
    EXPECT_NE(result.out.find(R"({"key":"lowLevel","value":30,"default":false,"catalogue":true})"), std::string::npos);
    EXPECT_NE(result.out.find(R"({"key":"lightColor","value":"#ffffff","default":true,"catalogue":true})"),
              std::string::npos);
    EXPECT_NE(result.out.find(R"({"key":"extra","value":1,"default":false,"catalogue":false})"), std::string::npos);
    EXPECT_LT(result.out.find("\"lightColor\""), result.out.find("\"extra\""));
}

TEST_F(Cli, EveryCommandHasHelp)
{
    for (std::string command : {"get", "set", "settings", "profile", "watch"}) {
        ProcessResult result = run({command, "--help"});
        EXPECT_EQ(result.status, 0) << command;
        EXPECT_NE(result.out.find("Usage: ampwell " + command), std::string::npos) << command;
    }
    EXPECT_EQ(run({"profile", "save", "--help"}).status, 0);
    EXPECT_EQ(run({}).status, 2);
    EXPECT_EQ(run({"frobnicate"}).status, 2);
}

TEST_F(Cli, WithoutASessionBusWritesStillWork)
{
    ProcessResult result = run({"set", "enabled", "true"},
                               {{"DBUS_SESSION_BUS_ADDRESS", "unix:path=/nonexistent/bus"}, {"DISPLAY", ""}});
    EXPECT_EQ(result.status, 0) << result.err;
    EXPECT_EQ(preferences().value("enabled"), PlistValue(true));
}

TEST_F(Cli, WatchPrintsEachNotification)
{
    ProcessResult watched;
    std::atomic<bool> done = false;
    std::thread watcher([&] {
        watched = run({"watch", "--count", "2"});
        done = true;
    });
    // The watcher needs a moment to subscribe; keep posting until it has seen two.
    for (int i = 0; i < 100 && !done; ++i) {
        run({"set", "lowLevel", std::to_string(i)});
        std::this_thread::sleep_for(50ms);
    }
    watcher.join();
    EXPECT_EQ(watched.status, 0);
    EXPECT_EQ(watched.out, "com.mossgate.ampwell.settingsChanged\ncom.mossgate.ampwell.settingsChanged\n");
    EXPECT_EQ(run({"watch", "--count", "0"}).status, 2);
}
