#include "platform/web/canvas/CanvasRenderingContext2D.h"
#include "platform/web/canvas/HTMLCanvasElement.h"
#include "platform/web/script/Bindings.h"
#include "platform/web/script/Realm.h"

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
    if (JSValueIsUndefined(ctx, options) || JSValueIsNull(ctx, options))
        return settings;
    if (!JSValueIsObject(ctx, options))
        call.throwTypeError("Failed to execute 'getContext' on 'HTMLCanvasElement': The provided value is not of type 'CanvasRenderingContext2DSettings'.");
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
    if (canvas.hasBitmap())
        JSReportExtraMemoryCost(call.ctx(), std::size_t(canvas.width()) * canvas.height() * 4);
}

JSValueRef getContext(Call& call, HTMLCanvasElement& canvas)
{
    std::string contextId = call.string(0);
    if (contextId != "2d")
        return call.null();
    CanvasRenderingContext2DSettings settings = contextSettings(call, call.arg(1));
    bool made = !canvas.context2d();
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

InterfaceSpec documentInterface = {
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

InterfaceSpec htmlElementInterface = {
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
        operation<htmlElementInterface, "appendChild", 1>([](Call& call, const Wrapper&) { return requireNode(call, 0, "appendChild"); }),
        operation<htmlElementInterface, "removeChild", 1>([](Call& call, const Wrapper&) { return requireNode(call, 0, "removeChild"); }),
        operation<htmlElementInterface, "append", 0>([](Call&, const Wrapper&) {}),
        operation<htmlElementInterface, "remove", 0>([](Call&, const Wrapper&) {}),
    },
};

InterfaceSpec htmlCanvasElementInterface = {
    .name = "HTMLCanvasElement",
    .parent = &htmlElementInterface,
    .members = {
        attribute<htmlCanvasElementInterface, "width">(
            [](Call&, HTMLCanvasElement& canvas) { return canvas.width(); },
            [](Call& call, HTMLCanvasElement& canvas, JSValueRef value) {
                canvas.setWidth(call.toUnsignedLong(value));
                reportBitmapCost(call, canvas);
            }),
        attribute<htmlCanvasElementInterface, "height">(
            [](Call&, HTMLCanvasElement& canvas) { return canvas.height(); },
            [](Call& call, HTMLCanvasElement& canvas, JSValueRef value) {
                canvas.setHeight(call.toUnsignedLong(value));
                reportBitmapCost(call, canvas);
            }),
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
