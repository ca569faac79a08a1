#include "web/text/TextMetrics.h"

#include "web/text/CanvasTextLayout.h"
#include "web/text/TextGeometry.h"

#include <algorithm>
#include <cmath>
#include <string>

using namespace text_geometry;

namespace {

DOMException indexSizeError(const char* method, const char* which, std::uint32_t value, std::uint32_t bound,
                            bool orEqual)
{
    return {"IndexSizeError", std::string("Failed to execute '") + method + "' on 'TextMetrics': The " + which
                                  + " provided (" + std::to_string(value) + ") is greater than "
                                  + (orEqual ? "or equal to " : "") + "the maximum bound (" + std::to_string(bound)
                                  + ")."};
}

// The checks of the methods that name characters: start must name one, end may be the length.
std::optional<DOMException> checkCharacterRange(const char* method, std::uint32_t start, std::uint32_t end,
                                                std::uint32_t length)
{
    if (start >= length)
        return indexSizeError(method, "start", start, length, true);
    if (end > length)
        return indexSizeError(method, "end", end, length, false);
    return std::nullopt;
}

struct Anchor {
    double x = 0;         // the alignment point, from the text's left edge
    double baseline = 0;  // how far below the anchor the alphabetic baseline lies
};

Anchor anchorOf(const CanvasTextLayout& layout)
{
    const CanvasTextStyle& style = layout.style();
    const VerticalMetrics v = verticalMetrics(layout.primaryFace(), style.font.size);
    return {alignOffset(style.align, style.direction, layout.width()), baselineOffset(style.baseline, v)};
}

} // namespace

ExceptionOr<DOMRectReadOnly> TextMetrics::getActualBoundingBox(std::uint32_t start, std::uint32_t end) const
{
    const std::uint32_t length = layout ? layout->length() : 0;
    if (auto error = checkCharacterRange("getActualBoundingBox", start, end, length))
        return *error;
    // The glyphs of the clusters that begin in the range; without any, an empty box at the
    // text's start on the baseline.
    const ShapedText& shaped = layout->shaped();
    auto inRange = [&](const ShapedGlyph& glyph) {
        const std::uint32_t from = shaped.clusters[glyph.cluster].from;
        return from >= start && from < end;
    };
    const Anchor anchor = anchorOf(*layout);
    const auto first = std::find_if(shaped.glyphs.begin(), shaped.glyphs.end(), inRange);
    if (first == shaped.glyphs.end())
        return DOMRectReadOnly(-anchor.x, anchor.baseline, 0, 0);
    const InkBox ink = inkBox(shaped, layout->style(), inRange);
    // Glyphs without ink (spaces) give an empty box where the first of them stands.
    if (ink.empty)
        return DOMRectReadOnly(place(*first, layout->style()).x - anchor.x, anchor.baseline, 0, 0);
    return DOMRectReadOnly(ink.left - anchor.x, ink.top + anchor.baseline, ink.right - ink.left, ink.bottom - ink.top);
}

ExceptionOr<std::vector<DOMRectReadOnly>> TextMetrics::getSelectionRects(std::uint32_t start, std::uint32_t end) const
{
    const std::uint32_t length = layout ? layout->length() : 0;
    if (start > length)
        return indexSizeError("getSelectionRects", "start", start, length, false);
    if (end > length)
        return indexSizeError("getSelectionRects", "end", end, length, false);
    std::vector<DOMRectReadOnly> rects;
    if (!layout)
        return rects;
    const Anchor anchor = anchorOf(*layout);
    const double top = -(layout->fontAscent() - anchor.baseline);
    const double height = layout->fontAscent() + layout->fontDescent();
    for (const CanvasTextLayout::Span& span : layout->selectionSpans(start, end))
        rects.emplace_back(span.left - anchor.x, top, span.right - span.left, height);
    return rects;
}

ExceptionOr<std::uint32_t> TextMetrics::getIndexFromOffset(double offset) const
{
    if (!std::isfinite(offset))
        return DOMException{"TypeError", "The provided double value is non-finite."};
    if (!layout)
        return 0u;
    return layout->indexAtOffset(offset + anchorOf(*layout).x);
}

std::vector<TextCluster> TextMetrics::getTextClusters(const TextClusterOptions& options) const
{
    if (!layout || layout->length() == 0)
        return {};
    return getTextClusters(0, layout->length(), options).releaseValue();
}

ExceptionOr<std::vector<TextCluster>> TextMetrics::getTextClusters(std::uint32_t start, std::uint32_t end,
                                                                   const TextClusterOptions& options) const
{
    const std::uint32_t length = layout ? layout->length() : 0;
    if (auto error = checkCharacterRange("getTextClusters", start, end, length))
        return *error;
    const CanvasTextStyle& style = layout->style();
    const Anchor anchor = anchorOf(*layout);
    // Without options the clusters stand as the measured text did, its align made physical.
    const CanvasTextAlign align = options.align.value_or(physicalAlign(style.align, style.direction));
    const CanvasTextBaseline baseline = options.baseline.value_or(style.baseline);
    const VerticalMetrics v = verticalMetrics(layout->primaryFace(), style.font.size);
    const double y = anchor.baseline - baselineOffset(baseline, v);

    const CanvasTextAlign physical = physicalAlign(align, style.direction);
    std::vector<TextCluster> clusters;
    auto add = [&](const CanvasTextLayout::Cluster& cell) {
        // Bidi controls are no clusters of their own: nothing of them shows.
        if (cell.control || cell.from >= end || cell.to <= start)
            return;
        double x = cell.left;
        if (physical == CanvasTextAlign::Right)
            x = cell.right;
        else if (physical == CanvasTextAlign::Center)
            x = (cell.left + cell.right) / 2;
        clusters.push_back({x - anchor.x, y, cell.from, cell.to, align, baseline, layout});
    };
    // Shaping runs from left to right, the clusters of each in reading order, as the reference
    // browser lists them.
    const std::vector<CanvasTextLayout::Cluster>& cells = layout->clusters();
    for (std::size_t first = 0, next; first < cells.size(); first = next) {
        next = first + 1;
        while (next < cells.size() && cells[next].run == cells[first].run)
            ++next;
        if (cells[first].rtl) {
            for (std::size_t i = next; i-- > first;)
                add(cells[i]);
        } else {
            for (std::size_t i = first; i < next; ++i)
                add(cells[i]);
        }
    }
    return clusters;
}
