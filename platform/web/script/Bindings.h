#pragma once

#include "platform/web/script/Binding.h"

#include <vector>

namespace script {

class Realm;

extern InterfaceSpec domExceptionInterface;
extern InterfaceSpec documentInterface;
extern InterfaceSpec htmlElementInterface;
extern InterfaceSpec htmlCanvasElementInterface;
extern InterfaceSpec canvasRenderingContext2DInterface;
extern InterfaceSpec canvasGradientInterface;
extern InterfaceSpec canvasPatternInterface;
extern InterfaceSpec path2DInterface;
extern InterfaceSpec imageDataInterface;
extern InterfaceSpec textMetricsInterface;
extern InterfaceSpec domMatrixReadOnlyInterface;
extern InterfaceSpec domMatrixInterface;
extern InterfaceSpec domPointReadOnlyInterface;
extern InterfaceSpec domPointInterface;

// Every interface, parents before children.
const std::vector<const InterfaceSpec*>& allInterfaces();

// The `console` namespace object.
JSObjectRef makeConsole(Realm& realm);
// Starts a new allowance of console lines (one per evaluation).
void resetConsoleAllowance();

// A new document object.
JSObjectRef makeDocument(Realm& realm);

// The window's own members: window, self, document, devicePixelRatio.
void installWindowMembers(Realm& realm);

} // namespace script
