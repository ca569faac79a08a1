#include "platform/qt/StringsFile.h"

#include <QString>

#include <gtest/gtest.h>

TEST(StringsFile, ReadsPairsCommentsEscapesAndBareWords)
{
    auto table = parseStringsFile(R"(/* a comment "not" = "read"; */
// a line comment
"ENABLED" = "Enabled";
"QUOTE" = "She said \"hi\"\\ \n done";
BARE = word_1;
"ALONE";
"UNICODE" = "\U00e9t\u00e9";)");
    ASSERT_TRUE(table);
    EXPECT_EQ(table->size(), 5u);
    EXPECT_EQ(table->at("ENABLED"), "Enabled");
    EXPECT_EQ(table->at("QUOTE"), "She said \"hi\"\\ \n done");
    EXPECT_EQ(table->at("BARE"), "word_1");
    EXPECT_EQ(table->at("ALONE"), "ALONE");
    EXPECT_EQ(table->at("UNICODE"), "\xC3\xA9t\xC3\xA9");
}

TEST(StringsFile, RefusesDamagedTablesWhole)
{
    for (const char* damaged : {"\"A\" = \"B\"", "\"A\" = \"B", "/* never closed", "\"A\" == \"B\";",
                                "\"A\" = \"\\U12\";", "= \"B\";"})
        EXPECT_FALSE(parseStringsFile(damaged)) << damaged;
    EXPECT_TRUE(parseStringsFile(""));
    EXPECT_FALSE(parseStringsFile(QByteArray("\"A\" = \"\xff\xfe\xfd\";")));
}

TEST(StringsFile, ReadsUtf16WithByteOrderMark)
{
    QString text = QStringLiteral("\"KEY\" = \"Wert \u00fc\";");
    QByteArray data("\xff\xfe", 2);
    data.append(reinterpret_cast<const char*>(text.utf16()), text.size() * 2);
    auto table = parseStringsFile(data);
    ASSERT_TRUE(table);
    EXPECT_EQ(table->at("KEY"), "Wert \xC3\xBC");
}
