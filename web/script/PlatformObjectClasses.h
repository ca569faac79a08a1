#pragma once

#include "web/script/Binding.h"

namespace script {

// The JavaScriptCore classes of our objects. Interface objects are callable (a TypeError) and
// constructible (the interface's constructor, or "Illegal constructor"), and answer instanceof
// the ordinary way. Every interface has a class of its own for its instances, named after it.
JSClassRef interfaceObjectClass();
JSClassRef instanceClass(const InterfaceDefinition& interface);

// The private data of an interface object.
PrivateData* makeInterfaceObjectData(const InterfaceDefinition& interface);

} // namespace script
