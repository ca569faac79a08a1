#pragma once

// The declarative side of the bindings: an interface is a table of its members, each member a
// small lambda from converted arguments to the C++ call. The thunks here do what WebIDL asks
// of every call: the receiver's brand, the number of arguments, converting the result and
// turning C++ errors into the exceptions scripts see.
//
//   InterfaceDefinition path2DInterface = {
//       .name = "Path2D",
//       .constructor = &constructPath2D,
//       .members = {
//           operation<path2DInterface, "addPath", 1>([](Call& call, Path2D& path) { ... }),
//       },
//   };

#include "web/dom/ExceptionOr.h"
#include "web/script/JSHelpers.h"

#include <JavaScriptCore/JavaScript.h>

#include <algorithm>
#include <array>
#include <cstdint>
#include <functional>
#include <memory>
#include <new>
#include <optional>
#include <string>
#include <string_view>
#include <type_traits>
#include <vector>

namespace script {

class Realm;
struct InterfaceDefinition;

// What every object we make with a JSClass carries as its private data.
struct PrivateData {
    enum class Kind { Wrapper, InterfaceObject };
    explicit PrivateData(Kind kind) : kind(kind) {}
    virtual ~PrivateData() = default;
    Kind kind;
};

// A platform object: which interface it implements and the C++ object behind it. The C++
// object's type is the one its interface (and every interface in its chain) binds.
struct Wrapper final : PrivateData {
    Wrapper(const InterfaceDefinition& interface, std::shared_ptr<void> object, const void* identity)
        : PrivateData(Kind::Wrapper), interface(&interface), object(std::move(object)), identity(identity) {}
    const InterfaceDefinition* interface;
    std::shared_ptr<void> object;
    const void* identity; // key in the realm's identity map, or null
};

// A string usable as a template argument, for member names in thunks.
template <std::size_t N>
struct FixedString {
    constexpr FixedString(const char (&text)[N]) { std::copy_n(text, N, value); }
    constexpr const char* c_str() const { return value; }
    char value[N];
};

class Call;
using ConstructorFunction = JSObjectRef (*)(Call& call);

struct Member {
    enum class Kind { Operation, Attribute, Constant };
    const char* name = nullptr;
    Kind kind = Kind::Operation;
    JSObjectCallAsFunctionCallback function = nullptr; // operation, or attribute getter
    JSObjectCallAsFunctionCallback setter = nullptr;   // writable attribute
    unsigned length = 0;
    double constant = 0;
    bool isStatic = false;
};

struct InterfaceDefinition {
    const char* name = nullptr;
    const InterfaceDefinition* parent = nullptr;
    ConstructorFunction constructor = nullptr; // none: "Illegal constructor"
    unsigned constructorLength = 0;
    std::vector<Member> members = {};
    // Whether the interface object is a property of the global object.
    bool exposed = true;
    // The prototype object inherits from Error.prototype (DOMException).
    bool errorPrototype = false;

    bool inherits(const InterfaceDefinition& other) const
    {
        for (const InterfaceDefinition* definition = this; definition; definition = definition->parent)
            if (definition == &other)
                return true;
        return false;
    }
};

// One call of a binding function: its receiver, arguments and realm, with the conversions of
// WebIDL. Every conversion may run script code and may throw (ScriptThrow).
class Call {
public:
    Call(JSContextRef ctx, JSObjectRef thisObject, std::size_t argc, const JSValueRef argv[]);

    JSContextRef ctx() const { return ctx_; }
    Realm& realm() const { return realm_; }
    JSObjectRef thisObject() const { return thisObject_; }

    std::size_t count() const { return argc_; }
    // The argument, undefined when it was not passed.
    JSValueRef arg(std::size_t i) const { return i < argc_ ? argv_[i] : JSValueMakeUndefined(ctx_); }
    // Passed and not undefined: how WebIDL tells an optional argument apart.
    bool has(std::size_t i) const { return i < argc_ && !JSValueIsUndefined(ctx_, argv_[i]); }

    // unrestricted double
    double number(std::size_t i) const { return toNumber(arg(i)); }
    double toNumber(JSValueRef value) const;
    // N unrestricted doubles from argument `first` on, converted in order as WebIDL asks.
    template <std::size_t N>
    std::array<double, N> numbers(std::size_t first = 0) const
    {
        std::array<double, N> values{};
        for (std::size_t i = 0; i < N; ++i)
            values[i] = number(first + i);
        return values;
    }
    // An optional argument without default: nothing when absent or undefined.
    std::optional<double> optionalNumber(std::size_t i) const
    {
        return has(i) ? std::optional<double>(number(i)) : std::nullopt;
    }
    double numberOr(std::size_t i, double fallback) const { return has(i) ? number(i) : fallback; }
    // long (ToInt32) and unsigned long (ToUint32), without [EnforceRange]
    std::int32_t toLong(JSValueRef value) const;
    // [EnforceRange] long: a TypeError for NaN, infinities and values out of range.
    std::int32_t enforceRangeLong(std::size_t i) const;
    std::uint32_t toUnsignedLong(JSValueRef value) const;
    bool toBoolean(JSValueRef value) const { return JSValueToBoolean(ctx_, value); }
    bool boolean(std::size_t i) const { return toBoolean(arg(i)); }
    // DOMString as UTF-8
    std::string string(std::size_t i) const { return toString(arg(i)); }
    std::string toString(JSValueRef value) const { return toUTF8(ctx_, value); }
    // An enumeration argument: its text, or a TypeError naming the enumeration.
    template <typename Parse>
    auto enumeration(std::size_t i, Parse parse, const char* typeName) const
    {
        std::string text = string(i);
        auto value = parse(text);
        if (!value)
            throwTypeError("The provided value '" + text + "' is not a valid enum value of type " + typeName + ".");
        return *value;
    }
    // sequence<T>: calls `each(element)` for every element of an iterable.
    template <typename Each>
    void sequence(JSValueRef value, const char* typeName, Each&& each) const
    {
        forEachInIterable(value, typeName, [&](JSValueRef element) { each(element); });
    }
    std::vector<double> numberSequence(JSValueRef value) const;
    // Whether an object has an @@iterator method (how unions tell sequences from dictionaries).
    bool isIterable(JSValueRef value) const;

    // The platform object a value wraps when it implements `interface`, else null.
    template <typename T>
    T* unwrap(JSValueRef value, const InterfaceDefinition& interface) const
    {
        const Wrapper* wrapper = wrapperOf(ctx_, value);
        return wrapper && wrapper->interface->inherits(interface) ? static_cast<T*>(wrapper->object.get()) : nullptr;
    }
    static const Wrapper* wrapperOf(JSContextRef ctx, JSValueRef value);

    [[noreturn]] void throwTypeError(const std::string& message) const;
    [[noreturn]] void throwException(const DOMException& exception) const;
    template <typename T>
    T check(ExceptionOr<T>&& result) const
    {
        if (result.isException())
            throwException(result.exception());
        return result.releaseValue();
    }
    void check(ExceptionOr<void>&& result) const
    {
        if (result.isException())
            throwException(result.exception());
    }

    JSValueRef undefined() const { return JSValueMakeUndefined(ctx_); }
    JSValueRef null() const { return JSValueMakeNull(ctx_); }
    JSValueRef toJS(double value) const { return JSValueMakeNumber(ctx_, value); }
    JSValueRef toJS(bool value) const { return JSValueMakeBoolean(ctx_, value); }
    JSValueRef toJS(std::string_view value) const { return makeString(ctx_, value); }

    // Throws a TypeError unless `required` arguments were passed.
    void requireArguments(unsigned required, const char* interface, const char* member, bool constructing = false) const;

private:
    void forEachInIterable(JSValueRef value, const char* typeName, const std::function<void(JSValueRef)>& each) const;

    JSContextRef ctx_;
    Realm& realm_;
    JSObjectRef thisObject_;
    std::size_t argc_;
    const JSValueRef* argv_;
};

namespace detail {

// The script exception for a C++ exception other than ScriptThrow (called inside a catch).
JSValueRef currentExceptionAsScriptError(JSContextRef ctx);

// The engine drops its lock around every callback, and each API call would take it and let it
// go again (with the heap access that comes with it); holding it once for the whole callback
// makes those nested and cheap.
class CallbackLock {
public:
    explicit CallbackLock(JSContextRef ctx);
    ~CallbackLock();
    CallbackLock(const CallbackLock&) = delete;
    CallbackLock& operator=(const CallbackLock&) = delete;

private:
    JSContextRef ctx_;
};

// Runs a binding body at the boundary with the engine: C++ errors become script exceptions.
template <typename Body>
JSValueRef boundary(JSContextRef ctx, JSValueRef* exception, Body&& body)
{
    CallbackLock lock(ctx);
    try {
        return body();
    } catch (const ScriptThrow& thrown) {
        *exception = thrown.value;
    } catch (...) {
        *exception = currentExceptionAsScriptError(ctx);
    }
    return nullptr;
}

[[noreturn]] void throwIllegalInvocation(const Call& call);

template <typename T>
T& receiver(const Call& call, const InterfaceDefinition& interface)
{
    if constexpr (std::is_same_v<std::remove_const_t<T>, Wrapper>) {
        const Wrapper* wrapper = Call::wrapperOf(call.ctx(), call.thisObject());
        if (!wrapper || !wrapper->interface->inherits(interface))
            throwIllegalInvocation(call);
        return *wrapper;
    } else {
        T* self = call.unwrap<T>(call.thisObject(), interface);
        if (!self)
            throwIllegalInvocation(call);
        return *self;
    }
}

template <typename Result>
JSValueRef result(const Call& call, Result&& value)
{
    using R = std::decay_t<Result>;
    if constexpr (std::is_same_v<R, JSValueRef> || std::is_same_v<R, JSObjectRef>)
        return value ? JSValueRef(value) : call.null();
    else if constexpr (std::is_same_v<R, bool>)
        return call.toJS(bool(value));
    else if constexpr (std::is_arithmetic_v<R>)
        return call.toJS(double(value));
    else
        return call.toJS(std::string_view(value));
}

// The receiver type a member lambda takes as its second parameter.
template <typename F>
struct SecondParameter : SecondParameter<decltype(&F::operator())> {};
template <typename C, typename R, typename A, typename B, typename... Rest>
struct SecondParameter<R (C::*)(A, B, Rest...) const> {
    using type = std::remove_reference_t<B>;
};

template <typename F, typename... Args>
JSValueRef invoke(Call& call, Args&&... args)
{
    if constexpr (std::is_void_v<std::invoke_result_t<F, Call&, Args...>>) {
        F{}(call, std::forward<Args>(args)...);
        return call.undefined();
    } else {
        return result(call, F{}(call, std::forward<Args>(args)...));
    }
}

template <const InterfaceDefinition& Interface, FixedString Name, unsigned Required, typename F>
JSValueRef operationThunk(JSContextRef ctx, JSObjectRef, JSObjectRef thisObject, std::size_t argc,
                          const JSValueRef argv[], JSValueRef* exception)
{
    return boundary(ctx, exception, [&] {
        Call call(ctx, thisObject, argc, argv);
        auto& self = receiver<typename SecondParameter<F>::type>(call, Interface);
        call.requireArguments(Required, Interface.name, Name.c_str());
        return invoke<F>(call, self);
    });
}

template <const InterfaceDefinition& Interface, FixedString Name, unsigned Required, typename F>
JSValueRef staticOperationThunk(JSContextRef ctx, JSObjectRef, JSObjectRef thisObject, std::size_t argc,
                                const JSValueRef argv[], JSValueRef* exception)
{
    return boundary(ctx, exception, [&] {
        Call call(ctx, thisObject, argc, argv);
        call.requireArguments(Required, Interface.name, Name.c_str());
        return invoke<F>(call);
    });
}

template <const InterfaceDefinition& Interface, typename F>
JSValueRef getterThunk(JSContextRef ctx, JSObjectRef, JSObjectRef thisObject, std::size_t argc,
                       const JSValueRef argv[], JSValueRef* exception)
{
    return boundary(ctx, exception, [&] {
        Call call(ctx, thisObject, argc, argv);
        return invoke<F>(call, receiver<typename SecondParameter<F>::type>(call, Interface));
    });
}

template <const InterfaceDefinition& Interface, FixedString Name, typename F>
JSValueRef setterThunk(JSContextRef ctx, JSObjectRef, JSObjectRef thisObject, std::size_t argc,
                       const JSValueRef argv[], JSValueRef* exception)
{
    return boundary(ctx, exception, [&] {
        Call call(ctx, thisObject, argc, argv);
        auto& self = receiver<typename SecondParameter<F>::type>(call, Interface);
        call.requireArguments(1, Interface.name, Name.c_str());
        F{}(call, self, call.arg(0));
        return call.undefined();
    });
}

} // namespace detail

// operation<interface, "name", requiredArguments>([](Call&, Self&) { ... })
template <const InterfaceDefinition& Interface, FixedString Name, unsigned Required, typename F>
Member operation(F)
{
    return {Name.c_str(), Member::Kind::Operation, &detail::operationThunk<Interface, Name, Required, F>, nullptr, Required};
}

// A static operation on the interface object: [](Call&) { ... }
template <const InterfaceDefinition& Interface, FixedString Name, unsigned Required, typename F>
Member staticOperation(F)
{
    Member member{Name.c_str(), Member::Kind::Operation,
                  &detail::staticOperationThunk<Interface, Name, Required, F>, nullptr, Required};
    member.isStatic = true;
    return member;
}

// attribute<interface, "name">([](Call&, Self&) { return ...; }, [](Call&, Self&, JSValueRef) { ... })
template <const InterfaceDefinition& Interface, FixedString Name, typename Get, typename Set>
Member attribute(Get, Set)
{
    return {Name.c_str(), Member::Kind::Attribute, &detail::getterThunk<Interface, Get>,
            &detail::setterThunk<Interface, Name, Set>};
}

template <const InterfaceDefinition& Interface, FixedString Name, typename Get>
Member readonlyAttribute(Get)
{
    return {Name.c_str(), Member::Kind::Attribute, &detail::getterThunk<Interface, Get>, nullptr};
}

inline Member constant(const char* name, double value)
{
    Member member{name, Member::Kind::Constant};
    member.constant = value;
    return member;
}

} // namespace script
