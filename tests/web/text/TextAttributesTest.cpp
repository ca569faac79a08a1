#include "web/text/CanvasText.h"

#include <gtest/gtest.h>

namespace {

TEST(TextAttributesTest, SpacingReadsOneLengthAsTheReferenceBrowserDoes)
{
    const CanvasFont font = *parseCanvasFont("20px sans-serif");
    struct Case {
        const char* text;
        std::optional<double> pixels;
        const char* serialization;
    };
    const Case cases[] = {
        {"1px", 1, "1px"},         {"-2px", -2, "-2px"},      {"1.5PX", 1.5, "1.5px"},
        {"1e1px", 10, "10px"},     {"1em", 20, "1em"},        {"1rem", 20, "1rem"},
        {"1ex", 10.566, "1ex"},    {"1ch", 11.123, "1ch"},    {"1vw", 0, "1vw"},
        {"1ic", 20, "1ic"},        {"1cap", 13.760, "1cap"},  {"1rex", 10.566, "1rex"},
        {"1lh", 0, "1lh"},         {"1cqw", 0, "1cqw"},       {"1Q", 0.945, "1q"},
        {"1foo", std::nullopt, ""},
        {"3pt", 4, "3pt"},         {"0", std::nullopt, ""},   {"5", std::nullopt, ""},
        {"10%", std::nullopt, ""}, {" 2px ", std::nullopt, ""}, {"2px 3px", std::nullopt, ""},
        {"normal", std::nullopt, ""}, {"inherit", std::nullopt, ""}, {"", std::nullopt, ""},
        {"calc(1px + 2px)", std::nullopt, ""},
    };
    for (const Case& c : cases) {
        const auto pixels = parseCanvasSpacing(c.text, font);
        ASSERT_EQ(pixels.has_value(), c.pixels.has_value()) << c.text;
        if (!pixels)
            continue;
        EXPECT_NEAR(*pixels, *c.pixels, 0.001) << c.text;
        EXPECT_EQ(serializeCanvasSpacing(c.text), c.serialization) << c.text;
    }
}

TEST(TextAttributesTest, KeywordsRoundTripAndUnknownOnesAreRejected)
{
    for (auto align : {CanvasTextAlign::Start, CanvasTextAlign::End, CanvasTextAlign::Left, CanvasTextAlign::Right,
                       CanvasTextAlign::Center})
        EXPECT_EQ(parseCanvasTextAlign(toString(align)), align);
    for (auto baseline : {CanvasTextBaseline::Top, CanvasTextBaseline::Hanging, CanvasTextBaseline::Middle,
                          CanvasTextBaseline::Alphabetic, CanvasTextBaseline::Ideographic, CanvasTextBaseline::Bottom})
        EXPECT_EQ(parseCanvasTextBaseline(toString(baseline)), baseline);
    for (auto direction : {CanvasDirection::Ltr, CanvasDirection::Rtl, CanvasDirection::Inherit})
        EXPECT_EQ(parseCanvasDirection(toString(direction)), direction);
    for (auto kerning : {CanvasFontKerning::Auto, CanvasFontKerning::Normal, CanvasFontKerning::None})
        EXPECT_EQ(parseCanvasFontKerning(toString(kerning)), kerning);
    // Attribute values compare exactly, as enumerated attributes of the canvas do.
    EXPECT_FALSE(parseCanvasTextAlign("CENTER"));
    EXPECT_FALSE(parseCanvasTextAlign(" center"));
    EXPECT_FALSE(parseCanvasTextBaseline("baseline"));
    EXPECT_FALSE(parseCanvasDirection(""));
}

} // namespace
