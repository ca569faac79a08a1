#include "web/text/FontFace.h"

#include "web/text/LruCache.h"

#include <ft2build.h>
#include FT_FREETYPE_H
#include FT_OUTLINE_H
#include FT_TRUETYPE_TABLES_H
#include <hb-ot.h>
#include <hb.h>

#include <algorithm>
#include <cmath>

namespace {

FT_Library freetype()
{
    static FT_Library library = [] {
        FT_Library lib = nullptr;
        if (FT_Init_FreeType(&lib))
            return static_cast<FT_Library>(nullptr);
        return lib;
    }();
    return library;
}

// Browsers slant a face that has no italic by a quarter of the height. One that has no bold
// they draw thicker by a 24th of the size at 9 pixels, a 32nd at 36 and above, in proportion
// between; its ink box they measure as thickened by a 24th of the size up to 256 pixels.
constexpr double kSyntheticSlant = 0.25;

double syntheticBoldStrength(double size, GlyphUse use)
{
    if (use == GlyphUse::Measure && size <= kLargestRasterizedGlyphSize)
        return 1.0 / 24;
    const double t = std::clamp((size - 9) / (36 - 9), 0.0, 1.0);
    return 1.0 / 24 + t * (1.0 / 32 - 1.0 / 24);
}

struct OutlineSink {
    GlyphOutline* out;
    double lastX = 0, lastY = 0;
    bool open = false;

    void point(double x, double y)
    {
        out->points.push_back(static_cast<float>(x));
        out->points.push_back(static_cast<float>(y));
    }
    void closeIfOpen()
    {
        if (open)
            out->verbs.push_back(GlyphOutline::Close);
        open = false;
    }
};

int moveTo(const FT_Vector* to, void* user)
{
    auto* sink = static_cast<OutlineSink*>(user);
    sink->closeIfOpen();
    sink->out->verbs.push_back(GlyphOutline::Move);
    sink->point(to->x, to->y);
    sink->lastX = to->x;
    sink->lastY = to->y;
    sink->open = true;
    return 0;
}

int lineTo(const FT_Vector* to, void* user)
{
    auto* sink = static_cast<OutlineSink*>(user);
    sink->out->verbs.push_back(GlyphOutline::Line);
    sink->point(to->x, to->y);
    sink->lastX = to->x;
    sink->lastY = to->y;
    return 0;
}

int cubicTo(const FT_Vector* c1, const FT_Vector* c2, const FT_Vector* to, void* user)
{
    auto* sink = static_cast<OutlineSink*>(user);
    sink->out->verbs.push_back(GlyphOutline::Cubic);
    sink->point(c1->x, c1->y);
    sink->point(c2->x, c2->y);
    sink->point(to->x, to->y);
    sink->lastX = to->x;
    sink->lastY = to->y;
    return 0;
}

// A quadratic segment is the cubic with control points two thirds of the way to its one.
int conicTo(const FT_Vector* control, const FT_Vector* to, void* user)
{
    auto* sink = static_cast<OutlineSink*>(user);
    const double x0 = sink->lastX, y0 = sink->lastY;
    sink->out->verbs.push_back(GlyphOutline::Cubic);
    sink->point(x0 + 2.0 / 3 * (control->x - x0), y0 + 2.0 / 3 * (control->y - y0));
    sink->point(to->x + 2.0 / 3 * (control->x - to->x), to->y + 2.0 / 3 * (control->y - to->y));
    sink->point(to->x, to->y);
    sink->lastX = to->x;
    sink->lastY = to->y;
    return 0;
}

bool isConvex(const FT_Outline& outline)
{
    if (outline.n_contours != 1 || outline.n_points < 3)
        return false;
    int sign = 0;
    const int n = outline.n_points;
    for (int i = 0; i < n; ++i) {
        const FT_Vector& a = outline.points[i];
        const FT_Vector& b = outline.points[(i + 1) % n];
        const FT_Vector& c = outline.points[(i + 2) % n];
        const long long cross = static_cast<long long>(b.x - a.x) * (c.y - b.y) - static_cast<long long>(b.y - a.y) * (c.x - b.x);
        if (cross == 0)
            continue;
        const int turn = cross > 0 ? 1 : -1;
        if (sign && turn != sign)
            return false;
        sign = turn;
    }
    return true;
}

struct OutlineKey {
    const FontFace* face;
    std::uint64_t glyph;  // glyph id and made-up bold strength
    bool operator==(const OutlineKey&) const = default;
};

struct OutlineKeyHash {
    std::size_t operator()(const OutlineKey& key) const
    {
        return std::hash<const void*>()(key.face) ^ (std::hash<std::uint64_t>()(key.glyph) * 0x9E3779B97F4A7C15ull);
    }
};

// One cache for the outlines of every face, so that memory stays bounded however many
// fallback faces a script's text pulls in.
LruCache<OutlineKey, GlyphOutline, OutlineKeyHash>& outlineCache()
{
    static LruCache<OutlineKey, GlyphOutline, OutlineKeyHash> cache(4096);
    return cache;
}

} // namespace

std::unique_ptr<FontFace> FontFace::open(const std::string& file, int index, bool syntheticBold,
                                         bool syntheticItalic)
{
    FT_Library library = freetype();
    if (!library)
        return nullptr;
    std::unique_ptr<FontFace> face(new FontFace);
    if (FT_New_Face(library, file.c_str(), index, &face->ft_) || !FT_IS_SCALABLE(face->ft_)) {
        return nullptr;
    }
    FT_Face ft = face->ft_;
    face->syntheticBold_ = syntheticBold;
    face->syntheticItalic_ = syntheticItalic;
    face->family_ = ft->family_name ? ft->family_name : "";
    face->unitsPerEm_ = ft->units_per_EM > 0 ? ft->units_per_EM : 1000;
    const double upem = face->unitsPerEm_;

    // The browser's font backend takes FreeType's ascender and descender (hhea first),
    // unless the font sets USE_TYPO_METRICS.
    const auto* os2 = static_cast<const TT_OS2*>(FT_Get_Sfnt_Table(ft, FT_SFNT_OS2));
    const bool useTypo = os2 && os2->version != 0xFFFF && (os2->fsSelection & (1 << 7));
    if (useTypo) {
        face->ascent_ = os2->sTypoAscender / upem;
        face->descent_ = -os2->sTypoDescender / upem;
        face->lineGap_ = os2->sTypoLineGap / upem;
    } else {
        face->ascent_ = ft->ascender / upem;
        face->descent_ = -ft->descender / upem;
        face->lineGap_ = (ft->height - ft->ascender + ft->descender) / upem;
    }
    face->lineGap_ = std::max(0.0, face->lineGap_);
    if (os2 && os2->version != 0xFFFF && os2->sTypoAscender - os2->sTypoDescender > 0) {
        face->typoAscent_ = os2->sTypoAscender / upem;
        face->typoDescent_ = -os2->sTypoDescender / upem;
    } else {
        face->typoAscent_ = face->ascent_;
        face->typoDescent_ = face->descent_;
    }
    if (os2 && os2->version != 0xFFFF && os2->version >= 2 && os2->sxHeight > 0)
        face->xHeight_ = os2->sxHeight / upem;
    else if (FT_UInt x = FT_Get_Char_Index(ft, 'x'); x && !FT_Load_Glyph(ft, x, FT_LOAD_NO_SCALE | FT_LOAD_NO_HINTING)) {
        FT_BBox box;
        FT_Outline_Get_CBox(&ft->glyph->outline, &box);
        face->xHeight_ = box.yMax / upem;
    }

    if (os2 && os2->version != 0xFFFF && os2->version >= 2 && os2->sCapHeight > 0)
        face->capHeight_ = os2->sCapHeight / upem;
    else if (FT_UInt h = FT_Get_Char_Index(ft, 'H'); h && !FT_Load_Glyph(ft, h, FT_LOAD_NO_SCALE | FT_LOAD_NO_HINTING)) {
        FT_BBox box;
        FT_Outline_Get_CBox(&ft->glyph->outline, &box);
        face->capHeight_ = box.yMax / upem;
    }

    hb_blob_t* blob = hb_blob_create_from_file_or_fail(file.c_str());
    if (!blob)
        return nullptr;
    hb_face_t* hbFace = hb_face_create(blob, static_cast<unsigned>(index));
    hb_blob_destroy(blob);
    face->hb_ = hb_font_create(hbFace);
    hb_face_destroy(hbFace);
    hb_ot_font_set_funcs(face->hb_);
    hb_font_set_scale(face->hb_, static_cast<int>(upem), static_cast<int>(upem));
    return face;
}

FontFace::~FontFace()
{
    if (hb_)
        hb_font_destroy(hb_);
    if (ft_)
        FT_Done_Face(ft_);
}

bool FontFace::hasGlyph(char32_t c) const
{
    return glyphFor(c) != 0;
}

std::uint32_t FontFace::glyphFor(char32_t c) const
{
    hb_codepoint_t glyph = 0;
    return hb_font_get_nominal_glyph(hb_, c, &glyph) ? glyph : 0;
}

double FontFace::advance(std::uint32_t glyph) const
{
    return hb_font_get_glyph_h_advance(hb_, glyph) / unitsPerEm_;
}

const GlyphOutline& FontFace::outline(std::uint32_t glyph, double size, GlyphUse use)
{
    const long strength = syntheticBold_ ? std::lround(unitsPerEm_ * syntheticBoldStrength(size, use)) : 0;
    const OutlineKey key{this, (static_cast<std::uint64_t>(strength) << 32) | glyph};
    auto& cache = outlineCache();
    if (const GlyphOutline* cached = cache.find(key))
        return *cached;
    return cache.insert(key, loadOutline(glyph, strength));
}

GlyphOutline FontFace::loadOutline(std::uint32_t glyph, long boldStrength) const
{
    GlyphOutline result;
    if (FT_Load_Glyph(ft_, glyph, FT_LOAD_NO_SCALE | FT_LOAD_NO_HINTING | FT_LOAD_NO_BITMAP)
        || ft_->glyph->format != FT_GLYPH_FORMAT_OUTLINE)
        return result;
    FT_Outline* outline = &ft_->glyph->outline;
    if (boldStrength > 0) {
        FT_Outline_EmboldenXY(outline, boldStrength, boldStrength);
        FT_Outline_Translate(outline, -boldStrength / 2, -boldStrength / 2);
    }
    if (syntheticItalic_) {
        FT_Matrix slant{0x10000, static_cast<FT_Fixed>(kSyntheticSlant * 0x10000), 0, 0x10000};
        FT_Outline_Transform(outline, &slant);
    }
    FT_Outline_Funcs funcs{moveTo, lineTo, conicTo, cubicTo, 0, 0};
    OutlineSink sink{&result};
    if (FT_Outline_Decompose(outline, &funcs, &sink))
        return GlyphOutline{};
    sink.closeIfOpen();
    result.convex = isConvex(*outline);
    if (outline->n_points > 0) {
        FT_BBox box;
        FT_Outline_Get_CBox(outline, &box);
        result.xMin = static_cast<float>(box.xMin);
        result.yMin = static_cast<float>(box.yMin);
        result.xMax = static_cast<float>(box.xMax);
        result.yMax = static_cast<float>(box.yMax);
    }
    return result;
}
