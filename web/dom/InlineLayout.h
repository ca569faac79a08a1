#pragma once

#include "web/geometry/DOMRectReadOnly.h"
#include "web/text/CanvasTextStyle.h"

#include <cstddef>
#include <memory>
#include <optional>
#include <string>
#include <vector>

class CanvasTextLayout;
class Element;
class Text;
struct ComputedStyle;

// A document's text runs through the same line model as canvas text: what a range selects
// and where a click lands agree with what measureText() says of the same text in the same style.
CanvasTextStyle textStyleOf(const ComputedStyle& style);

// One text node's place on its line. Positions are in the viewport's pixels.
struct TextFragment {
    const Text* text = nullptr;
    std::shared_ptr<const CanvasTextLayout> line;
    double left = 0;    // the text's left edge
    double top = 0;     // the top of its ascent: where its selection is drawn
    double height = 0;  // ascent and descent
    // The code units the line holds before the node's text: the directional controls that
    // stand for its element's unicode-bidi. Node offsets are line indices less this.
    std::uint32_t prefix = 0;
    std::size_t box = 0;  // the block box whose line holds it, in DocumentLayout::boxes()

    double right() const;
};

// An inline element's place: the union of what it holds on the line.
struct InlineBoxPlacement {
    const Element* element = nullptr;
    DOMRectReadOnly rect;
};

// The inline content of a block (its text and its inline elements' text, canvases and images)
// on one line: no wrapping, white space kept as it is. Items go from the line's start in the
// block's direction, and the line is placed in the block's content box by text-align.
class InlineLine {
public:
    // Adds the children of `parent` (whose style is `parentStyle`) from `first` up to (not
    // including) `end`, descending into inline elements no deeper than `depthLeft` levels.
    void add(const Element& parent, const ComputedStyle& parentStyle, const ComputedStyle& rootStyle, std::size_t first,
             std::size_t end, unsigned depthLeft);
    bool empty() const { return items_.empty(); }
    // The width the content takes without wrapping.
    double naturalWidth() const;

    struct Placed {
        std::vector<TextFragment> fragments;
        std::vector<InlineBoxPlacement> inlineBoxes;
        double height = 0;
    };
    // Places the line at the top of the content box of `block` (left, top, width), whose text
    // fragments are credited to `boxIndex`.
    Placed place(const ComputedStyle& blockStyle, double left, double top, double width, std::size_t boxIndex) const;

private:
    struct Item {
        const Text* text = nullptr;  // a text run, else an atomic box (a canvas, an image)
        std::shared_ptr<const CanvasTextLayout> line;
        std::uint32_t prefix = 0;
        double width = 0;
        double height = 0;      // the line height it asks for
        double textHeight = 0;  // ascent and descent, for text
    };
    struct OpenInline {
        const Element* element;
        std::size_t firstItem, endItem;
    };
    void addText(const Text& text, const ComputedStyle& style);
    void addAtomic(const Element& element, const ComputedStyle& style);

    std::vector<Item> items_;
    std::vector<OpenInline> inlines_;
};

// Whether an element takes part in a line rather than making a block: display inline and its
// kin, and not taken out of the flow by absolute positioning.
bool isInlineLevel(const ComputedStyle& style);

// A computed width or height in px ("12px", "0"); nothing for "auto" and percentages.
std::optional<double> pixelLength(const std::string& value);
