#include "colour/HSVColor.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace {

struct Case {
    double red, green, blue;
    float hue, saturation, brightness;
};

void expectColor(const UIColor& color, double red, double green, double blue, double alpha = 1)
{
    EXPECT_NEAR(color.red(), red, 1e-6);
    EXPECT_NEAR(color.green(), green, 1e-6);
    EXPECT_NEAR(color.blue(), blue, 1e-6);
    EXPECT_NEAR(color.alpha(), alpha, 1e-6);
}

TEST(HSVColor, PrimariesAndSecondariesRoundTrip)
{
    const Case cases[] = {
        {1, 0, 0, 0, 1, 1},           {1, 1, 0, 1.0f / 6, 1, 1}, {0, 1, 0, 2.0f / 6, 1, 1},
        {0, 1, 1, 3.0f / 6, 1, 1},    {0, 0, 1, 4.0f / 6, 1, 1}, {1, 0, 1, 5.0f / 6, 1, 1},
        {0.5, 0.25, 0.25, 0, 0.5f, 0.5f},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(testing::Message() << c.red << "," << c.green << "," << c.blue);
        HSVColor hsv;
        HSVColorFromUIColor(UIColor::colorWithRedGreenBlueAlpha(c.red, c.green, c.blue, 1), &hsv);
        EXPECT_NEAR(hsv.hue, c.hue, 1e-6);
        EXPECT_NEAR(hsv.saturation, c.saturation, 1e-6);
        EXPECT_NEAR(hsv.brightness, c.brightness, 1e-6);
        expectColor(UIColorFromHSVColor(hsv), c.red, c.green, c.blue);
    }
}

TEST(HSVColor, GreysHaveNoHueOrSaturation)
{
    for (double white : {0.0, 0.25, 0.5, 1.0}) {
        HSVColor hsv = HSVColorFromUIColor(UIColor::colorWithWhiteAlpha(white, 0.4));
        EXPECT_EQ(hsv.hue, 0);
        EXPECT_EQ(hsv.saturation, 0);
        EXPECT_FLOAT_EQ(hsv.brightness, static_cast<float>(white));
        EXPECT_FLOAT_EQ(hsv.alpha, 0.4f);
        expectColor(UIColorFromHSVColor(hsv), white, white, white, 0.4);
    }
}

TEST(HSVColor, HueOneIsRedAgainAndHuesJustBelowRedStayBelowOne)
{
    expectColor(colorWithHueSaturationBrightnessAlpha(1, 1, 1, 1), 1, 0, 0);
    HSVColor hsv = HSVColorFromUIColor(UIColor::colorWithRedGreenBlueAlpha(1, 0, 1e-9, 1));
    EXPECT_GE(hsv.hue, 0);
    EXPECT_LT(hsv.hue, 1);
}

TEST(HSVColor, OutOfRangeAndNonFiniteValuesAreClamped)
{
    const double nan = std::numeric_limits<double>::quiet_NaN();
    const double inf = std::numeric_limits<double>::infinity();
    HSVColor hsv = HSVColorFromUIColor(UIColor::colorWithRedGreenBlueAlpha(2, nan, -inf, inf));
    expectColor(UIColorFromHSVColor(hsv), 1, 0, 0, 1);
    expectColor(colorWithHueSaturationBrightnessAlpha(nan, 7, -3, nan), 0, 0, 0, 0);
    HSVColor wild{-5, float(nan), float(inf), 2};
    UIColor color = UIColorFromHSVColor(wild);
    for (double component : {color.red(), color.green(), color.blue(), color.alpha()}) {
        EXPECT_GE(component, 0);
        EXPECT_LE(component, 1);
    }
}

TEST(HSVColor, KeepingHueHoldsOnlyWhatTheColourLacks)
{
    HSVColor before{0.6f, 0.7f, 0.8f, 1};
    HSVColor black = HSVColorFromUIColorKeepingHue(UIColor::blackColor(), before);
    EXPECT_FLOAT_EQ(black.hue, 0.6f);
    EXPECT_FLOAT_EQ(black.saturation, 0.7f);
    EXPECT_EQ(black.brightness, 0);

    HSVColor grey = HSVColorFromUIColorKeepingHue(UIColor::colorWithWhiteAlpha(0.5, 1), before);
    EXPECT_FLOAT_EQ(grey.hue, 0.6f);
    EXPECT_EQ(grey.saturation, 0);
    EXPECT_FLOAT_EQ(grey.brightness, 0.5f);

    HSVColor green = HSVColorFromUIColorKeepingHue(UIColor::colorWithRedGreenBlueAlpha(0, 1, 0, 1), before);
    EXPECT_NEAR(green.hue, 1.0 / 3, 1e-6);
    EXPECT_EQ(green.saturation, 1);
}

} // namespace
