#include "web/script/Bindings.h"

namespace script {

const std::vector<const InterfaceDefinition*>& allInterfaces()
{
    static const std::vector<const InterfaceDefinition*> interfaces = {
        &domExceptionInterface,
        &documentInterface,
        &nodeInterface,
        &textInterface,
        &elementInterface,
        &htmlElementInterface,
        &htmlCanvasElementInterface,
        &htmlImageElementInterface,
        &htmlMediaElementInterface,
        &htmlVideoElementInterface,
        &svgElementInterface,
        &svgImageElementInterface,
        &cssStyleDeclarationInterface,
        &canvasRenderingContext2DInterface,
        &canvasGradientInterface,
        &canvasPatternInterface,
        &canvasFilterInterface,
        &path2DInterface,
        &imageDataInterface,
        &textMetricsInterface,
        &textClusterInterface,
        &domMatrixReadOnlyInterface,
        &domMatrixInterface,
        &domPointReadOnlyInterface,
        &domPointInterface,
        &domRectReadOnlyInterface,
        &domRectInterface,
    };
    return interfaces;
}

} // namespace script
