#include "web/dom/Document.h"
#include "web/dom/Range.h"
#include "web/script/Bindings.h"
#include "web/script/ElementBindings.h"
#include "web/script/LayoutBindings.h"
#include "web/script/Realm.h"
#include "web/script/RectBinding.h"

namespace script {

namespace {

constexpr const InterfaceDefinition& R = rangeInterface;

// A boundary point's node: null stands for the document.
JSValueRef containerValue(const Call& call, const std::shared_ptr<Node>& node)
{
    return node ? JSValueRef(wrapNode(call.realm(), node)) : JSValueRef(call.realm().document());
}

// A Node argument; the document is the null node.
std::shared_ptr<Node> nodeArgument(const Call& call, std::size_t index, const char* member)
{
    if (auto node = nodeOf(call, call.arg(index)))
        return node;
    if (JSValueIsStrictEqual(call.ctx(), call.arg(index), call.realm().document()))
        return nullptr;
    call.throwTypeError(std::string("Failed to execute '") + member + "' on 'Range': parameter " + std::to_string(index + 1)
                        + " is not of type 'Node'.");
}

std::shared_ptr<Node> elementOrTextArgument(const Call& call, const char* member)
{
    auto node = nodeArgument(call, 0, member);
    if (!node)
        call.throwException({"InvalidNodeTypeError", std::string("Failed to execute '") + member
                                                         + "' on 'Range': The node provided is a document."});
    return node;
}

JSObjectRef constructRange(Call& call)
{
    return wrapRange(call.realm(), std::make_shared<Range>(currentDocument(call)));
}

} // namespace

std::weak_ptr<const Document> currentDocument(const Call& call)
{
    const Wrapper* wrapper = Call::wrapperOf(call.ctx(), call.realm().document());
    if (!wrapper)
        return {};
    return std::static_pointer_cast<const Document>(wrapper->object);
}

JSObjectRef wrapRange(Realm& realm, const std::shared_ptr<Range>& range)
{
    return realm.wrapCached(rangeInterface, range, range.get());
}

std::shared_ptr<Range> rangeOf(const Call& call, JSValueRef value)
{
    const Wrapper* wrapper = Call::wrapperOf(call.ctx(), value);
    if (!wrapper || !wrapper->interface->inherits(rangeInterface))
        return nullptr;
    return std::static_pointer_cast<Range>(wrapper->object);
}

JSValueRef rectList(const Call& call, const std::vector<DOMRectReadOnly>& rects)
{
    std::vector<JSValueRef> values;
    values.reserve(rects.size());
    for (const DOMRectReadOnly& rect : rects)
        values.push_back(wrapRect(call.realm(), rect));
    JSValueRef exception = nullptr;
    JSObjectRef list = JSObjectMakeArray(call.ctx(), values.size(), values.data(), &exception);
    rethrowIf(exception);
    return list;
}

InterfaceDefinition rangeInterface = {
    .name = "Range",
    .constructor = &constructRange,
    .members = {
        constant("START_TO_START", 0),
        constant("START_TO_END", 1),
        constant("END_TO_END", 2),
        constant("END_TO_START", 3),
        readonlyAttribute<R, "startContainer">([](Call& call, Range& range) { return containerValue(call, range.start().node); }),
        readonlyAttribute<R, "startOffset">([](Call&, Range& range) { return double(range.start().offset); }),
        readonlyAttribute<R, "endContainer">([](Call& call, Range& range) { return containerValue(call, range.end().node); }),
        readonlyAttribute<R, "endOffset">([](Call&, Range& range) { return double(range.end().offset); }),
        readonlyAttribute<R, "collapsed">([](Call&, Range& range) { return range.collapsed(); }),
        readonlyAttribute<R, "commonAncestorContainer">([](Call& call, Range& range) {
            return containerValue(call, range.commonAncestorContainer());
        }),
        operation<R, "setStart", 2>([](Call& call, Range& range) {
            auto node = nodeArgument(call, 0, "setStart");
            call.check(range.setStart(std::move(node), call.toUnsignedLong(call.arg(1))));
        }),
        operation<R, "setEnd", 2>([](Call& call, Range& range) {
            auto node = nodeArgument(call, 0, "setEnd");
            call.check(range.setEnd(std::move(node), call.toUnsignedLong(call.arg(1))));
        }),
        operation<R, "collapse", 0>([](Call& call, Range& range) { range.collapse(call.boolean(0)); }),
        operation<R, "selectNode", 1>([](Call& call, Range& range) {
            call.check(range.selectNode(elementOrTextArgument(call, "selectNode")));
        }),
        operation<R, "selectNodeContents", 1>([](Call& call, Range& range) {
            range.selectNodeContents(elementOrTextArgument(call, "selectNodeContents"));
        }),
        operation<R, "cloneRange", 0>([](Call& call, Range& range) {
            return wrapRange(call.realm(), std::make_shared<Range>(range));
        }),
        operation<R, "detach", 0>([](Call&, Range&) {}),
        operation<R, "getClientRects", 0>([](Call& call, Range& range) { return rectList(call, range.getClientRects()); }),
        operation<R, "getBoundingClientRect", 0>([](Call& call, Range& range) {
            return wrapRect(call.realm(), range.getBoundingClientRect());
        }),
        operation<R, "toString", 0>([](Call&, Range& range) { return range.toString(); }),
    },
};

} // namespace script
