#include "web/text/CanvasTextLayout.h"

#include "web/text/TextGeometry.h"

#include <algorithm>

using namespace text_geometry;

CanvasTextLayout::CanvasTextLayout(std::string_view utf8, const CanvasTextStyle& style)
    : CanvasTextLayout(utf8, std::make_shared<const CanvasTextStyle>(style))
{
}

CanvasTextLayout::CanvasTextLayout(std::string_view utf8, std::shared_ptr<const CanvasTextStyle> style)
    : style_(std::move(style))
{
    Layout layout = layOut(utf8, *style_);
    shaped_ = std::move(layout.shaped);
    primary_ = layout.primary;
    width_ = layout.width;
}

std::uint32_t CanvasTextLayout::length() const
{
    return shaped_->length;
}

double CanvasTextLayout::fontAscent() const
{
    return verticalMetrics(primary_, style_->font.size).ascent;
}

double CanvasTextLayout::fontDescent() const
{
    return verticalMetrics(primary_, style_->font.size).descent;
}

const std::vector<CanvasTextLayout::Cluster>& CanvasTextLayout::clusters() const
{
    runs();
    return clusters_;
}

const std::vector<CanvasTextLayout::Run>& CanvasTextLayout::runs() const
{
    if (built_)
        return runs_;
    built_ = true;
    clusters_.reserve(shaped_->clusters.size());
    for (const ShapedCluster& shaped : shaped_->clusters) {
        const ClusterCell at = cell(shaped, *style_);
        const Cluster cluster{shaped.from, shaped.to, at.left, at.right, (shaped.level & 1) != 0, shaped.control,
                              shaped.run, shaped.graphemes,
                              shaped.graphemes > 1 ? &shaped_->graphemeBoundaries[shaped.firstBoundary] : nullptr};
        // A run is what reads in one direction: neighbours of one direction whose characters
        // follow each other in reading order.
        const bool continues = !runs_.empty() && cluster.rtl == runs_.back().rtl
            && (cluster.rtl ? cluster.to == runs_.back().from : cluster.from == runs_.back().to);
        if (continues) {
            Run& run = runs_.back();
            run.from = std::min(run.from, cluster.from);
            run.to = std::max(run.to, cluster.to);
            run.right = cluster.right;
            run.endCluster = clusters_.size() + 1;
        } else {
            runs_.push_back({cluster.from, cluster.to, cluster.left, cluster.right, cluster.rtl, clusters_.size(),
                             clusters_.size() + 1});
        }
        clusters_.push_back(cluster);
    }
    return runs_;
}

// Where the caret before `index` stands in the cluster holding it. An index inside a
// character the reader sees as one (a surrogate pair, a letter and its marks) moves to its
// start, or to its end when `towardsEnd`.
double CanvasTextLayout::caretInCluster(const Cluster& cluster, std::uint32_t index, bool towardsEnd)
{
    std::uint32_t step = 0;  // how many of the cluster's characters lie before the caret
    std::uint32_t start = cluster.from;
    for (; step + 1 < cluster.graphemes && cluster.boundaries[step] <= index; ++step)
        start = cluster.boundaries[step];
    if (index > start && towardsEnd)
        ++step;
    const double part = (cluster.right - cluster.left) * step / cluster.graphemes;
    return cluster.rtl ? cluster.right - part : cluster.left + part;
}

// Where the caret before `index` stands in the run.
double CanvasTextLayout::caretX(const Run& run, std::uint32_t index, bool towardsEnd) const
{
    if (index >= run.to)
        return run.rtl ? run.left : run.right;
    for (std::size_t i = run.firstCluster; i < run.endCluster; ++i) {
        const Cluster& cluster = clusters_[i];
        if (index >= cluster.from && index < cluster.to)
            return caretInCluster(cluster, index, towardsEnd);
    }
    return run.rtl ? run.right : run.left;
}

std::uint32_t CanvasTextLayout::indexAtOffset(double x) const
{
    const std::vector<Cluster>& all = clusters();
    // The visible cluster the point falls in; the first or the last one for points before or
    // past the text.
    std::size_t hit = all.size();
    for (std::size_t i = 0; i < all.size(); ++i) {
        if (all[i].control)
            continue;
        hit = i;
        if (x < all[i].right)
            break;
    }
    if (hit == all.size())
        return 0;
    const Cluster& cluster = all[hit];
    // The character hit (a ligature's characters share its width evenly), counted from the
    // left, and its nearer edge, also counted from the left; halfway goes left.
    const std::uint32_t count = cluster.graphemes;
    const double width = cluster.right - cluster.left;
    const double part = width / count;
    const double along = std::clamp(x - cluster.left, 0.0, width);
    const std::uint32_t k = part > 0 ? std::min(count - 1, static_cast<std::uint32_t>(along / part)) : 0;
    const std::uint32_t edge = along <= part * (k + 0.5) ? k : k + 1;
    const std::uint32_t reading = cluster.rtl ? count - edge : edge;
    const std::uint32_t own = reading == 0 ? cluster.from : reading == count ? cluster.to : cluster.boundaries[reading - 1];
    // Where runs of both directions meet, the index on the side that reads in the paragraph's
    // direction wins.
    const bool paragraphRtl = style_->direction == CanvasDirection::Rtl;
    if (cluster.rtl == paragraphRtl || (edge != 0 && edge != count))
        return own;
    const bool left = edge == 0;
    if ((left && hit == 0) || (!left && hit + 1 >= all.size()))
        return own;
    const Cluster& neighbour = all[left ? hit - 1 : hit + 1];
    if (neighbour.rtl != paragraphRtl)
        return own;
    return left == neighbour.rtl ? neighbour.from : neighbour.to;
}

std::vector<CanvasTextLayout::Span> CanvasTextLayout::selectionSpans(std::uint32_t from, std::uint32_t to) const
{
    // A range whose end comes first is collapsed at its end, as a DOM range is.
    from = std::min(from, to);
    std::vector<Span> spans;
    for (const Run& run : runs()) {
        std::uint32_t start = std::max(from, run.from), end = std::min(to, run.to);
        if (from == to) {
            if (from < run.from || from > run.to)
                continue;
        } else if (start >= end) {
            continue;
        }
        const double a = caretX(run, start, false), b = caretX(run, end, true);
        spans.push_back({std::min(a, b), std::max(a, b)});
    }
    return spans;
}
