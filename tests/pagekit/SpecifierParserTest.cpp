#include "QtTestSupport.h"

#include "pagekit/PKSpecifierParser.h"
#include "pagekit/PKTintedCells.h"

#include "platform/qt/QtConversions.h"

#include <gtest/gtest.h>

namespace {

// A target that answers iconColor and tintColor, or only tintColor.
class IconTarget : public NSObject {
    AMPWELL_OBJC_CLASS()
public:
    UIColor iconColor() { return UIColor::colorWithRedGreenBlueAlpha(1, 0, 0, 1); }
    UIColor tintColor() { return UIColor::colorWithRedGreenBlueAlpha(0, 0, 1, 1); }
};
class TintOnlyTarget : public NSObject {
    AMPWELL_OBJC_CLASS()
public:
    UIColor tintColor() { return UIColor::colorWithRedGreenBlueAlpha(0, 0, 1, 1); }
};

const ObjCClass& IconTarget::staticClass()
{
    static const ObjCClass& cls = ClassBuilder<IconTarget>("TestIconTarget", &NSObject::staticClass())
                                      .method("iconColor", &IconTarget::iconColor)
                                      .method("tintColor", &IconTarget::tintColor)
                                      .build();
    return cls;
}
const ObjCClass& TintOnlyTarget::staticClass()
{
    static const ObjCClass& cls = ClassBuilder<TintOnlyTarget>("TestTintOnlyTarget", &NSObject::staticClass())
                                      .method("tintColor", &TintOnlyTarget::tintColor)
                                      .build();
    return cls;
}

QColor centreOf(const UIImage& image)
{
    QImage picture = toQImage(image);
    return picture.pixelColor(picture.width() / 2, picture.height() / 2);
}

class SpecifierParserTest : public ::testing::Test {
protected:
    void SetUp() override { testApplication(); }
    NSObject target_;
};

TEST_F(SpecifierParserTest, MapsCellNamesExactly)
{
    EXPECT_EQ(PKSpecifierParser::PSCellTypeFromString(Id("PSSwitchCell")), PSSwitchCell);
    EXPECT_EQ(PKSpecifierParser::PSCellTypeFromString(Id("PSEditTextViewCell")), PSEditTextViewCell);
    EXPECT_EQ(PKSpecifierParser::PSCellTypeFromString(Id("psswitchcell")), PSGroupCell);
    EXPECT_EQ(PKSpecifierParser::PSCellTypeFromString(Id(6)), PSGroupCell);
    EXPECT_EQ(PKSpecifierParser::PSCellTypeFromString(Id()), PSGroupCell);
    EXPECT_TRUE(PKSpecifierParser::specifiersFromArrayForTarget({}, &target_).empty());
}

TEST_F(SpecifierParserTest, GroupsKeepOnlyLabelAndFooterRowsKeepEverything)
{
    SpecifierList entries = PKSpecifierParser::specifiersFromArrayForTarget(
        {
            {{"cell", "PSSwitchcell"}, {"label", "HEAD"}, {"footerText", "FOOT"}, {"cellClass", "PKTintedCell"},
             {"key", "k"}, {"height", 80}},
            {{"cell", "PSSwitchCell"}, {"label", "ROW"}, {"key", "k"}, {"height", 80}, {"cellClass", "PKTintedSwitchCell"},
             {"detail", "NoSuchPage"}, {"action", "go"}, {"get", "read:"}, {"extra", "kept"}},
            {{"cell", "PSLinkListCell"}, {"validTitles", PlistArray{"A"}}},
            {{"cell", "PSLinkListCell"}, {"validTitles", PlistArray{"A", "B"}}, {"validValues", PlistArray{1, 2}},
             {"id", "list"}},
            {{"footerText", "ONLY FOOT"}},
        },
        &target_);
    ASSERT_EQ(entries.size(), 5u);

    const PSSpecifier& group = *entries[0];
    EXPECT_EQ(group.cellType(), PSGroupCell);
    EXPECT_EQ(group.name(), "HEAD");
    EXPECT_EQ(group.properties().size(), 4u); // label, footerText, cell, id
    EXPECT_EQ(*group.propertyForKey("cell").string(), "PSGroupCell");
    EXPECT_TRUE(group.propertyForKey("key").isNil());
    EXPECT_TRUE(group.propertyForKey("cellClass").isNil());

    const PSSpecifier& row = *entries[1];
    EXPECT_EQ(row.cellType(), PSSwitchCell);
    EXPECT_EQ(row.target(), &target_);
    EXPECT_EQ(row.propertyForKey("cellClass").cls(), &PKTintedSwitchCell::staticClass());
    EXPECT_EQ(row.propertyForKey("height").integerValue(), 80);
    EXPECT_EQ(*row.propertyForKey("extra").string(), "kept");
    EXPECT_EQ(*row.propertyForKey("detail").string(), "NoSuchPage");
    EXPECT_EQ(row.detailControllerClass(), nullptr);
    EXPECT_EQ(row.action(), "go");
    EXPECT_EQ(row.getter(), "read:");
    EXPECT_EQ(row.setter(), "setPreferenceValue:specifier:");
    EXPECT_EQ(row.identifier(), "ROW");

    const PSSpecifier& half = *entries[2];
    EXPECT_EQ(half.name(), "");
    EXPECT_TRUE(half.propertyForKey("id").isNil());
    EXPECT_TRUE(half.titles().empty());
    EXPECT_TRUE(half.propertyForKey("validTitles").isNil());

    const PSSpecifier& list = *entries[3];
    EXPECT_EQ(list.titleForValue(PlistValue(2)), "B");
    EXPECT_TRUE(list.propertyForKey("validValues").isNil());
    EXPECT_EQ(list.identifier(), "list");

    EXPECT_EQ(entries[4]->name(), "");
    EXPECT_EQ(*entries[4]->propertyForKey("footerText").string(), "ONLY FOOT");
}

TEST_F(SpecifierParserTest, IconsAreTintedWithTheTargetsIconColourFirst)
{
    IconTarget both;
    TintOnlyTarget tintOnly;
    auto iconFor = [](NSObject* target) {
        SpecifierList entries =
            PKSpecifierParser::specifiersFromArrayForTarget({{{"cell", "PSLinkCell"}, {"icon", "heart.png"}}}, target);
        const UIImage* icon = entries[0]->propertyForKey("iconImage").image();
        return icon ? *icon : UIImage();
    };
    UIImage red = iconFor(&both);
    UIImage blue = iconFor(&tintOnly);
    UIImage untinted = iconFor(&target_);
    ASSERT_FALSE(red.isNil());
    EXPECT_EQ(centreOf(red).rgb(), QColor(255, 0, 0).rgb());
    EXPECT_EQ(centreOf(blue).rgb(), QColor(0, 0, 255).rgb());
    EXPECT_NE(centreOf(untinted).rgb(), QColor(0, 0, 255).rgb());

    SpecifierList missing = PKSpecifierParser::specifiersFromArrayForTarget(
        {{{"cell", "PSGroupCell"}, {"icon", "nothing.png"}, {"leftImage", "heart.png"}}}, &both);
    EXPECT_TRUE(missing[0]->propertyForKey("iconImage").isNil());
    EXPECT_TRUE(missing[0]->propertyForKey("leftImage").image());
}

} // namespace
