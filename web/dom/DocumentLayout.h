#pragma once

#include "web/dom/InlineLayout.h"
#include "web/geometry/DOMRectReadOnly.h"

#include <cstddef>
#include <optional>
#include <vector>

class Document;
class Element;
class Text;

// The size of the view a document is laid out in, in CSS pixels.
inline constexpr double kViewportWidth = 800;
inline constexpr double kViewportHeight = 600;

// An element's box: where its border edge lies in the viewport.
struct LayoutBox {
    const Element* element = nullptr;
    DOMRectReadOnly borderBox;
    bool block = true;       // a block box (else an inline element's span on its line)
    bool positioned = false; // taken out of the flow: drawn over the boxes in it
    std::optional<std::size_t> parent;  // the box of the nearest ancestor that has one
};

// A small layout of a document, made anew for each question (scripts change the tree between
// any two): blocks one below the other in the viewport (the body with its 8px margin),
// each block's inline content on one line, absolutely positioned boxes at the place they would
// have in the flow, as wide as their content. Elements nested deeper than a browser would lay
// out get no box.
class DocumentLayout {
public:
    explicit DocumentLayout(const Document& document);

    // Boxes in tree order (an element before its descendants).
    const std::vector<LayoutBox>& boxes() const { return boxes_; }
    // Text on lines, in tree order.
    const std::vector<TextFragment>& fragments() const { return fragments_; }

    // The element's box, or null when it has none (not in the document, display none).
    const LayoutBox* boxOf(const Element& element) const;
    // Where the text node stands, or null when it is not on any line.
    const TextFragment* fragmentOf(const Text& text) const;

    // The box drawn topmost at a point (positioned boxes over the flow, descendants over their
    // ancestors), or nothing outside every box.
    std::optional<std::size_t> boxAt(double x, double y) const;
    // Whether `box` is `ancestor` or inside it.
    bool isInside(std::size_t box, std::size_t ancestor) const;

private:
    friend class DocumentLayoutBuilder;
    std::vector<LayoutBox> boxes_;
    std::vector<TextFragment> fragments_;
};
