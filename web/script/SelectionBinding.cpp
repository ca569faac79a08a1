#include "web/dom/Document.h"
#include "web/dom/Range.h"
#include "web/dom/Selection.h"
#include "web/script/Bindings.h"
#include "web/script/ElementBindings.h"
#include "web/script/LayoutBindings.h"
#include "web/script/Realm.h"

namespace script {

namespace {

constexpr const InterfaceDefinition& S = selectionInterface;

JSValueRef nodeOrNull(const Call& call, const Selection& selection, bool atStart)
{
    const auto& range = selection.range();
    if (!range)
        return call.null();
    const Range::BoundaryPoint& point = atStart ? range->start() : range->end();
    return point.node ? JSValueRef(wrapNode(call.realm(), point.node)) : JSValueRef(call.realm().document());
}

double offsetOf(const Selection& selection, bool atStart)
{
    const auto& range = selection.range();
    return range ? (atStart ? range->start() : range->end()).offset : 0;
}

std::shared_ptr<Range> rangeArgument(const Call& call, const char* member)
{
    auto range = rangeOf(call, call.arg(0));
    if (!range)
        call.throwTypeError(std::string("Failed to execute '") + member
                            + "' on 'Selection': parameter 1 is not of type 'Range'.");
    return range;
}

JSValueRef getSelection(JSContextRef ctx, JSObjectRef, JSObjectRef thisObject, std::size_t argc, const JSValueRef argv[],
                        JSValueRef* exception)
{
    return detail::boundary(ctx, exception, [&]() -> JSValueRef {
        Call call(ctx, thisObject, argc, argv);
        return wrapSelection(call.realm(), documentOf(call).selection());
    });
}

} // namespace

JSObjectRef wrapSelection(Realm& realm, const std::shared_ptr<Selection>& selection)
{
    return realm.wrapCached(selectionInterface, selection, selection.get());
}

void installGetSelection(Realm& realm)
{
    JSContextRef ctx = realm.context();
    JSString name("getSelection");
    JSObjectRef function = JSObjectMakeFunctionWithCallback(ctx, name.get(), getSelection);
    realm.defineValue(function, makeString(ctx, "length"), JSValueMakeNumber(ctx, 0), false, false, true);
    realm.defineValue(realm.global(), makeString(ctx, "getSelection"), function, true, true, true);
}

// The selection's direction is always forwards: its anchor is its range's start.
InterfaceDefinition selectionInterface = {
    .name = "Selection",
    .members = {
        readonlyAttribute<S, "anchorNode">([](Call& call, Selection& s) { return nodeOrNull(call, s, true); }),
        readonlyAttribute<S, "anchorOffset">([](Call&, Selection& s) { return offsetOf(s, true); }),
        readonlyAttribute<S, "focusNode">([](Call& call, Selection& s) { return nodeOrNull(call, s, false); }),
        readonlyAttribute<S, "focusOffset">([](Call&, Selection& s) { return offsetOf(s, false); }),
        readonlyAttribute<S, "isCollapsed">([](Call&, Selection& s) { return s.isCollapsed(); }),
        readonlyAttribute<S, "rangeCount">([](Call&, Selection& s) { return double(s.rangeCount()); }),
        readonlyAttribute<S, "type">([](Call&, Selection& s) { return s.type(); }),
        operation<S, "getRangeAt", 1>([](Call& call, Selection& s) {
            return wrapRange(call.realm(), call.check(s.getRangeAt(call.toUnsignedLong(call.arg(0)))));
        }),
        operation<S, "addRange", 1>([](Call& call, Selection& s) { s.addRange(rangeArgument(call, "addRange")); }),
        operation<S, "removeRange", 1>([](Call& call, Selection& s) {
            call.check(s.removeRange(*rangeArgument(call, "removeRange")));
        }),
        operation<S, "removeAllRanges", 0>([](Call&, Selection& s) { s.removeAllRanges(); }),
        operation<S, "empty", 0>([](Call&, Selection& s) { s.removeAllRanges(); }),
        operation<S, "toString", 0>([](Call&, Selection& s) { return s.toString(); }),
    },
};

} // namespace script
