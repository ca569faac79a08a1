#include "web/canvas/HTMLCanvasElement.h"
#include "web/dom/Document.h"
#include "web/dom/HTMLFragment.h"
#include "web/dom/HTMLImageElement.h"
#include "web/dom/HTMLVideoElement.h"
#include "web/dom/MarkupName.h"
#include "web/script/Bindings.h"
#include "web/script/ElementBindings.h"
#include "web/script/Realm.h"
#include "web/script/RectBinding.h"

#include <cctype>

namespace script {

namespace {

// Every element wrapper holds its element as the class its interface binds.
Element* elementPointer(const Wrapper& wrapper)
{
    void* object = wrapper.object.get();
    const InterfaceDefinition& interface = *wrapper.interface;
    if (interface.inherits(htmlCanvasElementInterface))
        return static_cast<HTMLCanvasElement*>(object);
    if (interface.inherits(htmlImageElementInterface))
        return static_cast<HTMLImageElement*>(object);
    if (interface.inherits(htmlMediaElementInterface))
        return static_cast<HTMLVideoElement*>(object);
    if (interface.inherits(svgImageElementInterface))
        return static_cast<SVGImageElement*>(object);
    if (interface.inherits(elementInterface))
        return static_cast<Element*>(object);
    return nullptr;
}

Node* nodePointer(const Wrapper& wrapper)
{
    if (wrapper.interface->inherits(textInterface))
        return static_cast<Text*>(wrapper.object.get());
    return elementPointer(wrapper);
}

// The receiver of an element member (the thunk has checked its interface).
std::shared_ptr<Element> self(const Call&, const Wrapper& wrapper)
{
    return std::shared_ptr<Element>(wrapper.object, elementPointer(wrapper));
}

std::shared_ptr<Node> selfNode(const Call&, const Wrapper& wrapper)
{
    return std::shared_ptr<Node>(wrapper.object, nodePointer(wrapper));
}

// What scripts count as a string's length: UTF-16 code units.
std::size_t utf16Length(std::string_view utf8)
{
    std::size_t length = 0;
    for (unsigned char c : utf8) {
        if ((c & 0xC0) != 0x80)
            length += c >= 0xF0 ? 2 : 1;
    }
    return length;
}

// An attribute name argument: checked, and in lower case on HTML elements.
std::string attributeName(const Call& call, const Element& element, const char* member)
{
    std::string name = call.string(0);
    if (!isValidMarkupName(name))
        call.throwException({"InvalidCharacterError", std::string("Failed to execute '") + member
                                 + "' on 'Element': '" + name + "' is not a valid attribute name."});
    if (element.isHTML())
        for (char& ch : name)
            ch = char(std::tolower(static_cast<unsigned char>(ch)));
    return name;
}

std::shared_ptr<Node> requireNode(const Call& call, std::size_t index, const char* member)
{
    auto node = nodeOf(call, call.arg(index));
    if (!node)
        call.throwTypeError(std::string("Failed to execute '") + member + "' on 'Node': parameter "
                            + std::to_string(index + 1) + " is not of type 'Node'.");
    return node;
}

// Only elements have children here.
std::shared_ptr<Element> requireParent(const Call& call, const Wrapper& wrapper, const char* member)
{
    auto node = selfNode(call, wrapper);
    if (!node->isElement())
        call.throwException({"HierarchyRequestError", std::string("Failed to execute '") + member
                                 + "' on 'Node': This node type does not support this method."});
    return std::static_pointer_cast<Element>(node);
}

const std::vector<std::shared_ptr<Node>>& childrenOf(const Node& node)
{
    static const std::vector<std::shared_ptr<Node>> none;
    return node.isElement() ? static_cast<const Element&>(node).children() : none;
}

// A sibling of the node, `step` places along (+1 next, -1 previous).
std::shared_ptr<Node> sibling(const Node& node, int step)
{
    Element* parent = node.parentPointer();
    if (!parent)
        return nullptr;
    const auto& siblings = parent->children();
    for (std::size_t i = 0; i < siblings.size(); ++i) {
        if (siblings[i].get() != &node)
            continue;
        std::ptrdiff_t at = std::ptrdiff_t(i) + step;
        return at >= 0 && std::size_t(at) < siblings.size() ? siblings[std::size_t(at)] : nullptr;
    }
    return nullptr;
}

template <typename NodeType>
JSValueRef nodeArray(const Call& call, const std::vector<std::shared_ptr<NodeType>>& nodes)
{
    std::vector<JSValueRef> wrappers;
    for (const auto& node : nodes)
        wrappers.push_back(wrapNode(call.realm(), node));
    JSValueRef exception = nullptr;
    JSObjectRef array = JSObjectMakeArray(call.ctx(), wrappers.size(), wrappers.data(), &exception);
    rethrowIf(exception);
    return array;
}

JSValueRef wrapNodeOrNull(const Call& call, const std::shared_ptr<Node>& node)
{
    return node ? JSValueRef(wrapNode(call.realm(), node)) : call.null();
}

void append(Call& call, const std::shared_ptr<Element>& parent, std::size_t first, const char* member)
{
    for (std::size_t i = first; i < call.count(); ++i) {
        // (Node or DOMString): strings become text.
        std::shared_ptr<Node> node = nodeOf(call, call.arg(i));
        if (!node)
            node = std::make_shared<Text>(call.string(i));
        call.check(Element::insertBefore(parent, node, nullptr));
    }
    (void)member;
}

// [LegacyNullToEmptyString] DOMString
std::string textArgument(const Call& call, JSValueRef value)
{
    return JSValueIsNull(call.ctx(), value) ? std::string() : call.toString(value);
}

JSValueRef reflect(const Element& element, const Call& call, const char* name)
{
    const std::string* value = element.attribute(name);
    return call.toJS(value ? std::string_view(*value) : std::string_view());
}

// The HTMLOrSVGElement mixin: style, focus and blur.
template <const InterfaceDefinition& I>
std::vector<Member> htmlOrSVGElementMembers()
{
    return {
        readonlyAttribute<I, "style">([](Call& call, const Wrapper& w) -> JSValueRef {
            JSValueRef style = call.realm().hidden(call.thisObject(), "style");
            if (JSValueIsObject(call.ctx(), style))
                return style;
            JSObjectRef object = makeStyleDeclaration(call.realm(), self(call, w), false);
            call.realm().setHidden(call.thisObject(), "style", object);
            return object;
        }),
        operation<I, "focus", 0>([](Call& call, const Wrapper& w) {
            auto element = self(call, w);
            if (Document* document = element->document())
                document->focus(element);
        }),
        operation<I, "blur", 0>([](Call& call, const Wrapper& w) {
            auto element = self(call, w);
            if (Document* document = element->document())
                document->blur(*element);
        }),
        attribute<I, "tabIndex">(
            [](Call& call, const Wrapper& w) {
                auto element = self(call, w);
                const std::string* text = element->attribute("tabindex");
                std::optional<unsigned> value;
                if (text && !text->empty() && text->find('-') == std::string::npos)
                    value = parseNonNegativeInteger(*text);
                return value ? double(*value) : element->isFocusable() ? 0.0 : -1.0;
            },
            [](Call& call, const Wrapper& w, JSValueRef value) {
                self(call, w)->setAttribute("tabindex", std::to_string(call.toLong(value)));
            }),
    };
}

} // namespace

std::shared_ptr<Element> elementOf(const Call& call, JSValueRef value)
{
    const Wrapper* wrapper = Call::wrapperOf(call.ctx(), value);
    if (!wrapper)
        return nullptr;
    Element* element = elementPointer(*wrapper);
    return element ? std::shared_ptr<Element>(wrapper->object, element) : nullptr;
}

std::shared_ptr<Node> nodeOf(const Call& call, JSValueRef value)
{
    const Wrapper* wrapper = Call::wrapperOf(call.ctx(), value);
    if (!wrapper)
        return nullptr;
    Node* node = nodePointer(*wrapper);
    return node ? std::shared_ptr<Node>(wrapper->object, node) : nullptr;
}

JSValueRef wrapElementOrNull(const Call& call, const std::shared_ptr<Element>& element)
{
    return element ? JSValueRef(wrapElement(call.realm(), element)) : call.null();
}

JSObjectRef wrapNode(Realm& realm, const std::shared_ptr<Node>& node)
{
    if (node->isText())
        return realm.wrapCached(textInterface, std::static_pointer_cast<Text>(node), node.get());
    return wrapElement(realm, std::static_pointer_cast<Element>(node));
}

InterfaceDefinition nodeInterface = {
    .name = "Node",
    .members = {
        constant("ELEMENT_NODE", 1),
        constant("TEXT_NODE", 3),
        readonlyAttribute<nodeInterface, "nodeType">([](Call& call, const Wrapper& w) {
            return double(selfNode(call, w)->nodeType());
        }),
        readonlyAttribute<nodeInterface, "nodeName">([](Call& call, const Wrapper& w) {
            auto node = selfNode(call, w);
            return node->isText() ? std::string("#text") : static_cast<const Element&>(*node).tagName();
        }),
        readonlyAttribute<nodeInterface, "parentNode">([](Call& call, const Wrapper& w) -> JSValueRef {
            auto node = selfNode(call, w);
            if (Document* document = node->document(); document && document->documentElement() == node)
                return call.realm().document();
            return wrapElementOrNull(call, node->parent());
        }),
        readonlyAttribute<nodeInterface, "parentElement">([](Call& call, const Wrapper& w) {
            return wrapElementOrNull(call, selfNode(call, w)->parent());
        }),
        readonlyAttribute<nodeInterface, "ownerDocument">([](Call& call, const Wrapper&) { return call.realm().document(); }),
        readonlyAttribute<nodeInterface, "isConnected">([](Call& call, const Wrapper& w) { return selfNode(call, w)->isConnected(); }),
        readonlyAttribute<nodeInterface, "childNodes">([](Call& call, const Wrapper& w) {
            return nodeArray(call, childrenOf(*selfNode(call, w)));
        }),
        readonlyAttribute<nodeInterface, "firstChild">([](Call& call, const Wrapper& w) {
            const auto& children = childrenOf(*selfNode(call, w));
            return wrapNodeOrNull(call, children.empty() ? nullptr : children.front());
        }),
        readonlyAttribute<nodeInterface, "lastChild">([](Call& call, const Wrapper& w) {
            const auto& children = childrenOf(*selfNode(call, w));
            return wrapNodeOrNull(call, children.empty() ? nullptr : children.back());
        }),
        readonlyAttribute<nodeInterface, "nextSibling">([](Call& call, const Wrapper& w) {
            return wrapNodeOrNull(call, sibling(*selfNode(call, w), 1));
        }),
        readonlyAttribute<nodeInterface, "previousSibling">([](Call& call, const Wrapper& w) {
            return wrapNodeOrNull(call, sibling(*selfNode(call, w), -1));
        }),
        attribute<nodeInterface, "textContent">(
            [](Call& call, const Wrapper& w) { return selfNode(call, w)->textContent(); },
            [](Call& call, const Wrapper& w, JSValueRef value) {
                auto node = selfNode(call, w);
                if (node->isText())
                    static_cast<Text&>(*node).setData(textArgument(call, value));
                else
                    static_cast<Element&>(*node).setTextContent(textArgument(call, value));
            }),
        operation<nodeInterface, "hasChildNodes", 0>([](Call& call, const Wrapper& w) {
            return !childrenOf(*selfNode(call, w)).empty();
        }),
        operation<nodeInterface, "contains", 1>([](Call& call, const Wrapper& w) {
            auto node = selfNode(call, w);
            auto other = nodeOf(call, call.arg(0));
            if (!other)
                return false;
            return node == other || (node->isElement() && static_cast<const Element&>(*node).contains(*other));
        }),
        operation<nodeInterface, "appendChild", 1>([](Call& call, const Wrapper& w) {
            auto parent = requireParent(call, w, "appendChild");
            call.check(Element::insertBefore(parent, requireNode(call, 0, "appendChild"), nullptr));
            return call.arg(0);
        }),
        operation<nodeInterface, "insertBefore", 2>([](Call& call, const Wrapper& w) {
            auto parent = requireParent(call, w, "insertBefore");
            auto child = requireNode(call, 0, "insertBefore");
            std::shared_ptr<Node> reference;
            if (!JSValueIsNull(call.ctx(), call.arg(1)))
                reference = requireNode(call, 1, "insertBefore");
            call.check(Element::insertBefore(parent, child, reference.get()));
            return call.arg(0);
        }),
        operation<nodeInterface, "removeChild", 1>([](Call& call, const Wrapper& w) {
            auto parent = requireParent(call, w, "removeChild");
            auto child = requireNode(call, 0, "removeChild");
            call.check(parent->removeChild(*child));
            return call.arg(0);
        }),
    },
};

InterfaceDefinition textInterface = {
    .name = "Text",
    .parent = &nodeInterface,
    .constructor = [](Call& call) -> JSObjectRef {
        return wrapNode(call.realm(), std::make_shared<Text>(call.has(0) ? call.string(0) : std::string()));
    },
    .members = {
        attribute<textInterface, "data">(
            [](Call&, Text& text) { return text.data(); },
            [](Call& call, Text& text, JSValueRef value) { text.setData(textArgument(call, value)); }),
        readonlyAttribute<textInterface, "length">([](Call&, Text& text) { return double(utf16Length(text.data())); }),
        readonlyAttribute<textInterface, "wholeText">([](Call&, Text& text) { return text.data(); }),
        operation<textInterface, "remove", 0>([](Call&, Text& text) { text.remove(); }),
    },
};

InterfaceDefinition elementInterface = {
    .name = "Element",
    .parent = &nodeInterface,
    .members = {
        readonlyAttribute<elementInterface, "tagName">([](Call& call, const Wrapper& w) { return self(call, w)->tagName(); }),
        readonlyAttribute<elementInterface, "localName">([](Call& call, const Wrapper& w) { return self(call, w)->localName(); }),
        readonlyAttribute<elementInterface, "namespaceURI">([](Call& call, const Wrapper& w) { return self(call, w)->namespaceURI(); }),
        attribute<elementInterface, "id">(
            [](Call& call, const Wrapper& w) { return reflect(*self(call, w), call, "id"); },
            [](Call& call, const Wrapper& w, JSValueRef value) { self(call, w)->setAttribute("id", call.toString(value)); }),
        attribute<elementInterface, "className">(
            [](Call& call, const Wrapper& w) { return reflect(*self(call, w), call, "class"); },
            [](Call& call, const Wrapper& w, JSValueRef value) { self(call, w)->setAttribute("class", call.toString(value)); }),
        operation<elementInterface, "getAttribute", 1>([](Call& call, const Wrapper& w) -> JSValueRef {
            auto element = self(call, w);
            const std::string* value = element->attribute(attributeName(call, *element, "getAttribute"));
            return value ? call.toJS(std::string_view(*value)) : call.null();
        }),
        operation<elementInterface, "hasAttribute", 1>([](Call& call, const Wrapper& w) {
            auto element = self(call, w);
            return element->attribute(attributeName(call, *element, "hasAttribute")) != nullptr;
        }),
        operation<elementInterface, "getAttributeNames", 0>([](Call& call, const Wrapper& w) {
            std::vector<JSValueRef> names;
            for (const auto& attribute : self(call, w)->attributes())
                names.push_back(call.toJS(std::string_view(attribute.name)));
            JSValueRef exception = nullptr;
            JSObjectRef array = JSObjectMakeArray(call.ctx(), names.size(), names.data(), &exception);
            rethrowIf(exception);
            return array;
        }),
        operation<elementInterface, "setAttribute", 2>([](Call& call, const Wrapper& w) {
            auto element = self(call, w);
            std::string name = attributeName(call, *element, "setAttribute");
            element->setAttribute(name, call.string(1));
        }),
        operation<elementInterface, "removeAttribute", 1>([](Call& call, const Wrapper& w) {
            auto element = self(call, w);
            std::string name = attributeName(call, *element, "removeAttribute");
            element->removeAttribute(name);
        }),
        readonlyAttribute<elementInterface, "children">([](Call& call, const Wrapper& w) {
            return nodeArray(call, self(call, w)->elementChildren());
        }),
        readonlyAttribute<elementInterface, "childElementCount">([](Call& call, const Wrapper& w) {
            return double(self(call, w)->elementChildren().size());
        }),
        readonlyAttribute<elementInterface, "firstElementChild">([](Call& call, const Wrapper& w) {
            auto children = self(call, w)->elementChildren();
            return wrapElementOrNull(call, children.empty() ? nullptr : children.front());
        }),
        readonlyAttribute<elementInterface, "lastElementChild">([](Call& call, const Wrapper& w) {
            auto children = self(call, w)->elementChildren();
            return wrapElementOrNull(call, children.empty() ? nullptr : children.back());
        }),
        attribute<elementInterface, "innerHTML">(
            [](Call& call, const Wrapper& w) { return serializeChildren(*self(call, w)); },
            [](Call& call, const Wrapper& w, JSValueRef value) {
                auto element = self(call, w);
                replaceChildrenWithMarkup(element, textArgument(call, value));
            }),
        operation<elementInterface, "append", 0>([](Call& call, const Wrapper& w) { append(call, self(call, w), 0, "append"); }),
        operation<elementInterface, "remove", 0>([](Call& call, const Wrapper& w) { self(call, w)->remove(); }),
        // Nothing is laid out, so every element answers as a browser's unrendered element does:
        // scripts that measure an element before drawing get a size of zero rather than an error.
        operation<elementInterface, "getBoundingClientRect", 0>([](Call& call, const Wrapper&) {
            return wrapRect(call.realm(), DOMRectReadOnly());
        }),
        operation<elementInterface, "getClientRects", 0>([](Call& call, const Wrapper&) {
            JSValueRef exception = nullptr;
            JSObjectRef list = JSObjectMakeArray(call.ctx(), 0, nullptr, &exception);
            rethrowIf(exception);
            return list;
        }),
    },
};

InterfaceDefinition htmlElementInterface = {
    .name = "HTMLElement",
    .parent = &elementInterface,
    .members = htmlOrSVGElementMembers<htmlElementInterface>(),
};

InterfaceDefinition svgElementInterface = {
    .name = "SVGElement",
    .parent = &elementInterface,
    .members = htmlOrSVGElementMembers<svgElementInterface>(),
};

} // namespace script
