#include "web/script/Realm.h"

#include "web/script/Bindings.h"
#include "web/script/PlatformObjectClasses.h"
#include "web/script/RealmIsolation.h"
#include "web/script/ScriptEngine.h"

#include <stdexcept>

namespace script {

namespace {

// Runs before any script: captures what the bindings need in its original form and takes away
// what a canvas script must not have (timers and compilation that outlive an evaluation, and
// the engine's own console, which ours replaces).
constexpr const char* kBootstrap = R"JS((function () {
    'use strict';
    const g = globalThis;
    delete g.WebAssembly;
    delete g.FinalizationRegistry;
    delete g.console;
    const defineProperty = Reflect.defineProperty;
    return {
        eval: g.eval,
        TypeError: g.TypeError,
        RangeError: g.RangeError,
        errorPrototype: g.Error.prototype,
        functionPrototype: g.Function.prototype,
        objectPrototype: g.Object.prototype,
        defineProperty,
        preventExtensions: Reflect.preventExtensions,
        freeze: Object.freeze,
        deleteProperty: Reflect.deleteProperty,
        promiseThen: g.Promise.prototype.then,
        isResizable: Object.getOwnPropertyDescriptor(g.ArrayBuffer.prototype, 'resizable').get,
        // Float16Array, which the C API cannot make or recognise: its name as typed arrays
        // report it, and a view over an ArrayBuffer.
        typedArrayName: Object.getOwnPropertyDescriptor(Object.getPrototypeOf(g.Int8Array.prototype), g.Symbol.toStringTag).get,
        typedArrayBuffer: Object.getOwnPropertyDescriptor(Object.getPrototypeOf(g.Int8Array.prototype), 'buffer').get,
        typedArrayByteOffset: Object.getOwnPropertyDescriptor(Object.getPrototypeOf(g.Int8Array.prototype), 'byteOffset').get,
        typedArrayByteLength: Object.getOwnPropertyDescriptor(Object.getPrototypeOf(g.Int8Array.prototype), 'byteLength').get,
        makeFloat16Array: g.Float16Array ? ((F) => (buffer) => new F(buffer))(g.Float16Array) : undefined,
        iterator: g.Symbol.iterator,
        // ToNumber as scripts see it: a BigInt (or an object that gives one) is a TypeError.
        toNumber: (value) => +value,
        toStringTag: g.Symbol.toStringTag,
        define(object, key, value, getter, setter, flags) {
            const descriptor = { enumerable: (flags & 2) !== 0, configurable: (flags & 4) !== 0 };
            if (flags & 8) {
                descriptor.get = getter;
                descriptor.set = setter;
            } else {
                descriptor.value = value;
                descriptor.writable = (flags & 1) !== 0;
            }
            if (!defineProperty(object, key, descriptor))
                throw new TypeError('cannot define ' + String(key));
        },
    };
})())JS";

enum DefineFlags { Writable = 1, Enumerable = 2, Configurable = 4, Accessor = 8 };

} // namespace

Realm::Realm(JSContextGroupRef group)
    : group_(group)
    , ctx_(JSGlobalContextCreateInGroup(group, nullptr))
    , global_(ctx_ ? JSContextGetGlobalObject(ctx_) : nullptr)
{
    if (!ctx_)
        throw std::runtime_error("cannot create a JavaScript context");
    current_ = this;
    captureIntrinsics();
    for (const InterfaceDefinition* definition : allInterfaces())
        installInterface(*definition);
    installWindow();
    isolation_ = std::make_unique<RealmIsolation>(*this);
}

Realm::~Realm()
{
    for (auto& [text, factory] : functionFactories_)
        if (factory)
            JSValueUnprotect(ctx_, factory);
    isolation_.reset();
    dropDocument();
    for (auto& [identity, weak] : identities_)
        JSWeakRelease(group_, weak);
    for (JSObjectRef object : protected_)
        JSValueUnprotect(ctx_, object);
    JSGlobalContextRelease(ctx_);
    if (current_ == this)
        current_ = nullptr;
}

Realm* Realm::current_ = nullptr;

Realm& Realm::of(JSContextRef)
{
    return *current_;
}

JSObjectRef Realm::protect(JSObjectRef object)
{
    JSValueProtect(ctx_, object);
    protected_.push_back(object);
    return object;
}

void Realm::captureIntrinsics()
{
    JSString source(kBootstrap);
    JSValueRef exception = nullptr;
    JSValueRef result = JSEvaluateScript(ctx_, source.get(), nullptr, nullptr, 1, &exception);
    if (exception || !JSValueIsObject(ctx_, result))
        throw std::runtime_error("cannot start the JavaScript context");
    intrinsics_ = protect(const_cast<JSObjectRef>(result));
    auto object = [&](const char* name) { return toObject(ctx_, getProperty(ctx_, intrinsics_, name)); };
    evalFunction_ = object("eval");
    typeErrorConstructor_ = object("TypeError");
    rangeErrorConstructor_ = object("RangeError");
    defineHelper_ = object("define");
    iteratorSymbol_ = getProperty(ctx_, intrinsics_, "iterator");
}

void Realm::defineValue(JSObjectRef object, JSValueRef key, JSValueRef value, bool writable, bool enumerable,
                        bool configurable)
{
    int flags = (writable ? Writable : 0) | (enumerable ? Enumerable : 0) | (configurable ? Configurable : 0);
    JSValueRef arguments[] = {object, key, value, JSValueMakeUndefined(ctx_), JSValueMakeUndefined(ctx_),
                              JSValueMakeNumber(ctx_, flags)};
    JSValueRef exception = nullptr;
    JSObjectCallAsFunction(ctx_, defineHelper_, nullptr, 6, arguments, &exception);
    rethrowIf(exception);
}

void Realm::defineAccessor(JSObjectRef object, JSValueRef key, JSValueRef getter, JSValueRef setter, bool enumerable,
                           bool configurable)
{
    int flags = Accessor | (enumerable ? Enumerable : 0) | (configurable ? Configurable : 0);
    JSValueRef undefined = JSValueMakeUndefined(ctx_);
    JSValueRef arguments[] = {object, key, undefined, getter ? getter : undefined, setter ? setter : undefined,
                              JSValueMakeNumber(ctx_, flags)};
    JSValueRef exception = nullptr;
    JSObjectCallAsFunction(ctx_, defineHelper_, nullptr, 6, arguments, &exception);
    rethrowIf(exception);
}

namespace {

JSObjectRef makeFunction(JSContextRef ctx, const std::string& name, JSObjectCallAsFunctionCallback callback)
{
    JSString string(name);
    return JSObjectMakeFunctionWithCallback(ctx, string.get(), callback);
}

} // namespace

void Realm::installInterface(const InterfaceDefinition& definition)
{
    JSObjectRef prototype = protect(JSObjectMake(ctx_, nullptr, nullptr));
    JSObjectRef parentPrototype = definition.parent ? prototypeOf(*definition.parent)
        : toObject(ctx_, getProperty(ctx_, intrinsics_, definition.errorPrototype ? "errorPrototype" : "objectPrototype"));
    JSObjectSetPrototype(ctx_, prototype, parentPrototype);

    JSObjectRef constructorObject = protect(JSObjectMake(ctx_, interfaceObjectClass(), makeInterfaceObjectData(definition)));
    JSObjectSetPrototype(ctx_, constructorObject, definition.parent ? JSValueRef(interfaceObject(*definition.parent))
                                                            : getProperty(ctx_, intrinsics_, "functionPrototype"));
    interfaces_[&definition] = {prototype, constructorObject};

    auto key = [&](const char* name) { return makeString(ctx_, name); };
    defineValue(constructorObject, key("length"), JSValueMakeNumber(ctx_, definition.constructorLength), false, false, true);
    defineValue(constructorObject, key("name"), key(definition.name), false, false, true);
    defineValue(constructorObject, key("prototype"), prototype, false, false, false);
    defineValue(prototype, key("constructor"), constructorObject, true, false, true);
    defineValue(prototype, getProperty(ctx_, intrinsics_, "toStringTag"), key(definition.name), false, false, true);

    for (const Member& member : definition.members) {
        JSObjectRef target = member.isStatic ? constructorObject : prototype;
        switch (member.kind) {
        case Member::Kind::Operation: {
            JSObjectRef function = makeFunction(ctx_, member.name, member.function);
            defineValue(function, key("length"), JSValueMakeNumber(ctx_, member.length), false, false, true);
            defineValue(target, key(member.name), function, true, true, true);
            break;
        }
        case Member::Kind::Attribute: {
            JSObjectRef getter = makeFunction(ctx_, std::string("get ") + member.name, member.function);
            JSObjectRef setter = member.setter ? makeFunction(ctx_, std::string("set ") + member.name, member.setter) : nullptr;
            if (setter)
                defineValue(setter, key("length"), JSValueMakeNumber(ctx_, 1), false, false, true);
            defineAccessor(target, key(member.name), getter, setter, true, true);
            break;
        }
        case Member::Kind::Constant:
            defineValue(constructorObject, key(member.name), JSValueMakeNumber(ctx_, member.constant), false, true, false);
            defineValue(prototype, key(member.name), JSValueMakeNumber(ctx_, member.constant), false, true, false);
            break;
        }
    }
    if (definition.exposed)
        defineValue(global_, key(definition.name), constructorObject, true, false, true);
}

void Realm::installWindow()
{
    installWindowMembers(*this);
    defineValue(global_, makeString(ctx_, "console"), makeConsole(*this), true, false, true);
}

JSValueRef Realm::evaluate(std::string_view source, JSValueRef* exception)
{
    JSValueRef text = makeString(ctx_, source);
    return JSObjectCallAsFunction(ctx_, evalFunction_, nullptr, 1, &text, exception);
}

namespace {

// Texts longer than this are not kept: they are called the slow way.
constexpr std::size_t kLongestFactoryText = std::size_t(1) << 20;
constexpr std::size_t kMostFactories = 64;

bool isASCIISpace(char c)
{
    return c == ' ' || c == '\t' || c == '\n' || c == '\r' || c == '\v' || c == '\f';
}

} // namespace

JSObjectRef Realm::functionFactory(std::string_view text)
{
    if (text.size() > kLongestFactoryText)
        return nullptr;
    auto found = functionFactories_.find(text);
    if (found != functionFactories_.end())
        return found->second;
    if (functionFactories_.size() >= kMostFactories) {
        for (auto& [key, factory] : functionFactories_)
            if (factory)
                JSValueUnprotect(ctx_, factory);
        functionFactories_.clear();
    }

    // "function<text>" is one function expression, with nothing after it, when it can be a
    // class heritage (a left-hand-side expression: a function expression and calls, member
    // accesses or templates on it, all inside the parentheses) that ends with "}" (which none of
    // those continuations end with). Class code is strict, so a text that strict mode refuses
    // takes the slow way. Checking the syntax runs nothing.
    JSObjectRef factory = nullptr;
    std::size_t end = text.size();
    while (end > 0 && isASCIISpace(text[end - 1]))
        --end;
    if (end > 0 && text[end - 1] == '}') {
        std::string heritage = "(class extends function";
        heritage.append(text).append("{})");
        JSString probe(heritage);
        JSValueRef exception = nullptr;
        if (JSCheckScriptSyntax(ctx_, probe.get(), nullptr, 1, &exception) && !exception) {
            std::string source = "(function(){return(function";
            source.append(text).append(")})");
            JSString factorySource(source);
            JSValueRef made = JSEvaluateScript(ctx_, factorySource.get(), nullptr, nullptr, 1, &exception);
            if (made && !exception && JSValueIsObject(ctx_, made) && JSObjectIsFunction(ctx_, const_cast<JSObjectRef>(made))) {
                factory = const_cast<JSObjectRef>(made);
                JSValueProtect(ctx_, factory);
            }
        }
    }
    functionFactories_.emplace(std::string(text), factory);
    return factory;
}

JSObjectRef Realm::caller(std::size_t count)
{
    auto found = callers_.find(count);
    if (found != callers_.end())
        return found->second;
    std::string parameters = "f", arguments;
    for (std::size_t i = 0; i < count; ++i) {
        std::string index = std::to_string(i);
        parameters.append(",a").append(index);
        arguments.append(i ? ",a" : "a").append(index);
    }
    // The factory and the call in one entry into the engine: each entry with a time limit
    // starts a watchdog timer.
    std::string text = "(function(";
    text.append(parameters).append("){'use strict';return f()(").append(arguments).append(")})");
    JSString source(text);
    JSValueRef exception = nullptr;
    JSValueRef made = JSEvaluateScript(ctx_, source.get(), nullptr, nullptr, 1, &exception);
    if (exception || !JSValueIsObject(ctx_, made))
        throw std::runtime_error("cannot make a caller");
    JSObjectRef function = protect(const_cast<JSObjectRef>(made));
    callers_.emplace(count, function);
    return function;
}

JSValueRef Realm::typeError(std::string_view message) const
{
    JSValueRef argument = makeString(ctx_, message);
    JSValueRef exception = nullptr;
    JSObjectRef error = JSObjectCallAsConstructor(ctx_, typeErrorConstructor_, 1, &argument, &exception);
    return error ? JSValueRef(error) : exception;
}

JSValueRef Realm::rangeError(std::string_view message) const
{
    JSValueRef argument = makeString(ctx_, message);
    JSValueRef exception = nullptr;
    JSObjectRef error = JSObjectCallAsConstructor(ctx_, rangeErrorConstructor_, 1, &argument, &exception);
    return error ? JSValueRef(error) : exception;
}

JSValueRef Realm::error(const DOMException& exception)
{
    if (exception.name == "TypeError")
        return typeError(exception.message);
    if (exception.name == "RangeError")
        return rangeError(exception.message);
    return wrap(domExceptionInterface, std::make_shared<DOMException>(exception));
}

JSObjectRef Realm::prototypeOf(const InterfaceDefinition& interface) const
{
    return interfaces_.at(&interface).prototype;
}

JSObjectRef Realm::interfaceObject(const InterfaceDefinition& interface) const
{
    return interfaces_.at(&interface).interfaceObject;
}

JSObjectRef Realm::wrap(const InterfaceDefinition& interface, std::shared_ptr<void> object)
{
    auto* wrapper = new Wrapper(interface, std::move(object), nullptr);
    JSObjectRef result = JSObjectMake(ctx_, instanceClass(interface), static_cast<PrivateData*>(wrapper));
    JSObjectSetPrototype(ctx_, result, prototypeOf(interface));
    return result;
}

JSObjectRef Realm::wrapCached(const InterfaceDefinition& interface, std::shared_ptr<void> object, const void* identity)
{
    auto found = identities_.find(identity);
    if (found != identities_.end()) {
        if (JSObjectRef existing = JSWeakGetObject(found->second))
            return existing;
        JSWeakRelease(group_, found->second);
        identities_.erase(found);
    }
    auto* wrapper = new Wrapper(interface, std::move(object), identity);
    JSObjectRef result = JSObjectMake(ctx_, instanceClass(interface), static_cast<PrivateData*>(wrapper));
    JSObjectSetPrototype(ctx_, result, prototypeOf(interface));
    identities_.emplace(identity, JSWeakCreate(group_, result));
    return result;
}

void Realm::forgetIdentity(const void* identity)
{
    auto found = identities_.find(identity);
    if (found != identities_.end() && !JSWeakGetObject(found->second)) {
        JSWeakRelease(group_, found->second);
        identities_.erase(found);
    }
}

JSValueRef Realm::hidden(JSObjectRef object, const char* name) const
{
    JSString key(name);
    JSValueRef value = JSObjectGetPrivateProperty(ctx_, object, key.get());
    return value ? value : JSValueMakeUndefined(ctx_);
}

void Realm::setHidden(JSObjectRef object, const char* name, JSValueRef value)
{
    JSString key(name);
    JSObjectSetPrivateProperty(ctx_, object, key.get(), value);
}

JSObjectRef Realm::document()
{
    if (!document_) {
        document_ = makeDocument(*this);
        JSValueProtect(ctx_, document_);
    }
    return document_;
}

void Realm::dropDocument()
{
    if (document_) {
        JSValueUnprotect(ctx_, document_);
        document_ = nullptr;
    }
}

} // namespace script
