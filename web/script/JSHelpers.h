#pragma once

#include <JavaScriptCore/JavaScript.h>

#include <string>
#include <string_view>
#include <utility>

namespace script {

// An owned JSStringRef.
class JSString {
public:
    explicit JSString(std::string_view utf8);
    // Takes over a reference the caller got from a *Copy or *Create function.
    static JSString adopt(JSStringRef string) { return JSString(string); }
    JSString(JSString&& other) noexcept : string_(std::exchange(other.string_, nullptr)) {}
    JSString& operator=(JSString&& other) noexcept;
    JSString(const JSString&) = delete;
    JSString& operator=(const JSString&) = delete;
    ~JSString();

    JSStringRef get() const { return string_; }
    std::string utf8() const;

private:
    explicit JSString(JSStringRef string) : string_(string) {}
    JSStringRef string_ = nullptr;
};

// Text of a string reference; unpaired surrogates become U+FFFD.
std::string toUTF8(JSStringRef string);
JSValueRef makeString(JSContextRef ctx, std::string_view utf8);
JSValueRef makeString(JSContextRef ctx, std::u16string_view utf16);

// A JavaScript exception on its way through binding code. The callback that JavaScriptCore
// called catches it and hands the value back as the callback's exception.
struct ScriptThrow {
    JSValueRef value;
};

// Throws ScriptThrow when an API call reported an exception.
inline void rethrowIf(JSValueRef exception)
{
    if (exception)
        throw ScriptThrow{exception};
}

// ToString, as scripts see it (may run script code, may throw).
std::string toUTF8(JSContextRef ctx, JSValueRef value);

JSValueRef getProperty(JSContextRef ctx, JSObjectRef object, const char* name);
void setProperty(JSContextRef ctx, JSObjectRef object, const char* name, JSValueRef value,
                 JSPropertyAttributes attributes = kJSPropertyAttributeNone);
JSObjectRef toObject(JSContextRef ctx, JSValueRef value);

} // namespace script
