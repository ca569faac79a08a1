// CanvasFilter: filter primitives described by dictionaries ({name: 'gaussianBlur',
// stdDeviation: 2}, ...), alone or in a sequence. The members are read the way browsers read
// them: a member that is there must convert (undefined included), others take SVG's defaults.
#include "web/script/CanvasFilterBinding.h"

#include "web/canvas/CanvasFilter.h"
#include "web/canvas/CanvasRenderingContext2D.h"
#include "web/script/Bindings.h"
#include "web/script/Realm.h"

#include <climits>
#include <cmath>

namespace script {

namespace {

class FilterDictionary {
public:
    FilterDictionary(const Call& call, JSObjectRef object) : call_(call), object_(object) {}

    bool has(const char* name) const
    {
        JSString key(name);
        return JSObjectHasProperty(call_.ctx(), object_, key.get());
    }
    JSValueRef get(const char* name) const { return getProperty(call_.ctx(), object_, name); }

    // A member that must be a finite number when present.
    std::optional<double> number(const char* name, const char* filter) const
    {
        if (!has(name))
            return {};
        return finite(call_.toNumber(get(name)), name, filter);
    }

    // A number, or a sequence of one or two (x and y): stdDeviation, baseFrequency.
    std::optional<std::pair<double, double>> numberPair(const char* name, const char* filter) const
    {
        if (!has(name))
            return {};
        JSValueRef value = get(name);
        if (!call_.isIterable(value)) {
            double v = finite(call_.toNumber(value), name, filter);
            return std::pair{v, v};
        }
        std::vector<double> values;
        call_.sequence(value, "sequence", [&](JSValueRef element) {
            if (values.size() == 2)
                fail(name, filter, "must either be a number or an array of two numbers");
            values.push_back(finite(call_.toNumber(element), name, filter));
        });
        if (values.empty())
            return std::pair{0.0, 0.0};
        return std::pair{values.front(), values.back()};
    }

    std::optional<std::string> string(const char* name) const
    {
        if (!has(name))
            return {};
        return call_.toString(get(name));
    }

    [[noreturn]] void fail(const char* member, const char* filter, const char* why) const
    {
        call_.throwTypeError(std::string("Failed to construct ") + filter + " filter, \"" + member + "\" " + why + ".");
    }

private:
    double finite(double value, const char* name, const char* filter) const
    {
        if (!std::isfinite(value))
            fail(name, filter, "must be a finite number");
        return value;
    }

    const Call& call_;
    JSObjectRef object_;
};

int toInt(double value) { return int(std::clamp(std::trunc(value), double(INT_MIN), double(INT_MAX))); }

GaussianBlurPrimitive gaussianBlur(const FilterDictionary& d)
{
    auto deviation = d.numberPair("stdDeviation", "blur");
    if (!deviation)
        d.fail("stdDeviation", "blur", "is required");
    return {deviation->first, deviation->second};
}

ColorMatrixPrimitive colorMatrix(const Call& call, const FilterDictionary& d)
{
    std::string type = d.string("type").value_or("matrix");
    if (type == "hueRotate")
        return ColorMatrixPrimitive::hueRotate(d.number("values", "color matrix").value_or(0));
    if (type == "saturate")
        return ColorMatrixPrimitive::saturate(d.number("values", "color matrix").value_or(1));
    if (type == "luminanceToAlpha")
        return ColorMatrixPrimitive::luminanceToAlpha();
    JSValueRef values = d.get("values");
    if (!call.isIterable(values))
        d.fail("values", "color matrix", "must be an array of 20 numbers");
    ColorMatrixPrimitive primitive;
    std::size_t count = 0;
    call.sequence(values, "sequence", [&](JSValueRef element) {
        double value = call.toNumber(element);
        if (count == primitive.matrix.size() || !std::isfinite(value))
            d.fail("values", "color matrix", "must be an array of 20 numbers");
        primitive.matrix[count++] = value;
    });
    if (count != primitive.matrix.size())
        d.fail("values", "color matrix", "must be an array of 20 numbers");
    return primitive;
}

ConvolveMatrixPrimitive convolveMatrix(const Call& call, const FilterDictionary& d)
{
    const char* invalid = "must be an array of arrays of numbers representing an n by m matrix";
    JSValueRef rows = d.get("kernelMatrix");
    if (!call.isIterable(rows))
        d.fail("kernelMatrix", "convolve matrix", invalid);
    ConvolveMatrixPrimitive primitive;
    call.sequence(rows, "sequence", [&](JSValueRef row) {
        if (!call.isIterable(row))
            d.fail("kernelMatrix", "convolve matrix", invalid);
        int columns = 0;
        call.sequence(row, "sequence", [&](JSValueRef cell) {
            double value = call.toNumber(cell);
            if (!std::isfinite(value))
                d.fail("kernelMatrix", "convolve matrix", invalid);
            primitive.kernel.push_back(value);
            ++columns;
        });
        if (primitive.orderY > 0 && columns != primitive.orderX)
            d.fail("kernelMatrix", "convolve matrix", invalid);
        primitive.orderX = columns;
        ++primitive.orderY;
    });
    // One empty row is taken (and draws nothing); several empty ones are not.
    if (primitive.orderY == 0 || (primitive.orderX == 0 && primitive.orderY > 1))
        d.fail("kernelMatrix", "convolve matrix", invalid);
    primitive.targetX = primitive.orderX / 2;
    primitive.targetY = primitive.orderY / 2;
    // The other members are forgiving: what does not convert keeps its default.
    auto lenient = [&](const char* name) -> std::optional<double> {
        if (!d.has(name))
            return {};
        double value = call.toNumber(d.get(name));
        return std::isfinite(value) ? std::optional(value) : std::nullopt;
    };
    primitive.divisor = lenient("divisor").value_or(0);
    primitive.bias = lenient("bias").value_or(0);
    if (auto x = lenient("targetX"))
        primitive.targetX = toInt(*x);
    if (auto y = lenient("targetY"))
        primitive.targetY = toInt(*y);
    std::string edgeMode = d.string("edgeMode").value_or("duplicate");
    primitive.edgeMode = edgeMode == "wrap" ? ConvolveMatrixPrimitive::EdgeMode::Wrap
        : edgeMode == "none"                ? ConvolveMatrixPrimitive::EdgeMode::None
                                            : ConvolveMatrixPrimitive::EdgeMode::Duplicate;
    primitive.preserveAlpha = d.has("preserveAlpha") && call.toBoolean(d.get("preserveAlpha"));
    return primitive;
}

TransferFunction transferFunction(const Call& call, JSObjectRef object)
{
    FilterDictionary d(call, object);
    using Type = TransferFunction::Type;
    TransferFunction function;
    std::string type = d.string("type").value_or("identity");
    function.type = type == "table" ? Type::Table
        : type == "discrete"        ? Type::Discrete
        : type == "linear"          ? Type::Linear
        : type == "gamma"           ? Type::Gamma
                                    : Type::Identity;
    if (d.has("tableValues")) {
        call.sequence(d.get("tableValues"), "sequence", [&](JSValueRef element) {
            double value = call.toNumber(element);
            if (!std::isfinite(value))
                call.throwTypeError("The provided float value is non-finite.");
            function.tableValues.push_back(value);
        });
    }
    auto set = [&](const char* name, double& member) {
        if (d.has(name)) {
            double value = call.toNumber(d.get(name));
            if (std::isfinite(value))
                member = value;
        }
    };
    set("slope", function.slope);
    set("intercept", function.intercept);
    set("amplitude", function.amplitude);
    set("exponent", function.exponent);
    set("offset", function.offset);
    return function;
}

ComponentTransferPrimitive componentTransfer(const Call& call, const FilterDictionary& d)
{
    ComponentTransferPrimitive primitive;
    const char* names[] = {"funcR", "funcG", "funcB", "funcA"};
    for (int i = 0; i < 4; ++i) {
        JSValueRef value = d.get(names[i]);
        if (JSValueIsObject(call.ctx(), value))
            primitive.functions[i] = transferFunction(call, toObject(call.ctx(), value));
    }
    return primitive;
}

DropShadowPrimitive dropShadow(const FilterDictionary& d)
{
    DropShadowPrimitive primitive;
    primitive.dx = d.number("dx", "drop shadow").value_or(primitive.dx);
    primitive.dy = d.number("dy", "drop shadow").value_or(primitive.dy);
    if (auto deviation = d.numberPair("stdDeviation", "drop shadow"))
        primitive.deviationX = deviation->first, primitive.deviationY = deviation->second;
    if (auto color = d.string("floodColor")) {
        auto parsed = parseCSSColorValue(*color);
        if (!parsed)
            d.fail("floodColor", "drop shadow", "must be a color");
        primitive.floodColor = *parsed;
    }
    primitive.floodOpacity = d.number("floodOpacity", "drop shadow").value_or(1);
    return primitive;
}

TurbulencePrimitive turbulence(const FilterDictionary& d)
{
    TurbulencePrimitive primitive;
    if (auto frequency = d.numberPair("baseFrequency", "turbulence")) {
        if (frequency->first < 0 || frequency->second < 0)
            d.fail("baseFrequency", "turbulence", "must not be negative");
        primitive.baseFrequencyX = frequency->first, primitive.baseFrequencyY = frequency->second;
    }
    if (auto octaves = d.number("numOctaves", "turbulence")) {
        if (*octaves < 0)
            d.fail("numOctaves", "turbulence", "must not be negative");
        primitive.numOctaves = toInt(*octaves);
    }
    primitive.seed = d.number("seed", "turbulence").value_or(0);
    if (auto stitch = d.string("stitchTiles")) {
        if (*stitch != "stitch" && *stitch != "noStitch")
            d.fail("stitchTiles", "turbulence", "must be \"stitch\" or \"noStitch\"");
        primitive.stitchTiles = *stitch == "stitch";
    }
    if (auto type = d.string("type")) {
        if (*type != "fractalNoise" && *type != "turbulence")
            d.fail("type", "turbulence", "must be \"fractalNoise\" or \"turbulence\"");
        primitive.fractalNoise = *type == "fractalNoise";
    }
    return primitive;
}

// One dictionary; a name we do not know (or none) adds nothing.
void appendPrimitive(const Call& call, JSValueRef value, FilterChain& chain)
{
    if (!JSValueIsObject(call.ctx(), value))
        call.throwTypeError("Failed to convert value to 'object'.");
    FilterDictionary d(call, toObject(call.ctx(), value));
    std::string name = d.string("name").value_or("");
    if (name == "gaussianBlur")
        chain.push_back(gaussianBlur(d));
    else if (name == "colorMatrix")
        chain.push_back(colorMatrix(call, d));
    else if (name == "convolveMatrix")
        chain.push_back(convolveMatrix(call, d));
    else if (name == "componentTransfer")
        chain.push_back(componentTransfer(call, d));
    else if (name == "dropShadow")
        chain.push_back(dropShadow(d));
    else if (name == "turbulence")
        chain.push_back(turbulence(d));
}

// (DOMString or CanvasFilterDictionary or sequence<CanvasFilterDictionary>)
FilterChain toFilterChain(const Call& call, JSValueRef init)
{
    JSContextRef ctx = call.ctx();
    FilterChain chain;
    if (JSValueIsUndefined(ctx, init) || JSValueIsNull(ctx, init))
        return chain;
    if (JSValueIsObject(ctx, init)) {
        if (call.isIterable(init))
            call.sequence(init, "sequence", [&](JSValueRef element) { appendPrimitive(call, element, chain); });
        else
            appendPrimitive(call, init, chain);
        return chain;
    }
    if (auto functions = parseCSSFilter(call.toString(init)))
        chain = filterChainForCSS(*functions, CSSColorValue::opaqueBlack());
    return chain;
}

JSObjectRef constructCanvasFilter(Call& call)
{
    auto filter = std::make_shared<CanvasFilter>(toFilterChain(call, call.arg(0)));
    return call.realm().wrap(canvasFilterInterface, std::move(filter));
}

} // namespace

JSValueRef filterValue(Call& call, CanvasRenderingContext2D& context)
{
    if (const auto& object = context.filterObject())
        return call.realm().wrapCached(canvasFilterInterface, object, object.get());
    return call.toJS(context.filter());
}

void setFilterValue(Call& call, CanvasRenderingContext2D& context, JSValueRef value)
{
    if (call.unwrap<CanvasFilter>(value, canvasFilterInterface)) {
        const Wrapper* wrapper = Call::wrapperOf(call.ctx(), value);
        context.setFilter(std::static_pointer_cast<CanvasFilter>(wrapper->object));
        return;
    }
    context.setFilter(call.toString(value));
}

std::shared_ptr<const FilterChain> layerFilter(Call& call, CanvasRenderingContext2D& context, JSValueRef options)
{
    JSContextRef ctx = call.ctx();
    if (JSValueIsUndefined(ctx, options) || JSValueIsNull(ctx, options))
        return nullptr;
    if (!JSValueIsObject(ctx, options))
        call.throwTypeError("Failed to execute 'beginLayer' on 'CanvasRenderingContext2D': The provided value is not of type "
                            "'BeginLayerOptions'.");
    JSValueRef filter = getProperty(ctx, toObject(ctx, options), "filter");
    if (JSValueIsUndefined(ctx, filter) || JSValueIsNull(ctx, filter))
        return nullptr;
    if (auto* object = call.unwrap<CanvasFilter>(filter, canvasFilterInterface))
        return object->chain();
    if (!JSValueIsObject(ctx, filter))
        return context.resolveFilter(call.toString(filter));
    FilterChain chain = toFilterChain(call, filter);
    return chain.empty() ? nullptr : std::make_shared<const FilterChain>(std::move(chain));
}

InterfaceDefinition canvasFilterInterface = {
    .name = "CanvasFilter",
    .constructor = &constructCanvasFilter,
    .constructorLength = 1,
};

} // namespace script
