#include "support/PlistPrinting.h"
#include "BinaryPlistBuilder.h"
#include "support/TemporaryRoot.h"

#include "platform/core/PropertyListFile.h"

#include <gtest/gtest.h>
#include <plist/plist.h>

#include <filesystem>
#include <fstream>
#include <sstream>
#include <sys/stat.h>

namespace {

std::string readText(const std::string& path)
{
    std::ifstream in(path, std::ios::binary);
    std::stringstream text;
    text << in.rdbuf();
    return text.str();
}

void writeBytes(const std::string& path, const std::vector<std::uint8_t>& bytes)
{
    std::ofstream(path, std::ios::binary).write(reinterpret_cast<const char*>(bytes.data()),
                                                static_cast<std::streamsize>(bytes.size()));
}

PlistDict everyType()
{
    PlistDict nested{{"deep", PlistArray{PlistValue(1), PlistValue("two"), PlistValue(PlistDict{{"k", false}})}}};
    return PlistDict{
        {"string", "héllo <&> \"quoted\""},
        {"true", true},
        {"false", false},
        {"integer", 20},
        {"negative", -5},
        {"large", std::int64_t{1} << 40},
        {"real", 2.5},
        {"single", 0.3f},
        {"data", PlistData{0, 1, 2, 255}},
        {"date", PlistDate{100}}, // the XML form keeps whole seconds
        {"nested", nested},
    };
}

// The same dictionary written in the binary format by another program (libplist's writer).
std::vector<std::uint8_t> binaryForm(const PlistDict& dict)
{
    std::optional<std::string> xml = propertyListXML(dict);
    plist_t node = nullptr;
    plist_from_xml(xml->data(), static_cast<std::uint32_t>(xml->size()), &node);
    char* bytes = nullptr;
    std::uint32_t length = 0;
    plist_to_bin(node, &bytes, &length);
    std::vector<std::uint8_t> result(bytes, bytes + length);
    plist_to_bin_free(bytes);
    plist_free(node);
    return result;
}

class PropertyListFile : public ::testing::Test {
protected:
    TemporaryRoot root;
    std::string path = root.folder() + "/settings.plist";

    PlistReadResult readBytes(const std::vector<std::uint8_t>& bytes)
    {
        writeBytes(path, bytes);
        return readPropertyListFile(path);
    }
    PlistReadResult readString(const std::string& text)
    {
        return readBytes(std::vector<std::uint8_t>(text.begin(), text.end()));
    }
};

} // namespace

TEST_F(PropertyListFile, XMLRoundTripKeepsEveryTypeAndValue)
{
    PlistDict dict = everyType();
    ASSERT_TRUE(writePropertyListAtomically(path, dict));
    std::optional<PlistDict> back = readPropertyListDictionary(path);
    ASSERT_TRUE(back);
    EXPECT_EQ(*back, dict);
    EXPECT_EQ(back->keys(), dict.keys());
}

TEST_F(PropertyListFile, RealsKeepSeventeenSignificantDigits)
{
    ASSERT_TRUE(writePropertyListAtomically(path, PlistDict{{"sharedColorAlpha", 0.3f}}));
    EXPECT_NE(readText(path).find("<real>0.30000001192092896</real>"), std::string::npos);
}

TEST_F(PropertyListFile, ReadsBinaryAndWritesXML)
{
    PlistDict dict = everyType();
    PlistReadResult read = readBytes(binaryForm(dict));
    ASSERT_EQ(read.status, PlistReadStatus::Ok);
    EXPECT_EQ(*read.value.asDict(), dict);

    ASSERT_TRUE(writePropertyListAtomically(path, read.value));
    EXPECT_TRUE(readText(path).starts_with("<?xml"));
    EXPECT_EQ(*readPropertyListDictionary(path), dict);
}

TEST_F(PropertyListFile, MissingAndUnreadableFilesAreTold)
{
    EXPECT_EQ(readPropertyListFile(root.folder() + "/none.plist").status, PlistReadStatus::Missing);
    EXPECT_EQ(readPropertyListFile(root.folder()).status, PlistReadStatus::Unreadable); // a folder
    EXPECT_EQ(readString("").status, PlistReadStatus::Unreadable);
}

TEST_F(PropertyListFile, HostileContentReadsAsNoValues)
{
    std::string xml = *propertyListXML(everyType());
    std::vector<std::uint8_t> binary = binaryForm(everyType());
    EXPECT_EQ(readString(xml.substr(0, xml.size() / 2)).status, PlistReadStatus::Unreadable);
    EXPECT_EQ(readBytes({binary.begin(), binary.begin() + static_cast<long>(binary.size()) - 10}).status,
              PlistReadStatus::Unreadable);
    std::vector<std::uint8_t> garbage(4096);
    for (std::size_t i = 0; i < garbage.size(); ++i)
        garbage[i] = static_cast<std::uint8_t>(i * 7919 % 251);
    EXPECT_EQ(readBytes(garbage).status, PlistReadStatus::Unreadable);
    std::vector<std::uint8_t> fakeBinary = garbage;
    std::copy_n("bplist00", 8, fakeBinary.begin());
    EXPECT_EQ(readBytes(fakeBinary).status, PlistReadStatus::Unreadable);

    // A top level that is an array is a property list but not a settings dictionary.
    ASSERT_TRUE(writePropertyListAtomically(path, PlistArray{PlistValue(1)}));
    EXPECT_EQ(readPropertyListFile(path).status, PlistReadStatus::Ok);
    EXPECT_FALSE(readPropertyListDictionary(path));
}

TEST_F(PropertyListFile, DeepNestingIsRefusedWithoutRecursing)
{
    std::string deep = "<?xml version=\"1.0\"?><plist version=\"1.0\">";
    for (int i = 0; i < 200000; ++i)
        deep += "<array>";
    for (int i = 0; i < 200000; ++i)
        deep += "</array>";
    deep += "</plist>";
    EXPECT_EQ(readString(deep).status, PlistReadStatus::Unreadable);

    BinaryPlistBuilder builder;
    std::uint32_t inner = builder.string("bottom");
    for (int i = 0; i < 200000; ++i)
        inner = builder.array({inner});
    EXPECT_EQ(readBytes(builder.build(inner)).status, PlistReadStatus::Unreadable);
}

TEST_F(PropertyListFile, BinaryCyclesAndExplodingSharedSubtreesAreRefused)
{
    BinaryPlistBuilder cycle;
    std::uint32_t self = cycle.reserveArray(1);
    cycle.setArrayItem(self, 0, self);
    EXPECT_EQ(readBytes(cycle.build(self)).status, PlistReadStatus::Unreadable);

    // 64 levels of [x, x]: a few hundred bytes that would expand to 2^64 nodes.
    BinaryPlistBuilder laughs;
    std::uint32_t level = laughs.string("lol");
    for (int i = 0; i < 64; ++i)
        level = laughs.array({level, level});
    EXPECT_EQ(readBytes(laughs.build(level)).status, PlistReadStatus::Unreadable);

    // Modest sharing is fine.
    BinaryPlistBuilder shared;
    std::uint32_t word = shared.string("same");
    std::uint32_t top = shared.array({word, word, word});
    PlistReadResult read = readBytes(shared.build(top));
    ASSERT_EQ(read.status, PlistReadStatus::Ok);
    EXPECT_EQ(read.value.asArray()->size(), 3u);
}

TEST_F(PropertyListFile, HugeStringsAreReadUpToTheSizeLimit)
{
    std::string big(1 << 20, 'x');
    ASSERT_TRUE(writePropertyListAtomically(path, PlistDict{{"big", big}}));
    EXPECT_EQ(*readPropertyListDictionary(path)->value("big").asString(), big);

    std::string huge(kMaxPropertyListFileSize + 1, 'x');
    EXPECT_EQ(readString("<?xml version=\"1.0\"?><plist><dict><key>k</key><string>" + huge +
                         "</string></dict></plist>")
                  .status,
              PlistReadStatus::Unreadable);
}

TEST_F(PropertyListFile, FailedWriteLeavesTheFileAsItWas)
{
    ASSERT_TRUE(writePropertyListAtomically(path, PlistDict{{"kept", 1}}));
    std::string before = readText(path);
    std::string error;
    EXPECT_FALSE(writePropertyListAtomically(path, PlistDict{{"colour", UIColor::whiteColor()}}, &error));
    EXPECT_FALSE(error.empty());
    EXPECT_EQ(readText(path), before);
    EXPECT_FALSE(writePropertyListAtomically(root.folder() + "/missing/x.plist", PlistDict{}, &error));

    int files = 0;
    for ([[maybe_unused]] const auto& entry : std::filesystem::directory_iterator(root.folder()))
        ++files;
    EXPECT_EQ(files, 1); // no temporary file left behind
}

TEST_F(PropertyListFile, ReplacingKeepsTheFileMode)
{
    ASSERT_TRUE(writePropertyListAtomically(path, PlistDict{{"a", 1}}));
    ::chmod(path.c_str(), 0640);
    ASSERT_TRUE(writePropertyListAtomically(path, PlistDict{{"a", 2}}));
    struct stat info {};
    ::stat(path.c_str(), &info);
    EXPECT_EQ(info.st_mode & 0777, 0640u);
}
