#pragma once

#include "web/geometry/DOMRect.h"
#include "web/script/Binding.h"

namespace script {

// The DOMRectInit dictionary, read as WebIDL reads one (members in lexicographic order).
DOMRectInit toDOMRectInit(const Call& call, JSValueRef value);

JSObjectRef wrapRect(Realm& realm, const DOMRectReadOnly& rect, bool readOnly = false);

} // namespace script
