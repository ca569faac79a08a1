#include "Social.h"

#include "UIApplication.h"

#include <QUrl>

namespace {

std::string escaped(const std::string& text)
{
    return QUrl::toPercentEncoding(QString::fromStdString(text)).toStdString();
}

} // namespace

std::string SLComposeViewController::shareURL(const std::string&, const std::string& text)
{
    return "https://twitter.com/intent/tweet?text=" + escaped(text);
}

bool SLComposeViewController::present(const std::string& service, const std::string& initialText)
{
    return UIApplication::sharedApplication().openURL(shareURL(service, initialText));
}

bool MFMailComposeViewController::canSendMail()
{
    return UIApplication::sharedApplication().canOpenURL("mailto:");
}

std::string MFMailComposeViewController::mailtoURL(const Mail& mail)
{
    std::string recipients;
    for (const std::string& address : mail.toRecipients)
        recipients += (recipients.empty() ? "" : ",")
            + QUrl::toPercentEncoding(QString::fromStdString(address), "@").toStdString();
    std::string url = "mailto:" + recipients;
    char separator = '?';
    if (!mail.subject.empty()) {
        url += separator + std::string("subject=") + escaped(mail.subject);
        separator = '&';
    }
    if (!mail.messageBody.empty())
        url += separator + std::string("body=") + escaped(mail.messageBody);
    return url;
}

bool MFMailComposeViewController::present(const Mail& mail)
{
    return UIApplication::sharedApplication().openURL(mailtoURL(mail));
}
