#pragma once

#include "platform/web/script/Binding.h"

struct ImageDataSettings;

namespace script {

// An ImageDataSettings dictionary (colorSpace, pixelFormat): undefined and null give the
// defaults, other non-objects and unknown values a TypeError.
ImageDataSettings toImageDataSettings(const Call& call, JSValueRef value);

} // namespace script
