#include "web/script/RectBinding.h"

#include "web/script/Bindings.h"
#include "web/script/Realm.h"

namespace script {

namespace {

constexpr const InterfaceDefinition& R = domRectReadOnlyInterface;
constexpr const InterfaceDefinition& W = domRectInterface;

DOMRect rectFromArguments(Call& call)
{
    double x = call.numberOr(0, 0), y = call.numberOr(1, 0), width = call.numberOr(2, 0), height = call.numberOr(3, 0);
    return DOMRect(x, y, width, height);
}

JSObjectRef constructReadOnly(Call& call)
{
    return wrapRect(call.realm(), rectFromArguments(call), true);
}

JSObjectRef constructRect(Call& call)
{
    return wrapRect(call.realm(), rectFromArguments(call));
}

#define GETTER(name) readonlyAttribute<R, #name>([](Call&, DOMRect& r) { return r.name(); })
#define SETTABLE(name, setter)                                                                                   \
    attribute<W, #name>([](Call&, DOMRect& r) { return r.name(); },                                              \
                        [](Call& call, DOMRect& r, JSValueRef v) { r.setter(call.toNumber(v)); })

} // namespace

DOMRectInit toDOMRectInit(const Call& call, JSValueRef value)
{
    DOMRectInit init;
    JSContextRef ctx = call.ctx();
    if (JSValueIsUndefined(ctx, value) || JSValueIsNull(ctx, value))
        return init;
    if (!JSValueIsObject(ctx, value))
        call.throwTypeError("The provided value is not of type 'DOMRectInit'.");
    JSObjectRef dictionary = const_cast<JSObjectRef>(value);
    auto member = [&](const char* name, double& out) {
        JSValueRef v = getProperty(ctx, dictionary, name);
        if (!JSValueIsUndefined(ctx, v))
            out = call.toNumber(v);
    };
    member("height", init.height);
    member("width", init.width);
    member("x", init.x);
    member("y", init.y);
    return init;
}

JSObjectRef wrapRect(Realm& realm, const DOMRectReadOnly& rect, bool readOnly)
{
    return realm.wrap(readOnly ? domRectReadOnlyInterface : domRectInterface, std::make_shared<DOMRect>(rect));
}

InterfaceDefinition domRectReadOnlyInterface = {
    .name = "DOMRectReadOnly",
    .constructor = &constructReadOnly,
    .members = {
        GETTER(x), GETTER(y), GETTER(width), GETTER(height),
        GETTER(top), GETTER(right), GETTER(bottom), GETTER(left),
        operation<R, "toJSON", 0>([](Call& call, DOMRect& r) {
            JSContextRef ctx = call.ctx();
            JSObjectRef object = JSObjectMake(ctx, nullptr, nullptr);
            const std::pair<const char*, double> members[] = {
                {"x", r.x()}, {"y", r.y()}, {"width", r.width()}, {"height", r.height()},
                {"top", r.top()}, {"right", r.right()}, {"bottom", r.bottom()}, {"left", r.left()}};
            for (const auto& [name, value] : members)
                setProperty(ctx, object, name, JSValueMakeNumber(ctx, value));
            return JSValueRef(object);
        }),
        staticOperation<R, "fromRect", 0>([](Call& call) {
            return wrapRect(call.realm(), DOMRectReadOnly::fromRect(toDOMRectInit(call, call.arg(0))), true);
        }),
    },
};

InterfaceDefinition domRectInterface = {
    .name = "DOMRect",
    .parent = &domRectReadOnlyInterface,
    .constructor = &constructRect,
    .members = {
        SETTABLE(x, setX), SETTABLE(y, setY), SETTABLE(width, setWidth), SETTABLE(height, setHeight),
        staticOperation<W, "fromRect", 0>([](Call& call) {
            return wrapRect(call.realm(), DOMRect::fromRect(toDOMRectInit(call, call.arg(0))));
        }),
    },
};

} // namespace script
