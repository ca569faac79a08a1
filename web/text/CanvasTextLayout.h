#pragma once

#include "web/text/CanvasText.h"

#include <cstdint>
#include <memory>
#include <string_view>
#include <vector>

struct ShapedText;
class FontFace;

// One line of text laid out as canvas text is: shaped, in visual order, with its spacing,
// split into directional runs. Positions are in pixels from the line's left edge; indices are
// UTF-16 code units, as scripts count them. measureText() keeps one in the metrics it returns,
// so that their methods can answer questions about ranges and positions.
class CanvasTextLayout {
public:
    CanvasTextLayout(std::string_view utf8, const CanvasTextStyle& style);
    // Shares the context's style instead of copying it.
    CanvasTextLayout(std::string_view utf8, std::shared_ptr<const CanvasTextStyle> style);

    const CanvasTextStyle& style() const { return *style_; }
    const ShapedText& shaped() const { return *shaped_; }
    const FontFace* primaryFace() const { return primary_; }
    std::uint32_t length() const;
    double width() const { return width_; }
    // The primary face's ascent and descent in pixels, rounded as the reference rounds them.
    double fontAscent() const;
    double fontDescent() const;

    // A cluster's characters and its cell (advance and the spacing after it).
    struct Cluster {
        std::uint32_t from = 0, to = 0;
        double left = 0, right = 0;
        bool rtl = false;
        bool control = false;  // only bidi controls: no ink, no width, never hit
        std::uint32_t run = 0;  // the shaping run, for the order clusters are reported in
        // A ligature of several characters is split evenly between them for carets.
        std::uint32_t graphemes = 1;
        const std::uint32_t* boundaries = nullptr;  // the graphemes - 1 offsets between them
    };
    // Every cluster, left to right.
    const std::vector<Cluster>& clusters() const;

    // The caret index nearest to `x` (before the left end, the index there; past the right end,
    // the index there). Where runs of both directions meet, the index of the side running in
    // the paragraph's direction wins, as a browser's hit test has it.
    std::uint32_t indexAtOffset(double x) const;

    // The horizontal spans a selection of [from, to) covers, left to right: one per directional
    // run the range touches. A collapsed range gives a caret (a span of no width) in each run
    // that has its position; a position inside a cluster widens to the whole cluster.
    struct Span {
        double left = 0, right = 0;
    };
    std::vector<Span> selectionSpans(std::uint32_t from, std::uint32_t to) const;

private:
    struct Run {
        std::uint32_t from = 0, to = 0;
        double left = 0, right = 0;
        bool rtl = false;
        std::size_t firstCluster = 0, endCluster = 0;  // into clusters(), left to right
    };
    const std::vector<Run>& runs() const;
    double caretX(const Run& run, std::uint32_t index, bool towardsEnd) const;
    static double caretInCluster(const Cluster& cluster, std::uint32_t index, bool towardsEnd);

    std::shared_ptr<const CanvasTextStyle> style_;
    std::shared_ptr<const ShapedText> shaped_;
    const FontFace* primary_ = nullptr;
    double width_ = 0;
    // Made on first use: measuring text needs neither.
    mutable std::vector<Cluster> clusters_;
    mutable std::vector<Run> runs_;
    mutable bool built_ = false;
};
