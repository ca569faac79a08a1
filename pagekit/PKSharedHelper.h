#pragma once

#include <string>

// Opens a person's profiles and mail, in an installed app when one answers its scheme.
class PKSharedHelper {
public:
    static void openTwitter(const std::string& handle);
    static void openGitHub(const std::string& user);
    static void openEmailSubject(const std::string& address, const std::string& subject);

    // The web pages used when no app answers.
    static constexpr const char* kTwitterWebProfile = "https://mobile.twitter.com/";
    static constexpr const char* kGitHubHost = "github.com";
};
