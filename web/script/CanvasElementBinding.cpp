#include "web/canvas/CanvasRenderingContext2D.h"
#include "web/canvas/HTMLCanvasElement.h"
#include "web/image/DataURL.h"
#include "web/script/Bindings.h"
#include "web/script/Realm.h"
#include "web/script/ScriptEngine.h"

namespace script {

namespace {

// An IDL enum member of a dictionary: unchanged when absent, a TypeError when not one of the
// enum's values.
template <typename Enum, typename Parse>
void readEnumMember(Call& call, JSObjectRef dictionary, const char* member, Parse parse, const char* enumName, Enum& out)
{
    JSValueRef value = getProperty(call.ctx(), dictionary, member);
    if (JSValueIsUndefined(call.ctx(), value))
        return;
    std::string text = call.toString(value);
    auto parsed = parse(text);
    if (!parsed)
        call.throwTypeError("The provided value '" + text + "' is not a valid enum value of type " + enumName + ".");
    out = *parsed;
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
    readEnumMember(call, dictionary, "colorSpace", parsePredefinedColorSpace, "PredefinedColorSpace", settings.colorSpace);
    readEnumMember(call, dictionary, "colorType", parseCanvasColorType, "CanvasColorType", settings.colorType);
    JSValueRef desynchronized = getProperty(ctx, dictionary, "desynchronized");
    if (!JSValueIsUndefined(ctx, desynchronized))
        settings.desynchronized = call.toBoolean(desynchronized);
    JSValueRef willReadFrequently = getProperty(ctx, dictionary, "willReadFrequently");
    if (!JSValueIsUndefined(ctx, willReadFrequently))
        settings.willReadFrequently = call.toBoolean(willReadFrequently);
    return settings;
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
    // Each keeps the other's wrapper: ctx.canvas and getContext give the same objects for as
    // long as either is reachable.
    realm.setHidden(wrapper, "canvas", call.thisObject());
    realm.setHidden(call.thisObject(), "context", wrapper);
    return wrapper;
}

// The IDL attribute sets the content attribute, which sizes (and resets) the canvas; values
// beyond a long's range give the default, as for every reflected unsigned long.
void setCanvasSize(Call& call, HTMLCanvasElement& canvas, JSValueRef value, bool width)
{
    std::uint32_t size = call.toUnsignedLong(value);
    unsigned fallback = width ? HTMLCanvasElement::kDefaultWidth : HTMLCanvasElement::kDefaultHeight;
    canvas.setAttribute(width ? "width" : "height", std::to_string(size > 2147483647u ? fallback : size));
}

} // namespace

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
            PNGImageData data;
            std::string png = canvas.encodedImage(type, quality, &data);
            JSValueRef url = png.empty() ? call.toJS(std::string_view("data:,"))
                                         : makeString(call.ctx(), base64DataURLUTF16("image/png", png));
            if (!data.rows.empty())
                ScriptEngine::noteDataURL(call.ctx(), url, std::move(data));
            return url;
        }),
    },
};

} // namespace script
