#include "platform/web/script/Bindings.h"
namespace script {
InterfaceSpec canvasRenderingContext2DInterface = {.name = "CanvasRenderingContext2D"};
InterfaceSpec canvasGradientInterface = {.name = "CanvasGradient"};
InterfaceSpec canvasPatternInterface = {.name = "CanvasPattern"};
InterfaceSpec path2DInterface = {.name = "Path2D"};
InterfaceSpec imageDataInterface = {.name = "ImageData"};
InterfaceSpec textMetricsInterface = {.name = "TextMetrics"};
InterfaceSpec domMatrixReadOnlyInterface = {.name = "DOMMatrixReadOnly"};
InterfaceSpec domMatrixInterface = {.name = "DOMMatrix", .parent = &domMatrixReadOnlyInterface};
InterfaceSpec domPointReadOnlyInterface = {.name = "DOMPointReadOnly"};
InterfaceSpec domPointInterface = {.name = "DOMPoint", .parent = &domPointReadOnlyInterface};
}
