#pragma once

#include "web/script/Binding.h"

#include <memory>

class CanvasImageSource;
class Element;
class Node;

namespace script {

class Realm;

// The wrapper of an element, of the interface its class calls for (HTMLCanvasElement,
// HTMLImageElement, HTMLElement, SVGElement, ...): the same object for as long as it lives.
JSObjectRef wrapElement(Realm& realm, const std::shared_ptr<Element>& element);
// The same, or null for a null element.
JSValueRef wrapElementOrNull(const Call& call, const std::shared_ptr<Element>& element);
// The element a value wraps, whatever its interface, or null.
std::shared_ptr<Element> elementOf(const Call& call, JSValueRef value);
// A node (an element or a text) and its wrapper.
JSObjectRef wrapNode(Realm& realm, const std::shared_ptr<Node>& node);
std::shared_ptr<Node> nodeOf(const Call& call, JSValueRef value);
// What drawImage and createPattern can take that a value wraps (a canvas, an image, a video, an
// SVG image), or null.
CanvasImageSource* imageSourceOf(const Call& call, JSValueRef value);

// A CSSStyleDeclaration: the element's inline style (element.style) or its computed style
// (getComputedStyle, read-only and live).
JSObjectRef makeStyleDeclaration(Realm& realm, std::shared_ptr<Element> element, bool computed);

// Members of the window the page's elements bring.
void installGetComputedStyle(Realm& realm);
void installImageConstructor(Realm& realm);

} // namespace script
