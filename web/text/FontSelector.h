#pragma once

#include "web/text/CanvasFont.h"
#include "web/text/FontFace.h"
#include "web/text/LruCache.h"

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

typedef struct _FcPattern FcPattern;

// The faces one canvas font draws with: the first available face of each family it names,
// in order, then, per character none of them covers, whatever installed face the font
// configuration finds for it. Size plays no part here; one set serves every size.
class FontSet {
public:
    std::uint64_t id() const { return id_; }
    // Null only on a machine without a single usable font.
    FontFace* primary() const { return faces_.empty() ? nullptr : faces_.front(); }
    bool syntheticSmallCaps() const { return smallCaps_; }

    // The face that draws `c`: the first family face that has it, else a fallback face,
    // else the primary face (which then draws its missing-glyph box). Null only when the
    // set is empty.
    FontFace* faceFor(char32_t c);

private:
    friend class FontSelector;
    std::uint64_t id_ = 0;
    std::vector<FontFace*> faces_;
    int weight_ = 400;
    int slant_ = 0;
    bool smallCaps_ = false;
};

// Resolves canvas fonts to font sets through the project's font configuration, caching both
// the sets and the opened faces.
class FontSelector {
public:
    static FontSelector& shared();

    FontSet& fontSet(const CanvasFont&);

    // The face a family resolves to at the given style, or null when the configuration has
    // no face for that name (a generic family always has one).
    FontFace* matchFamily(const CanvasFontFamily& family, int weight, CanvasFontStyle style, double stretch);

    // The face that covers `c`, chosen by coverage alone and made up to the weight and slant
    // asked for; null when no installed font has the character.
    FontFace* fallbackFace(char32_t c, int fcWeight, int fcSlant);

private:
    FontSelector() = default;
    FontFace* face(const std::string& file, int index, bool syntheticBold, bool syntheticItalic);
    FontFace* faceOfMatch(FcPattern* font, int fcWeight, int fcSlant);
    FontFace* matchUncached(const CanvasFontFamily& family, int weight, CanvasFontStyle style, double stretch);

    std::uint64_t nextId_ = 1;
    LruCache<std::string, std::unique_ptr<FontSet>> sets_{64};
    // Font matching is the slow part of resolving a font; its answers are kept.
    LruCache<std::string, FontFace*> families_{512};
    LruCache<std::uint64_t, FontFace*> fallbacks_{1024};
    // Faces stay open for the process's life: there are only as many as installed fonts.
    std::vector<std::pair<std::string, std::unique_ptr<FontFace>>> faces_;
};
