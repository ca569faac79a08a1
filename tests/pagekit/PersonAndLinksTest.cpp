#include "QtTestSupport.h"

#include "pagekit/PKPersonCell.h"
#include "pagekit/PKSharedHelper.h"

#include "platform/qt/UIImageView.h"

#include <QLabel>

#include <gtest/gtest.h>

TEST(PKSharedHelper, OpensTheFirstInstalledAppElseTheWeb)
{
    testApplication();
    URLRecorder urls;
    PKSharedHelper::openTwitter("mossgate");
    urls.installedSchemes = {"twitter", "tweetings"};
    PKSharedHelper::openTwitter("mossgate");
    urls.installedSchemes = {"twitter", "tweetbot"};
    PKSharedHelper::openTwitter("mossgate");
    EXPECT_EQ(urls.opened, (std::vector<std::string>{"https://mobile.twitter.com/mossgate",
                                                     "tweetings:///user?screen_name=mossgate",
                                                     "tweetbot:///user_profile/mossgate"}));

    urls.opened.clear();
    PKSharedHelper::openGitHub("mossgate");
    urls.installedSchemes = {"ioc"};
    PKSharedHelper::openGitHub("mossgate");
    EXPECT_EQ(urls.opened, (std::vector<std::string>{"https://github.com/mossgate", "ioc://github.com/mossgate"}));

    // The subject is not escaped: one with blanks makes no URL and nothing opens.
    urls.opened.clear();
    PKSharedHelper::openEmailSubject("help@mossgate.example", "Ampwell");
    PKSharedHelper::openEmailSubject("help@mossgate.example", "Ampwell support");
    EXPECT_EQ(urls.opened, std::vector<std::string>{"mailto:help@mossgate.example?subject=Ampwell"});
}

TEST(PKPersonCell, APlainPersonCellIsEmpty)
{
    testApplication();
    std::unique_ptr<PSTableCell> cell(PKPersonCell::staticClass().createCell(0, "person", nullptr));
    auto* person = dynamic_cast<PKPersonCell*>(cell.get());
    ASSERT_TRUE(person);
    EXPECT_TRUE(person->label()->text().isEmpty());
    EXPECT_TRUE(person->label2()->text().isEmpty());
    EXPECT_TRUE(person->background()->image().isNil());
    EXPECT_EQ(person->background()->geometry(), QRect(9, 18, 65, 65));
    EXPECT_EQ(person->label()->geometry(), QRect(84, 18, 320, 44));
    EXPECT_EQ(person->label2()->geometry(), QRect(84, 42, 320, 44));
}
