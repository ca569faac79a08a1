#include "pagekit/QtTestSupport.h"

#include "platform/qt/Social.h"
#include "platform/qt/UIApplication.h"
#include "platform/qt/UIDevice.h"

#include <gtest/gtest.h>

TEST(UIDevice, ComparesVersionsNumerically)
{
    EXPECT_LT(compareVersionsNumerically("9.3", "10.0"), 0);
    EXPECT_EQ(compareVersionsNumerically("10.0", "10.0"), 0);
    EXPECT_GT(compareVersionsNumerically("10.2.1", "10.0"), 0);
    EXPECT_GT(compareVersionsNumerically("16.0", "10.0"), 0);
    EXPECT_EQ(compareVersionsNumerically("010.0", "10.0"), 0);
    EXPECT_LT(compareVersionsNumerically("", "10.0"), 0);
    EXPECT_EQ(UIDevice::currentDevice().systemVersion(), "16.0");
}

TEST(UIApplication, OpensOnlyWellFormedURLsAndAsksForSchemes)
{
    testApplication();
    URLRecorder urls;
    urls.installedSchemes = {"twitter"};
    UIApplication& application = UIApplication::sharedApplication();
    EXPECT_TRUE(application.canOpenURL("twitter:"));
    EXPECT_TRUE(application.canOpenURL("Twitter://user?screen_name=x"));
    EXPECT_FALSE(application.canOpenURL("tweetbot:"));
    EXPECT_FALSE(application.canOpenURL("no scheme"));

    EXPECT_TRUE(application.openURL("https://example.org/a?b=c"));
    EXPECT_FALSE(application.openURL("mailto:a@b.c?subject=two words"));
    EXPECT_FALSE(application.openURL("not a url"));
    EXPECT_FALSE(application.openURL(""));
    EXPECT_EQ(urls.opened, std::vector<std::string>{"https://example.org/a?b=c"});

    EXPECT_EQ(urlScheme("HTTPS://x"), "https");
    EXPECT_EQ(urlScheme("1abc:x"), std::nullopt);
}

TEST(Social, ShareAndMailBecomeEscapedLinks)
{
    testApplication();
    URLRecorder urls;
    EXPECT_FALSE(MFMailComposeViewController::canSendMail());
    urls.installedSchemes = {"mailto"};
    EXPECT_TRUE(MFMailComposeViewController::canSendMail());

    MFMailComposeViewController::Mail mail{{"help@mossgate.example", "b@c.d"}, "Hi & bye", "Line 1\nLine 2"};
    EXPECT_EQ(MFMailComposeViewController::mailtoURL(mail),
              "mailto:help@mossgate.example,b@c.d?subject=Hi%20%26%20bye&body=Line%201%0ALine%202");
    EXPECT_TRUE(SLComposeViewController::present(SLComposeViewController::SLServiceTypeTwitter, "I love #Ampwell!"));
    ASSERT_EQ(urls.opened.size(), 1u);
    EXPECT_EQ(urls.opened[0], "https://twitter.com/intent/tweet?text=I%20love%20%23Ampwell%21");
}
