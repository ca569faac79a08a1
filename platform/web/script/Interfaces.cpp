#include "platform/web/script/Bindings.h"

namespace script {

const std::vector<const InterfaceDefinition*>& allInterfaces()
{
    static const std::vector<const InterfaceDefinition*> interfaces = {
        &domExceptionInterface,
        &documentInterface,
        &htmlElementInterface,
        &htmlCanvasElementInterface,
        &canvasRenderingContext2DInterface,
        &canvasGradientInterface,
        &canvasPatternInterface,
        &path2DInterface,
        &imageDataInterface,
        &textMetricsInterface,
        &domMatrixReadOnlyInterface,
        &domMatrixInterface,
        &domPointReadOnlyInterface,
        &domPointInterface,
    };
    return interfaces;
}

} // namespace script
