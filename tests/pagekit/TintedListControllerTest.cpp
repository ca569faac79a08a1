#include "QtTestSupport.h"

#include "pagekit/PKStandardController.h"
#include "pagekit/PKTintedListController.h"

#include "platform/core/SystemLog.h"
#include "platform/qt/PSControlCells.h"
#include "platform/qt/UISwitch.h"
#include "platform/qt/UIView.h"

#include <QLabel>

#include <gtest/gtest.h>

namespace {

const UIColor kRed = UIColor::colorWithRedGreenBlueAlpha(1, 0, 0, 1);
const UIColor kGreen = UIColor::colorWithRedGreenBlueAlpha(0, 1, 0, 1);
const UIColor kBlue = UIColor::colorWithRedGreenBlueAlpha(0, 0, 1, 1);

// A page whose hooks are switched on per test.
class HookPage : public PKTintedListController {
    AMPWELL_OBJC_CLASS()
public:
    EntryTable customSpecifiers()
    {
        return {
            {{"cell", "PSGroupCell"}, {"label", "ENABLED"}, {"footerText", "ENABLED_FOOT"}},
            {{"cell", "PSSwitchCell"}, {"label", "UNTRANSLATED_KEY"}, {"get", "off:"}, {"set", "ignore:specifier:"}},
            {{"cell", "PSLinkListCell"}, {"label", "THEME_OPS"}, {"validTitles", PlistArray{"CREATOR", "Plain"}},
             {"validValues", PlistArray{1, 2}}},
        };
    }
    Id off(std::shared_ptr<PSSpecifier>) { return Id(false); }
    void ignore(Id, std::shared_ptr<PSSpecifier>) {}
};

const ObjCClass& HookPage::staticClass()
{
    static const ObjCClass& cls = ClassBuilder<HookPage>("TestHookPage", &PKTintedListController::staticClass())
                                      .method("customSpecifiers", &HookPage::customSpecifiers)
                                      .method("off:", &HookPage::off)
                                      .method("ignore:specifier:", &HookPage::ignore)
                                      .function("customTitle", [](HookPage&, const std::vector<Id>&) { return Id("CREATOR"); })
                                      .build();
    return cls;
}

// Subclasses of the hook page, each with one set of optional hooks.
template <int N>
class Variant : public HookPage {
public:
    static const ObjCClass* cls;
    const ObjCClass& isa() const override { return *cls; }
};
template <int N>
const ObjCClass* Variant<N>::cls = nullptr;

template <int N>
Variant<N>* makeVariant(std::string name, std::vector<std::pair<std::string, Id>> hooks)
{
    if (!Variant<N>::cls) {
        ClassBuilder<Variant<N>> builder(std::move(name), &HookPage::staticClass());
        for (auto& [selector, value] : hooks)
            builder.function(selector, [value](Variant<N>&, const std::vector<Id>&) { return value; });
        Variant<N>::cls = &builder.build();
    }
    return new Variant<N>();
}

class TintedListTest : public ::testing::Test {
protected:
    void SetUp() override
    {
        testApplication();
        NSBundle::setPreferredLanguages({"en"});
    }
    void TearDown() override { NSBundle::setPreferredLanguages({}); }

    static QString labelText(QWidget* header, int index)
    {
        auto labels = header->findChildren<QLabel*>(Qt::FindDirectChildrenOnly);
        return index < labels.size() ? labels[index]->text() : QString();
    }
};

TEST_F(TintedListTest, TranslatesLabelsFootersTitlesAndTheTitle)
{
    auto* page = new HookPage();
    TestWindow window(page);
    SpecifierList& entries = page->specifiers();
    ASSERT_EQ(entries.size(), 3u);
    EXPECT_EQ(entries[0]->name(), "Enabled");
    EXPECT_EQ(*entries[0]->propertyForKey("footerText").string(),
              NSBundle::mainBundle().localizedStringForKey("ENABLED_FOOT", ""));
    EXPECT_EQ(entries[1]->name(), "UNTRANSLATED_KEY");
    EXPECT_EQ(entries[2]->name(), "Theme Options");
    EXPECT_EQ(entries[2]->titleForValue(PlistValue(1)), "Credits");
    EXPECT_EQ(entries[2]->titleForValue(PlistValue(2)), "Plain");
    EXPECT_EQ(page->title(), "Credits");
    EXPECT_EQ(window.navigation()->navigationBar()->shownTitle(), QStringLiteral("Credits"));
    EXPECT_EQ(page->localizedString("NO_SUCH_KEY"), "NO_SUCH_KEY");
}

TEST_F(TintedListTest, TintIsAppliedOnAppearingAndRemovedOnLeaving)
{
    auto* below = makeVariant<1>("TestTintedBelow", {{"tintColor", kRed}, {"navigationTintColor", kGreen},
                                                     {"navigationTitleTintColor", kBlue}});
    TestWindow window(below);
    UINavigationBar* bar = window.navigation()->navigationBar();
    EXPECT_EQ(UIView::tintColor(below), kRed);
    EXPECT_EQ(UIView::tintColor(window.window()), kGreen);
    EXPECT_EQ(UIView::tintColor(bar), kGreen);
    EXPECT_EQ(bar->titleTextColor(), kBlue);

    // An untinted page on top clears everything; going back tints again.
    window.navigation()->pushViewController(makeVariant<2>("TestUntinted", {}), false);
    EXPECT_EQ(UIView::tintColor(window.window()), std::nullopt);
    EXPECT_EQ(UIView::tintColor(bar), std::nullopt);
    EXPECT_EQ(bar->titleTextColor(), std::nullopt);
    EXPECT_EQ(UIView::tintColor(below), std::nullopt);
    EXPECT_EQ(UIView::effectiveTintColor(bar), UIView::systemBlueColor());

    window.navigation()->popViewControllerAnimated(false);
    EXPECT_EQ(UIView::tintColor(bar), kGreen);

    // Title text keeps its colour when the page asks not to tint it.
    window.navigation()->pushViewController(
        makeVariant<3>("TestNoTitleTint", {{"tintColor", kRed}, {"tintNavigationTitleText", false}}), false);
    EXPECT_EQ(UIView::tintColor(bar), kRed);
    EXPECT_EQ(bar->titleTextColor(), std::nullopt);
}

TEST_F(TintedListTest, SwitchesTakeTheSecondPassColourAndCanBeLeftAlone)
{
    auto* page = makeVariant<4>("TestSwitchTint", {{"tintColor", kRed}, {"switchOnTintColor", kGreen}});
    TestWindow window(page);
    EXPECT_EQ(UISwitch::appearanceOnTintColor(page->isa()), kRed);
    auto* cell = dynamic_cast<PSSwitchTableCell*>(page->table()->visibleCells().at(0));
    ASSERT_TRUE(cell);
    EXPECT_EQ(cell->switchControl()->effectiveOnTintColor(), kRed);

    auto* untinted = makeVariant<5>("TestNoSwitchTint", {{"tintColor", kRed}, {"tintSwitches", false}});
    window.navigation()->pushViewController(untinted, false);
    EXPECT_EQ(UISwitch::appearanceOnTintColor(untinted->isa()), std::nullopt);
    // Every page still gets the heart, in the navigation tint chain's colour.
    EXPECT_TRUE(untinted->heartButton());
    EXPECT_EQ(untinted->heartImageColor(), kRed);
}

TEST_F(TintedListTest, HeadersFollowTheirHooks)
{
    auto* both = makeVariant<6>("TestBothHeaders", {{"headerImage", "heart.png"}, {"headerText", "ENABLED"}});
    TestWindow window(both);
    QWidget* header = both->table()->tableHeaderView();
    ASSERT_TRUE(header);
    EXPECT_EQ(header->height(), 60);
    EXPECT_EQ(labelText(header, 0), QStringLiteral("Enabled"));
    EXPECT_EQ(header->findChildren<QLabel*>().at(0)->y(), 5);

    auto* withSub = makeVariant<7>("TestSubHeader", {{"headerText", "T"}, {"headerSubText", "S"}, {"headerColor", kBlue}});
    window.navigation()->pushViewController(withSub, false);
    header = withSub->table()->tableHeaderView();
    ASSERT_TRUE(header);
    EXPECT_EQ(header->height(), 95);
    auto labels = header->findChildren<QLabel*>();
    ASSERT_EQ(labels.size(), 2);
    EXPECT_EQ(labels[0]->y(), 10);
    EXPECT_EQ(labels[1]->y(), labels[0]->y() + labels[0]->height());
    EXPECT_EQ(labels[1]->height(), 20);
    EXPECT_EQ(labels[1]->palette().color(QPalette::WindowText), QColor(0, 0, 255));

    // Rotation rebuilds the header and says so in the log.
    std::vector<std::string> lines;
    setSystemLogObserver([&](const std::string& line) { lines.push_back(line); });
    withSub->didRotateFromInterfaceOrientation(UIInterfaceOrientationPortrait);
    setSystemLogObserver(nullptr);
    EXPECT_NE(std::find(lines.begin(), lines.end(), "AMPW:SET rotaiing"), lines.end());
}

TEST_F(TintedListTest, APageWithoutEntriesStaysEmpty)
{
    class Empty : public PKTintedListController {};
    testApplication();
    auto* page = new Empty();
    TestWindow window(page);
    EXPECT_THROW(page->specifiers(), PKNoSpecifiersError);
    EXPECT_EQ(page->table()->numberOfSections(), 0);
}

TEST_F(TintedListTest, StandardPageShowsItsRowsAndDoesNothingWithoutNames)
{
    URLRecorder urls;
    auto* page = new PKStandardController();
    TestWindow window(page);
    SpecifierList& entries = page->specifiers();
    ASSERT_EQ(entries.size(), 8u);
    EXPECT_EQ(*entries[0]->propertyForKey("footerText").string(), "test");
    // An empty page name opens nothing; with no mail program the support row does nothing.
    page->tableViewDidSelectRowAtIndexPath(page->table(), {1, 0});
    EXPECT_EQ(window.top(), page);
    page->tableViewDidSelectRowAtIndexPath(page->table(), {3, 0});
    EXPECT_TRUE(urls.opened.empty());
    urls.installedSchemes = {"mailto"};
    page->showSupportDialog();
    EXPECT_EQ(urls.opened, std::vector<std::string>{"mailto:"});
}

} // namespace
