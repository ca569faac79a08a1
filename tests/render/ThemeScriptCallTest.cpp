#include "render/ThemeScriptCall.h"

#include <gtest/gtest.h>

TEST(ThemeScriptCall, FindsTheFirstParenthesisedListOfNames)
{
    EXPECT_EQ(themeScriptParameterList("(c,g,l,m,e){return 1}"), "(c,g,l,m,e)");
    EXPECT_EQ(themeScriptParameterList("  ( height , level )\n{}"), "( height , level )");
    EXPECT_EQ(themeScriptParameterList("((x)){}"), "(x)");
    EXPECT_EQ(themeScriptParameterList("(a, 2)(b,c){}"), "(b,c)");
    EXPECT_EQ(themeScriptParameterList("(\xC2\xA0size\tlevel1){}").has_value(), false); // two names need a comma
    EXPECT_EQ(themeScriptParameterList("(\xC2\xA0size,\tlevel1){}"), "(\xC2\xA0size,\tlevel1)");
}

TEST(ThemeScriptCall, NamesFollowTheBracketClassAsWritten)
{
    EXPECT_TRUE(themeScriptParameterList("(_x){}"));     // "_" lies between "Z" and "a"
    EXPECT_TRUE(themeScriptParameterList("(`q,^r){}"));
    EXPECT_FALSE(themeScriptParameterList("(1x){}"));    // a digit cannot start a name
    EXPECT_FALSE(themeScriptParameterList("(a1_){}"));   // nor may "_" follow a digit
    EXPECT_FALSE(themeScriptParameterList("($el){}"));
    EXPECT_FALSE(themeScriptParameterList("(){}"));
    EXPECT_FALSE(themeScriptParameterList("(a,){}"));
    EXPECT_FALSE(themeScriptParameterList("no list at all"));
}

TEST(ThemeScriptCall, SixOrMoreParametersTakeTheLongForm)
{
    EXPECT_FALSE(usesLongCallForm("(a,b,c,d,e)"));
    EXPECT_TRUE(usesLongCallForm("(a,b,c,d,e,f)"));
    EXPECT_TRUE(usesLongCallForm("(a,b,c,d,e,f,g)"));
}

TEST(ThemeScriptCall, CallTextsPrintTheArgumentsAsTheFormatsDo)
{
    ThemeCallArguments arguments;
    arguments.pixelHeight = 20.25f * 3; // 60.75 prints as 61
    arguments.level = 55;
    arguments.charging = true;
    arguments.color[0] = 255, arguments.color[1] = 127, arguments.color[2] = 0;
    arguments.baseColor[0] = 1, arguments.baseColor[1] = 2, arguments.baseColor[2] = 3;
    arguments.baseAlpha = 0.456;
    arguments.lowPowerMode = true;
    EXPECT_EQ(themeScriptCallText("(a){}", false, arguments), "(function(a){})(61,55,!!1,!!0,[255,127,0])");
    EXPECT_EQ(themeScriptCallText("(a){}", true, arguments),
              "(function(a){})(61,55,!!1,!!0,!!1,[255,127,0],[1,2,3,0.46])");
    arguments.pixelHeight = 40;
    EXPECT_TRUE(themeScriptCallText("(a){}", false, arguments).starts_with("(function(a){})(40,"));
}
