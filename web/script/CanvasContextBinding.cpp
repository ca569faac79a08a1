#include "web/script/CanvasContextBinding.h"

#include "web/canvas/CanvasGradient.h"
#include "web/canvas/CanvasPattern.h"
#include "web/canvas/CanvasRenderingContext2D.h"
#include "web/canvas/HTMLCanvasElement.h"
#include "web/script/Bindings.h"
#include "web/script/CanvasFilterBinding.h"
#include "web/script/CanvasPathBinding.h"
#include "web/script/ElementBindings.h"
#include "web/script/GeometryConversions.h"
#include "web/script/Realm.h"

namespace script {

namespace {

using Context = CanvasRenderingContext2D;

JSValueRef styleValue(Call& call, const CanvasStyle& style)
{
    if (const auto* gradient = std::get_if<std::shared_ptr<CanvasGradient>>(&style))
        return call.realm().wrapCached(canvasGradientInterface, *gradient, gradient->get());
    if (const auto* pattern = std::get_if<std::shared_ptr<CanvasPattern>>(&style))
        return call.realm().wrapCached(canvasPatternInterface, *pattern, pattern->get());
    return call.toJS(std::get<std::string>(style));
}

// (DOMString or CanvasGradient or CanvasPattern)
CanvasStyle toStyle(Call& call, JSValueRef value)
{
    const Wrapper* wrapper = Call::wrapperOf(call.ctx(), value);
    if (wrapper && wrapper->interface == &canvasGradientInterface)
        return std::static_pointer_cast<CanvasGradient>(wrapper->object);
    if (wrapper && wrapper->interface == &canvasPatternInterface)
        return std::static_pointer_cast<CanvasPattern>(wrapper->object);
    return call.toString(value);
}

JSValueRef contextAttributes(Call& call, Context& context)
{
    CanvasRenderingContext2DSettings settings = context.getContextAttributes();
    JSContextRef ctx = call.ctx();
    JSObjectRef object = JSObjectMake(ctx, nullptr, nullptr);
    setProperty(ctx, object, "alpha", JSValueMakeBoolean(ctx, settings.alpha));
    setProperty(ctx, object, "colorSpace", makeString(ctx, toString(settings.colorSpace)));
    setProperty(ctx, object, "colorType", makeString(ctx, toString(settings.colorType)));
    setProperty(ctx, object, "desynchronized", JSValueMakeBoolean(ctx, settings.desynchronized));
    setProperty(ctx, object, "willReadFrequently", JSValueMakeBoolean(ctx, settings.willReadFrequently));
    return object;
}

JSValueRef canvasOf(Call& call, Context& context)
{
    JSValueRef linked = call.realm().hidden(call.thisObject(), "canvas");
    if (JSValueIsObject(call.ctx(), linked))
        return linked;
    return wrapElement(call.realm(), context.canvas().shared_from_this());
}

// A number attribute: unrestricted double in, the context decides what it keeps.
#define NUMBER_ATTRIBUTE(name, getter, setter)                                                                       \
    attribute<canvasRenderingContext2DInterface, name>([](Call&, Context& c) { return c.getter(); },                 \
                                                       [](Call& call, Context& c, JSValueRef v) { c.setter(call.toNumber(v)); })
// A DOMString attribute (enumerations included: the context ignores values it does not know).
#define STRING_ATTRIBUTE(name, getter, setter)                                                                       \
    attribute<canvasRenderingContext2DInterface, name>([](Call&, Context& c) { return std::string(c.getter()); },    \
                                                       [](Call& call, Context& c, JSValueRef v) { c.setter(call.toString(v)); })

} // namespace

std::vector<Member> contextStateMembers()
{
    constexpr const InterfaceDefinition& I = canvasRenderingContext2DInterface;
    return {
        readonlyAttribute<I, "canvas">([](Call& call, Context& c) { return canvasOf(call, c); }),
        operation<I, "getContextAttributes", 0>([](Call& call, Context& c) { return contextAttributes(call, c); }),
        // CanvasState
        operation<I, "save", 0>([](Call&, Context& c) { c.save(); }),
        operation<I, "restore", 0>([](Call& call, Context& c) { call.check(c.restore()); }),
        operation<I, "reset", 0>([](Call&, Context& c) { c.reset(); }),
        operation<I, "isContextLost", 0>([](Call&, Context& c) { return c.isContextLost(); }),
        // CanvasTransform
        operation<I, "scale", 2>([](Call& call, Context& c) {
            auto [x, y] = call.numbers<2>();
            c.scale(x, y);
        }),
        operation<I, "rotate", 1>([](Call& call, Context& c) { c.rotate(call.number(0)); }),
        operation<I, "translate", 2>([](Call& call, Context& c) {
            auto [x, y] = call.numbers<2>();
            c.translate(x, y);
        }),
        operation<I, "transform", 6>([](Call& call, Context& c) {
            auto [a, b, cc, d, e, f] = call.numbers<6>();
            c.transform(a, b, cc, d, e, f);
        }),
        operation<I, "getTransform", 0>([](Call& call, Context& c) { return wrapMatrix(call.realm(), c.getTransform()); }),
        operation<I, "setTransform", 0>([](Call& call, Context& c) {
            if (call.count() >= 6) {
                auto [a, b, cc, d, e, f] = call.numbers<6>();
                c.setTransform(a, b, cc, d, e, f);
            } else if (call.count() <= 1) {
                call.check(c.setTransform(toDOMMatrix2DInit(call, call.arg(0))));
            } else {
                call.throwTypeError("Failed to execute 'setTransform' on 'CanvasRenderingContext2D': Valid arities are: [0, 1, 6], but "
                                    + std::to_string(call.count()) + " arguments provided.");
            }
        }),
        operation<I, "resetTransform", 0>([](Call&, Context& c) { c.resetTransform(); }),
        // CanvasCompositing
        NUMBER_ATTRIBUTE("globalAlpha", globalAlpha, setGlobalAlpha),
        STRING_ATTRIBUTE("globalCompositeOperation", globalCompositeOperation, setGlobalCompositeOperation),
        // CanvasImageSmoothing
        attribute<I, "imageSmoothingEnabled">([](Call&, Context& c) { return c.imageSmoothingEnabled(); },
                                              [](Call& call, Context& c, JSValueRef v) { c.setImageSmoothingEnabled(call.toBoolean(v)); }),
        STRING_ATTRIBUTE("imageSmoothingQuality", imageSmoothingQuality, setImageSmoothingQuality),
        // CanvasFillStrokeStyles
        attribute<I, "strokeStyle">([](Call& call, Context& c) { return styleValue(call, c.strokeStyle()); },
                                    [](Call& call, Context& c, JSValueRef v) { c.setStrokeStyle(toStyle(call, v)); }),
        attribute<I, "fillStyle">([](Call& call, Context& c) { return styleValue(call, c.fillStyle()); },
                                  [](Call& call, Context& c, JSValueRef v) { c.setFillStyle(toStyle(call, v)); }),
        operation<I, "createLinearGradient", 4>([](Call& call, Context& c) {
            auto [x0, y0, x1, y1] = call.numbers<4>();
            auto gradient = call.check(c.createLinearGradient(x0, y0, x1, y1));
            return call.realm().wrapCached(canvasGradientInterface, gradient, gradient.get());
        }),
        operation<I, "createRadialGradient", 6>([](Call& call, Context& c) {
            auto [x0, y0, r0, x1, y1, r1] = call.numbers<6>();
            auto gradient = call.check(c.createRadialGradient(x0, y0, r0, x1, y1, r1));
            return call.realm().wrapCached(canvasGradientInterface, gradient, gradient.get());
        }),
        operation<I, "createConicGradient", 3>([](Call& call, Context& c) {
            auto [startAngle, x, y] = call.numbers<3>();
            auto gradient = call.check(c.createConicGradient(startAngle, x, y));
            return call.realm().wrapCached(canvasGradientInterface, gradient, gradient.get());
        }),
        operation<I, "createPattern", 2>([](Call& call, Context& c) -> JSValueRef {
            CanvasImageSource& image = toImageSource(call, 0);
            // [LegacyNullToEmptyString]
            std::string repetition = JSValueIsNull(call.ctx(), call.arg(1)) ? std::string() : call.string(1);
            auto pattern = call.check(c.createPattern(image, repetition));
            if (!pattern)
                return call.null();
            return call.realm().wrapCached(canvasPatternInterface, pattern, pattern.get());
        }),
        // CanvasShadowStyles
        NUMBER_ATTRIBUTE("shadowOffsetX", shadowOffsetX, setShadowOffsetX),
        NUMBER_ATTRIBUTE("shadowOffsetY", shadowOffsetY, setShadowOffsetY),
        NUMBER_ATTRIBUTE("shadowBlur", shadowBlur, setShadowBlur),
        STRING_ATTRIBUTE("shadowColor", shadowColor, setShadowColor),
        // CanvasFilters
        attribute<I, "filter">([](Call& call, Context& c) { return filterValue(call, c); },
                               [](Call& call, Context& c, JSValueRef v) { setFilterValue(call, c, v); }),
        // Layers
        operation<I, "beginLayer", 0>([](Call& call, Context& c) { call.check(c.beginLayer(layerFilter(call, c, call.arg(0)))); }),
        operation<I, "endLayer", 0>([](Call& call, Context& c) { call.check(c.endLayer()); }),
        // CanvasPathDrawingStyles
        NUMBER_ATTRIBUTE("lineWidth", lineWidth, setLineWidth),
        STRING_ATTRIBUTE("lineCap", lineCap, setLineCap),
        STRING_ATTRIBUTE("lineJoin", lineJoin, setLineJoin),
        NUMBER_ATTRIBUTE("miterLimit", miterLimit, setMiterLimit),
        operation<I, "setLineDash", 1>([](Call& call, Context& c) {
            std::vector<double> segments = call.numberSequence(call.arg(0));
            c.setLineDash(segments);
        }),
        operation<I, "getLineDash", 0>([](Call& call, Context& c) {
            std::vector<double> segments = c.getLineDash();
            std::vector<JSValueRef> values;
            values.reserve(segments.size());
            for (double segment : segments)
                values.push_back(JSValueMakeNumber(call.ctx(), segment));
            JSValueRef exception = nullptr;
            JSObjectRef array = JSObjectMakeArray(call.ctx(), values.size(), values.data(), &exception);
            rethrowIf(exception);
            return array;
        }),
        NUMBER_ATTRIBUTE("lineDashOffset", lineDashOffset, setLineDashOffset),
        // CanvasTextDrawingStyles
        STRING_ATTRIBUTE("font", font, setFont),
        STRING_ATTRIBUTE("textAlign", textAlign, setTextAlign),
        STRING_ATTRIBUTE("textBaseline", textBaseline, setTextBaseline),
        STRING_ATTRIBUTE("direction", direction, setDirection),
        STRING_ATTRIBUTE("letterSpacing", letterSpacing, setLetterSpacing),
        STRING_ATTRIBUTE("fontKerning", fontKerning, setFontKerning),
        STRING_ATTRIBUTE("fontStretch", fontStretch, setFontStretch),
        STRING_ATTRIBUTE("fontVariantCaps", fontVariantCaps, setFontVariantCaps),
        STRING_ATTRIBUTE("textRendering", textRendering, setTextRendering),
        STRING_ATTRIBUTE("wordSpacing", wordSpacing, setWordSpacing),
        STRING_ATTRIBUTE("lang", lang, setLang),
    };
}

namespace {

std::vector<Member> contextMembers()
{
    std::vector<Member> members = contextStateMembers();
    std::vector<Member> drawing = contextDrawingMembers();
    members.insert(members.end(), drawing.begin(), drawing.end());
    std::vector<Member> path = canvasPathMembers<canvasRenderingContext2DInterface, Context>();
    members.insert(members.end(), path.begin(), path.end());
    return members;
}

} // namespace

InterfaceDefinition canvasRenderingContext2DInterface = {
    .name = "CanvasRenderingContext2D",
    .members = contextMembers(),
};

} // namespace script
