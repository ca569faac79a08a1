#include "platform/core/ColorParsing.h"

#include <gtest/gtest.h>

#include <cmath>

using namespace ColorParsing;

namespace {

struct Channels {
    int red, green, blue, alpha;
};

Channels channelsOf(std::string_view text)
{
    std::optional<UIColor> color = colorFromHexStringTD(text);
    EXPECT_TRUE(color.has_value()) << text;
    double r, g, b, a;
    color->getRedGreenBlueAlpha(&r, &g, &b, &a);
    auto byte = [](double c) { return static_cast<int>(std::lround(c * 255)); };
    return {byte(r), byte(g), byte(b), byte(a)};
}

void expectChannels(std::string_view text, Channels expected)
{
    Channels got = channelsOf(text);
    EXPECT_EQ(got.red, expected.red) << text;
    EXPECT_EQ(got.green, expected.green) << text;
    EXPECT_EQ(got.blue, expected.blue) << text;
    EXPECT_EQ(got.alpha, expected.alpha) << text;
}

} // namespace

TEST(ColorParsing, ReadsSixAndEightDigitsWithOrWithoutHashInEitherCase)
{
    expectChannels("#ff0000", {255, 0, 0, 255});
    expectChannels("ff0000", {255, 0, 0, 255});
    expectChannels("#FF8000", {255, 128, 0, 255});
    expectChannels("#ff000080", {255, 0, 0, 128});
    expectChannels("00000055", {0, 0, 0, 0x55});
}

TEST(ColorParsing, LengthTestCountsCharactersNotDigits)
{
    // Seven characters make RRGGBBAA of the number read, here 0x01234567.
    expectChannels("1234567", {0x01, 0x23, 0x45, 0x67});
    // Six characters are RRGGBB even when fewer are digits.
    expectChannels("12zzzz", {0, 0, 0x12, 255});
    // Text without digits is black: opaque when short, transparent from seven characters on.
    expectChannels("zzz", {0, 0, 0, 255});
    expectChannels("zzzzzzz", {0, 0, 0, 0});
}

TEST(ColorParsing, HashAnywhereMakesReadingStartAtTheSecondCharacter)
{
    // "ab#cdef": the scan starts at "b" and stops at "#": 0x0b, six characters counted.
    expectChannels("ab#cdef", {0, 0, 11, 255});
    expectChannels("x#ff0000", {0, 0, 0, 0}); // starts at "#", reads nothing, 7 counted
}

TEST(ColorParsing, FollowsThePlatformScanner)
{
    expectChannels("  ff0000", {0, 255, 0, 0}); // white space skipped, but counted in the length
    expectChannels("0xff00", {0, 255, 0, 255});
    expectChannels("ffffffffff", {255, 255, 255, 255}); // saturates at 0xFFFFFFFF
    EXPECT_EQ(scanHexInt("\xC2\xA0" "1f"), 0x1Fu); // a no-break space is white space too
    EXPECT_EQ(scanHexInt("0x"), 0u);
    EXPECT_EQ(scanHexInt("g1"), 0u);
}

TEST(ColorParsing, EmptyTextGivesNoColour)
{
    EXPECT_FALSE(colorFromHexStringTD("").has_value());
    EXPECT_TRUE(colorFromHexStringTD("#").has_value());
}

TEST(ColorParsing, FormatsTruncatedLowerCaseChannels)
{
    UIColor white = UIColor::colorWithRedGreenBlueAlpha(1, 1, 1, 1);
    EXPECT_EQ(hexStringFromColor(white), "ffffff");
    EXPECT_EQ(hexStringFromColorAlphaHash(white, false, true), "#ffffff");
    EXPECT_EQ(hexStringFromColorAlpha(white, true), "ffffffff");

    UIColor almost = UIColor::colorWithRedGreenBlueAlpha(0.999, 0.5, 0.0, 0.3);
    EXPECT_EQ(hexStringFromColorAlphaHash(almost, true, true), "#fe7f004c");
}

TEST(ColorParsing, FormatsGreyColoursAndUnclampedComponents)
{
    EXPECT_EQ(hexStringFromColor(UIColor::colorWithWhiteAlpha(0.5, 1)), "7f7f7f");
    // A negative channel prints the eight hex digits of its 32-bit pattern.
    UIColor extended = UIColor::colorWithRedGreenBlueAlpha(-1.0 / 255, 2.0, 0, 1);
    EXPECT_EQ(hexStringFromColor(extended), "ffffffff1fe00");
}

TEST(ColorParsing, RoundTripsWithinTruncation)
{
    for (std::string text : {"#ff0000", "#00ccff", "#12345678", "#ffffff55", "#000000"}) {
        bool alpha = text.size() == 9;
        EXPECT_EQ(hexStringFromColorAlphaHash(*colorFromHexStringTD(text), alpha, true), text);
    }
}
