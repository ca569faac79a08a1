#pragma once

#include "platform/web/text/CanvasFont.h"
#include "platform/web/text/FontFace.h"
#include "platform/web/text/LruCache.h"

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

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
    int width_ = 100;
    bool smallCaps_ = false;
    LruCache<char32_t, FontFace*> fallback_{256};
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

    FontFace* fallbackFace(char32_t c, int fcWeight, int fcSlant, int fcWidth);

private:
    FontSelector() = default;
    FontFace* face(const std::string& file, int index, bool syntheticBold, bool syntheticItalic);

    std::uint64_t nextId_ = 1;
    LruCache<std::string, std::unique_ptr<FontSet>> sets_{64};
    // Faces stay open for the process's life: there are only as many as installed fonts.
    std::vector<std::pair<std::string, std::unique_ptr<FontFace>>> faces_;
};
