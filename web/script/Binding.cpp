#include "web/script/Binding.h"

#include "web/script/JSCPrivate.h"
#include "web/script/Realm.h"

#include <cmath>
#include <new>
#include <stdexcept>

namespace script {

namespace {

// Longest sequence a binding converts; an endless iterator ends here instead of in memory.
constexpr std::size_t kMaxSequenceLength = std::size_t(1) << 24;

double moduloTwoToThe32(double value)
{
    if (!std::isfinite(value))
        return 0;
    double x = std::trunc(value);
    x = std::fmod(x, 4294967296.0);
    if (x < 0)
        x += 4294967296.0;
    return x;
}

} // namespace

Call::Call(JSContextRef ctx, JSObjectRef thisObject, std::size_t argc, const JSValueRef argv[])
    : ctx_(ctx)
    , realm_(Realm::of(ctx))
    , thisObject_(thisObject)
    , argc_(argc)
    , argv_(argv)
{
}

double Call::toNumber(JSValueRef value) const
{
    JSValueRef exception = nullptr;
    // The engine's API converts a BigInt quietly, where WebIDL's ToNumber throws.
    if (JSValueIsBigInt(ctx_, value))
        throwTypeError("Cannot convert a BigInt value to a number");
    if (JSValueIsObject(ctx_, value)) {
        JSObjectRef convert = toObject(ctx_, getProperty(ctx_, realm_.intrinsics(), "toNumber"));
        value = JSObjectCallAsFunction(ctx_, convert, nullptr, 1, &value, &exception);
        rethrowIf(exception);
    }
    double number = JSValueToNumber(ctx_, value, &exception);
    rethrowIf(exception);
    return number;
}

std::int32_t Call::toLong(JSValueRef value) const
{
    double x = moduloTwoToThe32(toNumber(value));
    return std::int32_t(x >= 2147483648.0 ? x - 4294967296.0 : x);
}

std::int32_t Call::enforceRangeLong(std::size_t i) const
{
    double x = number(i);
    if (!std::isfinite(x))
        throwTypeError("Value is not a finite number.");
    x = std::trunc(x);
    if (x < -2147483648.0 || x > 2147483647.0)
        throwTypeError("Value is outside the 'long' value range.");
    return std::int32_t(x);
}

std::uint32_t Call::toUnsignedLong(JSValueRef value) const
{
    return std::uint32_t(moduloTwoToThe32(toNumber(value)));
}

std::vector<double> Call::numberSequence(JSValueRef value) const
{
    std::vector<double> numbers;
    forEachInIterable(value, "sequence", [&](JSValueRef element) { numbers.push_back(toNumber(element)); });
    return numbers;
}

void Call::forEachInIterable(JSValueRef value, const char* typeName, const std::function<void(JSValueRef)>& each) const
{
    if (!JSValueIsObject(ctx_, value))
        throwTypeError(std::string("The provided value cannot be converted to a ") + typeName + ".");
    auto object = const_cast<JSObjectRef>(value);
    JSValueRef exception = nullptr;
    JSValueRef method = JSObjectGetPropertyForKey(ctx_, object, realm_.iteratorSymbol(), &exception);
    rethrowIf(exception);
    if (!JSValueIsObject(ctx_, method) || !JSObjectIsFunction(ctx_, const_cast<JSObjectRef>(method)))
        throwTypeError(std::string("The provided value cannot be converted to a ") + typeName + ".");
    JSValueRef iterator = JSObjectCallAsFunction(ctx_, const_cast<JSObjectRef>(method), object, 0, nullptr, &exception);
    rethrowIf(exception);
    if (!JSValueIsObject(ctx_, iterator))
        throwTypeError("The iterator is not an object.");
    auto iteratorObject = const_cast<JSObjectRef>(iterator);
    JSValueRef next = getProperty(ctx_, iteratorObject, "next");
    if (!JSValueIsObject(ctx_, next) || !JSObjectIsFunction(ctx_, const_cast<JSObjectRef>(next)))
        throwTypeError("The iterator's next is not a function.");
    for (std::size_t count = 0;; ++count) {
        JSValueRef step = JSObjectCallAsFunction(ctx_, const_cast<JSObjectRef>(next), iteratorObject, 0, nullptr, &exception);
        rethrowIf(exception);
        if (!JSValueIsObject(ctx_, step))
            throwTypeError("The iterator.next() method returned a non-object value.");
        auto stepObject = const_cast<JSObjectRef>(step);
        if (JSValueToBoolean(ctx_, getProperty(ctx_, stepObject, "done")))
            return;
        if (count >= kMaxSequenceLength)
            throw ScriptThrow{realm_.rangeError("The sequence is too long.")};
        each(getProperty(ctx_, stepObject, "value"));
    }
}

bool Call::isIterable(JSValueRef value) const
{
    if (!JSValueIsObject(ctx_, value))
        return false;
    JSValueRef exception = nullptr;
    JSValueRef method = JSObjectGetPropertyForKey(ctx_, const_cast<JSObjectRef>(value), realm_.iteratorSymbol(), &exception);
    rethrowIf(exception);
    return !JSValueIsUndefined(ctx_, method) && !JSValueIsNull(ctx_, method);
}

const Wrapper* Call::wrapperOf(JSContextRef ctx, JSValueRef value)
{
    if (!value || !JSValueIsObject(ctx, value))
        return nullptr;
    auto* data = static_cast<PrivateData*>(JSObjectGetPrivate(const_cast<JSObjectRef>(value)));
    if (!data || data->kind != PrivateData::Kind::Wrapper)
        return nullptr;
    return static_cast<const Wrapper*>(data);
}

void Call::throwTypeError(const std::string& message) const
{
    throw ScriptThrow{realm_.typeError(message)};
}

void Call::throwException(const DOMException& exception) const
{
    throw ScriptThrow{realm_.error(exception)};
}

void Call::requireArguments(unsigned required, const char* interface, const char* member, bool constructing) const
{
    if (argc_ >= required)
        return;
    std::string message = constructing ? std::string("Failed to construct '") + interface + "': "
                                       : std::string("Failed to execute '") + member + "' on '" + interface + "': ";
    message += std::to_string(required) + (required == 1 ? " argument" : " arguments") + " required, but only "
        + std::to_string(argc_) + " present.";
    throwTypeError(message);
}

namespace detail {

CallbackLock::CallbackLock(JSContextRef ctx)
    : ctx_(ctx)
{
    JSLock(ctx_);
}

CallbackLock::~CallbackLock()
{
    JSUnlock(ctx_);
}

JSValueRef currentExceptionAsScriptError(JSContextRef ctx)
{
    try {
        throw;
    } catch (const std::bad_alloc&) {
        return Realm::of(ctx).rangeError("Out of memory");
    } catch (const std::length_error&) {
        return Realm::of(ctx).rangeError("Out of memory");
    } catch (const std::exception& error) {
        JSValueRef message = makeString(ctx, error.what());
        return JSObjectMakeError(ctx, 1, &message, nullptr);
    } catch (...) {
        JSValueRef message = makeString(ctx, "internal error");
        return JSObjectMakeError(ctx, 1, &message, nullptr);
    }
}

void throwIllegalInvocation(const Call& call)
{
    call.throwTypeError("Illegal invocation");
}

} // namespace detail

} // namespace script
