#pragma once

#include "web/geometry/DOMMatrix.h"
#include "web/geometry/DOMMatrixInit.h"
#include "web/geometry/DOMPoint.h"
#include "web/script/Binding.h"

namespace script {

// The geometry dictionaries, read the way WebIDL reads a dictionary: undefined and null give
// the defaults, other non-objects are a TypeError, members in lexicographic order.
DOMPointInit toDOMPointInit(const Call& call, JSValueRef value);
DOMMatrix2DInit toDOMMatrix2DInit(const Call& call, JSValueRef value);
DOMMatrixInit toDOMMatrixInit(const Call& call, JSValueRef value);

JSObjectRef wrapMatrix(Realm& realm, const DOMMatrixReadOnly& matrix, bool readOnly = false);
JSObjectRef wrapPoint(Realm& realm, const DOMPointReadOnly& point, bool readOnly = false);

} // namespace script
