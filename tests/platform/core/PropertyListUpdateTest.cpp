#include "support/PlistPrinting.h"
#include "support/TemporaryRoot.h"

#include "platform/core/PropertyListFile.h"
#include "platform/core/PropertyListUpdate.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <csignal>
#include <filesystem>
#include <fstream>
#include <sys/wait.h>
#include <unistd.h>

namespace {

class PropertyListUpdate : public ::testing::Test {
protected:
    TemporaryRoot root;
    std::string path = root.folder() + "/settings.plist";

    void set(MissingFilePolicy policy, const std::string& key, PlistValue value)
    {
        EXPECT_TRUE(updatePropertyListFile(path, policy, [&](PlistDict& dict) { dict.set(key, value); }));
    }
    std::vector<std::string> corruptCopies()
    {
        std::vector<std::string> copies;
        for (const auto& entry : std::filesystem::directory_iterator(root.folder()))
            if (entry.path().filename().string().starts_with("settings.plist.corrupt."))
                copies.push_back(entry.path().string());
        return copies;
    }
};

} // namespace

TEST_F(PropertyListUpdate, OnlyThePagesWriteCreatesAMissingFile)
{
    set(MissingFilePolicy::WriteNothing, "a", 1);
    EXPECT_FALSE(std::filesystem::exists(path));
    set(MissingFilePolicy::StartEmpty, "a", 1);
    EXPECT_EQ(*readPropertyListDictionary(path), (PlistDict{{"a", 1}}));
}

TEST_F(PropertyListUpdate, UnparseableFileIsKeptAsideBeforeItIsReplaced)
{
    root.writeFile("/settings.plist", "this is not a property list");
    set(MissingFilePolicy::WriteNothing, "a", 1);
    EXPECT_TRUE(corruptCopies().empty());
    EXPECT_EQ(readPropertyListFile(path).status, PlistReadStatus::Unreadable);

    set(MissingFilePolicy::StartEmpty, "a", 1);
    std::vector<std::string> copies = corruptCopies();
    ASSERT_EQ(copies.size(), 1u);
    std::ifstream kept(copies[0]);
    EXPECT_EQ(std::string(std::istreambuf_iterator<char>(kept), {}), "this is not a property list");
    EXPECT_EQ(*readPropertyListDictionary(path), (PlistDict{{"a", 1}}));
}

TEST_F(PropertyListUpdate, ConcurrentWriterProcessesLoseNoKeys)
{
    set(MissingFilePolicy::StartEmpty, "start", true);
    constexpr int kWriters = 2, kWrites = 60;
    std::vector<pid_t> children;
    for (int writer = 0; writer < kWriters; ++writer) {
        pid_t child = ::fork();
        ASSERT_GE(child, 0);
        if (child == 0) {
            bool ok = true;
            for (int i = 0; i < kWrites; ++i)
                ok &= updatePropertyListFile(path, MissingFilePolicy::WriteNothing, [&](PlistDict& dict) {
                    dict.set("w" + std::to_string(writer) + "_" + std::to_string(i), i);
                });
            ::_exit(ok ? 0 : 1);
        }
        children.push_back(child);
    }
    for (pid_t child : children) {
        int status = 0;
        ::waitpid(child, &status, 0);
        EXPECT_TRUE(WIFEXITED(status) && WEXITSTATUS(status) == 0);
    }
    std::optional<PlistDict> dict = readPropertyListDictionary(path);
    ASSERT_TRUE(dict);
    EXPECT_EQ(dict->size(), 1u + kWriters * kWrites);
}

TEST_F(PropertyListUpdate, WritersKilledMidWriteLeaveNothingBehindAfterTheNextWrite)
{
    PlistDict big;
    for (int i = 0; i < 3000; ++i)
        big.set("key" + std::to_string(i), std::string(40, 'x'));
    ASSERT_TRUE(writePropertyListAtomically(path, big));
    std::string copy = path + ".corrupt.20260101T000000";
    { std::ofstream(copy) << "kept"; }
    std::string neighbour = root.folder() + "/other.plist.tmp-1-abcdef"; // another file's
    { std::ofstream(neighbour) << "kept"; }

    int killedWhileWriting = 0;
    for (int round = 0; round < 300; ++round) {
        // The writer says when its first write is done, so that on a busy machine the kill still
        // lands among writes rather than before the child ever ran.
        int started[2];
        ASSERT_EQ(::pipe(started), 0);
        pid_t child = ::fork();
        ASSERT_GE(child, 0);
        if (child == 0) {
            ::close(started[0]);
            for (bool first = true;; first = false) {
                updatePropertyListFile(path, MissingFilePolicy::WriteNothing, [&](PlistDict& dict) {
                    dict.set("round", round);
                });
                if (first)
                    (void)!::write(started[1], "x", 1);
            }
        }
        ::close(started[1]);
        char byte;
        ASSERT_EQ(::read(started[0], &byte, 1), 1);
        ::close(started[0]);
        ::usleep(static_cast<useconds_t>(200 + (round * 37) % 3000));
        ::kill(child, SIGKILL);
        ::waitpid(child, nullptr, 0);
        for (const auto& entry : std::filesystem::directory_iterator(root.folder()))
            if (entry.path().filename().string().starts_with("settings.plist.tmp-")) {
                ++killedWhileWriting;
                break;
            }
    }
    // Most rounds leave a temporary behind; the next write takes them all away.
    EXPECT_GT(killedWhileWriting, 0);
    set(MissingFilePolicy::WriteNothing, "after", true);
    std::vector<std::string> left;
    for (const auto& entry : std::filesystem::directory_iterator(root.folder()))
        left.push_back(entry.path().filename().string());
    std::sort(left.begin(), left.end());
    EXPECT_EQ(left, (std::vector<std::string>{"other.plist.tmp-1-abcdef", "settings.plist",
                                              "settings.plist.corrupt.20260101T000000", "settings.plist.lock"}));
    EXPECT_EQ(readPropertyListDictionary(path)->value("after"), PlistValue(true));
}
