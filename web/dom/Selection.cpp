#include "web/dom/Selection.h"

#include "web/dom/Range.h"

ExceptionOr<std::shared_ptr<Range>> Selection::getRangeAt(std::uint32_t index) const
{
    if (index >= rangeCount())
        return DOMException{"IndexSizeError", "Failed to execute 'getRangeAt' on 'Selection': " + std::to_string(index)
                                                  + " is not a valid index."};
    return range_;
}

void Selection::addRange(std::shared_ptr<Range> range)
{
    if (range_ || !range || !range->isIn(document_))
        return;
    range_ = std::move(range);
}

ExceptionOr<void> Selection::removeRange(const Range& range)
{
    if (range_.get() != &range)
        return DOMException{"NotFoundError", "Failed to execute 'removeRange' on 'Selection': The given range isn't in "
                                             "document."};
    range_.reset();
    return {};
}

std::string Selection::type() const
{
    if (!range_)
        return "None";
    return range_->collapsed() ? "Caret" : "Range";
}

bool Selection::isCollapsed() const
{
    return !range_ || range_->collapsed();
}

std::string Selection::toString() const
{
    return range_ ? range_->toString() : std::string();
}
