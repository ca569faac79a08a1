#include "platform/web/canvas/ImageData.h"
#include "platform/web/script/Bindings.h"
#include "platform/web/script/Realm.h"

#include <JavaScriptCore/JSTypedArray.h>

namespace script {

namespace {

ImageDataSettings settingsArgument(const Call& call, std::size_t index)
{
    ImageDataSettings settings;
    JSContextRef ctx = call.ctx();
    JSValueRef value = call.arg(index);
    if (JSValueIsUndefined(ctx, value) || JSValueIsNull(ctx, value))
        return settings;
    if (!JSValueIsObject(ctx, value))
        call.throwTypeError("Failed to construct 'ImageData': The provided value is not of type 'ImageDataSettings'.");
    JSValueRef colorSpace = getProperty(ctx, const_cast<JSObjectRef>(value), "colorSpace");
    if (!JSValueIsUndefined(ctx, colorSpace)) {
        std::string text = call.toString(colorSpace);
        auto space = parsePredefinedColorSpace(text);
        if (!space)
            call.throwTypeError("The provided value '" + text + "' is not a valid enum value of type PredefinedColorSpace.");
        settings.colorSpace = *space;
    }
    return settings;
}

bool isUint8ClampedArray(const Call& call, JSValueRef value)
{
    return JSValueGetTypedArrayType(call.ctx(), value, nullptr) == kJSTypedArrayTypeUint8ClampedArray;
}

// new ImageData(data, sw [, sh [, settings]]) over the script's own array.
JSObjectRef constructOverArray(Call& call)
{
    JSContextRef ctx = call.ctx();
    auto array = const_cast<JSObjectRef>(call.arg(0));
    JSValueRef exception = nullptr;
    JSObjectRef buffer = JSObjectGetTypedArrayBuffer(ctx, array, &exception);
    rethrowIf(exception);
    JSObjectRef isResizable = toObject(ctx, getProperty(ctx, call.realm().intrinsics(), "isResizable"));
    JSValueRef resizable = JSObjectCallAsFunction(ctx, isResizable, buffer, 0, nullptr, &exception);
    rethrowIf(exception);
    if (JSValueToBoolean(ctx, resizable))
        call.throwTypeError("Failed to construct 'ImageData': The provided ArrayBufferView value must not be resizable.");
    std::uint32_t sw = call.toUnsignedLong(call.arg(1));
    std::optional<unsigned> sh;
    if (call.has(2))
        sh = call.toUnsignedLong(call.arg(2));
    ImageDataSettings settings = settingsArgument(call, 3);
    // Pins the buffer: it can no longer be detached or moved.
    auto* base = static_cast<std::uint8_t*>(JSObjectGetTypedArrayBytesPtr(ctx, array, &exception));
    rethrowIf(exception);
    std::size_t offset = JSObjectGetTypedArrayByteOffset(ctx, array, nullptr);
    std::size_t length = JSObjectGetTypedArrayByteLength(ctx, array, nullptr);
    // The wrapper holds the array (below), and the ImageData lives no longer than its wrapper.
    auto data = call.check(ImageData::create(base ? base + offset : nullptr, length, sw, sh, nullptr, settings));
    JSObjectRef wrapper = call.realm().wrap(imageDataInterface, std::move(data));
    call.realm().setHidden(wrapper, "data", array);
    return wrapper;
}

JSObjectRef constructImageData(Call& call)
{
    if (isUint8ClampedArray(call, call.arg(0)))
        return constructOverArray(call);
    std::uint32_t sw = call.toUnsignedLong(call.arg(0));
    std::uint32_t sh = call.toUnsignedLong(call.arg(1));
    ImageDataSettings settings = settingsArgument(call, 2);
    auto data = call.check(ImageData::create(sw, sh, settings));
    JSReportExtraMemoryCost(call.ctx(), data->dataLength());
    return call.realm().wrap(imageDataInterface, std::move(data));
}

void releaseBytes(void*, void* owner)
{
    delete static_cast<std::shared_ptr<std::uint8_t>*>(owner);
}

// The same Uint8ClampedArray every time, over the C++ bytes; it keeps them alive itself.
JSValueRef dataArray(Call& call, ImageData& data)
{
    Realm& realm = call.realm();
    JSValueRef cached = realm.hidden(call.thisObject(), "data");
    if (JSValueIsObject(call.ctx(), cached))
        return cached;
    auto* owner = new std::shared_ptr<std::uint8_t>(data.sharedData());
    JSValueRef exception = nullptr;
    JSObjectRef array = JSObjectMakeTypedArrayWithBytesNoCopy(call.ctx(), kJSTypedArrayTypeUint8ClampedArray, data.data(),
                                                              data.dataLength(), releaseBytes, owner, &exception);
    if (!array) {
        delete owner;
        rethrowIf(exception);
        throw std::bad_alloc();
    }
    realm.setHidden(call.thisObject(), "data", array);
    return array;
}

} // namespace

InterfaceDefinition imageDataInterface = {
    .name = "ImageData",
    .constructor = &constructImageData,
    .constructorLength = 2,
    .members = {
        readonlyAttribute<imageDataInterface, "width">([](Call&, ImageData& data) { return data.width(); }),
        readonlyAttribute<imageDataInterface, "height">([](Call&, ImageData& data) { return data.height(); }),
        readonlyAttribute<imageDataInterface, "data">([](Call& call, ImageData& data) { return dataArray(call, data); }),
        readonlyAttribute<imageDataInterface, "colorSpace">([](Call&, ImageData& data) {
            return std::string(toString(data.colorSpace()));
        }),
    },
};

} // namespace script
