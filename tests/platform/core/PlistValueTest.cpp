#include "support/PlistPrinting.h"
#include "platform/core/PlistValue.h"

#include <gtest/gtest.h>

TEST(PlistValue, NumbersAndStringsConvertAsThePlatformDoes)
{
    EXPECT_EQ(PlistValue("20abc").intValue(), 20);
    EXPECT_EQ(PlistValue("  -7").intValue(), -7);
    EXPECT_EQ(PlistValue("abc").intValue(), 0);
    EXPECT_EQ(PlistValue("99999999999").intValue(), INT32_MAX);
    EXPECT_EQ(PlistValue(2.9).intValue(), 2);
    EXPECT_EQ(PlistValue(true).intValue(), 1);
    EXPECT_DOUBLE_EQ(PlistValue("0.25").doubleValue(), 0.25);
    EXPECT_FLOAT_EQ(PlistValue(0.3f).floatValue(), 0.3f);

    EXPECT_TRUE(PlistValue("YES").boolValue());
    EXPECT_TRUE(PlistValue("true").boolValue());
    EXPECT_TRUE(PlistValue(" +007").boolValue());
    EXPECT_FALSE(PlistValue("no").boolValue());
    EXPECT_FALSE(PlistValue("000").boolValue());
    EXPECT_TRUE(PlistValue(2).boolValue());
    EXPECT_FALSE(PlistValue().boolValue());
}

TEST(PlistDict, KeepsInsertionOrderAndReplacesInPlace)
{
    PlistDict dict;
    dict.set("b", 1);
    dict.set("a", 2);
    dict.set("b", 3);
    EXPECT_EQ(dict.keys(), (std::vector<std::string>{"b", "a"}));
    EXPECT_EQ(dict.value("b"), PlistValue(3));

    dict.set("b", PlistValue()); // nil removes
    EXPECT_FALSE(dict.contains("b"));
    EXPECT_EQ(dict.value("a"), PlistValue(2));
    EXPECT_TRUE(dict.value("missing").isNil());
}

TEST(PlistDict, EqualityIgnoresOrder)
{
    PlistDict one{{"x", 1}, {"y", "two"}};
    PlistDict other{{"y", "two"}, {"x", 1}};
    EXPECT_EQ(one, other);
    other.set("x", 1.0);
    EXPECT_FALSE(one == other); // an integer is not a real
}

TEST(PlistValue, ColoursAreNotPropertyLists)
{
    PlistDict nested{{"inner", PlistArray{PlistValue(1), PlistValue(UIColor::whiteColor())}}};
    EXPECT_FALSE(PlistValue(nested).isPropertyList());
    EXPECT_TRUE(PlistValue(PlistDict{{"inner", PlistArray{PlistValue(1)}}}).isPropertyList());
}
