#include "web/script/PlatformObjectClasses.h"

#include "web/script/Realm.h"
#include "web/script/ScriptEngine.h"

#include <unordered_map>

namespace script {

namespace {

struct InterfaceObjectData final : PrivateData {
    explicit InterfaceObjectData(const InterfaceDefinition& definition) : PrivateData(Kind::InterfaceObject), definition(&definition) {}
    const InterfaceDefinition* definition;
};

const InterfaceDefinition* interfaceOf(JSObjectRef object)
{
    auto* data = static_cast<PrivateData*>(JSObjectGetPrivate(object));
    if (!data || data->kind != PrivateData::Kind::InterfaceObject)
        return nullptr;
    return static_cast<InterfaceObjectData*>(data)->definition;
}

JSValueRef callInterfaceObject(JSContextRef ctx, JSObjectRef function, JSObjectRef, std::size_t, const JSValueRef[],
                               JSValueRef* exception)
{
    const InterfaceDefinition* definition = interfaceOf(function);
    std::string name = definition ? definition->name : "object";
    *exception = Realm::of(ctx).typeError(definition && definition->constructor
        ? "Failed to construct '" + name + "': Please use the 'new' operator, this DOM object constructor cannot be called as a function."
        : "Illegal constructor");
    return nullptr;
}

JSObjectRef constructInterfaceObject(JSContextRef ctx, JSObjectRef constructor, std::size_t argc,
                                     const JSValueRef argv[], JSValueRef* exception)
{
    JSValueRef result = detail::boundary(ctx, exception, [&]() -> JSValueRef {
        const InterfaceDefinition* definition = interfaceOf(constructor);
        Call call(ctx, nullptr, argc, argv);
        if (!definition || !definition->constructor)
            call.throwTypeError("Illegal constructor");
        call.requireArguments(definition->constructorLength, definition->name, "", true);
        return definition->constructor(call);
    });
    return result ? const_cast<JSObjectRef>(result) : nullptr;
}

// Ordinary instanceof: whether the interface's prototype is on the value's chain.
bool interfaceHasInstance(JSContextRef ctx, JSObjectRef constructor, JSValueRef value, JSValueRef* exception)
{
    if (!JSValueIsObject(ctx, value))
        return false;
    JSString key("prototype");
    JSValueRef prototype = JSObjectGetProperty(ctx, constructor, key.get(), exception);
    if (*exception)
        return false;
    if (!JSValueIsObject(ctx, prototype)) {
        *exception = Realm::of(ctx).typeError("Function has non-object prototype in instanceof check");
        return false;
    }
    JSValueRef current = JSObjectGetPrototype(ctx, const_cast<JSObjectRef>(value));
    for (int depth = 0; JSValueIsObject(ctx, current) && depth < 100000; ++depth) {
        if (JSValueIsStrictEqual(ctx, current, prototype))
            return true;
        current = JSObjectGetPrototype(ctx, const_cast<JSObjectRef>(current));
    }
    return false;
}

void finalizeInterfaceObject(JSObjectRef object)
{
    delete static_cast<PrivateData*>(JSObjectGetPrivate(object));
}

// Wrappers die in the collector, maybe on another thread; their C++ objects are released later
// on ours (ScriptEngine::releaseFinalized).
void finalizeWrapper(JSObjectRef object)
{
    ScriptEngine::deferRelease(static_cast<PrivateData*>(JSObjectGetPrivate(object)));
}

} // namespace

JSClassRef interfaceObjectClass()
{
    static JSClassRef cls = [] {
        JSClassDefinition definition = kJSClassDefinitionEmpty;
        definition.attributes = kJSClassAttributeNoAutomaticPrototype;
        definition.className = "Function";
        definition.callAsFunction = callInterfaceObject;
        definition.callAsConstructor = constructInterfaceObject;
        definition.hasInstance = interfaceHasInstance;
        definition.finalize = finalizeInterfaceObject;
        return JSClassCreate(&definition);
    }();
    return cls;
}

JSClassRef instanceClass(const InterfaceDefinition& interface)
{
    static std::unordered_map<const InterfaceDefinition*, JSClassRef> classes;
    auto found = classes.find(&interface);
    if (found != classes.end())
        return found->second;
    JSClassDefinition definition = kJSClassDefinitionEmpty;
    definition.attributes = kJSClassAttributeNoAutomaticPrototype;
    definition.className = interface.name;
    definition.finalize = finalizeWrapper;
    JSClassRef cls = JSClassCreate(&definition);
    classes.emplace(&interface, cls);
    return cls;
}

PrivateData* makeInterfaceObjectData(const InterfaceDefinition& interface)
{
    return new InterfaceObjectData(interface);
}

} // namespace script
