#pragma once

#include "web/dom/Element.h"

#include <memory>
#include <string_view>

// A new element of the class its name and namespace call for: a canvas, an image, a video, an
// SVG image, or a plain Element.
std::shared_ptr<Element> createElement(std::string_view localName, std::string_view namespaceURI = kHTMLNamespace);
