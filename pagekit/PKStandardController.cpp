#include "PKStandardController.h"

#include "platform/qt/Social.h"

const ObjCClass& PKStandardController::staticClass()
{
    static const ObjCClass& cls =
        ClassBuilder<PKStandardController>("PKStandardController", &PKTintedListController::staticClass())
            .method("showHeartImage", &PKStandardController::showHeartImage)
            .method("tintNavigationTitleText", &PKStandardController::tintNavigationTitleText)
            .method("shiftHeartImage", &PKStandardController::shiftHeartImage)
            .method("enabledDescription", &PKStandardController::enabledDescription)
            .method("customSpecifiers", &PKStandardController::customSpecifiers)
            .method("postNotification", &PKStandardController::postNotification)
            .method("defaultsFileName", &PKStandardController::defaultsFileName)
            .method("emailBody", &PKStandardController::emailBody)
            .method("emailSubject", &PKStandardController::emailSubject)
            .method("footerText", &PKStandardController::footerText)
            .method("settingsListControllerClassName", &PKStandardController::settingsListControllerClassName)
            .method("makersListControllerClassName", &PKStandardController::makersListControllerClassName)
            .method("emailAddresses", &PKStandardController::emailAddresses)
            .method("showSupportDialog", &PKStandardController::showSupportDialog)
            .method("iconColor", &PKStandardController::iconColor)
            .build();
    return cls;
}

EntryTable PKStandardController::customSpecifiers()
{
    // Asked by name, so that a subclass's own texts are the ones used.
    auto text = [this](const char* selector) { return perform<std::string>(selector); };
    return {
        {{"cell", "PSGroupCell"}, {"footerText", text("enabledDescription")}},
        {{"cell", "PSSwitchCell"},
         {"default", true},
         {"defaults", text("defaultsFileName")},
         {"key", "enabled"},
         {"label", "ENABLED"},
         {"PostNotification", text("postNotification")},
         {"cellClass", "PKTintedSwitchCell"},
         {"icon", "enabled.png"}},
        {{"cell", "PSGroupCell"}},
        {{"cell", "PSLinkCell"},
         {"detail", text("settingsListControllerClassName")},
         {"label", "OPTIONS"},
         {"icon", "settings.png"},
         {"cellClass", "PKTintedCell"}},
        {{"cell", "PSGroupCell"}},
        {{"cell", "PSLinkCell"},
         {"detail", text("makersListControllerClassName")},
         {"label", "MAKERS"},
         {"icon", "makers.png"},
         {"cellClass", "PKTintedCell"}},
        {{"cell", "PSGroupCell"}, {"footerText", text("footerText")}},
        {{"cell", "PSLinkCell"},
         {"action", "showSupportDialog"},
         {"label", "SUPPORT"},
         {"icon", "support.png"},
         {"cellClass", "PKTintedCell"}},
    };
}

void PKStandardController::showSupportDialog()
{
    if (!MFMailComposeViewController::canSendMail())
        return;
    MFMailComposeViewController::Mail mail;
    mail.subject = localizedString(perform<std::string>("emailSubject"));
    mail.messageBody = localizedString(perform<std::string>("emailBody"));
    mail.toRecipients = perform<std::vector<std::string>>("emailAddresses");
    // The desktop's mail program takes the message over; there is no sheet to dismiss.
    MFMailComposeViewController::present(mail);
}

std::optional<UIColor> PKStandardController::iconColor()
{
    if (respondsToSelector("navigationTintColor"))
        return perform<std::optional<UIColor>>("navigationTintColor");
    if (respondsToSelector("tintColor"))
        return perform<std::optional<UIColor>>("tintColor");
    return UIColor::whiteColor();
}
