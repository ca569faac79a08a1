#include "web/dom/CaretPosition.h"
#include "web/dom/Document.h"
#include "web/dom/DocumentLayout.h"
#include "web/dom/Range.h"
#include "web/script/Bindings.h"
#include "web/script/ElementBindings.h"
#include "web/script/LayoutBindings.h"
#include "web/script/Realm.h"
#include "web/script/RectBinding.h"

namespace script {

namespace {

// Where the receiver's box is: nothing for an element that has none.
std::optional<DOMRectReadOnly> borderBoxOf(const Call& call)
{
    auto element = elementOf(call, call.thisObject());
    Document* document = element ? element->document() : nullptr;
    if (!document)
        return std::nullopt;
    const DocumentLayout layout(*document);
    const LayoutBox* box = layout.boxOf(*element);
    return box ? std::optional<DOMRectReadOnly>(box->borderBox) : std::nullopt;
}

} // namespace

InterfaceDefinition caretPositionInterface = {
    .name = "CaretPosition",
    .members = {
        readonlyAttribute<caretPositionInterface, "offsetNode">([](Call& call, CaretPosition& position) {
            return JSValueRef(wrapNode(call.realm(), position.offsetNode));
        }),
        readonlyAttribute<caretPositionInterface, "offset">([](Call&, CaretPosition& position) {
            return double(position.offset);
        }),
        operation<caretPositionInterface, "getClientRect", 0>([](Call& call, CaretPosition& position) -> JSValueRef {
            Range caret(currentDocument(call));
            if (caret.setStart(position.offsetNode, position.offset).isException())
                return call.null();
            const auto rects = caret.getClientRects();
            return rects.empty() ? call.null() : JSValueRef(wrapRect(call.realm(), rects.front()));
        }),
    },
};

std::vector<Member> elementLayoutMembers()
{
    return {
        operation<elementInterface, "getBoundingClientRect", 0>([](Call& call, const Wrapper&) {
            return wrapRect(call.realm(), borderBoxOf(call).value_or(DOMRectReadOnly()));
        }),
        operation<elementInterface, "getClientRects", 0>([](Call& call, const Wrapper&) {
            std::vector<DOMRectReadOnly> rects;
            if (auto box = borderBoxOf(call))
                rects.push_back(*box);
            return rectList(call, rects);
        }),
    };
}

std::vector<Member> documentLayoutMembers()
{
    return {
        operation<documentInterface, "createRange", 0>([](Call& call, Document&) {
            return wrapRange(call.realm(), std::make_shared<Range>(currentDocument(call)));
        }),
        operation<documentInterface, "caretPositionFromPoint", 2>([](Call& call, Document& document) -> JSValueRef {
            auto [x, y] = call.numbers<2>();
            auto position = caretPositionFromPoint(document, x, y);
            if (!position)
                return call.null();
            return call.realm().wrap(caretPositionInterface, std::make_shared<CaretPosition>(std::move(*position)));
        }),
        operation<documentInterface, "getSelection", 0>([](Call& call, Document& document) {
            return wrapSelection(call.realm(), document.selection());
        }),
    };
}

} // namespace script
