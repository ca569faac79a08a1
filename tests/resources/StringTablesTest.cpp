#include "StringTableReader.h"
#include "resources/BundleResources.h"

#include <QFile>
#include <QRegularExpression>
#include <QSet>

#include <gtest/gtest.h>

#include <map>

using ampwell::resources::bundleLanguages;
using ampwell::resources::bundleRoot;

namespace {

// Every text the pages, the colour picker, the slider popup and the page framework look up.
const char* const keysThePagesUse[] = {
    // main page
    "OWNER_FOOT", "ENABLED", "ENABLED_FOOT", "THEME_OPS", "PROFILES", "COLOR_OPTIONS",
    "OTHER_OPTIONS", "CREATOR", "IOS10_A_T", "IOS10_A_MSG",
    // buttons
    "OK_SWEET", "OK", "CANCEL", "SAVE",
    // theme options and theme lists
    "Theme Options", "THEME", "FLIP_H", "FLIP_V", "ANOTHER_HEAD", "SEC_THM_FOOT", "USE_SECOND",
    "SEC_THEME", "FLIP_SEC_H", "FLIP_SEC_V", "ACTIV_BELOW", "Lower Limit", "CH_THM_HD",
    "CH_THEM_EN", "CH_THEME", "FLIP_CH_H", "FLIP_CH_V", "CH_OVR_SEC", "THEME_POPUP_TITLE",
    "THEME_POPUP",
    // colour options
    "Choices...", "LIGHT_HEAD", "LIGHT_MAIN_COL", "LIGHT_BASE_COL", "DARK_HEAD", "BASE_FOOTER",
    "DARK_MAIN_COL", "DARK_BASE_COL", "Swap Main <-> Base", "Swap Light <-> Dark Sets",
    "OTHER_CUSTOM_HEAD", "OTHER_CUSTOM_FOOT", "USE_CUSTOM_CH", "CH_COL", "USE_CUSTOM_CC",
    "CC_COL", "USE_CUSTOM_LOW", "LOW_COL", "USE_CUSTOM_LPM", "LPM_COL", "SHARE_HEAD",
    "SHARE_BASE_FOOT", "SHARE_W_BASE", "SHARE_BASE_ALPHA", "STAT_HEAD", "STAT_FOOT", "STAT_EN",
    "STAT_LT", "STAT_DK", "STAT_SB_DARK", "STAT_LS_DARK", "PULL_SB_BASE", "PULL_SB_MAIN",
    // other options
    "MORE_CHOICES", "BOLT_HEAD", "SHOW_BOLT", "COL_BOLT", "BASE_F_BOLT", "PERC_HEAD", "PERC_HF",
    "PERC_FOOT", "SHOW_PERC_LVL", "HIDE_PERC_LVL", "SHW_PER_CH", "HIDE_PER_CH", "HIDE_PERC_SEC",
    "REM_PERC", "COL_PERC", "HIDE_PERC", "IGRO_HEAD", "LPM_OVER_FOOT", "IGNORE_CHARGE",
    "IGNORE_CC", "IGNORE_LPM", "LPM_OVER", "LOW_OVER", "LOW_FOOTER", "LOW_LEVEL", "Development",
    "DEV_FOOT", "Enable Custom Percent", "Percent", "Enable Custom Charging", "Set Charging",
    // profiles
    "SAVE_PROFILE", "PROFILE_ASK_POPUP", "PROFILE_NAME", "PROFILE_NAME_POPUP",
    "PROFILE_BAD_POPUP", "RESTORE_PRO", "PROFILE_POPUP_COMP", "PROFILE_POPUP_COLOR",
    "PROFILE_POPUP_OP_COMP", "PROFILE_POPUP_OP_COL", "PROFILE_POPUP_OP_CUR",
    "PROFILE_POPUP_OP_DEF", "PROFILE_POPUP", "PROFILE_POPUP_TITLE", "PROFILE_EMPTY_POPUP",
    "PROFILE_SLASH_POPUP", "PROFILE_DOT_POPUP", "PROFILE_CONTROL_POPUP", "PROFILE_LONG_POPUP",
    "PROFILE_SPOKEN_ALL", "PROFILE_SPOKEN_COLORS", "PROFILE_SPOKEN_DELETABLE", "PROFILE_SPOKEN_KEPT", "Delete",
    // credits
    "Credits", "DEV_SOLE", "Donate", "DEV_OTHERS", "DEV_O_FOOTER", "DEV_DONORS",
    "DEV_DONORS_FOOT", "Add Your Name >",
    // the standard page's rows
    "OPTIONS", "MAKERS", "SUPPORT",
};

struct Table {
    std::map<QString, QString> texts;
    std::vector<QString> order;
};

Table loadTable(const QString& language)
{
    QFile file(bundleRoot() + u'/' + language + QStringLiteral(".lproj/Localizable.strings"));
    EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << language.toStdString();
    StringTable read = readStringTable(file.readAll());
    EXPECT_TRUE(read.error.isEmpty()) << language.toStdString() << ": " << read.error.toStdString();
    Table table;
    for (auto& [key, text] : read.entries) {
        EXPECT_FALSE(table.texts.contains(key))
            << language.toStdString() << ": \"" << key.toStdString() << "\" appears twice";
        table.texts[key] = text;
        table.order.push_back(key);
    }
    return table;
}

bool isUpperCaseKey(const QString& key)
{
    static const QRegularExpression pattern(QStringLiteral("^[A-Z0-9_]+$"));
    return pattern.match(key).hasMatch();
}

QStringList placeholders(const QString& text)
{
    static const QRegularExpression pattern(QStringLiteral(
        "%(?:\\d+\\$)?[-+#0]*\\d*(?:\\.\\d+)?(?:hh|h|ll|l|q|L|z|t|j)?[dDiuUxXoOfFeEgGaAcCsSp@%]"));
    QStringList found;
    for (auto it = pattern.globalMatch(text); it.hasNext();)
        found.append(it.next().captured());
    return found;
}

} // namespace

TEST(StringTables, EnglishAndGermanAreBundledAndReadCleanly)
{
    const QStringList languages = bundleLanguages();
    EXPECT_TRUE(languages.contains(QStringLiteral("en")));
    EXPECT_TRUE(languages.contains(QStringLiteral("de")));
    for (const QString& language : languages) {
        const Table table = loadTable(language);
        EXPECT_GT(table.texts.size(), 100u) << language.toStdString();
        for (const auto& [key, text] : table.texts) {
            EXPECT_FALSE(text.trimmed().isEmpty()) << language.toStdString() << ": " << key.toStdString();
            EXPECT_EQ(text, text.trimmed()) << language.toStdString() << ": " << key.toStdString();
        }
    }
}

TEST(StringTables, EveryLanguageHasTheSameKeysInTheSameOrder)
{
    const Table english = loadTable(QStringLiteral("en"));
    for (const QString& language : bundleLanguages()) {
        const Table other = loadTable(language);
        for (const auto& [key, text] : english.texts)
            EXPECT_TRUE(other.texts.contains(key)) << language.toStdString() << " lacks \"" << key.toStdString() << '"';
        for (const auto& [key, text] : other.texts)
            EXPECT_TRUE(english.texts.contains(key)) << language.toStdString() << " has the extra \"" << key.toStdString() << '"';
        EXPECT_EQ(other.order, english.order) << language.toStdString() << " lists its keys in another order";
    }
}

TEST(StringTables, EveryTextThePagesLookUpIsThere)
{
    for (const QString& language : bundleLanguages()) {
        const Table table = loadTable(language);
        for (const char* key : keysThePagesUse)
            EXPECT_TRUE(table.texts.contains(QString::fromUtf8(key))) << language.toStdString() << " lacks \"" << key << '"';
    }
}

TEST(StringTables, EnglishKeepsPlainLabelsAsTheyStand)
{
    // The colour page's title is a key that happens to be written in English.
    const QSet<QString> keysInEnglish = {QStringLiteral("Choices...")};
    for (const auto& [key, text] : loadTable(QStringLiteral("en")).texts) {
        if (!isUpperCaseKey(key) && !keysInEnglish.contains(key)) {
            EXPECT_EQ(text, key);
        }
    }
}

TEST(StringTables, TextsThatAreKeysTranslateToThemselves)
{
    // Page titles are looked up a second time; a translation that is itself a key must not
    // turn into something else on the second lookup.
    for (const QString& language : bundleLanguages()) {
        const Table table = loadTable(language);
        for (const auto& [key, text] : table.texts) {
            const auto again = table.texts.find(text);
            if (again != table.texts.end()) {
                EXPECT_EQ(again->second, text) << language.toStdString() << ": " << key.toStdString();
            }
        }
    }
}

TEST(StringTables, PlaceholdersMatchTheEnglishText)
{
    const Table english = loadTable(QStringLiteral("en"));
    for (const QString& language : bundleLanguages()) {
        const Table other = loadTable(language);
        for (const auto& [key, text] : english.texts) {
            const auto translated = other.texts.find(key);
            if (translated != other.texts.end()) {
                EXPECT_EQ(placeholders(translated->second), placeholders(text))
                    << language.toStdString() << ": " << key.toStdString();
            }
        }
    }
}

TEST(StringTables, ReaderPointsAtTheBrokenLine)
{
    EXPECT_EQ(readStringTable("/* ok */\n\"A\" = \"a\";\n\"B\" = \"b\"\n\"C\" = \"c\";\n").error,
              QStringLiteral("line 4: expected ';'"));
    EXPECT_EQ(readStringTable("\"A\" = \"a;\n").error, QStringLiteral("line 1: text runs past the end of its line"));
    EXPECT_EQ(readStringTable("\"A\" = \"a\";\n/* open").error, QStringLiteral("line 2: comment never closed"));
    EXPECT_EQ(readStringTable("\"A\" = \"\\q\";").error, QStringLiteral("line 1: unknown escape \\q"));
    EXPECT_FALSE(readStringTable("\"A\" = \"\xff\";").error.isEmpty());
    const StringTable fine = readStringTable("// note\n\"Say \\\"hi\\\"\" = \"a\\nb\"; /* end */");
    ASSERT_TRUE(fine.error.isEmpty()) << fine.error.toStdString();
    ASSERT_EQ(fine.entries.size(), 1u);
    EXPECT_EQ(fine.entries[0].first, QStringLiteral("Say \"hi\""));
    EXPECT_EQ(fine.entries[0].second, QStringLiteral("a\nb"));
}
