#include "web/canvas/CanvasFocusRing.h"
#include "web/canvas/CanvasRenderingContext2D.h"
#include "web/canvas/HTMLCanvasElement.h"
#include "web/canvas/ImageData.h"
#include "web/canvas/Path2D.h"
#include "web/script/Bindings.h"
#include "web/script/CanvasContextBinding.h"
#include "web/script/ImageDataBinding.h"
#include "web/script/ElementBindings.h"
#include "web/script/Realm.h"
#include "web/script/TextMetricsBinding.h"

namespace script {

namespace {

using Context = CanvasRenderingContext2D;
constexpr const InterfaceDefinition& I = canvasRenderingContext2DInterface;

CanvasFillRule fillRule(const Call& call, std::size_t index)
{
    if (!call.has(index))
        return CanvasFillRule::Nonzero;
    return call.enumeration(index, parseCanvasFillRule, "CanvasFillRule");
}

Path2D& requirePath(const Call& call, std::size_t index, const char* member)
{
    Path2D* path = asPath(call, index);
    if (!path)
        call.throwTypeError(std::string("Failed to execute '") + member + "' on 'CanvasRenderingContext2D': parameter "
                            + std::to_string(index + 1) + " is not of type 'Path2D'.");
    return *path;
}

const ImageData& requireImageData(const Call& call, std::size_t index, const char* member)
{
    const ImageData* data = call.unwrap<ImageData>(call.arg(index), imageDataInterface);
    if (!data)
        call.throwTypeError(std::string("Failed to execute '") + member + "' on 'CanvasRenderingContext2D': parameter "
                            + std::to_string(index + 1) + " is not of type 'ImageData'.");
    return *data;
}

ImageDataSettings imageDataSettings(const Call& call, std::size_t index)
{
    return toImageDataSettings(call, call.arg(index));
}

JSValueRef wrapImageData(Call& call, std::shared_ptr<ImageData> data)
{
    JSReportExtraMemoryCost(call.ctx(), data->dataLength());
    return call.realm().wrap(imageDataInterface, std::move(data));
}

[[noreturn]] void throwArity(const Call& call, const char* member, const char* arities)
{
    call.throwTypeError(std::string("Failed to execute '") + member + "' on 'CanvasRenderingContext2D': Valid arities are: "
                        + arities + ", but " + std::to_string(call.count()) + " arguments provided.");
}

} // namespace

Path2D* asPath(const Call& call, std::size_t index)
{
    return call.unwrap<Path2D>(call.arg(index), path2DInterface);
}

CanvasImageSource& toImageSource(const Call& call, std::size_t index)
{
    CanvasImageSource* image = imageSourceOf(call, call.arg(index));
    if (!image)
        call.throwTypeError("The provided value is not of type '(CSSImageValue or HTMLCanvasElement or HTMLImageElement or "
                            "HTMLVideoElement or ImageBitmap or OffscreenCanvas or SVGImageElement or VideoFrame)'.");
    return *image;
}

std::vector<Member> contextDrawingMembers()
{
    return {
        // CanvasRect
        operation<I, "clearRect", 4>([](Call& call, Context& c) {
            auto [x, y, w, h] = call.numbers<4>();
            c.clearRect(x, y, w, h);
        }),
        operation<I, "fillRect", 4>([](Call& call, Context& c) {
            auto [x, y, w, h] = call.numbers<4>();
            c.fillRect(x, y, w, h);
        }),
        operation<I, "strokeRect", 4>([](Call& call, Context& c) {
            auto [x, y, w, h] = call.numbers<4>();
            c.strokeRect(x, y, w, h);
        }),
        // CanvasDrawPath, overloads told apart as WebIDL does: by count, then by Path2D.
        operation<I, "beginPath", 0>([](Call&, Context& c) { c.beginPath(); }),
        operation<I, "fill", 0>([](Call& call, Context& c) {
            if (call.count() == 0 || (call.count() == 1 && !asPath(call, 0)))
                return c.fill(fillRule(call, 0));
            Path2D& path = requirePath(call, 0, "fill");
            c.fill(path, fillRule(call, 1));
        }),
        operation<I, "stroke", 0>([](Call& call, Context& c) {
            if (call.count() == 0)
                return c.stroke();
            c.stroke(requirePath(call, 0, "stroke"));
        }),
        operation<I, "clip", 0>([](Call& call, Context& c) {
            if (call.count() == 0 || (call.count() == 1 && !asPath(call, 0)))
                return c.clip(fillRule(call, 0));
            Path2D& path = requirePath(call, 0, "clip");
            c.clip(path, fillRule(call, 1));
        }),
        operation<I, "isPointInPath", 2>([](Call& call, Context& c) {
            if (call.count() == 2 || (call.count() == 3 && !asPath(call, 0))) {
                auto [x, y] = call.numbers<2>();
                return c.isPointInPath(x, y, fillRule(call, 2));
            }
            Path2D& path = requirePath(call, 0, "isPointInPath");
            auto [x, y] = call.numbers<2>(1);
            return c.isPointInPath(path, x, y, fillRule(call, 3));
        }),
        operation<I, "isPointInStroke", 2>([](Call& call, Context& c) {
            if (call.count() == 2) {
                auto [x, y] = call.numbers<2>();
                return c.isPointInStroke(x, y);
            }
            Path2D& path = requirePath(call, 0, "isPointInStroke");
            auto [x, y] = call.numbers<2>(1);
            return c.isPointInStroke(path, x, y);
        }),
        // CanvasUserInterface: a focus ring for focused fallback content; nothing to scroll.
        operation<I, "drawFocusIfNeeded", 1>([](Call& call, Context& c) {
            std::size_t index = call.count() >= 2 ? 1 : 0;
            const Path2D* path = index == 1 ? &requirePath(call, 0, "drawFocusIfNeeded") : nullptr;
            auto element = elementOf(call, call.arg(index));
            if (!element)
                call.throwTypeError("Failed to execute 'drawFocusIfNeeded' on 'CanvasRenderingContext2D': parameter "
                                    + std::to_string(index + 1) + " is not of type 'Element'.");
            drawFocusIfNeeded(c, *element, path);
        }),
        // CanvasText
        operation<I, "fillText", 3>([](Call& call, Context& c) {
            std::string text = call.string(0);
            auto [x, y] = call.numbers<2>(1);
            c.fillText(text, x, y, call.optionalNumber(3));
        }),
        operation<I, "strokeText", 3>([](Call& call, Context& c) {
            std::string text = call.string(0);
            auto [x, y] = call.numbers<2>(1);
            c.strokeText(text, x, y, call.optionalNumber(3));
        }),
        operation<I, "measureText", 1>([](Call& call, Context& c) {
            TextMetrics metrics = c.measureText(call.string(0));
            return call.realm().wrap(textMetricsInterface, std::make_shared<TextMetrics>(std::move(metrics)));
        }),
        operation<I, "fillTextCluster", 3>([](Call& call, Context& c) {
            const TextCluster& cluster = toTextCluster(call, 0, "fillTextCluster");
            auto [x, y] = call.numbers<2>(1);
            c.fillTextCluster(cluster, x, y, toTextClusterOptions(call, call.arg(3), "fillTextCluster"));
        }),
        operation<I, "strokeTextCluster", 3>([](Call& call, Context& c) {
            const TextCluster& cluster = toTextCluster(call, 0, "strokeTextCluster");
            auto [x, y] = call.numbers<2>(1);
            c.strokeTextCluster(cluster, x, y, toTextClusterOptions(call, call.arg(3), "strokeTextCluster"));
        }),
        // CanvasDrawImage
        operation<I, "drawImage", 3>([](Call& call, Context& c) {
            std::size_t count = std::min<std::size_t>(call.count(), 9);
            if (count != 3 && count != 5 && count != 9)
                throwArity(call, "drawImage", "[3, 5, 9]");
            CanvasImageSource& image = toImageSource(call, 0);
            if (count == 3) {
                auto [dx, dy] = call.numbers<2>(1);
                call.check(c.drawImage(image, dx, dy));
            } else if (count == 5) {
                auto [dx, dy, dw, dh] = call.numbers<4>(1);
                call.check(c.drawImage(image, dx, dy, dw, dh));
            } else {
                auto [sx, sy, sw, sh, dx, dy, dw, dh] = call.numbers<8>(1);
                call.check(c.drawImage(image, sx, sy, sw, sh, dx, dy, dw, dh));
            }
        }),
        // CanvasImageData
        operation<I, "createImageData", 1>([](Call& call, Context& c) {
            if (call.count() == 1)
                return wrapImageData(call, call.check(c.createImageData(requireImageData(call, 0, "createImageData"))));
            if (call.count() >= 4) {
                std::uint32_t sw = call.toUnsignedLong(call.arg(1));
                std::uint32_t sh = call.toUnsignedLong(call.arg(2));
                ImageDataSettings settings = imageDataSettings(call, 3);
                if (!settings.colorSpace)
                    settings.colorSpace = c.getContextAttributes().colorSpace;
                return wrapImageData(call, imageDataFromChannels(call, call.arg(0), sw, sh, settings));
            }
            std::int32_t sw = call.enforceRangeLong(0);
            std::int32_t sh = call.enforceRangeLong(1);
            ImageDataSettings settings = imageDataSettings(call, 2);
            return wrapImageData(call, call.check(c.createImageData(sw, sh, settings)));
        }),
        operation<I, "getImageData", 4>([](Call& call, Context& c) {
            std::int32_t sx = call.enforceRangeLong(0);
            std::int32_t sy = call.enforceRangeLong(1);
            std::int32_t sw = call.enforceRangeLong(2);
            std::int32_t sh = call.enforceRangeLong(3);
            ImageDataSettings settings = imageDataSettings(call, 4);
            return wrapImageData(call, call.check(c.getImageData(sx, sy, sw, sh, settings)));
        }),
        operation<I, "putImageData", 3>([](Call& call, Context& c) {
            std::size_t count = std::min<std::size_t>(call.count(), 7);
            if (count != 3 && count != 7)
                throwArity(call, "putImageData", "[3, 7]");
            const ImageData& data = requireImageData(call, 0, "putImageData");
            std::int32_t dx = call.enforceRangeLong(1);
            std::int32_t dy = call.enforceRangeLong(2);
            if (count == 3)
                return call.check(c.putImageData(data, dx, dy));
            std::int32_t dirtyX = call.enforceRangeLong(3);
            std::int32_t dirtyY = call.enforceRangeLong(4);
            std::int32_t dirtyWidth = call.enforceRangeLong(5);
            std::int32_t dirtyHeight = call.enforceRangeLong(6);
            call.check(c.putImageData(data, dx, dy, dirtyX, dirtyY, dirtyWidth, dirtyHeight));
        }),
    };
}

} // namespace script
