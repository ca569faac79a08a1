#include "pagekit/QtTestSupport.h"

#include "pages/QLAWCreditsController.h"
#include "pages/QLAWSettingsController.h"
#include "pages/QLDeveloperCell.h"
#include "pages/QLHeaderCell.h"

#include "platform/qt/UIImageView.h"
#include "support/TemporaryRoot.h"

#include <QAbstractButton>
#include <QLabel>

#include <gtest/gtest.h>

namespace {

class CreditsPageTest : public ::testing::Test {
protected:
    void SetUp() override
    {
        testApplication();
        NSBundle::setPreferredLanguages({"en"});
        page_ = new QLAWCreditsController();
        window_ = std::make_unique<TestWindow>(page_);
    }
    void TearDown() override { NSBundle::setPreferredLanguages({}); }

    PSTableCell* row(int section, int index) { return page_->table()->cellForRowAtIndexPath({section, index}); }

    TemporaryRoot root_;
    URLRecorder urls_;
    QLAWCreditsController* page_ = nullptr;
    std::unique_ptr<TestWindow> window_;
};

TEST_F(CreditsPageTest, ShowsTheMakerContributorAndDonors)
{
    EXPECT_EQ(page_->title(), "Credits");
    EXPECT_EQ(page_->specifiers().size(), 13u);
    EXPECT_EQ(page_->table()->numberOfSections(), 3);
    EXPECT_EQ(page_->table()->numberOfRowsInSection(2), 7);
    EXPECT_EQ(page_->tableViewTitleForHeaderInSection(page_->table(), 0), "Made By");
    EXPECT_EQ(page_->shareMessage(), QLAWSettingsController::kShareMessage);

    auto* developer = dynamic_cast<QLDeveloperCell*>(row(0, 0));
    ASSERT_TRUE(developer);
    EXPECT_EQ(developer->height(), 100);
    EXPECT_EQ(developer->label()->text(), QStringLiteral("Mossgate"));
    EXPECT_EQ(developer->label2()->text(), QStringLiteral("isDeveloper && isDesigner // == YES"));
    EXPECT_FALSE(developer->background()->image().isNil());
    auto* mark = dynamic_cast<UIImageView*>(developer->accessoryView());
    ASSERT_TRUE(mark);
    EXPECT_FALSE(mark->image().isNil());
}

TEST_F(CreditsPageTest, DeveloperRowOpensTheProfileAndBothButtonsTheDonationPage)
{
    row(0, 0)->activate();
    urls_.installedSchemes = {"twitter", "tweetbot"};
    row(0, 0)->activate();
    row(0, 1)->activate();
    row(2, 6)->activate();
    EXPECT_EQ(urls_.opened, (std::vector<std::string>{"https://mobile.twitter.com/mossgate",
                                                      "tweetbot:///user_profile/mossgate",
                                                      QLAWCreditsController::kDonationAddress,
                                                      QLAWCreditsController::kDonationAddress}));
    // The contributor and donor rows are text only.
    row(1, 0)->activate();
    EXPECT_EQ(urls_.opened.size(), 4u);
    EXPECT_EQ(window_->top(), page_);
}

TEST_F(CreditsPageTest, HeartSharesTheProductText)
{
    ASSERT_TRUE(page_->heartButton());
    static_cast<QAbstractButton*>(page_->heartButton())->click();
    ASSERT_EQ(urls_.opened.size(), 1u);
    EXPECT_NE(urls_.opened[0].find("OMG%20I%20have%20fallen%20in%20love%20with%20Ampwell"), std::string::npos);
}

TEST(QLHeaderCell, WithoutAPictureNameTheSharedReferencesStay)
{
    testApplication();
    auto named = PSSpecifier::preferenceSpecifierNamed("", nullptr, {}, {}, nullptr, PSStaticTextCell, nullptr);
    named->setProperty(Id("ampwellHeader"), "ampwellHeader");
    std::unique_ptr<PSTableCell> first(QLHeaderCell::staticClass().createCell(0, "header", named));
    first->didMoveToSuperview();
    ASSERT_EQ(QLHeaderCell::current(), first.get());
    UIImageView* picture = QLHeaderCell::sharedImageView();
    EXPECT_FALSE(picture->image().isNil());

    auto bare = PSSpecifier::preferenceSpecifierNamed("", nullptr, {}, {}, nullptr, PSStaticTextCell, nullptr);
    std::unique_ptr<PSTableCell> second(QLHeaderCell::staticClass().createCell(0, "header", bare));
    second->didMoveToSuperview();
    EXPECT_EQ(QLHeaderCell::current(), first.get());
    EXPECT_EQ(QLHeaderCell::sharedImageView(), picture);

    // A missing picture gives an empty view and nothing fails.
    auto missing = PSSpecifier::preferenceSpecifierNamed("", nullptr, {}, {}, nullptr, PSStaticTextCell, nullptr);
    missing->setProperty(Id("noSuchPicture"), "ampwellHeader");
    std::unique_ptr<PSTableCell> third(QLHeaderCell::staticClass().createCell(0, "header", missing));
    third->didMoveToSuperview();
    EXPECT_TRUE(QLHeaderCell::sharedImageView()->image().isNil());
}

} // namespace
