#include "PKSharedHelper.h"

#include "platform/qt/UIApplication.h"

#include <array>
#include <utility>

void PKSharedHelper::openTwitter(const std::string& handle)
{
    UIApplication& application = UIApplication::sharedApplication();
    constexpr std::array<std::pair<const char*, const char*>, 4> apps{{
        {"tweetbot:", "tweetbot:///user_profile/"},
        {"twitterrific:", "twitterrific:///profile?screen_name="},
        {"tweetings:", "tweetings:///user?screen_name="},
        {"twitter:", "twitter://user?screen_name="},
    }};
    for (const auto& [scheme, prefix] : apps)
        if (application.canOpenURL(scheme)) {
            application.openURL(prefix + handle);
            return;
        }
    application.openURL(kTwitterWebProfile + handle);
}

void PKSharedHelper::openGitHub(const std::string& user)
{
    UIApplication& application = UIApplication::sharedApplication();
    if (application.canOpenURL("ioc:"))
        application.openURL(std::string("ioc://") + kGitHubHost + "/" + user);
    else
        application.openURL(std::string("https://") + kGitHubHost + "/" + user);
}

void PKSharedHelper::openEmailSubject(const std::string& address, const std::string& subject)
{
    UIApplication::sharedApplication().openURL("mailto:" + address + "?subject=" + subject);
}
