#pragma once

#include "web/text/CanvasTextStyle.h"

#include <cstdint>
#include <memory>
#include <optional>

class CanvasTextLayout;
typedef struct _cairo cairo_t;

// The TextClusterOptions dictionary: what getTextClusters() positions clusters for, and what
// fillTextCluster() and strokeTextCluster() use instead of the cluster's own values.
struct TextClusterOptions {
    std::optional<CanvasTextAlign> align;
    std::optional<CanvasTextBaseline> baseline;
    std::optional<double> x;
    std::optional<double> y;
};

// A cluster of measured text: its characters [start, end) and the point (x, y) from which it
// draws with its align and baseline, relative to the anchor the text was measured from. It
// keeps the laid out text, so it draws with the font it was measured in.
struct TextCluster {
    double x = 0;
    double y = 0;
    std::uint32_t start = 0;
    std::uint32_t end = 0;
    CanvasTextAlign align = CanvasTextAlign::Left;
    CanvasTextBaseline baseline = CanvasTextBaseline::Alphabetic;
    std::shared_ptr<const CanvasTextLayout> layout;
};

// Adds the outlines of the cluster's glyphs to cr's path, in cr's user space, placed as
// fillTextCluster() places them: the cluster's point (or the options' x and y) is taken from
// (x, y), and the glyphs stand at it by the cluster's (or the options') align and baseline.
// Non-finite coordinates add nothing.
void appendTextClusterPath(cairo_t* cr, const TextCluster& cluster, double x, double y,
                           const TextClusterOptions& options, TextPathUse use = TextPathUse::Outline);
