#include "web/script/Bindings.h"
#include "web/script/GeometryConversions.h"
#include "web/script/Realm.h"

#include <JavaScriptCore/JSTypedArray.h>

#include <cstring>

namespace script {

namespace {

constexpr const InterfaceDefinition& R = domMatrixReadOnlyInterface;
constexpr const InterfaceDefinition& M = domMatrixInterface;

// new DOMMatrix(init): (DOMString or sequence<unrestricted double>), absent for identity.
DOMMatrix matrixFromInit(Call& call)
{
    if (!call.has(0))
        return {};
    JSValueRef init = call.arg(0);
    if (call.isIterable(init)) {
        std::vector<double> numbers = call.numberSequence(init);
        return call.check(DOMMatrix::create(numbers));
    }
    return call.check(DOMMatrix::create(call.toString(init)));
}

JSObjectRef constructReadOnly(Call& call)
{
    return wrapMatrix(call.realm(), matrixFromInit(call), true);
}

JSObjectRef constructMatrix(Call& call)
{
    return wrapMatrix(call.realm(), matrixFromInit(call));
}

template <typename Element>
std::vector<Element> typedArrayElements(Call& call, JSTypedArrayType type, const char* typeName)
{
    JSContextRef ctx = call.ctx();
    JSValueRef value = call.arg(0);
    if (JSValueGetTypedArrayType(ctx, value, nullptr) != type)
        call.throwTypeError(std::string("The provided value is not of type '") + typeName + "'.");
    auto array = const_cast<JSObjectRef>(value);
    JSValueRef exception = nullptr;
    auto* base = static_cast<const std::uint8_t*>(JSObjectGetTypedArrayBytesPtr(ctx, array, &exception));
    rethrowIf(exception);
    std::size_t offset = JSObjectGetTypedArrayByteOffset(ctx, array, nullptr);
    std::size_t count = JSObjectGetTypedArrayLength(ctx, array, nullptr);
    std::vector<Element> elements(count);
    if (count && base)
        std::memcpy(elements.data(), base + offset, count * sizeof(Element));
    return elements;
}

template <typename Element>
JSValueRef typedArray(Call& call, JSTypedArrayType type, const std::array<Element, 16>& elements)
{
    JSValueRef exception = nullptr;
    JSObjectRef array = JSObjectMakeTypedArray(call.ctx(), type, elements.size(), &exception);
    rethrowIf(exception);
    void* bytes = JSObjectGetTypedArrayBytesPtr(call.ctx(), array, &exception);
    rethrowIf(exception);
    std::memcpy(bytes, elements.data(), sizeof elements);
    return array;
}

JSValueRef toJSON(Call& call, const DOMMatrix& matrix)
{
    JSContextRef ctx = call.ctx();
    JSObjectRef object = JSObjectMake(ctx, nullptr, nullptr);
    DOMMatrixInit init = matrix.toJSON();
    auto number = [&](const char* name, double value) { setProperty(ctx, object, name, JSValueMakeNumber(ctx, value)); };
    number("a", *init.a);
    number("b", *init.b);
    number("c", *init.c);
    number("d", *init.d);
    number("e", *init.e);
    number("f", *init.f);
    number("m11", *init.m11);
    number("m12", *init.m12);
    number("m13", init.m13);
    number("m14", init.m14);
    number("m21", *init.m21);
    number("m22", *init.m22);
    number("m23", init.m23);
    number("m24", init.m24);
    number("m31", init.m31);
    number("m32", init.m32);
    number("m33", init.m33);
    number("m34", init.m34);
    number("m41", *init.m41);
    number("m42", *init.m42);
    number("m43", init.m43);
    number("m44", init.m44);
    setProperty(ctx, object, "is2D", JSValueMakeBoolean(ctx, matrix.is2D()));
    setProperty(ctx, object, "isIdentity", JSValueMakeBoolean(ctx, matrix.isIdentity()));
    return object;
}

#define GETTER(name) readonlyAttribute<R, #name>([](Call&, DOMMatrix& m) { return m.name(); })
#define SETTABLE(name, setter)                                                                                   \
    attribute<M, #name>([](Call&, DOMMatrix& m) { return m.name(); },                                            \
                        [](Call& call, DOMMatrix& m, JSValueRef v) { m.setter(call.toNumber(v)); })
// An operation of the read-only matrix that makes a new matrix.
#define MAKES(name, body) operation<R, name, 0>([](Call& call, DOMMatrix& m) { return wrapMatrix(call.realm(), body); })
// A *Self operation: changes the matrix and returns it.
#define SELF(name, body) operation<M, name, 0>([](Call& call, DOMMatrix& m) { body; return call.thisObject(); })

template <const InterfaceDefinition& I, bool ReadOnly>
std::vector<Member> factories()
{
    return {
        staticOperation<I, "fromMatrix", 0>([](Call& call) {
            return wrapMatrix(call.realm(), call.check(DOMMatrix::fromMatrix(toDOMMatrixInit(call, call.arg(0)))), ReadOnly);
        }),
        staticOperation<I, "fromFloat32Array", 1>([](Call& call) {
            auto numbers = typedArrayElements<float>(call, kJSTypedArrayTypeFloat32Array, "Float32Array");
            return wrapMatrix(call.realm(), call.check(DOMMatrix::fromFloat32Array(numbers)), ReadOnly);
        }),
        staticOperation<I, "fromFloat64Array", 1>([](Call& call) {
            auto numbers = typedArrayElements<double>(call, kJSTypedArrayTypeFloat64Array, "Float64Array");
            return wrapMatrix(call.realm(), call.check(DOMMatrix::fromFloat64Array(numbers)), ReadOnly);
        }),
    };
}

std::vector<Member> readOnlyMembers()
{
    std::vector<Member> members = {
        GETTER(a), GETTER(b), GETTER(c), GETTER(d), GETTER(e), GETTER(f),
        GETTER(m11), GETTER(m12), GETTER(m13), GETTER(m14), GETTER(m21), GETTER(m22), GETTER(m23), GETTER(m24),
        GETTER(m31), GETTER(m32), GETTER(m33), GETTER(m34), GETTER(m41), GETTER(m42), GETTER(m43), GETTER(m44),
        GETTER(is2D), GETTER(isIdentity),
        MAKES("translate", m.translate(call.numberOr(0, 0), call.numberOr(1, 0), call.numberOr(2, 0))),
        operation<R, "scale", 0>([](Call& call, DOMMatrix& m) {
            double scaleX = call.numberOr(0, 1);
            std::optional<double> scaleY = call.optionalNumber(1);
            double scaleZ = call.numberOr(2, 1);
            double originX = call.numberOr(3, 0), originY = call.numberOr(4, 0), originZ = call.numberOr(5, 0);
            return wrapMatrix(call.realm(), m.scale(scaleX, scaleY, scaleZ, originX, originY, originZ));
        }),
        MAKES("scaleNonUniform", m.scaleNonUniform(call.numberOr(0, 1), call.numberOr(1, 1))),
        operation<R, "scale3d", 0>([](Call& call, DOMMatrix& m) {
            double scale = call.numberOr(0, 1);
            double originX = call.numberOr(1, 0), originY = call.numberOr(2, 0), originZ = call.numberOr(3, 0);
            return wrapMatrix(call.realm(), m.scale3d(scale, originX, originY, originZ));
        }),
        operation<R, "rotate", 0>([](Call& call, DOMMatrix& m) {
            double rotX = call.numberOr(0, 0);
            std::optional<double> rotY = call.optionalNumber(1);
            std::optional<double> rotZ = call.optionalNumber(2);
            return wrapMatrix(call.realm(), m.rotate(rotX, rotY, rotZ));
        }),
        MAKES("rotateFromVector", m.rotateFromVector(call.numberOr(0, 0), call.numberOr(1, 0))),
        operation<R, "rotateAxisAngle", 0>([](Call& call, DOMMatrix& m) {
            double x = call.numberOr(0, 0), y = call.numberOr(1, 0), z = call.numberOr(2, 0), angle = call.numberOr(3, 0);
            return wrapMatrix(call.realm(), m.rotateAxisAngle(x, y, z, angle));
        }),
        MAKES("skewX", m.skewX(call.numberOr(0, 0))),
        MAKES("skewY", m.skewY(call.numberOr(0, 0))),
        MAKES("multiply", call.check(m.multiply(toDOMMatrixInit(call, call.arg(0))))),
        MAKES("flipX", m.flipX()),
        MAKES("flipY", m.flipY()),
        MAKES("inverse", m.inverse()),
        operation<R, "transformPoint", 0>([](Call& call, DOMMatrix& m) {
            return wrapPoint(call.realm(), m.transformPoint(toDOMPointInit(call, call.arg(0))));
        }),
        operation<R, "toFloat32Array", 0>([](Call& call, DOMMatrix& m) {
            return typedArray(call, kJSTypedArrayTypeFloat32Array, m.toFloat32Array());
        }),
        operation<R, "toFloat64Array", 0>([](Call& call, DOMMatrix& m) {
            return typedArray(call, kJSTypedArrayTypeFloat64Array, m.toFloat64Array());
        }),
        operation<R, "toString", 0>([](Call& call, DOMMatrix& m) { return call.check(m.toString()); }),
        operation<R, "toJSON", 0>([](Call& call, DOMMatrix& m) { return toJSON(call, m); }),
    };
    std::vector<Member> statics = factories<R, true>();
    members.insert(members.end(), statics.begin(), statics.end());
    return members;
}

std::vector<Member> matrixMembers()
{
    std::vector<Member> members = {
        SETTABLE(a, setA), SETTABLE(b, setB), SETTABLE(c, setC), SETTABLE(d, setD), SETTABLE(e, setE), SETTABLE(f, setF),
        SETTABLE(m11, setM11), SETTABLE(m12, setM12), SETTABLE(m13, setM13), SETTABLE(m14, setM14),
        SETTABLE(m21, setM21), SETTABLE(m22, setM22), SETTABLE(m23, setM23), SETTABLE(m24, setM24),
        SETTABLE(m31, setM31), SETTABLE(m32, setM32), SETTABLE(m33, setM33), SETTABLE(m34, setM34),
        SETTABLE(m41, setM41), SETTABLE(m42, setM42), SETTABLE(m43, setM43), SETTABLE(m44, setM44),
        SELF("multiplySelf", call.check(m.multiplySelf(toDOMMatrixInit(call, call.arg(0))))),
        SELF("preMultiplySelf", call.check(m.preMultiplySelf(toDOMMatrixInit(call, call.arg(0))))),
        SELF("translateSelf", m.translateSelf(call.numberOr(0, 0), call.numberOr(1, 0), call.numberOr(2, 0))),
        operation<M, "scaleSelf", 0>([](Call& call, DOMMatrix& m) {
            double scaleX = call.numberOr(0, 1);
            std::optional<double> scaleY = call.optionalNumber(1);
            double scaleZ = call.numberOr(2, 1);
            double originX = call.numberOr(3, 0), originY = call.numberOr(4, 0), originZ = call.numberOr(5, 0);
            m.scaleSelf(scaleX, scaleY, scaleZ, originX, originY, originZ);
            return call.thisObject();
        }),
        operation<M, "scale3dSelf", 0>([](Call& call, DOMMatrix& m) {
            double scale = call.numberOr(0, 1);
            double originX = call.numberOr(1, 0), originY = call.numberOr(2, 0), originZ = call.numberOr(3, 0);
            m.scale3dSelf(scale, originX, originY, originZ);
            return call.thisObject();
        }),
        operation<M, "rotateSelf", 0>([](Call& call, DOMMatrix& m) {
            double rotX = call.numberOr(0, 0);
            std::optional<double> rotY = call.optionalNumber(1);
            std::optional<double> rotZ = call.optionalNumber(2);
            m.rotateSelf(rotX, rotY, rotZ);
            return call.thisObject();
        }),
        SELF("rotateFromVectorSelf", m.rotateFromVectorSelf(call.numberOr(0, 0), call.numberOr(1, 0))),
        operation<M, "rotateAxisAngleSelf", 0>([](Call& call, DOMMatrix& m) {
            double x = call.numberOr(0, 0), y = call.numberOr(1, 0), z = call.numberOr(2, 0), angle = call.numberOr(3, 0);
            m.rotateAxisAngleSelf(x, y, z, angle);
            return call.thisObject();
        }),
        SELF("skewXSelf", m.skewXSelf(call.numberOr(0, 0))),
        SELF("skewYSelf", m.skewYSelf(call.numberOr(0, 0))),
        SELF("invertSelf", m.invertSelf()),
        operation<M, "setMatrixValue", 1>([](Call& call, DOMMatrix& m) {
            call.check(m.setMatrixValue(call.string(0)));
            return call.thisObject();
        }),
    };
    std::vector<Member> statics = factories<M, false>();
    members.insert(members.end(), statics.begin(), statics.end());
    return members;
}

} // namespace

InterfaceDefinition domMatrixReadOnlyInterface = {
    .name = "DOMMatrixReadOnly",
    .constructor = &constructReadOnly,
    .members = readOnlyMembers(),
};

InterfaceDefinition domMatrixInterface = {
    .name = "DOMMatrix",
    .parent = &domMatrixReadOnlyInterface,
    .constructor = &constructMatrix,
    .members = matrixMembers(),
};

} // namespace script
