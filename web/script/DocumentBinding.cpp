#include "web/canvas/HTMLCanvasElement.h"
#include "web/dom/Document.h"
#include "web/dom/ElementFactory.h"
#include "web/dom/HTMLImageElement.h"
#include "web/dom/HTMLVideoElement.h"
#include "web/dom/MarkupName.h"
#include "web/script/Bindings.h"
#include "web/script/ElementBindings.h"
#include "web/script/Realm.h"

#include <cctype>

namespace script {

namespace {

std::string lower(std::string text)
{
    for (char& ch : text)
        ch = char(std::tolower(static_cast<unsigned char>(ch)));
    return text;
}

std::string checkedName(const Call& call, std::string name, const char* member)
{
    if (!isValidMarkupName(name))
        call.throwException({"InvalidCharacterError", std::string("Failed to execute '") + member
                                 + "' on 'Document': The tag name provided ('" + name + "') is not a valid name."});
    return name;
}

} // namespace

JSObjectRef wrapElement(Realm& realm, const std::shared_ptr<Element>& element)
{
    // Nodes of every kind are known by their Node address.
    const void* identity = static_cast<const Node*>(element.get());
    if (auto canvas = std::dynamic_pointer_cast<HTMLCanvasElement>(element))
        return realm.wrapCached(htmlCanvasElementInterface, std::move(canvas), identity);
    if (auto image = std::dynamic_pointer_cast<HTMLImageElement>(element))
        return realm.wrapCached(htmlImageElementInterface, std::move(image), identity);
    if (auto video = std::dynamic_pointer_cast<HTMLVideoElement>(element))
        return realm.wrapCached(htmlVideoElementInterface, std::move(video), identity);
    if (auto image = std::dynamic_pointer_cast<SVGImageElement>(element))
        return realm.wrapCached(svgImageElementInterface, std::move(image), identity);
    const InterfaceDefinition& interface = element->isHTML() ? htmlElementInterface
        : element->namespaceURI() == kSVGNamespace             ? svgElementInterface
                                                               : elementInterface;
    return realm.wrapCached(interface, element, identity);
}

InterfaceDefinition documentInterface = {
    .name = "Document",
    .members = {
        operation<documentInterface, "createElement", 1>([](Call& call, Document&) {
            std::string name = lower(checkedName(call, call.string(0), "createElement"));
            return wrapElement(call.realm(), createElement(name));
        }),
        operation<documentInterface, "createElementNS", 2>([](Call& call, Document&) {
            std::string namespaceURI = JSValueIsNull(call.ctx(), call.arg(0)) ? std::string() : call.string(0);
            std::string qualifiedName = checkedName(call, call.string(1), "createElementNS");
            std::size_t colon = qualifiedName.find(':');
            std::string localName = colon == std::string::npos ? qualifiedName : qualifiedName.substr(colon + 1);
            if (localName.empty() || (colon != std::string::npos && namespaceURI.empty()))
                call.throwException({"NamespaceError", "Failed to execute 'createElementNS' on 'Document': The namespace "
                                                       "URI provided ('" + namespaceURI + "') is not valid for the "
                                                       "qualified name provided ('" + qualifiedName + "')."});
            return wrapElement(call.realm(), createElement(localName, namespaceURI));
        }),
        operation<documentInterface, "createTextNode", 1>([](Call& call, Document&) {
            return wrapNode(call.realm(), std::make_shared<Text>(call.string(0)));
        }),
        operation<documentInterface, "getElementById", 1>([](Call& call, Document& document) {
            return wrapElementOrNull(call, document.getElementById(call.string(0)));
        }),
        readonlyAttribute<documentInterface, "documentElement">([](Call& call, Document& document) {
            return wrapElementOrNull(call, document.documentElement());
        }),
        readonlyAttribute<documentInterface, "head">([](Call& call, Document& document) {
            return wrapElementOrNull(call, document.head());
        }),
        readonlyAttribute<documentInterface, "body">([](Call& call, Document& document) {
            return wrapElementOrNull(call, document.body());
        }),
        readonlyAttribute<documentInterface, "activeElement">([](Call& call, Document& document) {
            return wrapElementOrNull(call, document.activeElement());
        }),
        readonlyAttribute<documentInterface, "defaultView">([](Call& call, Document&) -> JSValueRef {
            return call.realm().global();
        }),
    },
};

JSObjectRef makeDocument(Realm& realm)
{
    return realm.wrap(documentInterface, std::make_shared<Document>());
}

} // namespace script
