#include "web/dom/ElementFactory.h"

#include "web/canvas/HTMLCanvasElement.h"
#include "web/dom/HTMLImageElement.h"
#include "web/dom/HTMLVideoElement.h"

std::shared_ptr<Element> createElement(std::string_view localName, std::string_view namespaceURI)
{
    if (namespaceURI == kHTMLNamespace) {
        if (localName == "canvas")
            return HTMLCanvasElement::create();
        if (localName == "img")
            return std::make_shared<HTMLImageElement>();
        if (localName == "video")
            return std::make_shared<HTMLVideoElement>();
    } else if (namespaceURI == kSVGNamespace && localName == "image") {
        return std::make_shared<SVGImageElement>();
    }
    return std::make_shared<Element>(std::string(localName), std::string(namespaceURI));
}
