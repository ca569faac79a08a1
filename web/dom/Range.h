#pragma once

#include "web/dom/ExceptionOr.h"
#include "web/geometry/DOMRectReadOnly.h"

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <vector>

class Document;
class Element;
class Node;
class Text;

// A node's length as ranges count it: a text's UTF-16 code units, an element's children.
std::uint32_t nodeLength(const Node& node);

// A range of a document's tree between two boundary points. A boundary point without a node
// stands in the document itself, whose one child is the root element. The points do not follow
// later changes to the tree: a point whose offset outgrew its node reads as the node's end.
class Range {
public:
    struct BoundaryPoint {
        std::shared_ptr<Node> node;  // null: the document
        std::uint32_t offset = 0;
    };

    // A range collapsed at the start of the document.
    explicit Range(std::weak_ptr<const Document> document);

    const BoundaryPoint& start() const { return start_; }
    const BoundaryPoint& end() const { return end_; }
    bool collapsed() const;
    // The deepest node holding both ends; null for the document.
    std::shared_ptr<Node> commonAncestorContainer() const;

    // IndexSizeError for an offset past the node's length. An end before the start, or in
    // another tree, collapses the range at the new point, as it does the other way round.
    ExceptionOr<void> setStart(std::shared_ptr<Node> node, std::uint32_t offset);
    ExceptionOr<void> setEnd(std::shared_ptr<Node> node, std::uint32_t offset);
    void collapse(bool toStart);
    // InvalidNodeTypeError for a node without a parent.
    ExceptionOr<void> selectNode(const std::shared_ptr<Node>& node);
    void selectNodeContents(const std::shared_ptr<Node>& node);

    // The text the range holds, in tree order.
    std::string toString() const;
    // Where the range shows in the document's layout: for every text it touches, the boxes a
    // selection of that part highlights; for every element it holds whole (but not its
    // parent), the element's box. Empty when the range is not in a document.
    std::vector<DOMRectReadOnly> getClientRects() const;
    // The union of those boxes (an empty rectangle at the origin when there are none).
    DOMRectReadOnly getBoundingClientRect() const;

    // Whether the range's boundary points lie in `document`'s tree (compared, never used).
    bool isIn(const Document* document) const;

private:
    using TextVisitor = std::function<void(const Text&, std::uint32_t from, std::uint32_t to)>;
    using ElementVisitor = std::function<void(const Element&)>;
    // Calls `onText` for each text node the range touches, with the part it covers, and
    // `onElement` for each element the range holds whole whose parent it does not.
    void forEachSelected(const TextVisitor& onText, const ElementVisitor& onElement) const;
    ExceptionOr<void> checkOffset(const char* method, const Node* node, std::uint32_t offset) const;
    const void* rootOf(const BoundaryPoint& point) const;

    std::weak_ptr<const Document> document_;
    const Document* documentIdentity_;  // for telling trees apart only
    BoundaryPoint start_, end_;
};
