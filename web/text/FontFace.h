#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

typedef struct FT_FaceRec_* FT_Face;
typedef struct hb_font_t hb_font_t;
typedef struct _cairo cairo_t;

// One glyph's outline in font units (y up), with the box of its control points, which is
// what a browser rounds out to whole pixels for measureText's ink box.
struct GlyphOutline {
    enum Verb : std::uint8_t { Move, Line, Cubic, Close };
    std::vector<Verb> verbs;
    std::vector<float> points;  // x, y pairs; one for Move and Line, three for Cubic
    float xMin = 0, yMin = 0, xMax = 0, yMax = 0;
    // One contour whose control polygon turns one way only: the reference fills narrow ones
    // with exact coverage, and every other outline by sampling four rows a pixel.
    bool convex = false;
    bool empty() const { return verbs.empty(); }
};

// A font file's face as canvas text uses it: shaping through HarfBuzz, outlines and vertical
// metrics through FreeType. `syntheticBold` and `syntheticItalic` make up a style the file
// lacks, the way browsers do (a thicker outline, a slant of a quarter).
// Up to this size the reference browser rasterizes glyphs through FreeType, at sizes of
// whole 64ths of a pixel, with ink boxes rounded out to whole pixels; larger glyphs it draws
// and measures as exact outlines.
constexpr double kLargestRasterizedGlyphSize = 256;

// Drawn and measured glyphs differ for a made-up bold (see FontFace::outline).
enum class GlyphUse { Draw, Measure };

class FontFace {
public:
    static std::unique_ptr<FontFace> open(const std::string& file, int index, bool syntheticBold,
                                          bool syntheticItalic);
    ~FontFace();
    FontFace(const FontFace&) = delete;
    FontFace& operator=(const FontFace&) = delete;

    const std::string& family() const { return family_; }
    hb_font_t* hbFont() const { return hb_; }  // scaled to font units
    double unitsPerEm() const { return unitsPerEm_; }
    bool hasGlyph(char32_t) const;
    std::uint32_t glyphFor(char32_t) const;  // 0 when missing
    double advance(std::uint32_t glyph) const;  // in ems

    // In ems, unrounded: the ascent and descent the browser's font backend reports (hhea, or
    // the OS/2 typographic values when the font asks for them), the OS/2 typographic
    // ascent and descent, the x-height.
    double ascent() const { return ascent_; }
    double descent() const { return descent_; }
    double typoAscent() const { return typoAscent_; }
    double typoDescent() const { return typoDescent_; }
    double xHeight() const { return xHeight_; }
    // In ems: the height of capitals, and the gap the font asks for between lines.
    double capHeight() const { return capHeight_; }
    double lineGap() const { return lineGap_; }

    // The outline of `glyph` as drawn, or measured, at `size` pixels (a made-up bold
    // thickens by an amount that depends on both).
    const GlyphOutline& outline(std::uint32_t glyph, double size, GlyphUse use = GlyphUse::Draw);

private:
    FontFace() = default;
    GlyphOutline loadOutline(std::uint32_t glyph, long boldStrength) const;

    FT_Face ft_ = nullptr;
    hb_font_t* hb_ = nullptr;
    std::string family_;
    double unitsPerEm_ = 1000;
    double ascent_ = 0.8, descent_ = 0.2, typoAscent_ = 0.8, typoDescent_ = 0.2, xHeight_ = 0.5;
    double capHeight_ = 0.7, lineGap_ = 0;
    bool syntheticBold_ = false, syntheticItalic_ = false;
};
