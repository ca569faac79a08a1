#include "pagekit/QtTestSupport.h"

#include "platform/core/UIImage.h"
#include "platform/core/UIScreen.h"
#include "platform/qt/NSBundle.h"
#include "support/TemporaryRoot.h"

#include <QImage>

#include <filesystem>
#include <fstream>

#include <gtest/gtest.h>

namespace {

class BundleTest : public ::testing::Test {
protected:
    void SetUp() override
    {
        testApplication();
        write("en.lproj/Localizable.strings", "\"HELLO\" = \"Hello\";\n\"ONLY_EN\" = \"English only\";");
        write("de.lproj/Localizable.strings", "\"HELLO\" = \"Hallo\";");
        write("fr.lproj/Localizable.strings", "\"HELLO\" = \"Bonjour\" /* no semicolon */");
        picture("dot.png", 4);
        picture("dot@2x.png", 8);
        picture("big@3x.png", 30);
        picture("small.png", 5);
        bundle_.setFolder(root_.folder());
    }
    void TearDown() override
    {
        NSBundle::setPreferredLanguages({});
        UIScreen::mainScreen().setScale(2);
    }

    void write(const std::string& name, const std::string& text)
    {
        std::filesystem::create_directories(std::filesystem::path(root_.folder() + "/" + name).parent_path());
        std::ofstream(root_.folder() + "/" + name) << text;
    }
    void picture(const std::string& name, int side)
    {
        QImage image(side, side, QImage::Format_ARGB32);
        image.fill(Qt::red);
        image.save(QString::fromStdString(root_.folder() + "/" + name));
    }

    TemporaryRoot root_;
    NSBundle bundle_{""};
};

TEST_F(BundleTest, ChoosesTheUsersLanguageWithEnglishAsFallback)
{
    NSBundle::setPreferredLanguages({"de-AT"});
    EXPECT_EQ(bundle_.chosenLanguage(), "de");
    EXPECT_EQ(bundle_.localizedStringForKey("HELLO", "HELLO"), "Hallo");
    EXPECT_EQ(bundle_.localizedStringForKey("ONLY_EN", "ONLY_EN"), "English only");
    EXPECT_EQ(bundle_.localizedStringForKey("MISSING", "Fallback"), "Fallback");
    EXPECT_EQ(bundle_.localizedStringForKey("MISSING", ""), "MISSING");

    // A damaged table counts as absent: its language is skipped.
    NSBundle::setPreferredLanguages({"fr", "ja"});
    EXPECT_EQ(bundle_.chosenLanguage(), "en");
    EXPECT_EQ(bundle_.localizedStringForKey("HELLO", "HELLO"), "Hello");
    EXPECT_EQ(bundle_.localizedStringForKey("HELLO", "HELLO", "Other"), "HELLO");
}

TEST_F(BundleTest, PicksTheImageVariantForTheScreenScale)
{
    UIScreen::mainScreen().setScale(2);
    UIImage dot = bundle_.imageNamed("dot.png");
    EXPECT_EQ(dot.scale(), 2);
    EXPECT_EQ(dot.size().width, 4);
    UIScreen::mainScreen().setScale(1);
    EXPECT_EQ(bundle_.imageNamed("dot").scale(), 1);
    // Without the screen's variant, a larger one is preferred to a smaller one.
    UIScreen::mainScreen().setScale(2);
    EXPECT_EQ(bundle_.imageNamed("big").scale(), 3);
    EXPECT_EQ(bundle_.imageNamed("big").size().width, 10);
    EXPECT_EQ(bundle_.imageNamed("small").scale(), 1);
    EXPECT_TRUE(bundle_.imageNamed("missing.png").isNil());
    EXPECT_TRUE(bundle_.imageNamed("../escape").isNil());
    EXPECT_TRUE(bundle_.imageNamed("").isNil());
}

TEST(CompiledBundle, HoldsTheComponentsPicturesAndTables)
{
    testApplication();
    NSBundle& bundle = NSBundle::mainBundle();
    for (const char* name : {"heart.png", "ampwellHeader", "mossgateLogoSmall.png", "MossgateLarge.png", "Twitter.png"})
        EXPECT_FALSE(bundle.imageNamed(name).isNil()) << name;
    NSBundle::setPreferredLanguages({"en"});
    EXPECT_EQ(bundle.localizedStringForKey("ENABLED", "ENABLED"), "Enabled");
    NSBundle::setPreferredLanguages({});
}

} // namespace
