#include "support/TemporaryRoot.h"

#include <QImage>

#include <cstdlib>
#include <filesystem>
#include <string>

#include <gtest/gtest.h>

namespace {

const std::string kProgram = std::string(AMPWELL_BINARY_DIR) + "/app/ampwell-settings";

// Runs the program in the folder with the environment's display variables as given.
int run(const std::string& folder, const std::string& arguments, const std::string& environment = "")
{
    std::string command = "cd '" + folder + "' && env -u DISPLAY -u WAYLAND_DISPLAY -u QT_QPA_PLATFORM " + environment
        + " '" + kProgram + "' " + arguments + " > output.txt 2>&1";
    int status = std::system(command.c_str());
    return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

TEST(AmpwellSettings, DrawsAPageIntoAPictureWithoutADisplay)
{
    TemporaryRoot root;
    ASSERT_EQ(run(root.folder(), "--root '" + root.folder() + "/phone' --screenshot shot.png --page QLAWCreditsController"), 0);
    QImage shot(QString::fromStdString(root.folder() + "/shot.png"));
    EXPECT_EQ(shot.size(), QSize(780, 1688));
    // The component was installed into the root, and no settings file was made.
    EXPECT_TRUE(std::filesystem::exists(root.folder() + "/phone/var/mobile/Library/Preferences/Ampwell/Profiles"));
    EXPECT_FALSE(std::filesystem::exists(root.folder() + "/phone/var/mobile/Library/Preferences/com.mossgate.ampwell.plist"));
}

TEST(AmpwellSettings, WithoutADisplayWritesBothPagesAndSaysWhere)
{
    TemporaryRoot root;
    ASSERT_EQ(run(root.folder(), "--scale 1", "AMPWELL_ROOT='" + root.folder() + "/phone'"), 0);
    EXPECT_EQ(QImage(QString::fromStdString(root.folder() + "/main.png")).size(), QSize(390, 844));
    EXPECT_EQ(QImage(QString::fromStdString(root.folder() + "/credits.png")).size(), QSize(390, 844));
}

TEST(AmpwellSettings, RefusesWrongArguments)
{
    TemporaryRoot root;
    EXPECT_EQ(run(root.folder(), "--root"), 2);
    EXPECT_EQ(run(root.folder(), "--bogus"), 2);
    EXPECT_EQ(run(root.folder(), "--scale 0 --screenshot x.png"), 2);
    EXPECT_EQ(run(root.folder(), "--root '" + root.folder() + "' --screenshot x.png --page NoSuchPage"), 2);
    EXPECT_EQ(run(root.folder(), "--root '" + root.folder() + "' --screenshot /no/such/folder/x.png"), 1);
    EXPECT_EQ(run(root.folder(), "--help"), 0);
}

} // namespace
