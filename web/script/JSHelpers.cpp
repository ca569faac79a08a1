#include "web/script/JSHelpers.h"

#include <algorithm>
#include <string>

namespace script {

namespace {

bool isASCII(std::string_view text)
{
    unsigned char any = 0;
    for (char c : text)
        any |= static_cast<unsigned char>(c);
    return any < 0x80;
}

} // namespace

JSString::JSString(std::string_view utf8)
{
    // Long ASCII texts (data URLs above all) are widened here: the engine's UTF-8 decoder takes
    // several times as long, and a terminated copy would come on top.
    if (utf8.size() > 64 && isASCII(utf8)) {
        std::u16string units(utf8.size(), u'\0');
        for (std::size_t i = 0; i < utf8.size(); ++i)
            units[i] = char16_t(static_cast<unsigned char>(utf8[i]));
        string_ = JSStringCreateWithCharacters(reinterpret_cast<const JSChar*>(units.data()), units.size());
        return;
    }
    // JSStringCreateWithUTF8CString needs a terminated string and stops at the first NUL, so
    // text with NULs goes through UTF-16.
    if (utf8.find('\0') == std::string_view::npos) {
        std::string terminated(utf8);
        string_ = JSStringCreateWithUTF8CString(terminated.c_str());
        return;
    }
    std::u16string units;
    units.reserve(utf8.size());
    for (std::size_t i = 0; i < utf8.size();) {
        unsigned char lead = static_cast<unsigned char>(utf8[i]);
        char32_t code = 0xFFFD;
        std::size_t length = lead < 0x80 ? 1 : lead >= 0xF0 ? 4 : lead >= 0xE0 ? 3 : lead >= 0xC0 ? 2 : 1;
        if (length == 1 && lead < 0x80)
            code = lead;
        else if (length > 1 && i + length <= utf8.size()) {
            code = lead & (0xFF >> (length + 1));
            for (std::size_t k = 1; k < length; ++k)
                code = (code << 6) | (static_cast<unsigned char>(utf8[i + k]) & 0x3F);
        }
        i += std::min(length, utf8.size() - i);
        if (code >= 0x10000 && code <= 0x10FFFF) {
            code -= 0x10000;
            units.push_back(char16_t(0xD800 + (code >> 10)));
            units.push_back(char16_t(0xDC00 + (code & 0x3FF)));
        } else {
            units.push_back(char16_t(code > 0x10FFFF ? 0xFFFD : code));
        }
    }
    string_ = JSStringCreateWithCharacters(reinterpret_cast<const JSChar*>(units.data()), units.size());
}

JSString& JSString::operator=(JSString&& other) noexcept
{
    if (this != &other) {
        if (string_)
            JSStringRelease(string_);
        string_ = std::exchange(other.string_, nullptr);
    }
    return *this;
}

JSString::~JSString()
{
    if (string_)
        JSStringRelease(string_);
}

std::string JSString::utf8() const
{
    return string_ ? toUTF8(string_) : std::string();
}

std::string toUTF8(JSStringRef string)
{
    // Encode by hand: the engine's own conversion stops at an embedded NUL.
    const JSChar* units = JSStringGetCharactersPtr(string);
    std::size_t length = JSStringGetLength(string);
    std::size_t ascii = 0;
    while (ascii < length && units[ascii] < 0x80)
        ++ascii;
    if (ascii == length) {
        std::string out(length, '\0');
        for (std::size_t i = 0; i < length; ++i)
            out[i] = char(units[i]);
        return out;
    }
    std::string out(length * 3, '\0');
    char* write = out.data();
    for (std::size_t i = 0; i < length; ++i) {
        char32_t code = units[i];
        if (code < 0x80) {
            *write++ = char(code);
            continue;
        }
        if (code >= 0xD800 && code <= 0xDBFF && i + 1 < length && units[i + 1] >= 0xDC00 && units[i + 1] <= 0xDFFF) {
            code = 0x10000 + ((code - 0xD800) << 10) + (units[i + 1] - 0xDC00);
            ++i;
        } else if (code >= 0xD800 && code <= 0xDFFF) {
            code = 0xFFFD;
        }
        if (code < 0x800) {
            *write++ = char(0xC0 | (code >> 6));
        } else if (code < 0x10000) {
            *write++ = char(0xE0 | (code >> 12));
            *write++ = char(0x80 | ((code >> 6) & 0x3F));
        } else {
            *write++ = char(0xF0 | (code >> 18));
            *write++ = char(0x80 | ((code >> 12) & 0x3F));
            *write++ = char(0x80 | ((code >> 6) & 0x3F));
        }
        *write++ = char(0x80 | (code & 0x3F));
    }
    out.resize(std::size_t(write - out.data()));
    return out;
}

JSValueRef makeString(JSContextRef ctx, std::string_view utf8)
{
    JSString string(utf8);
    return JSValueMakeString(ctx, string.get());
}

JSValueRef makeString(JSContextRef ctx, std::u16string_view utf16)
{
    JSString string = JSString::adopt(JSStringCreateWithCharacters(reinterpret_cast<const JSChar*>(utf16.data()), utf16.size()));
    return JSValueMakeString(ctx, string.get());
}

std::string toUTF8(JSContextRef ctx, JSValueRef value)
{
    JSValueRef exception = nullptr;
    JSStringRef string = JSValueToStringCopy(ctx, value, &exception);
    rethrowIf(exception);
    if (!string)
        throw ScriptThrow{JSValueMakeUndefined(ctx)};
    return JSString::adopt(string).utf8();
}

JSValueRef getProperty(JSContextRef ctx, JSObjectRef object, const char* name)
{
    JSString key(name);
    JSValueRef exception = nullptr;
    JSValueRef value = JSObjectGetProperty(ctx, object, key.get(), &exception);
    rethrowIf(exception);
    return value;
}

void setProperty(JSContextRef ctx, JSObjectRef object, const char* name, JSValueRef value,
                 JSPropertyAttributes attributes)
{
    JSString key(name);
    JSValueRef exception = nullptr;
    JSObjectSetProperty(ctx, object, key.get(), value, attributes, &exception);
    rethrowIf(exception);
}

JSObjectRef toObject(JSContextRef ctx, JSValueRef value)
{
    JSValueRef exception = nullptr;
    JSObjectRef object = JSValueToObject(ctx, value, &exception);
    rethrowIf(exception);
    return object;
}

} // namespace script
