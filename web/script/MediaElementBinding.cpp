#include "web/canvas/HTMLCanvasElement.h"
#include "web/dom/HTMLImageElement.h"
#include "web/dom/HTMLVideoElement.h"
#include "web/script/Bindings.h"
#include "web/script/ElementBindings.h"
#include "web/script/PlatformObjectClasses.h"
#include "web/script/Realm.h"

#include <cmath>

namespace script {

namespace {

JSValueRef reflect(const Call& call, const Element& element, const char* name)
{
    const std::string* value = element.attribute(name);
    return call.toJS(value ? std::string_view(*value) : std::string_view());
}

bool hasAttribute(const Element& element, const char* name) { return element.attribute(name) != nullptr; }

void setBooleanAttribute(Element& element, const char* name, bool on)
{
    if (on)
        element.setAttribute(name, "");
    else
        element.removeAttribute(name);
}

// A never-settling promise: what play() and the like give when nothing will ever happen.
JSValueRef pendingPromise(const Call& call)
{
    JSObjectRef resolve = nullptr, reject = nullptr;
    JSValueRef exception = nullptr;
    JSObjectRef promise = JSObjectMakeDeferredPromise(call.ctx(), &resolve, &reject, &exception);
    rethrowIf(exception);
    return promise;
}

JSObjectRef constructImage(Call& call)
{
    auto image = std::make_shared<HTMLImageElement>();
    if (call.has(0))
        image->setAttribute("width", std::to_string(call.toUnsignedLong(call.arg(0))));
    if (call.has(1))
        image->setAttribute("height", std::to_string(call.toUnsignedLong(call.arg(1))));
    return wrapElement(call.realm(), image);
}

// The legacy factory `Image`: constructs img elements; its prototype is HTMLImageElement's.
InterfaceDefinition imageFactory = {
    .name = "Image",
    .constructor = &constructImage,
    .exposed = false,
};

} // namespace

InterfaceDefinition htmlImageElementInterface = {
    .name = "HTMLImageElement",
    .parent = &htmlElementInterface,
    .members = {
        attribute<htmlImageElementInterface, "src">(
            [](Call& call, HTMLImageElement& image) { return reflect(call, image, "src"); },
            [](Call& call, HTMLImageElement& image, JSValueRef value) { image.setAttribute("src", call.toString(value)); }),
        attribute<htmlImageElementInterface, "srcset">(
            [](Call& call, HTMLImageElement& image) { return reflect(call, image, "srcset"); },
            [](Call& call, HTMLImageElement& image, JSValueRef value) { image.setAttribute("srcset", call.toString(value)); }),
        attribute<htmlImageElementInterface, "alt">(
            [](Call& call, HTMLImageElement& image) { return reflect(call, image, "alt"); },
            [](Call& call, HTMLImageElement& image, JSValueRef value) { image.setAttribute("alt", call.toString(value)); }),
        attribute<htmlImageElementInterface, "width">(
            [](Call&, HTMLImageElement& image) { return image.width(); },
            [](Call& call, HTMLImageElement& image, JSValueRef value) {
                image.setAttribute("width", std::to_string(call.toUnsignedLong(value)));
            }),
        attribute<htmlImageElementInterface, "height">(
            [](Call&, HTMLImageElement& image) { return image.height(); },
            [](Call& call, HTMLImageElement& image, JSValueRef value) {
                image.setAttribute("height", std::to_string(call.toUnsignedLong(value)));
            }),
        readonlyAttribute<htmlImageElementInterface, "naturalWidth">([](Call&, HTMLImageElement& image) { return image.naturalWidth(); }),
        readonlyAttribute<htmlImageElementInterface, "naturalHeight">([](Call&, HTMLImageElement& image) { return image.naturalHeight(); }),
        readonlyAttribute<htmlImageElementInterface, "complete">([](Call&, HTMLImageElement& image) { return image.complete(); }),
        readonlyAttribute<htmlImageElementInterface, "currentSrc">([](Call&, HTMLImageElement&) { return std::string(); }),
    },
};

InterfaceDefinition htmlMediaElementInterface = {
    .name = "HTMLMediaElement",
    .parent = &htmlElementInterface,
    .members = {
        constant("NETWORK_EMPTY", 0),
        constant("NETWORK_IDLE", 1),
        constant("NETWORK_LOADING", 2),
        constant("NETWORK_NO_SOURCE", 3),
        constant("HAVE_NOTHING", 0),
        constant("HAVE_METADATA", 1),
        constant("HAVE_CURRENT_DATA", 2),
        constant("HAVE_FUTURE_DATA", 3),
        constant("HAVE_ENOUGH_DATA", 4),
        attribute<htmlMediaElementInterface, "src">(
            [](Call& call, HTMLVideoElement& video) { return reflect(call, video, "src"); },
            [](Call& call, HTMLVideoElement& video, JSValueRef value) { video.setAttribute("src", call.toString(value)); }),
        readonlyAttribute<htmlMediaElementInterface, "currentSrc">([](Call&, HTMLVideoElement&) { return std::string(); }),
        readonlyAttribute<htmlMediaElementInterface, "error">([](Call& call, HTMLVideoElement&) { return call.null(); }),
        readonlyAttribute<htmlMediaElementInterface, "networkState">([](Call&, HTMLVideoElement& video) { return video.networkState(); }),
        readonlyAttribute<htmlMediaElementInterface, "readyState">([](Call&, HTMLVideoElement& video) { return video.readyState(); }),
        readonlyAttribute<htmlMediaElementInterface, "paused">([](Call&, HTMLVideoElement& video) { return video.paused(); }),
        readonlyAttribute<htmlMediaElementInterface, "ended">([](Call&, HTMLVideoElement&) { return false; }),
        readonlyAttribute<htmlMediaElementInterface, "duration">([](Call&, HTMLVideoElement&) { return std::nan(""); }),
        attribute<htmlMediaElementInterface, "currentTime">(
            [](Call&, HTMLVideoElement&) { return 0.0; },
            [](Call& call, HTMLVideoElement&, JSValueRef value) { call.toNumber(value); }),
        attribute<htmlMediaElementInterface, "muted">(
            [](Call&, HTMLVideoElement& video) { return hasAttribute(video, "muted"); },
            [](Call& call, HTMLVideoElement& video, JSValueRef value) { setBooleanAttribute(video, "muted", call.toBoolean(value)); }),
        attribute<htmlMediaElementInterface, "loop">(
            [](Call&, HTMLVideoElement& video) { return hasAttribute(video, "loop"); },
            [](Call& call, HTMLVideoElement& video, JSValueRef value) { setBooleanAttribute(video, "loop", call.toBoolean(value)); }),
        attribute<htmlMediaElementInterface, "autoplay">(
            [](Call&, HTMLVideoElement& video) { return hasAttribute(video, "autoplay"); },
            [](Call& call, HTMLVideoElement& video, JSValueRef value) { setBooleanAttribute(video, "autoplay", call.toBoolean(value)); }),
        operation<htmlMediaElementInterface, "load", 0>([](Call&, HTMLVideoElement&) {}),
        operation<htmlMediaElementInterface, "play", 0>([](Call& call, HTMLVideoElement& video) {
            video.play();
            return pendingPromise(call);
        }),
        operation<htmlMediaElementInterface, "pause", 0>([](Call&, HTMLVideoElement& video) { video.pause(); }),
        operation<htmlMediaElementInterface, "canPlayType", 1>([](Call& call, HTMLVideoElement&) {
            call.string(0);
            return std::string();
        }),
    },
};

InterfaceDefinition htmlVideoElementInterface = {
    .name = "HTMLVideoElement",
    .parent = &htmlMediaElementInterface,
    .members = {
        readonlyAttribute<htmlVideoElementInterface, "videoWidth">([](Call&, HTMLVideoElement&) { return 0; }),
        readonlyAttribute<htmlVideoElementInterface, "videoHeight">([](Call&, HTMLVideoElement&) { return 0; }),
    },
};

InterfaceDefinition svgImageElementInterface = {
    .name = "SVGImageElement",
    .parent = &svgElementInterface,
};

CanvasImageSource* imageSourceOf(const Call& call, JSValueRef value)
{
    const Wrapper* wrapper = Call::wrapperOf(call.ctx(), value);
    if (!wrapper)
        return nullptr;
    void* object = wrapper->object.get();
    if (wrapper->interface->inherits(htmlCanvasElementInterface))
        return static_cast<HTMLCanvasElement*>(object);
    if (wrapper->interface->inherits(htmlImageElementInterface))
        return static_cast<HTMLImageElement*>(object);
    if (wrapper->interface->inherits(htmlVideoElementInterface))
        return static_cast<HTMLVideoElement*>(object);
    if (wrapper->interface->inherits(svgImageElementInterface))
        return static_cast<SVGImageElement*>(object);
    return nullptr;
}

void installImageConstructor(Realm& realm)
{
    JSContextRef ctx = realm.context();
    JSObjectRef image = JSObjectMake(ctx, interfaceObjectClass(), makeInterfaceObjectData(imageFactory));
    JSObjectSetPrototype(ctx, image, getProperty(ctx, realm.intrinsics(), "functionPrototype"));
    realm.defineValue(image, makeString(ctx, "length"), JSValueMakeNumber(ctx, 0), false, false, true);
    realm.defineValue(image, makeString(ctx, "name"), makeString(ctx, "Image"), false, false, true);
    realm.defineValue(image, makeString(ctx, "prototype"), realm.prototypeOf(htmlImageElementInterface), false, false, false);
    realm.defineValue(realm.global(), makeString(ctx, "Image"), image, true, false, true);
}

} // namespace script
