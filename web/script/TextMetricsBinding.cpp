#include "web/script/TextMetricsBinding.h"

#include "web/script/Bindings.h"
#include "web/script/Realm.h"
#include "web/script/RectBinding.h"
#include "web/text/CanvasTextStyle.h"
#include "web/text/TextMetrics.h"

#include <cmath>

namespace script {

namespace {

constexpr const InterfaceDefinition& M = textMetricsInterface;
constexpr const InterfaceDefinition& C = textClusterInterface;

// [EnforceRange] unsigned long
std::uint32_t enforceRangeUnsignedLong(const Call& call, std::size_t i)
{
    double x = call.number(i);
    if (!std::isfinite(x))
        call.throwTypeError("Value is not of type 'unsigned long'.");
    x = std::trunc(x);
    if (x < 0 || x > 4294967295.0)
        call.throwTypeError("Value is outside the 'unsigned long' value range.");
    return std::uint32_t(x);
}

JSValueRef array(const Call& call, const std::vector<JSValueRef>& values)
{
    JSValueRef exception = nullptr;
    JSObjectRef result = JSObjectMakeArray(call.ctx(), values.size(), values.data(), &exception);
    rethrowIf(exception);
    return result;
}

JSValueRef clusterArray(const Call& call, const std::vector<TextCluster>& clusters)
{
    std::vector<JSValueRef> values;
    values.reserve(clusters.size());
    for (const TextCluster& cluster : clusters)
        values.push_back(call.realm().wrap(textClusterInterface, std::make_shared<TextCluster>(cluster)));
    return array(call, values);
}

#define METRIC(name) readonlyAttribute<M, #name>([](Call&, TextMetrics& m) { return m.name; })

} // namespace

const TextCluster& toTextCluster(const Call& call, std::size_t index, const char* method)
{
    const TextCluster* cluster = call.unwrap<TextCluster>(call.arg(index), textClusterInterface);
    if (!cluster)
        call.throwTypeError(std::string("Failed to execute '") + method + "' on 'CanvasRenderingContext2D': parameter "
                            + std::to_string(index + 1) + " is not of type 'TextCluster'.");
    return *cluster;
}

TextClusterOptions toTextClusterOptions(const Call& call, JSValueRef value, const char* method)
{
    TextClusterOptions options;
    JSContextRef ctx = call.ctx();
    if (JSValueIsUndefined(ctx, value) || JSValueIsNull(ctx, value))
        return options;
    const std::string prefix = std::string("Failed to execute '") + method + "': ";
    if (!JSValueIsObject(ctx, value))
        call.throwTypeError(prefix + "The provided value is not of type 'TextClusterOptions'.");
    JSObjectRef dictionary = const_cast<JSObjectRef>(value);
    auto member = [&](const char* name) -> std::optional<JSValueRef> {
        JSValueRef v = getProperty(ctx, dictionary, name);
        return JSValueIsUndefined(ctx, v) ? std::nullopt : std::optional(v);
    };
    auto enumeration = [&](const char* name, const char* type, auto parse) {
        std::optional<std::decay_t<decltype(*parse(""))>> result;
        if (auto v = member(name)) {
            std::string text = call.toString(*v);
            result = parse(text);
            if (!result)
                call.throwTypeError(prefix + "Failed to read the '" + name + "' property from 'TextClusterOptions': The "
                                    "provided value '" + text + "' is not a valid enum value of type " + type + ".");
        }
        return result;
    };
    // Members in lexicographic order, as WebIDL reads a dictionary.
    options.align = enumeration("align", "CanvasTextAlign", parseCanvasTextAlign);
    options.baseline = enumeration("baseline", "CanvasTextBaseline", parseCanvasTextBaseline);
    if (auto v = member("x"))
        options.x = call.toNumber(*v);
    if (auto v = member("y"))
        options.y = call.toNumber(*v);
    return options;
}

InterfaceDefinition textMetricsInterface = {
    .name = "TextMetrics",
    .members = {
        METRIC(width),
        METRIC(actualBoundingBoxLeft),
        METRIC(actualBoundingBoxRight),
        METRIC(fontBoundingBoxAscent),
        METRIC(fontBoundingBoxDescent),
        METRIC(actualBoundingBoxAscent),
        METRIC(actualBoundingBoxDescent),
        METRIC(emHeightAscent),
        METRIC(emHeightDescent),
        METRIC(hangingBaseline),
        METRIC(alphabeticBaseline),
        METRIC(ideographicBaseline),
        operation<M, "getActualBoundingBox", 2>([](Call& call, TextMetrics& m) {
            std::uint32_t start = enforceRangeUnsignedLong(call, 0);
            std::uint32_t end = enforceRangeUnsignedLong(call, 1);
            return wrapRect(call.realm(), call.check(m.getActualBoundingBox(start, end)), true);
        }),
        operation<M, "getSelectionRects", 2>([](Call& call, TextMetrics& m) {
            std::uint32_t start = enforceRangeUnsignedLong(call, 0);
            std::uint32_t end = enforceRangeUnsignedLong(call, 1);
            std::vector<JSValueRef> rects;
            for (const DOMRectReadOnly& rect : call.check(m.getSelectionRects(start, end)))
                rects.push_back(wrapRect(call.realm(), rect, true));
            return array(call, rects);
        }),
        operation<M, "getIndexFromOffset", 1>([](Call& call, TextMetrics& m) {
            return call.check(m.getIndexFromOffset(call.number(0)));
        }),
        // getTextClusters(optional options) and getTextClusters(start, end, optional options),
        // told apart by the number of arguments.
        operation<M, "getTextClusters", 0>([](Call& call, TextMetrics& m) {
            if (call.count() < 2)
                return clusterArray(call, m.getTextClusters(toTextClusterOptions(call, call.arg(0), "getTextClusters")));
            std::uint32_t start = enforceRangeUnsignedLong(call, 0);
            std::uint32_t end = enforceRangeUnsignedLong(call, 1);
            TextClusterOptions options = toTextClusterOptions(call, call.arg(2), "getTextClusters");
            return clusterArray(call, call.check(m.getTextClusters(start, end, options)));
        }),
    },
};

InterfaceDefinition textClusterInterface = {
    .name = "TextCluster",
    .members = {
        readonlyAttribute<C, "x">([](Call&, TextCluster& c) { return c.x; }),
        readonlyAttribute<C, "y">([](Call&, TextCluster& c) { return c.y; }),
        readonlyAttribute<C, "start">([](Call&, TextCluster& c) { return c.start; }),
        readonlyAttribute<C, "end">([](Call&, TextCluster& c) { return c.end; }),
        readonlyAttribute<C, "align">([](Call&, TextCluster& c) { return toString(c.align); }),
        readonlyAttribute<C, "baseline">([](Call&, TextCluster& c) { return toString(c.baseline); }),
    },
};

} // namespace script
