#include "web/canvas/HTMLCanvasElement.h"
#include "web/dom/ComputedStyle.h"
#include "web/dom/HTMLImageElement.h"
#include "web/geometry/NumberToString.h"
#include "web/script/Bindings.h"
#include "web/script/ElementBindings.h"
#include "web/script/Realm.h"

namespace script {

namespace {

struct StyleDeclaration {
    std::shared_ptr<Element> element;
    bool computed = false;
};

// A computed width or height: what the style says, else (for "auto") the size a canvas or an
// image takes without layout.
std::string computedSize(const Element& element, const ComputedStyle& style, bool width)
{
    const std::string& value = width ? style.width : style.height;
    if (value != "auto")
        return value;
    if (auto* canvas = dynamic_cast<const HTMLCanvasElement*>(&element))
        return numberToString(width ? canvas->width() : canvas->height()) + "px";
    if (auto* image = dynamic_cast<const HTMLImageElement*>(&element))
        return numberToString(width ? image->width() : image->height()) + "px";
    return value;
}

std::string computedValue(const Element& element, std::string_view name)
{
    // An element out of the document has no computed style: every property reads as "".
    if (!element.isConnected())
        return "";
    ComputedStyle style = element.computedStyle();
    auto id = cssPropertyID(name);
    if (id == CSSPropertyID::Width || id == CSSPropertyID::Height)
        return computedSize(element, style, id == CSSPropertyID::Width);
    return style.propertyValue(name);
}

std::string valueOf(const StyleDeclaration& style, std::string_view name)
{
    return style.computed ? computedValue(*style.element, name) : style.element->inlineStyle().propertyValue(name);
}

void requireWritable(const Call& call, const StyleDeclaration& style, const char* member)
{
    if (style.computed)
        call.throwException({"NoModificationAllowedError", std::string("Failed to execute '") + member
                                 + "' on 'CSSStyleDeclaration': These styles are computed, and therefore read-only."});
}

// [LegacyNullToEmptyString] DOMString
std::string valueArgument(const Call& call, JSValueRef value)
{
    return JSValueIsNull(call.ctx(), value) ? std::string() : call.toString(value);
}

template <FixedString Name, FixedString Property>
Member property()
{
    return attribute<cssStyleDeclarationInterface, Name>(
        [](Call&, StyleDeclaration& style) { return valueOf(style, Property.c_str()); },
        [](Call& call, StyleDeclaration& style, JSValueRef value) {
            requireWritable(call, style, "setProperty");
            style.element->setStyleProperty(Property.c_str(), valueArgument(call, value));
        });
}

std::vector<Member> styleMembers()
{
    std::vector<Member> members = {
        attribute<cssStyleDeclarationInterface, "cssText">(
            [](Call&, StyleDeclaration& style) { return style.computed ? std::string() : style.element->inlineStyle().cssText(); },
            [](Call& call, StyleDeclaration& style, JSValueRef value) {
                requireWritable(call, style, "cssText");
                style.element->setStyleText(valueArgument(call, value));
            }),
        readonlyAttribute<cssStyleDeclarationInterface, "length">([](Call&, StyleDeclaration& style) {
            if (style.computed)
                return double(style.element->isConnected() ? kCSSPropertyCount : 0);
            return double(style.element->inlineStyle().length());
        }),
        operation<cssStyleDeclarationInterface, "item", 1>([](Call& call, StyleDeclaration& style) {
            std::uint32_t index = call.toUnsignedLong(call.arg(0));
            if (style.computed)
                return std::string(index < kCSSPropertyCount && style.element->isConnected()
                                       ? cssPropertyName(CSSPropertyID(index))
                                       : std::string_view());
            return std::string(style.element->inlineStyle().item(index));
        }),
        operation<cssStyleDeclarationInterface, "getPropertyValue", 1>([](Call& call, StyleDeclaration& style) {
            return valueOf(style, call.string(0));
        }),
        operation<cssStyleDeclarationInterface, "getPropertyPriority", 1>([](Call& call, StyleDeclaration&) {
            call.string(0);
            return std::string();
        }),
        operation<cssStyleDeclarationInterface, "setProperty", 2>([](Call& call, StyleDeclaration& style) {
            requireWritable(call, style, "setProperty");
            std::string name = call.string(0);
            std::string value = valueArgument(call, call.arg(1));
            std::string priority = call.has(2) ? call.string(2) : std::string();
            if (!priority.empty() && priority != "important")
                return;
            style.element->setStyleProperty(name, value);
        }),
        operation<cssStyleDeclarationInterface, "removeProperty", 1>([](Call& call, StyleDeclaration& style) {
            requireWritable(call, style, "removeProperty");
            return style.element->removeStyleProperty(call.string(0));
        }),
        property<"color", "color">(),
        property<"font", "font">(),
        property<"fontFamily", "font-family">(),
        property<"font-family", "font-family">(),
        property<"fontSize", "font-size">(),
        property<"font-size", "font-size">(),
        property<"fontStyle", "font-style">(),
        property<"font-style", "font-style">(),
        property<"fontVariant", "font-variant">(),
        property<"font-variant", "font-variant">(),
        property<"fontWeight", "font-weight">(),
        property<"font-weight", "font-weight">(),
        property<"fontStretch", "font-stretch">(),
        property<"font-stretch", "font-stretch">(),
        property<"lineHeight", "line-height">(),
        property<"line-height", "line-height">(),
        property<"width", "width">(),
        property<"height", "height">(),
        property<"display", "display">(),
        property<"direction", "direction">(),
        property<"visibility", "visibility">(),
        property<"position", "position">(),
        property<"letterSpacing", "letter-spacing">(),
        property<"letter-spacing", "letter-spacing">(),
        property<"wordSpacing", "word-spacing">(),
        property<"word-spacing", "word-spacing">(),
        property<"textAlign", "text-align">(),
        property<"text-align", "text-align">(),
        property<"margin", "margin">(),
        property<"padding", "padding">(),
        property<"unicodeBidi", "unicode-bidi">(),
        property<"unicode-bidi", "unicode-bidi">(),
    };
    return members;
}

JSValueRef getComputedStyle(JSContextRef ctx, JSObjectRef, JSObjectRef thisObject, std::size_t argc,
                            const JSValueRef argv[], JSValueRef* exception)
{
    return detail::boundary(ctx, exception, [&]() -> JSValueRef {
        Call call(ctx, thisObject, argc, argv);
        call.requireArguments(1, "Window", "getComputedStyle");
        auto element = elementOf(call, call.arg(0));
        if (!element)
            call.throwTypeError("Failed to execute 'getComputedStyle' on 'Window': parameter 1 is not of type 'Element'.");
        return makeStyleDeclaration(call.realm(), std::move(element), true);
    });
}

} // namespace

InterfaceDefinition cssStyleDeclarationInterface = {
    .name = "CSSStyleDeclaration",
    .members = styleMembers(),
};

JSObjectRef makeStyleDeclaration(Realm& realm, std::shared_ptr<Element> element, bool computed)
{
    return realm.wrap(cssStyleDeclarationInterface, std::make_shared<StyleDeclaration>(StyleDeclaration{std::move(element), computed}));
}

void installGetComputedStyle(Realm& realm)
{
    JSContextRef ctx = realm.context();
    JSString name("getComputedStyle");
    JSObjectRef function = JSObjectMakeFunctionWithCallback(ctx, name.get(), getComputedStyle);
    realm.defineValue(function, makeString(ctx, "length"), JSValueMakeNumber(ctx, 1), false, false, true);
    realm.defineValue(realm.global(), makeString(ctx, "getComputedStyle"), function, true, true, true);
}

} // namespace script
