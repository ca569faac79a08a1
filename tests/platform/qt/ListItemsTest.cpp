#include "pagekit/QtTestSupport.h"

#include "pagekit/PKTintedListController.h"
#include "platform/qt/PSListItemsController.h"
#include "platform/qt/PSTableCell.h"

#include <QLabel>

#include <gtest/gtest.h>

namespace {

class ChoicePage : public PKTintedListController {
    AMPWELL_OBJC_CLASS()
public:
    EntryTable customSpecifiers()
    {
        return {
            {{"cell", "PSGroupCell"}},
            {{"cell", "PSLinkListCell"}, {"label", "Size"}, {"get", "size:"}, {"set", "setSize:specifier:"},
             {"validTitles", PlistArray{"Small", "Large"}}, {"validValues", PlistArray{1, 2}}},
        };
    }
    Id size(std::shared_ptr<PSSpecifier>) { return Id(current); }
    void setSize(Id value, std::shared_ptr<PSSpecifier>) { current = static_cast<int>(value.integerValue()); }
    int current = 1;
};

const ObjCClass& ChoicePage::staticClass()
{
    static const ObjCClass& cls = ClassBuilder<ChoicePage>("TestChoicePage", &PKTintedListController::staticClass())
                                      .method("customSpecifiers", &ChoicePage::customSpecifiers)
                                      .method("size:", &ChoicePage::size)
                                      .method("setSize:specifier:", &ChoicePage::setSize)
                                      .build();
    return cls;
}

TEST(PSListItemsController, ChoosesOneValueWithACheckmark)
{
    testApplication();
    auto* page = new ChoicePage();
    TestWindow window(page);
    PSTableCell* row = page->table()->visibleCells().at(0);
    EXPECT_EQ(row->detailTextLabel()->text(), QStringLiteral("Small"));
    EXPECT_EQ(row->accessoryType(), UITableViewCellAccessoryDisclosureIndicator);

    row->activate();
    auto* list = dynamic_cast<PSListItemsController*>(window.top());
    ASSERT_TRUE(list);
    EXPECT_EQ(list->title(), "Size");
    std::vector<PSTableCell*> items = list->table()->visibleCells();
    ASSERT_EQ(items.size(), 2u);
    EXPECT_TRUE(items[0]->isChecked());
    EXPECT_FALSE(items[1]->isChecked());

    items[1]->activate();
    EXPECT_EQ(page->current, 2);
    EXPECT_FALSE(items[0]->isChecked());
    EXPECT_TRUE(items[1]->isChecked());

    window.navigation()->popViewControllerAnimated(false);
    EXPECT_EQ(page->table()->visibleCells().at(0)->detailTextLabel()->text(), QStringLiteral("Large"));
}

} // namespace
