#pragma once

#include <array>
#include <cstdint>

// How much of a pixel a glyph covers becomes how opaque the reference browser draws it: its
// glyph masks (glyphs up to kLargestRasterizedGlyphSize device pixels) go through a table that
// depends on how light the text's colour is, darkening light text's edges less than its
// cores and thinning dark text's a little. Larger glyphs are drawn as plain paths.
using GlyphCoverageTable = std::array<std::uint8_t, 256>;

// The reference sorts colours into eight classes of lightness (a 709 luma of the 8-bit sRGB
// values, in steps of 32); gradients and patterns take the middle grey's class.
constexpr int kGlyphLightnessClasses = 8;
constexpr int kNonSolidLightnessClass = 4;
int glyphLightnessClass(std::uint8_t red, std::uint8_t green, std::uint8_t blue);

// The table of a class (clamped into range): index coverage 0 to 255, value the alpha the
// mask gets. Both ends stay put, and the table never decreases.
const GlyphCoverageTable& glyphCoverageTable(int lightnessClass);
