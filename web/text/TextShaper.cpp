#include "web/text/TextShaper.h"

#include "web/text/LruCache.h"

#include <glib.h>
#include <hb.h>
#include <pango/pango.h>

#include <algorithm>
#include <string>

namespace {

std::u32string decodeUtf8(std::string_view text)
{
    std::u32string out;
    out.reserve(std::min(text.size(), kMaximumTextLength));
    std::size_t i = 0;
    while (i < text.size() && out.size() < kMaximumTextLength) {
        const auto byte = static_cast<unsigned char>(text[i]);
        int length = 0;
        char32_t c = 0, minimum = 0;
        if (byte < 0x80) {
            out += byte;
            ++i;
            continue;
        } else if ((byte & 0xE0) == 0xC0) {
            length = 2, c = byte & 0x1F, minimum = 0x80;
        } else if ((byte & 0xF0) == 0xE0) {
            length = 3, c = byte & 0x0F, minimum = 0x800;
        } else if ((byte & 0xF8) == 0xF0) {
            length = 4, c = byte & 0x07, minimum = 0x10000;
        }
        int taken = 1;
        bool valid = length > 0;
        for (; valid && taken < length; ++taken) {
            if (i + taken >= text.size() || (static_cast<unsigned char>(text[i + taken]) & 0xC0) != 0x80) {
                valid = false;
                break;
            }
            c = (c << 6) | (static_cast<unsigned char>(text[i + taken]) & 0x3F);
        }
        if (valid && (c < minimum || c > 0x10FFFF || (c >= 0xD800 && c <= 0xDFFF)))
            valid = false;
        out += valid ? c : U'\uFFFD';
        i += valid ? length : std::max(taken, 1);
    }
    return out;
}

// ASCII white space becomes a space before layout, as canvas text requires.
void replaceWhitespace(std::u32string& text)
{
    for (char32_t& c : text) {
        if (c == '\t' || c == '\n' || c == '\f' || c == '\r')
            c = ' ';
    }
}

bool mayNeedBidi(const std::u32string& text)
{
    return std::any_of(text.begin(), text.end(), [](char32_t c) { return c >= 0x0590; });
}

// Embedding levels per character by the Unicode bidirectional algorithm.
std::vector<std::uint8_t> bidiLevels(const std::u32string& text, bool rtl)
{
    std::vector<std::uint8_t> levels(text.size(), 0);
    if (text.empty() || (!rtl && !mayNeedBidi(text)))
        return levels;
    glong written = 0;
    gchar* utf8 = g_ucs4_to_utf8(reinterpret_cast<const gunichar*>(text.data()), static_cast<glong>(text.size()),
                                 nullptr, &written, nullptr);
    if (!utf8)
        return levels;
    PangoDirection direction = rtl ? PANGO_DIRECTION_RTL : PANGO_DIRECTION_LTR;
    guint8* computed = pango_log2vis_get_embedding_levels(utf8, static_cast<int>(written), &direction);
    if (computed) {
        std::copy(computed, computed + text.size(), levels.begin());
        g_free(computed);
    }
    g_free(utf8);
    return levels;
}

bool isEmbeddingControl(char32_t c)
{
    return c >= 0x202A && c <= 0x202E;
}

// The embedding and override controls take the level of the text they open or close onto
// (the next other character; at the end the paragraph's), as browsers lay them out: an
// override's opening mark then sits with the text it overrides.
void levelEmbeddingControls(const std::u32string& text, std::vector<std::uint8_t>& levels, bool rtl)
{
    std::uint8_t next = rtl ? 1 : 0;
    for (std::size_t i = text.size(); i-- > 0;) {
        if (isEmbeddingControl(text[i]))
            levels[i] = next;
        else
            next = levels[i];
    }
}

// Characters that belong to the cluster before them and so stay in its face.
bool joinsPrevious(char32_t c)
{
    return g_unichar_ismark(c) || c == 0x200C || c == 0x200D || (c >= 0xFE00 && c <= 0xFE0F)
        || (c >= 0xE0100 && c <= 0xE01EF);
}

bool isWordSeparator(char32_t c)
{
    return c == ' ' || c == 0xA0;
}

// Invisible formatting characters (directional overrides, joiners) take no letter spacing.
bool isFormatCharacter(char32_t c)
{
    return g_unichar_type(c) == G_UNICODE_FORMAT;
}

// Where each character starts in UTF-16 code units, and the text's length at the end.
std::vector<std::uint32_t> utf16Offsets(const std::u32string& text)
{
    std::vector<std::uint32_t> offsets(text.size() + 1);
    std::uint32_t offset = 0;
    for (std::size_t i = 0; i < text.size(); ++i) {
        offsets[i] = offset;
        offset += text[i] >= 0x10000 ? 2 : 1;
    }
    offsets[text.size()] = offset;
    return offsets;
}

// Letters of joined scripts are not spaced apart: it would break their joins.
bool isCursive(hb_script_t script)
{
    switch (script) {
    case HB_SCRIPT_ARABIC:
    case HB_SCRIPT_SYRIAC:
    case HB_SCRIPT_MONGOLIAN:
    case HB_SCRIPT_NKO:
    case HB_SCRIPT_MANDAIC:
    case HB_SCRIPT_PHAGS_PA:
    case HB_SCRIPT_HANIFI_ROHINGYA:
        return true;
    default:
        return false;
    }
}

struct Run {
    std::size_t start, end;
    FontFace* face;
    bool smallCaps;
    std::uint8_t level;
};

// Orders runs left to right: from the highest level down to the lowest odd one, every
// maximal sequence at that level or above is reversed.
void reorderRuns(std::vector<Run>& runs)
{
    if (runs.empty())
        return;
    std::uint8_t highest = 0, lowestOdd = 255;
    for (const Run& run : runs) {
        highest = std::max(highest, run.level);
        if (run.level & 1)
            lowestOdd = std::min(lowestOdd, run.level);
    }
    for (int level = highest; level >= lowestOdd && level > 0; --level) {
        for (std::size_t i = 0; i < runs.size();) {
            if (runs[i].level < level) {
                ++i;
                continue;
            }
            std::size_t j = i;
            while (j < runs.size() && runs[j].level >= level)
                ++j;
            std::reverse(runs.begin() + static_cast<long>(i), runs.begin() + static_cast<long>(j));
            i = j;
        }
    }
}

// Finds the boundaries between user-perceived characters inside clusters of several
// characters: carets may stand there, splitting a ligature's advance evenly.
void findGraphemes(const std::u32string& text, const std::vector<std::pair<std::size_t, std::size_t>>& spans,
                   const std::vector<std::uint32_t>& offsets, ShapedText& result)
{
    glong written = 0;
    gchar* utf8 = g_ucs4_to_utf8(reinterpret_cast<const gunichar*>(text.data()), static_cast<glong>(text.size()),
                                 nullptr, &written, nullptr);
    if (!utf8)
        return;
    std::vector<PangoLogAttr> attrs(text.size() + 1);
    pango_get_log_attrs(utf8, static_cast<int>(written), -1, pango_language_from_string("en"), attrs.data(),
                        static_cast<int>(attrs.size()));
    g_free(utf8);
    for (std::size_t c = 0; c < result.clusters.size(); ++c) {
        const auto [from, to] = spans[c];
        ShapedCluster& cluster = result.clusters[c];
        cluster.firstBoundary = static_cast<std::uint32_t>(result.graphemeBoundaries.size());
        for (std::size_t i = from + 1; i < to; ++i) {
            if (attrs[i].is_cursor_position) {
                result.graphemeBoundaries.push_back(offsets[i]);
                ++cluster.graphemes;
            }
        }
    }
}

ShapedText shape(std::string_view utf8, FontSet& fonts, bool rtl, CanvasFontKerning kerning, bool letterSpaced)
{
    ShapedText result;
    std::u32string text = decodeUtf8(utf8);
    replaceWhitespace(text);
    const std::vector<std::uint32_t> offsets = utf16Offsets(text);
    result.length = offsets.back();
    if (text.empty() || !fonts.primary())
        return result;
    std::vector<std::uint8_t> levels = bidiLevels(text, rtl);
    levelEmbeddingControls(text, levels, rtl);

    // What is shaped: the text, with lower-case letters raised when small capitals are made up.
    std::u32string shaped = text;
    std::vector<Run> runs;
    FontFace* previousFace = nullptr;
    for (std::size_t i = 0; i < text.size(); ++i) {
        bool smallCaps = false;
        if (fonts.syntheticSmallCaps() && g_unichar_islower(text[i])) {
            const char32_t upper = g_unichar_toupper(text[i]);
            if (upper != text[i]) {
                shaped[i] = upper;
                smallCaps = true;
            }
        }
        const bool joins = previousFace && joinsPrevious(text[i]);
        FontFace* face = joins ? previousFace : fonts.faceFor(shaped[i]);
        if (!face)
            return result;
        // A mark stays with its letter, a made-up small capital included.
        if (joins)
            smallCaps = runs.back().smallCaps;
        previousFace = face;
        // Browsers shape word by word, a space on its own: nothing kerns or joins across one.
        const bool wordBreak = i > 0 && (text[i] == ' ' || text[i - 1] == ' ');
        if (!runs.empty() && !wordBreak && runs.back().face == face && runs.back().smallCaps == smallCaps
            && runs.back().level == levels[i])
            runs.back().end = i + 1;
        else
            runs.push_back({i, i + 1, face, smallCaps, levels[i]});
    }
    reorderRuns(runs);

    std::vector<hb_feature_t> features;
    if (kerning == CanvasFontKerning::None)
        features.push_back({HB_TAG('k', 'e', 'r', 'n'), 0, HB_FEATURE_GLOBAL_START, HB_FEATURE_GLOBAL_END});
    if (letterSpaced) {
        // Letter-spaced text is never joined into ligatures.
        for (hb_tag_t tag : {HB_TAG('l', 'i', 'g', 'a'), HB_TAG('c', 'l', 'i', 'g'), HB_TAG('d', 'l', 'i', 'g')})
            features.push_back({tag, 0, HB_FEATURE_GLOBAL_START, HB_FEATURE_GLOBAL_END});
    }

    hb_buffer_t* buffer = hb_buffer_create();
    double pen = 0, smallPen = 0;
    std::uint32_t letterGaps = 0, wordGaps = 0;
    // Each cluster's characters, and whether any cluster has several.
    std::vector<std::pair<std::size_t, std::size_t>> spans;
    spans.reserve(text.size());
    result.clusters.reserve(text.size());
    result.glyphs.reserve(text.size());
    bool severalCharacters = false;
    for (std::size_t r = 0; r < runs.size(); ++r) {
        const Run& run = runs[r];
        hb_buffer_clear_contents(buffer);
        hb_buffer_add_utf32(buffer, reinterpret_cast<const std::uint32_t*>(shaped.data()),
                            static_cast<int>(shaped.size()), static_cast<unsigned>(run.start),
                            static_cast<int>(run.end - run.start));
        hb_buffer_set_direction(buffer, (run.level & 1) ? HB_DIRECTION_RTL : HB_DIRECTION_LTR);
        hb_buffer_guess_segment_properties(buffer);
        const bool spaced = !isCursive(hb_buffer_get_script(buffer));
        hb_shape(run.face->hbFont(), buffer, features.data(), static_cast<unsigned>(features.size()));

        unsigned count = 0;
        const hb_glyph_info_t* infos = hb_buffer_get_glyph_infos(buffer, &count);
        const hb_glyph_position_t* positions = hb_buffer_get_glyph_positions(buffer, &count);
        const double unit = 1 / run.face->unitsPerEm();
        const bool rtlRun = run.level & 1;
        // Glyphs come left to right; those of one cluster are neighbours. In a right-to-left
        // run a cluster's characters end where the cluster to its left begins.
        for (unsigned first = 0; first < count;) {
            unsigned last = first + 1;
            while (last < count && infos[last].cluster == infos[first].cluster)
                ++last;
            const std::size_t from = infos[first].cluster;
            std::size_t to = run.end;
            if (rtlRun && first > 0)
                to = infos[first - 1].cluster;
            else if (!rtlRun && last < count)
                to = infos[last].cluster;
            ShapedCluster cluster;
            cluster.from = offsets[from];
            cluster.to = offsets[std::max(to, from + 1)];
            cluster.level = run.level;
            cluster.run = static_cast<std::uint32_t>(r);
            spans.emplace_back(from, std::max(to, from + 1));
            severalCharacters |= to > from + 1;
            cluster.x = pen;
            cluster.smallX = smallPen;
            cluster.letterGaps = letterGaps;
            cluster.wordGaps = wordGaps;
            for (unsigned g = first; g < last; ++g) {
                ShapedGlyph glyph;
                glyph.face = run.face;
                glyph.glyph = infos[g].codepoint;
                glyph.smallCap = run.smallCaps;
                glyph.x = pen;
                glyph.smallX = smallPen;
                (run.smallCaps ? glyph.smallX : glyph.x) += positions[g].x_offset * unit;
                (run.smallCaps ? glyph.smallY : glyph.y) = positions[g].y_offset * unit;
                glyph.letterGaps = letterGaps;
                glyph.wordGaps = wordGaps;
                glyph.cluster = static_cast<std::uint32_t>(result.clusters.size());
                result.glyphs.push_back(glyph);
                (run.smallCaps ? smallPen : pen) += positions[g].x_advance * unit;
            }
            cluster.advance = pen - cluster.x;
            cluster.smallAdvance = smallPen - cluster.smallX;
            cluster.control = std::all_of(text.begin() + static_cast<long>(from),
                                          text.begin() + static_cast<long>(std::max(to, from + 1)), isFormatCharacter);
            cluster.letterGap = spaced && !cluster.control;
            cluster.wordGap = isWordSeparator(text[from]);
            letterGaps += cluster.letterGap;
            wordGaps += cluster.wordGap;
            result.clusters.push_back(cluster);
            first = last;
        }
    }
    hb_buffer_destroy(buffer);
    if (severalCharacters)
        findGraphemes(text, spans, offsets, result);
    result.advance = pen;
    result.smallAdvance = smallPen;
    result.letterGaps = letterGaps;
    result.wordGaps = wordGaps;
    return result;
}

// Canvas text worth remembering is short (levels, labels); longer text is shaped each time.
constexpr std::size_t kCachedTextLength = 128;

LruCache<std::string, std::shared_ptr<const ShapedText>>& shapedTextCache()
{
    static LruCache<std::string, std::shared_ptr<const ShapedText>> cache(512);
    return cache;
}

} // namespace

std::shared_ptr<const ShapedText> shapeText(std::string_view utf8, FontSet& fonts, bool rtl,
                                            CanvasFontKerning kerning, bool letterSpaced)
{
    if (utf8.size() > kCachedTextLength)
        return std::make_shared<const ShapedText>(shape(utf8, fonts, rtl, kerning, letterSpaced));
    std::string key = std::to_string(fonts.id());
    key += rtl ? 'r' : 'l';
    key += static_cast<char>('0' + static_cast<int>(kerning));
    key += letterSpaced ? 's' : '-';
    key += '|';
    key += utf8;
    auto& cache = shapedTextCache();
    if (auto* cached = cache.find(key))
        return *cached;
    return cache.insert(key, std::make_shared<const ShapedText>(shape(utf8, fonts, rtl, kerning, letterSpaced)));
}

void clearShapedTextCache()
{
    shapedTextCache().clear();
}
