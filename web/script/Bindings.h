#pragma once

#include "web/script/Binding.h"

#include <vector>

namespace script {

class Realm;

extern InterfaceDefinition domExceptionInterface;
extern InterfaceDefinition documentInterface;
extern InterfaceDefinition nodeInterface;
extern InterfaceDefinition textInterface;
extern InterfaceDefinition elementInterface;
extern InterfaceDefinition htmlElementInterface;
extern InterfaceDefinition htmlCanvasElementInterface;
extern InterfaceDefinition htmlImageElementInterface;
extern InterfaceDefinition htmlMediaElementInterface;
extern InterfaceDefinition htmlVideoElementInterface;
extern InterfaceDefinition svgElementInterface;
extern InterfaceDefinition svgImageElementInterface;
extern InterfaceDefinition cssStyleDeclarationInterface;
extern InterfaceDefinition canvasRenderingContext2DInterface;
extern InterfaceDefinition canvasGradientInterface;
extern InterfaceDefinition canvasPatternInterface;
extern InterfaceDefinition canvasFilterInterface;
extern InterfaceDefinition path2DInterface;
extern InterfaceDefinition imageDataInterface;
extern InterfaceDefinition textMetricsInterface;
extern InterfaceDefinition textClusterInterface;
extern InterfaceDefinition domMatrixReadOnlyInterface;
extern InterfaceDefinition domMatrixInterface;
extern InterfaceDefinition domPointReadOnlyInterface;
extern InterfaceDefinition domPointInterface;
extern InterfaceDefinition domRectReadOnlyInterface;
extern InterfaceDefinition domRectInterface;

// Every interface, parents before children.
const std::vector<const InterfaceDefinition*>& allInterfaces();

// The `console` namespace object.
JSObjectRef makeConsole(Realm& realm);
// Starts a new allowance of console lines (one per evaluation).
void resetConsoleAllowance();

// A new document object.
JSObjectRef makeDocument(Realm& realm);

// The window's own members: window, self, document, devicePixelRatio.
void installWindowMembers(Realm& realm);

} // namespace script
