#include "web/dom/DocumentLayout.h"

#include "web/dom/ComputedStyle.h"
#include "web/dom/Document.h"

#include <algorithm>
#include <cmath>

namespace {

// How deep boxes nest before the rest of a tree is left out, as browsers stop somewhere too:
// a script can nest elements as deep as it likes, and layout walks down by recursion.
constexpr unsigned kMaxDepth = 256;

bool isPositioned(const ComputedStyle& style)
{
    return style.position == "absolute" || style.position == "fixed";
}

// What a block's content needs: its height and the width it takes without wrapping.
struct Flow {
    double height = 0;
    double naturalWidth = 0;
};

} // namespace

class DocumentLayoutBuilder {
public:
    DocumentLayoutBuilder(DocumentLayout& out, const ComputedStyle& rootStyle) : out_(out), root_(rootStyle) {}

    // Lays out a block whose border box starts at (x, y) and is `width` wide.
    Flow layOutBlock(const Element& element, const ComputedStyle& style, double x, double y, double width,
                     std::optional<std::size_t> parent, bool layered, unsigned depth)
    {
        const std::size_t index = out_.boxes_.size();
        out_.boxes_.push_back({&element, {}, true, layered, parent});
        const auto& padding = style.padding;
        const double contentWidth = std::max(0.0, width - padding[1] - padding[3]);
        const Flow inner = layOutChildren(element, style, x + padding[3], y + padding[0], contentWidth, index, layered, depth);
        const double height = pixelLength(style.height).value_or(inner.height) + padding[0] + padding[2];
        out_.boxes_[index].borderBox = DOMRectReadOnly(x, y, width, height);
        return {height, inner.naturalWidth + padding[1] + padding[3]};
    }

private:
    Flow layOutChildren(const Element& element, const ComputedStyle& style, double left, double top, double width,
                        std::size_t boxIndex, bool layered, unsigned depth)
    {
        Flow flow;
        double cursor = top;
        double pendingMargin = 0;  // the bottom margin of the block before, collapsing with the next
        std::optional<std::size_t> runStart;
        const auto& children = element.children();

        auto flushLine = [&](std::size_t end) {
            if (!runStart)
                return;
            InlineLine line;
            line.add(element, style, root_, *runStart, end, kMaxDepth - depth);
            runStart.reset();
            if (line.empty())
                return;
            cursor += pendingMargin;
            pendingMargin = 0;
            InlineLine::Placed placed = line.place(style, left, cursor, width, boxIndex);
            for (TextFragment& fragment : placed.fragments)
                out_.fragments_.push_back(std::move(fragment));
            for (const InlineBoxPlacement& box : placed.inlineBoxes)
                out_.boxes_.push_back({box.element, box.rect, false, layered, boxIndex});
            cursor += placed.height;
            flow.naturalWidth = std::max(flow.naturalWidth, line.naturalWidth());
        };

        for (std::size_t i = 0; i < children.size(); ++i) {
            if (children[i]->isText()) {
                runStart = runStart.value_or(i);
                continue;
            }
            const auto& child = static_cast<const Element&>(*children[i]);
            const ComputedStyle childStyle = computeChildStyle(child, style, &root_);
            if (childStyle.display == "none" || isInlineLevel(childStyle)) {
                if (childStyle.display != "none")
                    runStart = runStart.value_or(i);
                continue;
            }
            flushLine(i);
            if (depth + 1 >= kMaxDepth)
                continue;
            const auto& margin = childStyle.margin;
            if (isPositioned(childStyle)) {
                layOutPositioned(child, childStyle, left, cursor + pendingMargin, width, style.direction == "rtl",
                                 boxIndex, depth + 1);
                continue;
            }
            cursor += std::max(pendingMargin, margin[0]);
            const double boxWidth = borderWidth(childStyle).value_or(std::max(0.0, width - margin[1] - margin[3]));
            const Flow child_ = layOutBlock(child, childStyle, left + margin[3], cursor, boxWidth, boxIndex, layered, depth + 1);
            cursor += child_.height;
            pendingMargin = margin[2];
            flow.naturalWidth = std::max(flow.naturalWidth, child_.naturalWidth + margin[1] + margin[3]);
        }
        flushLine(children.size());
        flow.height = cursor + pendingMargin - top;
        return flow;
    }

    // An absolutely positioned box without offsets stands where it would in the flow, at the
    // start edge of its container, and is as wide as its content.
    void layOutPositioned(const Element& element, const ComputedStyle& style, double left, double top,
                          double containerWidth, bool containerRtl, std::size_t parent, unsigned depth)
    {
        const auto& margin = style.margin;
        const double available = std::max(0.0, kViewportWidth - left - margin[1] - margin[3]);
        double width = 0;
        if (auto fixed = borderWidth(style)) {
            width = *fixed;
        } else {
            // Laid out once to learn the content's width, then for good at that width.
            const std::size_t boxes = out_.boxes_.size(), fragments = out_.fragments_.size();
            width = std::min(layOutBlock(element, style, 0, 0, available, parent, true, depth).naturalWidth, available);
            out_.boxes_.resize(boxes);
            out_.fragments_.resize(fragments);
        }
        const double x = containerRtl ? left + containerWidth - margin[1] - width : left + margin[3];
        layOutBlock(element, style, x, top + margin[0], width, parent, true, depth);
    }

    // A width in px makes the border box that much wider than the padding.
    static std::optional<double> borderWidth(const ComputedStyle& style)
    {
        auto width = pixelLength(style.width);
        if (!width)
            return std::nullopt;
        return *width + style.padding[1] + style.padding[3];
    }

    DocumentLayout& out_;
    const ComputedStyle& root_;
};

DocumentLayout::DocumentLayout(const Document& document)
{
    const Element& html = *document.documentElement();
    const ComputedStyle rootStyle = computeChildStyle(html, ComputedStyle{}, nullptr);
    if (rootStyle.display == "none")
        return;
    DocumentLayoutBuilder builder(*this, rootStyle);
    const auto& margin = rootStyle.margin;
    builder.layOutBlock(html, rootStyle, margin[3], margin[0], std::max(0.0, kViewportWidth - margin[1] - margin[3]),
                        std::nullopt, false, 0);
}

const LayoutBox* DocumentLayout::boxOf(const Element& element) const
{
    for (const LayoutBox& box : boxes_)
        if (box.element == &element)
            return &box;
    return nullptr;
}

const TextFragment* DocumentLayout::fragmentOf(const Text& text) const
{
    for (const TextFragment& fragment : fragments_)
        if (fragment.text == &text)
            return &fragment;
    return nullptr;
}

std::optional<std::size_t> DocumentLayout::boxAt(double x, double y) const
{
    auto contains = [&](const LayoutBox& box) {
        const DOMRectReadOnly& r = box.borderBox;
        return x >= r.left() && x < r.right() && y >= r.top() && y < r.bottom();
    };
    for (bool layered : {true, false}) {
        for (std::size_t i = boxes_.size(); i-- > 0;)
            if (boxes_[i].positioned == layered && contains(boxes_[i]))
                return i;
    }
    return std::nullopt;
}

bool DocumentLayout::isInside(std::size_t box, std::size_t ancestor) const
{
    for (std::optional<std::size_t> at = box; at; at = boxes_[*at].parent)
        if (*at == ancestor)
            return true;
    return false;
}
