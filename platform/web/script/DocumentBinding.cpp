#include "platform/web/canvas/CanvasRenderingContext2D.h"
#include "platform/web/canvas/HTMLCanvasElement.h"
#include "platform/web/script/Bindings.h"
#include "platform/web/script/Realm.h"

#include <algorithm>
#include <cctype>

namespace script {

namespace {

struct DocumentData {};

// An element other than a canvas: it has a name and takes part in nothing.
struct ElementData {
    std::string localName;
};

std::string localNameOf(const Wrapper& element)
{
    if (element.interface == &htmlCanvasElementInterface)
        return "canvas";
    return static_cast<const ElementData*>(element.object.get())->localName;
}

std::string upper(std::string text)
{
    for (char& ch : text)
        ch = char(std::toupper(static_cast<unsigned char>(ch)));
    return text;
}

bool isValidElementName(std::string_view name)
{
    if (name.empty() || std::isdigit(static_cast<unsigned char>(name[0])) || name[0] == '-' || name[0] == '.')
        return false;
    for (char ch : name)
        if (std::isspace(static_cast<unsigned char>(ch)) || std::string_view("<>\"'/=&").find(ch) != std::string_view::npos)
            return false;
    return true;
}

JSObjectRef makeElement(Realm& realm, std::string localName)
{
    return realm.wrap(htmlElementInterface, std::make_shared<ElementData>(ElementData{std::move(localName)}));
}

JSObjectRef cachedElement(Call& call, const char* slot, const char* localName)
{
    Realm& realm = call.realm();
    JSValueRef existing = realm.hidden(call.thisObject(), slot);
    if (JSValueIsObject(call.ctx(), existing))
        return const_cast<JSObjectRef>(existing);
    JSObjectRef element = makeElement(realm, localName);
    realm.setHidden(call.thisObject(), slot, element);
    return element;
}

void reportBitmapCost(Call& call, const HTMLCanvasElement& canvas);

// Content attributes live in a null-prototype object the element's wrapper holds.
JSObjectRef attributeStore(Call& call)
{
    Realm& realm = call.realm();
    JSValueRef existing = realm.hidden(call.thisObject(), "attributes");
    if (JSValueIsObject(call.ctx(), existing))
        return const_cast<JSObjectRef>(existing);
    JSObjectRef store = JSObjectMake(call.ctx(), nullptr, nullptr);
    JSObjectSetPrototype(call.ctx(), store, JSValueMakeNull(call.ctx()));
    realm.setHidden(call.thisObject(), "attributes", store);
    return store;
}

std::string attributeName(Call& call, const char* member)
{
    std::string name = call.string(0);
    if (!isValidElementName(name))
        call.throwException({"InvalidCharacterError", std::string("Failed to execute '") + member
                                 + "' on 'Element': '" + name + "' is not a valid attribute name."});
    for (char& ch : name)
        ch = char(std::tolower(static_cast<unsigned char>(ch)));
    return name;
}

std::optional<std::string> getAttribute(Call& call, const std::string& name)
{
    JSString key(name);
    JSObjectRef store = attributeStore(call);
    if (!JSObjectHasProperty(call.ctx(), store, key.get()))
        return std::nullopt;
    return call.toString(getProperty(call.ctx(), store, name.c_str()));
}

// HTML's rules for parsing non-negative integers (leading whitespace, a sign, digits, then
// anything); nothing for an error.
std::optional<unsigned> parseNonNegativeInteger(std::string_view text)
{
    std::size_t i = 0;
    while (i < text.size() && std::string_view(" \t\n\f\r").find(text[i]) != std::string_view::npos)
        ++i;
    bool negative = false;
    if (i < text.size() && (text[i] == '-' || text[i] == '+'))
        negative = text[i++] == '-';
    if (i >= text.size() || !std::isdigit(static_cast<unsigned char>(text[i])))
        return std::nullopt;
    unsigned long long value = 0;
    for (; i < text.size() && std::isdigit(static_cast<unsigned char>(text[i])); ++i)
        value = std::min<unsigned long long>(value * 10 + unsigned(text[i] - '0'), 0xFFFFFFFFull);
    if (negative && value != 0)
        return std::nullopt;
    return unsigned(value);
}

// A canvas's width and height attributes set its size; the default stands for anything else.
void reflectCanvasSize(Call& call, const std::string& name, const std::optional<std::string>& value)
{
    auto* canvas = call.unwrap<HTMLCanvasElement>(call.thisObject(), htmlCanvasElementInterface);
    if (!canvas || (name != "width" && name != "height"))
        return;
    std::optional<unsigned> size = value ? parseNonNegativeInteger(*value) : std::nullopt;
    if (name == "width")
        canvas->setWidth(size.value_or(HTMLCanvasElement::kDefaultWidth));
    else
        canvas->setHeight(size.value_or(HTMLCanvasElement::kDefaultHeight));
}

void setAttribute(Call& call, const std::string& name, const std::string& value)
{
    setProperty(call.ctx(), attributeStore(call), name.c_str(), makeString(call.ctx(), value));
    reflectCanvasSize(call, name, value);
}

void setCanvasSize(Call& call, HTMLCanvasElement& canvas, JSValueRef value, bool width)
{
    std::uint32_t size = call.toUnsignedLong(value);
    width ? canvas.setWidth(size) : canvas.setHeight(size);
    unsigned now = width ? canvas.width() : canvas.height();
    setProperty(call.ctx(), attributeStore(call), width ? "width" : "height", makeString(call.ctx(), std::to_string(now)));
    reportBitmapCost(call, canvas);
}

JSValueRef requireNode(Call& call, std::size_t index, const char* member)
{
    if (!call.unwrap<void>(call.arg(index), htmlElementInterface))
        call.throwTypeError(std::string("Failed to execute '") + member + "' on 'Node': parameter " + std::to_string(index + 1)
                            + " is not of type 'Node'.");
    return call.arg(index);
}

CanvasRenderingContext2DSettings contextSettings(Call& call, JSValueRef options)
{
    CanvasRenderingContext2DSettings settings;
    JSContextRef ctx = call.ctx();
    // getContext's options are `any`: what is not an object (getContext('2d', false), a
    // symbol...) leaves the defaults, as browsers do, rather than failing the call.
    if (!JSValueIsObject(ctx, options))
        return settings;
    auto dictionary = const_cast<JSObjectRef>(options);
    JSValueRef alpha = getProperty(ctx, dictionary, "alpha");
    if (!JSValueIsUndefined(ctx, alpha))
        settings.alpha = call.toBoolean(alpha);
    JSValueRef colorSpace = getProperty(ctx, dictionary, "colorSpace");
    if (!JSValueIsUndefined(ctx, colorSpace)) {
        std::string text = call.toString(colorSpace);
        auto space = parsePredefinedColorSpace(text);
        if (!space)
            call.throwTypeError("The provided value '" + text + "' is not a valid enum value of type PredefinedColorSpace.");
        settings.colorSpace = *space;
    }
    JSValueRef desynchronized = getProperty(ctx, dictionary, "desynchronized");
    if (!JSValueIsUndefined(ctx, desynchronized))
        settings.desynchronized = call.toBoolean(desynchronized);
    JSValueRef willReadFrequently = getProperty(ctx, dictionary, "willReadFrequently");
    if (!JSValueIsUndefined(ctx, willReadFrequently))
        settings.willReadFrequently = call.toBoolean(willReadFrequently);
    return settings;
}

void reportBitmapCost(Call& call, const HTMLCanvasElement& canvas)
{
    // The collector does not see the bitmap's memory; tell it, so that garbage canvases go.
    if (canvas.hasBitmap())
        JSReportExtraMemoryCost(call.ctx(), std::size_t(canvas.width()) * canvas.height() * 4);
}

JSValueRef getContext(Call& call, HTMLCanvasElement& canvas)
{
    std::string contextId = call.string(0);
    if (contextId != "2d")
        return call.null();
    bool made = !canvas.context2d();
    // An existing context is returned as it is: its options are not even read again.
    CanvasRenderingContext2DSettings settings = made ? contextSettings(call, call.arg(1)) : CanvasRenderingContext2DSettings{};
    CanvasRenderingContext2D* context = canvas.getContext2d(settings);
    if (!context)
        return call.null();
    Realm& realm = call.realm();
    std::shared_ptr<CanvasRenderingContext2D> shared(canvas.shared_from_this(), context);
    JSObjectRef wrapper = realm.wrapCached(canvasRenderingContext2DInterface, shared, context);
    if (made)
        reportBitmapCost(call, canvas);
    // Each keeps the other's wrapper: ctx.canvas and getContext give the same objects for as
    // long as either is reachable.
    realm.setHidden(wrapper, "canvas", call.thisObject());
    realm.setHidden(call.thisObject(), "context", wrapper);
    return wrapper;
}

JSObjectRef createElement(Call& call)
{
    std::string name = call.string(0);
    if (!isValidElementName(name)) {
        call.throwException({"InvalidCharacterError",
                             "Failed to execute 'createElement' on 'Document': The tag name provided ('" + name
                                 + "') is not a valid name."});
    }
    for (char& ch : name)
        ch = char(std::tolower(static_cast<unsigned char>(ch)));
    Realm& realm = call.realm();
    if (name == "canvas") {
        auto canvas = HTMLCanvasElement::create();
        const void* identity = canvas.get();
        return realm.wrapCached(htmlCanvasElementInterface, std::move(canvas), identity);
    }
    return makeElement(realm, name);
}

} // namespace

InterfaceDefinition documentInterface = {
    .name = "Document",
    .members = {
        operation<documentInterface, "createElement", 1>([](Call& call, DocumentData&) { return createElement(call); }),
        operation<documentInterface, "getElementById", 1>([](Call& call, DocumentData&) {
            call.string(0);
            return call.null();
        }),
        readonlyAttribute<documentInterface, "body">([](Call& call, DocumentData&) { return cachedElement(call, "body", "body"); }),
        readonlyAttribute<documentInterface, "documentElement">([](Call& call, DocumentData&) {
            return cachedElement(call, "documentElement", "html");
        }),
    },
};

InterfaceDefinition htmlElementInterface = {
    .name = "HTMLElement",
    .members = {
        readonlyAttribute<htmlElementInterface, "tagName">([](Call&, const Wrapper& e) { return upper(localNameOf(e)); }),
        readonlyAttribute<htmlElementInterface, "localName">([](Call&, const Wrapper& e) { return localNameOf(e); }),
        readonlyAttribute<htmlElementInterface, "style">([](Call& call, const Wrapper&) {
            JSValueRef style = call.realm().hidden(call.thisObject(), "style");
            if (JSValueIsObject(call.ctx(), style))
                return style;
            JSObjectRef object = JSObjectMake(call.ctx(), nullptr, nullptr);
            call.realm().setHidden(call.thisObject(), "style", object);
            return JSValueRef(object);
        }),
        attribute<htmlElementInterface, "id">(
            [](Call& call, const Wrapper&) { return getAttribute(call, "id").value_or(""); },
            [](Call& call, const Wrapper&, JSValueRef value) { setAttribute(call, "id", call.toString(value)); }),
        operation<htmlElementInterface, "getAttribute", 1>([](Call& call, const Wrapper&) -> JSValueRef {
            auto value = getAttribute(call, attributeName(call, "getAttribute"));
            return value ? call.toJS(*value) : call.null();
        }),
        operation<htmlElementInterface, "hasAttribute", 1>([](Call& call, const Wrapper&) {
            return getAttribute(call, attributeName(call, "hasAttribute")).has_value();
        }),
        operation<htmlElementInterface, "setAttribute", 2>([](Call& call, const Wrapper&) {
            std::string name = attributeName(call, "setAttribute");
            setAttribute(call, name, call.string(1));
        }),
        operation<htmlElementInterface, "removeAttribute", 1>([](Call& call, const Wrapper&) {
            std::string name = attributeName(call, "removeAttribute");
            JSString key(name);
            JSObjectDeleteProperty(call.ctx(), attributeStore(call), key.get(), nullptr);
            reflectCanvasSize(call, name, std::nullopt);
        }),
        operation<htmlElementInterface, "appendChild", 1>([](Call& call, const Wrapper&) { return requireNode(call, 0, "appendChild"); }),
        operation<htmlElementInterface, "removeChild", 1>([](Call& call, const Wrapper&) { return requireNode(call, 0, "removeChild"); }),
        operation<htmlElementInterface, "append", 0>([](Call&, const Wrapper&) {}),
        operation<htmlElementInterface, "remove", 0>([](Call&, const Wrapper&) {}),
    },
};

InterfaceDefinition htmlCanvasElementInterface = {
    .name = "HTMLCanvasElement",
    .parent = &htmlElementInterface,
    .members = {
        attribute<htmlCanvasElementInterface, "width">(
            [](Call&, HTMLCanvasElement& canvas) { return canvas.width(); },
            [](Call& call, HTMLCanvasElement& canvas, JSValueRef value) { setCanvasSize(call, canvas, value, true); }),
        attribute<htmlCanvasElementInterface, "height">(
            [](Call&, HTMLCanvasElement& canvas) { return canvas.height(); },
            [](Call& call, HTMLCanvasElement& canvas, JSValueRef value) { setCanvasSize(call, canvas, value, false); }),
        operation<htmlCanvasElementInterface, "getContext", 1>([](Call& call, HTMLCanvasElement& canvas) { return getContext(call, canvas); }),
        operation<htmlCanvasElementInterface, "toDataURL", 0>([](Call& call, HTMLCanvasElement& canvas) {
            std::string type = call.has(0) ? call.string(0) : std::string("image/png");
            std::optional<double> quality;
            if (JSValueIsNumber(call.ctx(), call.arg(1)))
                quality = call.number(1);
            return canvas.toDataURL(type, quality);
        }),
    },
};

JSObjectRef makeDocument(Realm& realm)
{
    return realm.wrap(documentInterface, std::make_shared<DocumentData>());
}

} // namespace script
