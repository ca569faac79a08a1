#pragma once

#include "web/dom/ExceptionOr.h"
#include "web/geometry/DOMRectReadOnly.h"
#include "web/text/TextCluster.h"

#include <cstdint>
#include <memory>
#include <vector>

class CanvasTextLayout;

// The result of measureText(), in CSS pixels. Horizontal values are relative to the
// alignment point, vertical values to the baseline chosen by textBaseline (positive
// ascent values lie above it, positive descent values below).
struct TextMetrics {
    double width = 0;
    double actualBoundingBoxLeft = 0;
    double actualBoundingBoxRight = 0;
    double fontBoundingBoxAscent = 0;
    double fontBoundingBoxDescent = 0;
    double actualBoundingBoxAscent = 0;
    double actualBoundingBoxDescent = 0;
    double emHeightAscent = 0;
    double emHeightDescent = 0;
    double hangingBaseline = 0;
    double alphabeticBaseline = 0;
    double ideographicBaseline = 0;

    // The measured text as laid out, with the style it was measured in; what the methods
    // below answer from. Null in metrics made by hand, which then behave as an empty text's.
    std::shared_ptr<const CanvasTextLayout> layout;

    // Indices count UTF-16 code units, as scripts do; rectangles and offsets are relative to
    // the alignment point and the baseline, as the attributes are.

    // The ink box of the clusters that begin in [start, end): IndexSizeError unless start <
    // length and end <= length.
    ExceptionOr<DOMRectReadOnly> getActualBoundingBox(std::uint32_t start, std::uint32_t end) const;
    // The boxes a selection of [start, end) highlights, one per directional run, as tall as
    // the font's ascent and descent: IndexSizeError when start or end exceeds the length.
    ExceptionOr<std::vector<DOMRectReadOnly>> getSelectionRects(std::uint32_t start, std::uint32_t end) const;
    // The caret index nearest to the offset: TypeError for a non-finite offset.
    ExceptionOr<std::uint32_t> getIndexFromOffset(double offset) const;
    // The clusters of the text, or of those touching [start, end) (IndexSizeError unless
    // start < length and end <= length), in reading order, positioned for the options' align
    // and baseline (the measured ones by default).
    std::vector<TextCluster> getTextClusters(const TextClusterOptions& options = {}) const;
    ExceptionOr<std::vector<TextCluster>> getTextClusters(std::uint32_t start, std::uint32_t end,
                                                          const TextClusterOptions& options = {}) const;
};
