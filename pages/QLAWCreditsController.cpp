#include "QLAWCreditsController.h"

#include "QLAWSettingsController.h"

#include "pagekit/PKSharedHelper.h"

#include "platform/qt/UIApplication.h"

const ObjCClass& QLAWCreditsController::staticClass()
{
    static const ObjCClass& cls =
        ClassBuilder<QLAWCreditsController>("QLAWCreditsController", &PKTintedListController::staticClass())
            .method("navigationTintColor", &QLAWCreditsController::navigationTintColor)
            .method("customTitle", &QLAWCreditsController::customTitle)
            .method("customSpecifiers", &QLAWCreditsController::customSpecifiers)
            .method("openDevTwitter", &QLAWCreditsController::openDevTwitter)
            .method("openDonate", &QLAWCreditsController::openDonate)
            .method("shareMessage", &QLAWCreditsController::shareMessage)
            .build();
    return cls;
}

UIColor QLAWCreditsController::navigationTintColor()
{
    return QLAWSettingsController::tintColour();
}

EntryTable QLAWCreditsController::customSpecifiers()
{
    return {
        {{"cell", "PSGroupCell"}, {"label", "DEV_SOLE"}},
        {{"cell", "PSLinkCell"}, {"height", 100}, {"cellClass", "QLDeveloperCell"}, {"action", "openDevTwitter"}},
        {{"cell", "PSButtonCell"}, {"label", "Donate"}, {"action", "openDonate"}},
        {{"cell", "PSGroupCell"}, {"label", "DEV_OTHERS"}, {"footerText", "DEV_O_FOOTER"}},
        {{"cell", "PSStaticTextCell"}, {"label", "Tamsin Hollowell"}},
        {{"cell", "PSGroupCell"}, {"label", "DEV_DONORS"}, {"footerText", "DEV_DONORS_FOOT"}},
        {{"cell", "PSStaticTextCell"}, {"label", "Ilya Brandt"}},
        {{"cell", "PSStaticTextCell"}, {"label", "Noor Al-Sayegh : @noorbuilds"}},
        {{"cell", "PSStaticTextCell"}, {"label", "Colm Dervan"}},
        {{"cell", "PSStaticTextCell"}, {"label", "Priya Raman : @priyaplays"}},
        {{"cell", "PSStaticTextCell"}, {"label", "Matteo Fiorenza"}},
        {{"cell", "PSStaticTextCell"}, {"label", "Hana Kowalczyk : @hanakow"}},
        {{"cell", "PSButtonCell"}, {"label", "Add Your Name >"}, {"action", "openDonate"}},
    };
}

void QLAWCreditsController::openDevTwitter()
{
    PKSharedHelper::openTwitter("mossgate");
}

void QLAWCreditsController::openDonate()
{
    UIApplication::sharedApplication().openURL(kDonationAddress);
}

std::string QLAWCreditsController::shareMessage()
{
    return QLAWSettingsController::kShareMessage;
}
