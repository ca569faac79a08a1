#pragma once

#include "web/geometry/DOMRectReadOnly.h"
#include "web/script/Binding.h"

#include <memory>
#include <vector>

class Document;
class Range;
class Selection;

namespace script {

class Realm;

// Members that answer from the document's layout, joined to the interfaces they belong to:
// Element's getBoundingClientRect and getClientRects; Document's createRange,
// caretPositionFromPoint and getSelection.
std::vector<Member> elementLayoutMembers();
std::vector<Member> documentLayoutMembers();
// window.getSelection().
void installGetSelection(Realm& realm);

// A list of rectangles scripts may edit (getClientRects): an array of DOMRect, each element the
// same object every time it is read.
JSValueRef rectList(const Call& call, const std::vector<DOMRectReadOnly>& rects);

// The wrapper of a range or a selection: the same object for as long as it lives.
JSObjectRef wrapRange(Realm& realm, const std::shared_ptr<Range>& range);
JSObjectRef wrapSelection(Realm& realm, const std::shared_ptr<Selection>& selection);
// The range a value wraps, or null.
std::shared_ptr<Range> rangeOf(const Call& call, JSValueRef value);

// The document scripts see, for ranges to keep (they never keep it alive).
std::weak_ptr<const Document> currentDocument(const Call& call);

// The members of `first` followed by those of `second`.
inline std::vector<Member> joinMembers(std::vector<Member> first, const std::vector<Member>& second)
{
    first.insert(first.end(), second.begin(), second.end());
    return first;
}

} // namespace script
