#pragma once

#include <string>
#include <vector>

// Off the phone, sharing opens the social network's web share page with the text in the
// browser, and mail opens a mailto: link in the desktop's mail program.
namespace SLComposeViewController {

inline constexpr const char* SLServiceTypeTwitter = "com.apple.social.twitter";

// The web page that shares the text on the service.
std::string shareURL(const std::string& service, const std::string& text);
// Opens that page; false when nothing could open it.
bool present(const std::string& service, const std::string& initialText);

} // namespace SLComposeViewController

namespace MFMailComposeViewController {

// Whether the desktop has a handler for mailto: links.
bool canSendMail();

struct Mail {
    std::vector<std::string> toRecipients;
    std::string subject;
    std::string messageBody;
};

// The mailto: link for the mail, with every part escaped.
std::string mailtoURL(const Mail& mail);
// Opens the mail in the desktop's mail program; false when nothing could.
bool present(const Mail& mail);

} // namespace MFMailComposeViewController
