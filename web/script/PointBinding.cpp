#include "web/script/Bindings.h"
#include "web/script/GeometryConversions.h"
#include "web/script/Realm.h"

namespace script {

namespace {

constexpr const InterfaceDefinition& R = domPointReadOnlyInterface;
constexpr const InterfaceDefinition& P = domPointInterface;

DOMPoint pointFromArguments(Call& call)
{
    double x = call.numberOr(0, 0), y = call.numberOr(1, 0), z = call.numberOr(2, 0), w = call.numberOr(3, 1);
    return DOMPoint(x, y, z, w);
}

JSObjectRef constructReadOnly(Call& call)
{
    return wrapPoint(call.realm(), pointFromArguments(call), true);
}

JSObjectRef constructPoint(Call& call)
{
    return wrapPoint(call.realm(), pointFromArguments(call));
}

#define GETTER(name) readonlyAttribute<R, #name>([](Call&, DOMPoint& p) { return p.name(); })
#define SETTABLE(name, setter)                                                                                   \
    attribute<P, #name>([](Call&, DOMPoint& p) { return p.name(); },                                             \
                        [](Call& call, DOMPoint& p, JSValueRef v) { p.setter(call.toNumber(v)); })

} // namespace

InterfaceDefinition domPointReadOnlyInterface = {
    .name = "DOMPointReadOnly",
    .constructor = &constructReadOnly,
    .members = {
        GETTER(x), GETTER(y), GETTER(z), GETTER(w),
        operation<R, "matrixTransform", 0>([](Call& call, DOMPoint& p) {
            return wrapPoint(call.realm(), call.check(p.matrixTransform(toDOMMatrixInit(call, call.arg(0)))));
        }),
        operation<R, "toJSON", 0>([](Call& call, DOMPoint& p) {
            JSContextRef ctx = call.ctx();
            JSObjectRef object = JSObjectMake(ctx, nullptr, nullptr);
            setProperty(ctx, object, "x", JSValueMakeNumber(ctx, p.x()));
            setProperty(ctx, object, "y", JSValueMakeNumber(ctx, p.y()));
            setProperty(ctx, object, "z", JSValueMakeNumber(ctx, p.z()));
            setProperty(ctx, object, "w", JSValueMakeNumber(ctx, p.w()));
            return JSValueRef(object);
        }),
        staticOperation<R, "fromPoint", 0>([](Call& call) {
            return wrapPoint(call.realm(), DOMPointReadOnly::fromPoint(toDOMPointInit(call, call.arg(0))), true);
        }),
    },
};

InterfaceDefinition domPointInterface = {
    .name = "DOMPoint",
    .parent = &domPointReadOnlyInterface,
    .constructor = &constructPoint,
    .members = {
        SETTABLE(x, setX), SETTABLE(y, setY), SETTABLE(z, setZ), SETTABLE(w, setW),
        staticOperation<P, "fromPoint", 0>([](Call& call) {
            return wrapPoint(call.realm(), DOMPoint::fromPoint(toDOMPointInit(call, call.arg(0))));
        }),
    },
};

} // namespace script
