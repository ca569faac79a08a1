#include "web/text/FontSelector.h"

#include "web/text/FontConfiguration.h"

#include <fontconfig/fontconfig.h>

#include <algorithm>
#include <array>

namespace {

// CSS generic families and the fontconfig family each stands for.
struct GenericFamily {
    const char* css;
    const char* fontconfig;
};
constexpr std::array<GenericFamily, 13> kGenericFamilies{{
    {"serif", "serif"},
    {"sans-serif", "sans-serif"},
    {"monospace", "monospace"},
    {"cursive", "cursive"},
    {"fantasy", "fantasy"},
    {"system-ui", "system-ui"},
    {"ui-serif", "serif"},
    {"ui-sans-serif", "sans-serif"},
    {"ui-monospace", "monospace"},
    {"ui-rounded", "sans-serif"},
    {"math", "serif"},
    {"emoji", "sans-serif"},
    {"fangsong", "serif"},
}};

const char* genericFontconfigName(const CanvasFontFamily& family)
{
    if (!family.generic)
        return nullptr;
    for (const auto& generic : kGenericFamilies) {
        if (family.name == generic.css)
            return generic.fontconfig;
    }
    return "sans-serif";
}

int fcSlant(CanvasFontStyle style)
{
    switch (style) {
    case CanvasFontStyle::Italic:
        return FC_SLANT_ITALIC;
    case CanvasFontStyle::Oblique:
        return FC_SLANT_OBLIQUE;
    case CanvasFontStyle::Normal:
        break;
    }
    return FC_SLANT_ROMAN;
}

bool equalIgnoringCase(const char* a, const char* b)
{
    return FcStrCmpIgnoreCase(reinterpret_cast<const FcChar8*>(a), reinterpret_cast<const FcChar8*>(b)) == 0;
}

// A match counts for a named family only when the face is that family or one the
// configuration binds to it strongly (a metric-compatible substitute); otherwise fontconfig
// has merely found the closest thing and the next family in the list gets its turn.
bool matchesRequestedFamily(FcPattern* request, FcPattern* font)
{
    FcChar8* fontFamily = nullptr;
    for (int i = 0; FcPatternGetString(font, FC_FAMILY, i, &fontFamily) == FcResultMatch; ++i) {
        FcValue value;
        FcValueBinding binding;
        for (int j = 0; FcPatternGetWithBinding(request, FC_FAMILY, j, &value, &binding) == FcResultMatch; ++j) {
            if (value.type != FcTypeString || binding == FcValueBindingWeak)
                continue;
            if (equalIgnoringCase(reinterpret_cast<const char*>(value.u.s), reinterpret_cast<const char*>(fontFamily)))
                return true;
        }
    }
    return false;
}

struct PatternDeleter {
    void operator()(FcPattern* pattern) const { FcPatternDestroy(pattern); }
};
using Pattern = std::unique_ptr<FcPattern, PatternDeleter>;

Pattern stylePattern(const char* family, int fcWeight, int slant, int width)
{
    Pattern pattern(FcPatternCreate());
    if (family)
        FcPatternAddString(pattern.get(), FC_FAMILY, reinterpret_cast<const FcChar8*>(family));
    FcPatternAddInteger(pattern.get(), FC_WEIGHT, fcWeight);
    FcPatternAddInteger(pattern.get(), FC_SLANT, slant);
    FcPatternAddInteger(pattern.get(), FC_WIDTH, width);
    FcPatternAddBool(pattern.get(), FC_SCALABLE, FcTrue);
    return pattern;
}

Pattern matchPattern(FcPattern* request)
{
    FcConfig* config = canvasFontConfiguration();
    FcConfigSubstitute(config, request, FcMatchPattern);
    FcDefaultSubstitute(request);
    FcResult result = FcResultNoMatch;
    return Pattern(FcFontMatch(config, request, &result));
}

} // namespace

FontFace* FontSet::faceFor(char32_t c)
{
    for (FontFace* face : faces_) {
        if (face->hasGlyph(c))
            return face;
    }
    FontFace* face = FontSelector::shared().fallbackFace(c, weight_, slant_);
    return face ? face : primary();
}

FontSelector& FontSelector::shared()
{
    static FontSelector selector;
    return selector;
}

FontFace* FontSelector::face(const std::string& file, int index, bool syntheticBold, bool syntheticItalic)
{
    const std::string key = file + '\n' + std::to_string(index) + (syntheticBold ? "b" : "") + (syntheticItalic ? "i" : "");
    for (auto& [name, face] : faces_) {
        if (name == key)
            return face.get();
    }
    auto face = FontFace::open(file, index, syntheticBold, syntheticItalic);
    if (!face)
        return nullptr;
    faces_.emplace_back(key, std::move(face));
    return faces_.back().second.get();
}

FontFace* FontSelector::faceOfMatch(FcPattern* font, int fcWeight, int slant)
{
    FcChar8* file = nullptr;
    int index = 0;
    if (FcPatternGetString(font, FC_FILE, 0, &file) != FcResultMatch)
        return nullptr;
    FcPatternGetInteger(font, FC_INDEX, 0, &index);
    int fontWeight = FC_WEIGHT_REGULAR;
    int fontSlant = FC_SLANT_ROMAN;
    FcPatternGetInteger(font, FC_WEIGHT, 0, &fontWeight);
    FcPatternGetInteger(font, FC_SLANT, 0, &fontSlant);
    const bool syntheticBold = fcWeight >= FC_WEIGHT_DEMIBOLD && fontWeight < FC_WEIGHT_DEMIBOLD;
    const bool syntheticItalic = slant != FC_SLANT_ROMAN && fontSlant == FC_SLANT_ROMAN;
    return face(reinterpret_cast<const char*>(file), index, syntheticBold, syntheticItalic);
}

FontFace* FontSelector::matchFamily(const CanvasFontFamily& family, int weight, CanvasFontStyle style,
                                      double stretch)
{
    std::string key = (family.generic ? "*" : "=") + family.name + '|' + std::to_string(weight) + '|'
        + std::to_string(static_cast<int>(style)) + '|' + std::to_string(stretch);
    if (FontFace** cached = families_.find(key))
        return *cached;
    return families_.insert(key, matchUncached(family, weight, style, stretch));
}

FontFace* FontSelector::matchUncached(const CanvasFontFamily& family, int weight, CanvasFontStyle style,
                                      double stretch)
{
    const int fcWeight = FcWeightFromOpenType(std::clamp(weight, 1, 1000));
    const int slant = fcSlant(style);
    const char* generic = genericFontconfigName(family);
    Pattern request = stylePattern(generic ? generic : family.name.c_str(), fcWeight, slant,
                                   static_cast<int>(std::clamp(stretch, 50.0, 200.0)));
    Pattern font = matchPattern(request.get());
    if (!font || (!generic && !matchesRequestedFamily(request.get(), font.get())))
        return nullptr;
    return faceOfMatch(font.get(), fcWeight, slant);
}

FontFace* FontSelector::fallbackFace(char32_t c, int fcWeight, int slant)
{
    // Like the reference browser, find the face by coverage alone and make up the style.
    const bool bold = fcWeight >= FC_WEIGHT_DEMIBOLD;
    const bool italic = slant != FC_SLANT_ROMAN;
    const std::uint64_t key = (std::uint64_t{c} << 2) | (bold ? 2u : 0u) | (italic ? 1u : 0u);
    if (FontFace** cached = fallbacks_.find(key))
        return *cached;
    Pattern request = stylePattern("sans-serif", FC_WEIGHT_REGULAR, FC_SLANT_ROMAN, FC_WIDTH_NORMAL);
    FcCharSet* charset = FcCharSetCreate();
    FcCharSetAddChar(charset, c);
    FcPatternAddCharSet(request.get(), FC_CHARSET, charset);
    FcCharSetDestroy(charset);
    Pattern font = matchPattern(request.get());
    FcCharSet* fontCharset = nullptr;
    if (!font || FcPatternGetCharSet(font.get(), FC_CHARSET, 0, &fontCharset) != FcResultMatch
        || !FcCharSetHasChar(fontCharset, c))
        return fallbacks_.insert(key, nullptr);
    return fallbacks_.insert(key, faceOfMatch(font.get(), bold ? FC_WEIGHT_BOLD : FC_WEIGHT_REGULAR,
                                              italic ? FC_SLANT_ITALIC : FC_SLANT_ROMAN));
}

FontSet& FontSelector::fontSet(const CanvasFont& font)
{
    // Size does not change which faces a font uses, so one set serves every size.
    const std::string key = font.cacheKey(false);
    if (auto* set = sets_.find(key))
        return **set;

    auto set = std::make_unique<FontSet>();
    set->id_ = nextId_++;
    set->weight_ = FcWeightFromOpenType(std::clamp(font.weight, 1, 1000));
    set->slant_ = fcSlant(font.style);
    set->smallCaps_ = font.variant == CanvasFontVariant::SmallCaps;
    auto add = [&](FontFace* face) {
        if (face && std::find(set->faces_.begin(), set->faces_.end(), face) == set->faces_.end())
            set->faces_.push_back(face);
    };
    for (const auto& family : font.families)
        add(matchFamily(family, font.weight, font.style, font.stretch));
    // No family available: the standard font, which for phone scripts is a sans-serif one.
    if (set->faces_.empty())
        add(matchFamily({"sans-serif", true}, font.weight, font.style, font.stretch));
    if (set->faces_.empty())
        add(fallbackFace('a', set->weight_, set->slant_));
    return *sets_.insert(key, std::move(set));
}
