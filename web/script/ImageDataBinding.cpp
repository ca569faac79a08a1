#include "web/script/ImageDataBinding.h"

#include "web/canvas/Float16.h"
#include "web/canvas/ImageData.h"
#include "web/script/Bindings.h"
#include "web/script/Realm.h"

#include <JavaScriptCore/JSTypedArray.h>

#include <algorithm>
#include <cmath>

namespace script {

ImageDataSettings toImageDataSettings(const Call& call, JSValueRef value)
{
    ImageDataSettings settings;
    JSContextRef ctx = call.ctx();
    if (JSValueIsUndefined(ctx, value) || JSValueIsNull(ctx, value))
        return settings;
    if (!JSValueIsObject(ctx, value))
        call.throwTypeError("The provided value is not of type 'ImageDataSettings'.");
    auto dictionary = const_cast<JSObjectRef>(value);
    // Members in the order WebIDL reads them.
    auto enumeration = [&](JSValueRef member, auto parse, const char* type) {
        std::string text = call.toString(member);
        auto parsed = parse(text);
        if (!parsed)
            call.throwTypeError("The provided value '" + text + "' is not a valid enum value of type " + type + ".");
        return *parsed;
    };
    JSValueRef colorSpace = getProperty(ctx, dictionary, "colorSpace");
    if (!JSValueIsUndefined(ctx, colorSpace))
        settings.colorSpace = enumeration(colorSpace, parsePredefinedColorSpace, "PredefinedColorSpace");
    JSValueRef pixelFormat = getProperty(ctx, dictionary, "pixelFormat");
    if (!JSValueIsUndefined(ctx, pixelFormat))
        settings.pixelFormat = enumeration(pixelFormat, parseImageDataPixelFormat, "ImageDataPixelFormat");
    return settings;
}

std::shared_ptr<ImageData> imageDataFromChannels(const Call& call, JSValueRef array, std::uint32_t sw, std::uint32_t sh,
                                                 ImageDataSettings settings)
{
    JSContextRef ctx = call.ctx();
    JSTypedArrayType type = JSValueGetTypedArrayType(ctx, array, nullptr);
    if (type != kJSTypedArrayTypeUint8ClampedArray && type != kJSTypedArrayTypeUint16Array && type != kJSTypedArrayTypeFloat32Array)
        call.throwTypeError("Failed to execute 'createImageData' on 'CanvasRenderingContext2D': parameter 1 is not of type "
                            "'(Uint8ClampedArray or Uint16Array or Float32Array)'.");
    auto object = const_cast<JSObjectRef>(array);
    JSValueRef exception = nullptr;
    std::size_t channels = JSObjectGetTypedArrayLength(ctx, object, &exception);
    rethrowIf(exception);
    if (sw == 0 || sh == 0 || channels / 4 / sw != sh || channels != std::size_t(sw) * sh * 4)
        call.throwException(DOMException{"IndexSizeError", "The input data length is not equal to (4 * width * height)."});
    settings.pixelFormat = type == kJSTypedArrayTypeFloat32Array ? ImageDataPixelFormat::RgbaFloat16 : ImageDataPixelFormat::RgbaUnorm8;
    std::shared_ptr<ImageData> data = call.check(ImageData::create(sw, sh, settings));
    // Asked for after the allocation, which may run the collector; a detached array has no
    // bytes and its channels read as zero.
    const void* bytes = JSObjectGetTypedArrayBytesPtr(ctx, object, &exception);
    rethrowIf(exception);
    if (!bytes)
        return data;
    if (type == kJSTypedArrayTypeUint8ClampedArray) {
        std::copy_n(static_cast<const std::uint8_t*>(bytes), channels, data->data());
    } else if (type == kJSTypedArrayTypeUint16Array) {
        const auto* in = static_cast<const std::uint16_t*>(bytes);
        for (std::size_t i = 0; i < channels; ++i)
            data->data()[i] = std::uint8_t((unsigned(in[i]) + 128) / 257);
    } else {
        const auto* in = static_cast<const float*>(bytes);
        for (std::size_t i = 0; i < channels; ++i)
            data->halves()[i] = floatToHalf(in[i]);
    }
    return data;
}

namespace {

// The storage of a typed array an ImageData may wrap: a Uint8ClampedArray, or a Float16Array
// (which the C API does not know, so the engine's own getters tell and measure it).
struct ArrayStorage {
    ImageDataPixelFormat format;
    JSObjectRef buffer;
    std::size_t byteOffset;
    std::size_t byteLength;
};

JSValueRef callIntrinsic(const Call& call, const char* name, JSValueRef self)
{
    JSContextRef ctx = call.ctx();
    JSValueRef function = getProperty(ctx, call.realm().intrinsics(), name);
    if (!JSValueIsObject(ctx, function))
        return nullptr;
    JSValueRef exception = nullptr;
    JSValueRef result = JSObjectCallAsFunction(ctx, toObject(ctx, function), toObject(ctx, self), 0, nullptr, &exception);
    return exception ? nullptr : result;
}

std::optional<ArrayStorage> arrayStorage(const Call& call, JSValueRef value)
{
    JSContextRef ctx = call.ctx();
    if (!JSValueIsObject(ctx, value))
        return {};
    auto array = const_cast<JSObjectRef>(value);
    if (JSValueGetTypedArrayType(ctx, value, nullptr) == kJSTypedArrayTypeUint8ClampedArray) {
        JSValueRef exception = nullptr;
        JSObjectRef buffer = JSObjectGetTypedArrayBuffer(ctx, array, &exception);
        rethrowIf(exception);
        return ArrayStorage{ImageDataPixelFormat::RgbaUnorm8, buffer, JSObjectGetTypedArrayByteOffset(ctx, array, nullptr),
                            JSObjectGetTypedArrayByteLength(ctx, array, nullptr)};
    }
    // The name getter throws for anything but a real typed array, proxies included.
    JSValueRef name = callIntrinsic(call, "typedArrayName", value);
    if (!name || !JSValueIsString(ctx, name) || call.toString(name) != "Float16Array")
        return {};
    JSValueRef buffer = callIntrinsic(call, "typedArrayBuffer", value);
    JSValueRef offset = callIntrinsic(call, "typedArrayByteOffset", value);
    JSValueRef length = callIntrinsic(call, "typedArrayByteLength", value);
    if (!buffer || !offset || !length || !JSValueIsObject(ctx, buffer))
        return {};
    return ArrayStorage{ImageDataPixelFormat::RgbaFloat16, toObject(ctx, buffer), std::size_t(JSValueToNumber(ctx, offset, nullptr)),
                        std::size_t(JSValueToNumber(ctx, length, nullptr))};
}

// new ImageData(data, sw [, sh [, settings]]) over the script's own array.
JSObjectRef constructOverArray(Call& call, const ArrayStorage& storage)
{
    JSContextRef ctx = call.ctx();
    JSValueRef exception = nullptr;
    JSObjectRef isResizable = toObject(ctx, getProperty(ctx, call.realm().intrinsics(), "isResizable"));
    JSValueRef resizable = JSObjectCallAsFunction(ctx, isResizable, storage.buffer, 0, nullptr, &exception);
    rethrowIf(exception);
    if (JSValueToBoolean(ctx, resizable))
        call.throwTypeError("Failed to construct 'ImageData': The provided ArrayBufferView value must not be resizable.");
    std::uint32_t sw = call.toUnsignedLong(call.arg(1));
    std::optional<unsigned> sh;
    if (call.has(2))
        sh = call.toUnsignedLong(call.arg(2));
    ImageDataSettings settings = toImageDataSettings(call, call.arg(3));
    if (settings.pixelFormat != storage.format)
        call.throwException(DOMException{"InvalidStateError", "Failed to construct 'ImageData': The input data type is not "
                                                              "compatible with the requested pixel format."});
    // Pins the buffer: it can no longer be detached or moved.
    auto* base = static_cast<std::uint8_t*>(JSObjectGetArrayBufferBytesPtr(ctx, storage.buffer, &exception));
    rethrowIf(exception);
    std::size_t channels = storage.byteLength / (storage.format == ImageDataPixelFormat::RgbaFloat16 ? 2 : 1);
    // The wrapper holds the array (below), and the ImageData lives no longer than its wrapper.
    auto data = call.check(ImageData::create(base ? base + storage.byteOffset : nullptr, channels, sw, sh, nullptr, settings));
    JSObjectRef wrapper = call.realm().wrap(imageDataInterface, std::move(data));
    call.realm().setHidden(wrapper, "data", call.arg(0));
    return wrapper;
}

JSObjectRef constructImageData(Call& call)
{
    if (auto storage = arrayStorage(call, call.arg(0)))
        return constructOverArray(call, *storage);
    if (JSValueGetTypedArrayType(call.ctx(), call.arg(0), nullptr) == kJSTypedArrayTypeFloat32Array) {
        // Browsers take float arrays as image data, and no pixel format of ours matches one.
        toImageDataSettings(call, call.arg(3));
        call.throwException(DOMException{"InvalidStateError", "Failed to construct 'ImageData': The input data type is not "
                                                              "compatible with the requested pixel format."});
    }
    std::uint32_t sw = call.toUnsignedLong(call.arg(0));
    std::uint32_t sh = call.toUnsignedLong(call.arg(1));
    ImageDataSettings settings = toImageDataSettings(call, call.arg(2));
    auto data = call.check(ImageData::create(sw, sh, settings));
    JSReportExtraMemoryCost(call.ctx(), data->dataLength());
    return call.realm().wrap(imageDataInterface, std::move(data));
}

void releaseBytes(void*, void* owner)
{
    delete static_cast<std::shared_ptr<std::uint8_t>*>(owner);
}

// The same typed array every time, over the C++ storage; it keeps the storage alive itself.
JSValueRef dataArray(Call& call, ImageData& data)
{
    Realm& realm = call.realm();
    JSContextRef ctx = call.ctx();
    JSValueRef cached = realm.hidden(call.thisObject(), "data");
    if (JSValueIsObject(ctx, cached))
        return cached;
    auto* owner = new std::shared_ptr<std::uint8_t>(data.sharedData());
    JSValueRef exception = nullptr;
    JSObjectRef array = nullptr;
    if (data.pixelFormat() == ImageDataPixelFormat::RgbaUnorm8) {
        array = JSObjectMakeTypedArrayWithBytesNoCopy(ctx, kJSTypedArrayTypeUint8ClampedArray, data.data(), data.dataLength(),
                                                      releaseBytes, owner, &exception);
    } else {
        JSObjectRef buffer = JSObjectMakeArrayBufferWithBytesNoCopy(ctx, data.data(), data.dataLength(), releaseBytes, owner,
                                                                    &exception);
        owner = nullptr; // the buffer owns it now, even if the view below fails
        JSValueRef make = getProperty(ctx, realm.intrinsics(), "makeFloat16Array");
        if (buffer && JSValueIsObject(ctx, make)) {
            JSValueRef argument = buffer;
            JSValueRef view = JSObjectCallAsFunction(ctx, toObject(ctx, make), nullptr, 1, &argument, &exception);
            array = view && JSValueIsObject(ctx, view) ? toObject(ctx, view) : nullptr;
        } else if (buffer) {
            call.throwTypeError("Half-float image data needs Float16Array, which this engine lacks.");
        }
    }
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
        readonlyAttribute<imageDataInterface, "pixelFormat">([](Call&, ImageData& data) {
            return std::string(toString(data.pixelFormat()));
        }),
        readonlyAttribute<imageDataInterface, "colorSpace">([](Call&, ImageData& data) {
            return std::string(toString(data.colorSpace()));
        }),
    },
};

} // namespace script
