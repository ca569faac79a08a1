#include "web/dom/CaretPosition.h"

#include "web/dom/Document.h"
#include "web/dom/DocumentLayout.h"
#include "web/dom/Range.h"
#include "web/text/CanvasTextLayout.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace {

// How far a value lies outside [low, high].
double distanceOutside(double value, double low, double high)
{
    return value < low ? low - value : value > high ? value - high : 0;
}

} // namespace

std::optional<CaretPosition> caretPositionFromPoint(const Document& document, double x, double y)
{
    if (!std::isfinite(x) || !std::isfinite(y) || x < 0 || y < 0 || x > kViewportWidth || y > kViewportHeight)
        return std::nullopt;
    const DocumentLayout layout(document);
    if (layout.boxes().empty())
        return std::nullopt;
    // Outside every box, the point belongs to the root's.
    std::size_t hit = layout.boxAt(x, y).value_or(0);
    // Text lies on the lines of blocks: an inline element's point is its block's.
    while (!layout.boxes()[hit].block && layout.boxes()[hit].parent)
        hit = *layout.boxes()[hit].parent;

    // The text in the box nearest to the point: its line first, then along the line.
    const TextFragment* nearest = nullptr;
    std::pair<double, double> best{INFINITY, INFINITY};
    for (const TextFragment& fragment : layout.fragments()) {
        if (!layout.isInside(fragment.box, hit))
            continue;
        const std::pair<double, double> distance{distanceOutside(y, fragment.top, fragment.top + fragment.height),
                                                 distanceOutside(x, fragment.left, fragment.right())};
        if (distance < best) {
            best = distance;
            nearest = &fragment;
        }
    }
    if (!nearest) {
        const Element* element = layout.boxes()[hit].element;
        return CaretPosition{const_cast<Element*>(element)->shared_from_this(), 0};
    }
    const Text& text = *nearest->text;
    // Indices of the line are the node's offsets behind the controls unicode-bidi put before it.
    const std::uint32_t index = nearest->line->indexAtOffset(x - nearest->left);
    const std::uint32_t offset = std::min(index - std::min(index, nearest->prefix), nodeLength(text));
    return CaretPosition{const_cast<Text&>(text).shared_from_this(), offset};
}
