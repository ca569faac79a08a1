#include "web/script/CanvasPathBinding.h"

#include "web/script/Realm.h"

namespace script {

namespace {

// (unrestricted double or DOMPointInit): objects, undefined and null are dictionaries.
RoundRectRadius toRadius(const Call& call, JSValueRef value)
{
    JSContextRef ctx = call.ctx();
    if (JSValueIsObject(ctx, value) || JSValueIsUndefined(ctx, value) || JSValueIsNull(ctx, value)) {
        DOMPointInit point = toDOMPointInit(call, value);
        return {point.x, point.y};
    }
    double r = call.toNumber(value);
    return {r, r};
}

} // namespace

std::vector<RoundRectRadius> toRoundRectRadii(const Call& call, std::size_t index)
{
    if (!call.has(index))
        return {};
    JSValueRef value = call.arg(index);
    if (call.isIterable(value)) {
        std::vector<RoundRectRadius> radii;
        call.sequence(value, "sequence", [&](JSValueRef element) { radii.push_back(toRadius(call, element)); });
        if (radii.empty())
            throw ScriptThrow{call.realm().rangeError(
                "Failed to execute 'roundRect': 0 radii provided. Between one and four radii are necessary.")};
        return radii;
    }
    return {toRadius(call, value)};
}

} // namespace script
