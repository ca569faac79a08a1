#include "web/text/CanvasFont.h"
#include "web/text/FontConfiguration.h"
#include "web/text/FontSelector.h"

#include <gtest/gtest.h>

#include <fstream>
#include <sstream>

namespace {

std::string primaryFamily(const char* shorthand)
{
    const auto font = parseCanvasFont(shorthand);
    if (!font)
        return "<invalid>";
    FontFace* face = FontSelector::shared().fontSet(*font).primary();
    return face ? face->family() : "<none>";
}

TEST(FontResolutionTest, PhoneSansSerifNamesResolveToLiberationSans)
{
    for (const char* font : {"12px Helvetica Neue", "12px HelveticaNeue", "12px Helvetica", "12px Arial",
                             "12px '.SF UI Text'", "12px -apple-system", "12px 'San Francisco'",
                             "12px system-ui", "12px sans-serif", "bold 12px Helvetica Neue",
                             "italic 12px Helvetica Neue", "12px 'Helvetica Neue', serif"})
        EXPECT_EQ(primaryFamily(font), "Liberation Sans") << font;
}

TEST(FontResolutionTest, GenericFamiliesResolveToTheirKind)
{
    EXPECT_EQ(primaryFamily("12px serif"), "Liberation Serif");
    EXPECT_EQ(primaryFamily("12px monospace"), "Liberation Mono");
    EXPECT_EQ(primaryFamily("12px 'Courier New'"), "Liberation Mono");
    EXPECT_EQ(primaryFamily("12px Times"), "Liberation Serif");
}

TEST(FontResolutionTest, UnknownFamiliesFallThroughTheList)
{
    EXPECT_EQ(primaryFamily("12px NoSuchFont, monospace"), "Liberation Mono");
    EXPECT_EQ(primaryFamily("12px NoSuchFont, Helvetica Neue"), "Liberation Sans");
    // With nothing available the standard font stands in: sans-serif, never a serif face.
    EXPECT_EQ(primaryFamily("12px NoSuchFont"), "Liberation Sans");
    EXPECT_EQ(primaryFamily("12px Futura, 'Gill Sans'"), "Liberation Sans");
}

TEST(FontResolutionTest, StylesPickTheMatchingFace)
{
    auto face = [](const char* shorthand) { return FontSelector::shared().fontSet(*parseCanvasFont(shorthand)).primary(); };
    FontFace* regular = face("12px Arial");
    FontFace* bold = face("bold 12px Arial");
    EXPECT_NE(regular, bold);
    EXPECT_EQ(face("600 12px Arial"), bold);
    EXPECT_EQ(face("500 12px Arial"), regular);
    EXPECT_NE(face("italic 12px Arial"), regular);
    EXPECT_EQ(face("italic 12px Arial")->family(), "Liberation Sans");
    // The bold face is the one with bold advances.
    EXPECT_GT(bold->advance(bold->glyphFor('b')), regular->advance(regular->glyphFor('b')));
}

TEST(FontResolutionTest, CharactersMissingFromTheFontFallBack)
{
    FontSet& fonts = FontSelector::shared().fontSet(*parseCanvasFont("12px Helvetica Neue"));
    EXPECT_EQ(fonts.faceFor('A')->family(), "Liberation Sans");
    FontFace* arabic = fonts.faceFor(U'\u0645');
    ASSERT_TRUE(arabic);
    EXPECT_TRUE(arabic->hasGlyph(U'\u0645'));
}

TEST(FontResolutionTest, BuiltInConfigurationIsTheProjectFile)
{
    std::ifstream file(AMPWELL_SOURCE_DIR "/web/fonts/fonts.conf", std::ios::binary);
    ASSERT_TRUE(file);
    std::stringstream text;
    text << file.rdbuf();
    EXPECT_EQ(canvasFontConfigurationText(), text.str());
    EXPECT_NE(canvasFontConfiguration(), nullptr);
}

} // namespace
