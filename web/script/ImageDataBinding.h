#pragma once

#include "web/script/Binding.h"

#include <memory>

class ImageData;
struct ImageDataSettings;

namespace script {

// An ImageDataSettings dictionary (colorSpace, pixelFormat): undefined and null give the
// defaults, other non-objects and unknown values a TypeError.
ImageDataSettings toImageDataSettings(const Call& call, JSValueRef value);

// createImageData(data, sw, sh, settings), the form Chromium kept for typed arrays of channels:
// a copy of a Uint8ClampedArray's or a Uint16Array's channels as bytes, or of a Float32Array's
// as half floats. TypeError for other values, IndexSizeError when the length is not
// 4 * sw * sh.
std::shared_ptr<ImageData> imageDataFromChannels(const Call& call, JSValueRef array, std::uint32_t sw, std::uint32_t sh,
                                                 ImageDataSettings settings);

} // namespace script
