#include "web/dom/Range.h"

#include "web/dom/Document.h"
#include "web/dom/DocumentLayout.h"
#include "web/text/CanvasTextLayout.h"

#include <algorithm>
#include <cmath>
#include <unordered_set>

namespace {

// Where a UTF-16 offset falls in UTF-8 text (an offset inside a surrogate pair moves past it).
std::size_t utf8Offset(std::string_view utf8, std::uint32_t utf16)
{
    std::size_t i = 0;
    for (std::uint32_t units = 0; i < utf8.size() && units < utf16; ++i) {
        const auto c = static_cast<unsigned char>(utf8[i]);
        if ((c & 0xC0) != 0x80)
            units += c >= 0xF0 ? 2 : 1;
    }
    while (i < utf8.size() && (static_cast<unsigned char>(utf8[i]) & 0xC0) == 0x80)
        ++i;
    return i;
}

std::uint32_t indexInParent(const Node& node)
{
    const auto& siblings = node.parentPointer()->children();
    for (std::size_t i = 0; i < siblings.size(); ++i)
        if (siblings[i].get() == &node)
            return std::uint32_t(i);
    return 0;
}

// A boundary point as the child indices down from the top of its tree, then its offset:
// compared lexicographically, these order boundary points as the tree does. The document's
// one child, the root element, is its child 0.
using TreePosition = std::vector<std::uint32_t>;

TreePosition pathTo(const Node* node)
{
    TreePosition path;
    if (!node)
        return path;
    for (const Node* at = node; at->parentPointer(); at = at->parentPointer())
        path.push_back(indexInParent(*at));
    if (node->isConnected())
        path.push_back(0);
    std::reverse(path.begin(), path.end());
    return path;
}

TreePosition positionOf(const Range::BoundaryPoint& point)
{
    TreePosition path = pathTo(point.node.get());
    path.push_back(point.offset);
    return path;
}

std::string offsetError(const char* method, std::uint32_t offset, std::uint32_t length)
{
    return std::string("Failed to execute '") + method + "' on 'Range': The offset " + std::to_string(offset)
        + " is larger than the node's length (" + std::to_string(length) + ").";
}

} // namespace

std::uint32_t nodeLength(const Node& node)
{
    if (node.isElement())
        return std::uint32_t(static_cast<const Element&>(node).children().size());
    std::uint32_t units = 0;
    for (unsigned char c : static_cast<const Text&>(node).data())
        if ((c & 0xC0) != 0x80)
            units += c >= 0xF0 ? 2 : 1;
    return units;
}

Range::Range(std::weak_ptr<const Document> document)
    : document_(std::move(document))
    , documentIdentity_(document_.lock().get())
{
}

bool Range::collapsed() const
{
    return start_.node == end_.node && start_.offset == end_.offset;
}

const void* Range::rootOf(const BoundaryPoint& point) const
{
    if (!point.node)
        return documentIdentity_;
    if (const Document* document = point.node->document())
        return document;
    return &point.node->root();
}

bool Range::isIn(const Document* document) const
{
    return document && rootOf(start_) == document;
}

std::shared_ptr<Node> Range::commonAncestorContainer() const
{
    if (!start_.node || !end_.node)
        return nullptr;
    for (Node* at = start_.node.get(); at; at = at->parentPointer()) {
        const bool holdsEnd = at == end_.node.get()
            || (at->isElement() && static_cast<const Element*>(at)->contains(*end_.node));
        if (holdsEnd)
            return at->shared_from_this();
    }
    return nullptr;
}

ExceptionOr<void> Range::checkOffset(const char* method, const Node* node, std::uint32_t offset) const
{
    const std::uint32_t length = node ? nodeLength(*node) : 1;
    if (offset > length)
        return DOMException{"IndexSizeError", offsetError(method, offset, length)};
    return {};
}

ExceptionOr<void> Range::setStart(std::shared_ptr<Node> node, std::uint32_t offset)
{
    if (auto check = checkOffset("setStart", node.get(), offset); check.isException())
        return check;
    BoundaryPoint point{std::move(node), offset};
    if (rootOf(point) != rootOf(end_) || positionOf(point) > positionOf(end_))
        end_ = point;
    start_ = std::move(point);
    return {};
}

ExceptionOr<void> Range::setEnd(std::shared_ptr<Node> node, std::uint32_t offset)
{
    if (auto check = checkOffset("setEnd", node.get(), offset); check.isException())
        return check;
    BoundaryPoint point{std::move(node), offset};
    if (rootOf(point) != rootOf(start_) || positionOf(point) < positionOf(start_))
        start_ = point;
    end_ = std::move(point);
    return {};
}

void Range::collapse(bool toStart)
{
    if (toStart)
        end_ = start_;
    else
        start_ = end_;
}

ExceptionOr<void> Range::selectNode(const std::shared_ptr<Node>& node)
{
    Element* parent = node->parentPointer();
    if (!parent)
        return DOMException{"InvalidNodeTypeError", "Failed to execute 'selectNode' on 'Range': the given Node has no parent."};
    const std::uint32_t index = indexInParent(*node);
    auto parentNode = parent->shared_from_this();
    start_ = {parentNode, index};
    end_ = {parentNode, index + 1};
    return {};
}

void Range::selectNodeContents(const std::shared_ptr<Node>& node)
{
    start_ = {node, 0};
    end_ = {node, nodeLength(*node)};
}

void Range::forEachSelected(const TextVisitor& onText, const ElementVisitor& onElement) const
{
    // The walk goes from the start to the end in tree order, so that it costs what the range
    // holds and not what the document does, however deep or wide the tree.
    struct Level {
        const Element* element;
        std::size_t next;  // the child visited next
    };
    std::vector<Level> stack;
    const Node* first = nullptr;  // a node to visit before going on with the stack
    if (!start_.node) {
        auto document = document_.lock();
        if (!document || start_.offset > 0)
            return;
        first = document->documentElement().get();
    } else if (start_.node->isText()) {
        first = start_.node.get();
    } else {
        stack.push_back({static_cast<const Element*>(start_.node.get()), start_.offset});
    }
    if (!end_.node && end_.offset == 0)
        return;
    // The stack holds the ancestors of where the walk starts, each at its next child.
    const Node* below = first ? first : start_.node.get();
    for (const Element* parent = below->parentPointer(); parent && start_.node; parent = parent->parentPointer()) {
        stack.insert(stack.begin(), {parent, indexInParent(*below) + std::size_t(1)});
        below = parent;
    }
    // Elements holding the end are not held whole; the walk stops where the end is.
    std::unordered_set<const Node*> holdingEnd;
    for (const Node* at = end_.node.get(); at; at = at->parentPointer())
        holdingEnd.insert(at);
    const Element* heldRoot = nullptr;  // the element held whole that the walk is inside

    auto visit = [&](const Node& node) {
        if (node.isText()) {
            const auto& text = static_cast<const Text&>(node);
            const std::uint32_t length = nodeLength(text);
            const std::uint32_t from = &node == start_.node.get() ? std::min(start_.offset, length) : 0;
            const std::uint32_t to = &node == end_.node.get() ? std::min(end_.offset, length) : length;
            if (from <= to)
                onText(text, from, to);
            return;
        }
        const auto& element = static_cast<const Element&>(node);
        if (!heldRoot && !holdingEnd.count(&element)) {
            onElement(element);
            heldRoot = &element;
        }
        stack.push_back({&element, 0});
    };

    if (first) {
        visit(*first);
        if (first == end_.node.get())
            return;
    }
    while (!stack.empty()) {
        Level& level = stack.back();
        const auto& children = level.element->children();
        const bool atEnd = level.element == end_.node.get() && level.next >= end_.offset;
        if (atEnd || level.next >= children.size()) {
            if (atEnd)
                return;
            if (level.element == heldRoot)
                heldRoot = nullptr;
            stack.pop_back();
            continue;
        }
        const Node& child = *children[level.next++];
        visit(child);
        if (&child == end_.node.get() && child.isText())
            return;
    }
}

std::string Range::toString() const
{
    std::string out;
    forEachSelected(
        [&](const Text& text, std::uint32_t from, std::uint32_t to) {
            const std::string& data = text.data();
            const std::size_t a = utf8Offset(data, from), b = utf8Offset(data, to);
            out.append(data, a, b - a);
        },
        [](const Element&) {});
    return out;
}

std::vector<DOMRectReadOnly> Range::getClientRects() const
{
    std::vector<DOMRectReadOnly> rects;
    const Document* document = start_.node ? start_.node->document() : document_.lock().get();
    if (!document)
        return rects;
    const DocumentLayout layout(*document);
    forEachSelected(
        [&](const Text& text, std::uint32_t from, std::uint32_t to) {
            const TextFragment* fragment = layout.fragmentOf(text);
            if (!fragment)
                return;
            const std::uint32_t prefix = fragment->prefix;
            for (const CanvasTextLayout::Span& span : fragment->line->selectionSpans(from + prefix, to + prefix))
                rects.emplace_back(fragment->left + span.left, fragment->top, span.right - span.left, fragment->height);
        },
        [&](const Element& element) {
            if (const LayoutBox* box = layout.boxOf(element))
                rects.push_back(box->borderBox);
        });
    return rects;
}

DOMRectReadOnly Range::getBoundingClientRect() const
{
    double left = INFINITY, top = INFINITY, right = -INFINITY, bottom = -INFINITY;
    for (const DOMRectReadOnly& rect : getClientRects()) {
        left = std::min(left, rect.left());
        top = std::min(top, rect.top());
        right = std::max(right, rect.right());
        bottom = std::max(bottom, rect.bottom());
    }
    return left <= right ? DOMRectReadOnly(left, top, right - left, bottom - top) : DOMRectReadOnly();
}
