#include "web/script/GeometryConversions.h"

#include "web/script/Bindings.h"
#include "web/script/Realm.h"

namespace script {

namespace {

// The dictionary's object, or null for undefined and null.
JSObjectRef dictionaryObject(const Call& call, JSValueRef value, const char* typeName)
{
    JSContextRef ctx = call.ctx();
    if (JSValueIsUndefined(ctx, value) || JSValueIsNull(ctx, value))
        return nullptr;
    if (!JSValueIsObject(ctx, value))
        call.throwTypeError(std::string("The provided value is not of type '") + typeName + "'.");
    return const_cast<JSObjectRef>(value);
}

std::optional<double> member(const Call& call, JSObjectRef dictionary, const char* name)
{
    JSValueRef value = getProperty(call.ctx(), dictionary, name);
    if (JSValueIsUndefined(call.ctx(), value))
        return std::nullopt;
    return call.toNumber(value);
}

void read2D(const Call& call, JSObjectRef dictionary, DOMMatrix2DInit& init)
{
    init.a = member(call, dictionary, "a");
    init.b = member(call, dictionary, "b");
    init.c = member(call, dictionary, "c");
    init.d = member(call, dictionary, "d");
    init.e = member(call, dictionary, "e");
    init.f = member(call, dictionary, "f");
    init.m11 = member(call, dictionary, "m11");
    init.m12 = member(call, dictionary, "m12");
    init.m21 = member(call, dictionary, "m21");
    init.m22 = member(call, dictionary, "m22");
    init.m41 = member(call, dictionary, "m41");
    init.m42 = member(call, dictionary, "m42");
}

} // namespace

DOMPointInit toDOMPointInit(const Call& call, JSValueRef value)
{
    DOMPointInit init;
    JSObjectRef dictionary = dictionaryObject(call, value, "DOMPointInit");
    if (!dictionary)
        return init;
    init.w = member(call, dictionary, "w").value_or(1);
    init.x = member(call, dictionary, "x").value_or(0);
    init.y = member(call, dictionary, "y").value_or(0);
    init.z = member(call, dictionary, "z").value_or(0);
    return init;
}

DOMMatrix2DInit toDOMMatrix2DInit(const Call& call, JSValueRef value)
{
    DOMMatrix2DInit init;
    if (JSObjectRef dictionary = dictionaryObject(call, value, "DOMMatrix2DInit"))
        read2D(call, dictionary, init);
    return init;
}

DOMMatrixInit toDOMMatrixInit(const Call& call, JSValueRef value)
{
    DOMMatrixInit init;
    JSObjectRef dictionary = dictionaryObject(call, value, "DOMMatrixInit");
    if (!dictionary)
        return init;
    read2D(call, dictionary, init);
    JSValueRef is2D = getProperty(call.ctx(), dictionary, "is2D");
    if (!JSValueIsUndefined(call.ctx(), is2D))
        init.is2D = call.toBoolean(is2D);
    init.m13 = member(call, dictionary, "m13").value_or(0);
    init.m14 = member(call, dictionary, "m14").value_or(0);
    init.m23 = member(call, dictionary, "m23").value_or(0);
    init.m24 = member(call, dictionary, "m24").value_or(0);
    init.m31 = member(call, dictionary, "m31").value_or(0);
    init.m32 = member(call, dictionary, "m32").value_or(0);
    init.m33 = member(call, dictionary, "m33").value_or(1);
    init.m34 = member(call, dictionary, "m34").value_or(0);
    init.m43 = member(call, dictionary, "m43").value_or(0);
    init.m44 = member(call, dictionary, "m44").value_or(1);
    return init;
}

JSObjectRef wrapMatrix(Realm& realm, const DOMMatrixReadOnly& matrix, bool readOnly)
{
    return realm.wrap(readOnly ? domMatrixReadOnlyInterface : domMatrixInterface, std::make_shared<DOMMatrix>(matrix));
}

JSObjectRef wrapPoint(Realm& realm, const DOMPointReadOnly& point, bool readOnly)
{
    return realm.wrap(readOnly ? domPointReadOnlyInterface : domPointInterface, std::make_shared<DOMPoint>(point));
}

} // namespace script
