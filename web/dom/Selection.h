#pragma once

#include "web/dom/ExceptionOr.h"

#include <cstdint>
#include <memory>
#include <string>

class Document;
class Range;

// A document's selection: no range, or one range the page chose (addRange) and keeps editing.
class Selection {
public:
    // `document` only tells which ranges belong to it; it is never used beyond that.
    explicit Selection(const Document* document) : document_(document) {}

    std::uint32_t rangeCount() const { return range_ ? 1 : 0; }
    // IndexSizeError for any index but 0 of a selection with a range.
    ExceptionOr<std::shared_ptr<Range>> getRangeAt(std::uint32_t index) const;
    // Takes the range unless the selection has one already or it lies outside the document.
    void addRange(std::shared_ptr<Range> range);
    // NotFoundError unless `range` is the selection's range.
    ExceptionOr<void> removeRange(const Range& range);
    void removeAllRanges() { range_.reset(); }

    const std::shared_ptr<Range>& range() const { return range_; }
    // "None", "Caret" or "Range".
    std::string type() const;
    bool isCollapsed() const;
    std::string toString() const;

private:
    const Document* document_;
    std::shared_ptr<Range> range_;
};
