#pragma once

#include <cstdint>
#include <memory>
#include <optional>

class Document;
class Node;

// A place between two characters of a text, or between an element's children, that a point in
// the viewport stands for: where a click there puts the caret.
struct CaretPosition {
    std::shared_ptr<Node> offsetNode;
    std::uint32_t offset = 0;
};

// The caret position nearest to (x, y) in the box drawn there: in its text, on the line
// closest to the point, at the caret index nearest to it. The box's element itself (offset 0)
// when it holds no text; nothing for a point outside the viewport.
std::optional<CaretPosition> caretPositionFromPoint(const Document& document, double x, double y);
