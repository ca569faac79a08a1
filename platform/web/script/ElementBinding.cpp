#include "platform/web/canvas/HTMLCanvasElement.h"
#include "platform/web/dom/Document.h"
#include "platform/web/dom/HTMLImageElement.h"
#include "platform/web/dom/HTMLVideoElement.h"
#include "platform/web/script/Bindings.h"
#include "platform/web/script/ElementBindings.h"
#include "platform/web/script/Realm.h"

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
    if (interface.inherits(nodeInterface))
        return static_cast<Element*>(object);
    return nullptr;
}

// The receiver of an element member (the thunk has checked its interface).
std::shared_ptr<Element> self(const Call&, const Wrapper& wrapper)
{
    return std::shared_ptr<Element>(wrapper.object, elementPointer(wrapper));
}

bool isValidName(std::string_view name)
{
    if (name.empty() || std::isdigit(static_cast<unsigned char>(name[0])) || name[0] == '-' || name[0] == '.')
        return false;
    for (char ch : name)
        if (std::isspace(static_cast<unsigned char>(ch)) || std::string_view("<>\"'/=&").find(ch) != std::string_view::npos)
            return false;
    return true;
}

// An attribute name argument: checked, and in lower case on HTML elements.
std::string attributeName(const Call& call, const Element& element, const char* member)
{
    std::string name = call.string(0);
    if (!isValidName(name))
        call.throwException({"InvalidCharacterError", std::string("Failed to execute '") + member
                                 + "' on 'Element': '" + name + "' is not a valid attribute name."});
    if (element.isHTML())
        for (char& ch : name)
            ch = char(std::tolower(static_cast<unsigned char>(ch)));
    return name;
}

// A canvas's width and height attributes set its size; the default stands for anything else.
void reflectCanvasSize(Call& call, Element& element, const std::string& name)
{
    auto* canvas = dynamic_cast<HTMLCanvasElement*>(&element);
    if (!canvas || (name != "width" && name != "height"))
        return;
    const std::string* value = element.attribute(name);
    std::optional<unsigned> size = value ? parseNonNegativeInteger(*value) : std::nullopt;
    if (name == "width")
        canvas->setWidth(size.value_or(HTMLCanvasElement::kDefaultWidth));
    else
        canvas->setHeight(size.value_or(HTMLCanvasElement::kDefaultHeight));
    if (canvas->hasBitmap())
        JSReportExtraMemoryCost(call.ctx(), std::size_t(canvas->width()) * canvas->height() * 4);
}

std::shared_ptr<Element> requireNode(const Call& call, std::size_t index, const char* member)
{
    auto node = elementOf(call, call.arg(index));
    if (!node)
        call.throwTypeError(std::string("Failed to execute '") + member + "' on 'Node': parameter "
                            + std::to_string(index + 1) + " is not of type 'Node'.");
    return node;
}

// A sibling of the element, `step` places along (+1 next, -1 previous).
std::shared_ptr<Element> sibling(const Element& element, int step)
{
    auto parent = element.parent();
    if (!parent)
        return nullptr;
    const auto& siblings = parent->children();
    for (std::size_t i = 0; i < siblings.size(); ++i) {
        if (siblings[i].get() != &element)
            continue;
        std::ptrdiff_t at = std::ptrdiff_t(i) + step;
        return at >= 0 && std::size_t(at) < siblings.size() ? siblings[std::size_t(at)] : nullptr;
    }
    return nullptr;
}

JSValueRef childArray(const Call& call, const Element& element)
{
    std::vector<JSValueRef> wrappers;
    for (const auto& child : element.children())
        wrappers.push_back(wrapElement(call.realm(), child));
    JSValueRef exception = nullptr;
    JSObjectRef array = JSObjectMakeArray(call.ctx(), wrappers.size(), wrappers.data(), &exception);
    rethrowIf(exception);
    return array;
}

void append(Call& call, const std::shared_ptr<Element>& parent, std::size_t first, const char* member)
{
    for (std::size_t i = first; i < call.count(); ++i)
        call.check(Element::insertBefore(parent, requireNode(call, i, member), nullptr));
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

JSValueRef wrapElementOrNull(const Call& call, const std::shared_ptr<Element>& element)
{
    return element ? JSValueRef(wrapElement(call.realm(), element)) : call.null();
}

InterfaceDefinition nodeInterface = {
    .name = "Node",
    .members = {
        readonlyAttribute<nodeInterface, "nodeType">([](Call&, const Wrapper&) { return 1; }),
        readonlyAttribute<nodeInterface, "nodeName">([](Call& call, const Wrapper& w) { return self(call, w)->tagName(); }),
        readonlyAttribute<nodeInterface, "parentNode">([](Call& call, const Wrapper& w) -> JSValueRef {
            auto element = self(call, w);
            if (Document* document = element->document(); document && document->documentElement() == element)
                return call.realm().document();
            return wrapElementOrNull(call, element->parent());
        }),
        readonlyAttribute<nodeInterface, "parentElement">([](Call& call, const Wrapper& w) {
            return wrapElementOrNull(call, self(call, w)->parent());
        }),
        readonlyAttribute<nodeInterface, "ownerDocument">([](Call& call, const Wrapper&) { return call.realm().document(); }),
        readonlyAttribute<nodeInterface, "isConnected">([](Call& call, const Wrapper& w) { return self(call, w)->isConnected(); }),
        readonlyAttribute<nodeInterface, "childNodes">([](Call& call, const Wrapper& w) { return childArray(call, *self(call, w)); }),
        readonlyAttribute<nodeInterface, "firstChild">([](Call& call, const Wrapper& w) {
            auto element = self(call, w);
            return wrapElementOrNull(call, element->children().empty() ? nullptr : element->children().front());
        }),
        readonlyAttribute<nodeInterface, "lastChild">([](Call& call, const Wrapper& w) {
            auto element = self(call, w);
            return wrapElementOrNull(call, element->children().empty() ? nullptr : element->children().back());
        }),
        readonlyAttribute<nodeInterface, "nextSibling">([](Call& call, const Wrapper& w) {
            return wrapElementOrNull(call, sibling(*self(call, w), 1));
        }),
        readonlyAttribute<nodeInterface, "previousSibling">([](Call& call, const Wrapper& w) {
            return wrapElementOrNull(call, sibling(*self(call, w), -1));
        }),
        operation<nodeInterface, "hasChildNodes", 0>([](Call& call, const Wrapper& w) { return !self(call, w)->children().empty(); }),
        operation<nodeInterface, "contains", 1>([](Call& call, const Wrapper& w) {
            auto other = elementOf(call, call.arg(0));
            return other && self(call, w)->contains(*other);
        }),
        operation<nodeInterface, "appendChild", 1>([](Call& call, const Wrapper& w) {
            auto child = requireNode(call, 0, "appendChild");
            call.check(Element::insertBefore(self(call, w), child, nullptr));
            return call.arg(0);
        }),
        operation<nodeInterface, "insertBefore", 2>([](Call& call, const Wrapper& w) {
            auto child = requireNode(call, 0, "insertBefore");
            std::shared_ptr<Element> reference;
            if (!JSValueIsNull(call.ctx(), call.arg(1)))
                reference = requireNode(call, 1, "insertBefore");
            call.check(Element::insertBefore(self(call, w), child, reference.get()));
            return call.arg(0);
        }),
        operation<nodeInterface, "removeChild", 1>([](Call& call, const Wrapper& w) {
            auto child = requireNode(call, 0, "removeChild");
            call.check(self(call, w)->removeChild(*child));
            return call.arg(0);
        }),
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
            reflectCanvasSize(call, *element, name);
        }),
        operation<elementInterface, "removeAttribute", 1>([](Call& call, const Wrapper& w) {
            auto element = self(call, w);
            std::string name = attributeName(call, *element, "removeAttribute");
            if (element->removeAttribute(name))
                reflectCanvasSize(call, *element, name);
        }),
        readonlyAttribute<elementInterface, "children">([](Call& call, const Wrapper& w) { return childArray(call, *self(call, w)); }),
        readonlyAttribute<elementInterface, "childElementCount">([](Call& call, const Wrapper& w) {
            return double(self(call, w)->children().size());
        }),
        readonlyAttribute<elementInterface, "firstElementChild">([](Call& call, const Wrapper& w) {
            auto element = self(call, w);
            return wrapElementOrNull(call, element->children().empty() ? nullptr : element->children().front());
        }),
        readonlyAttribute<elementInterface, "lastElementChild">([](Call& call, const Wrapper& w) {
            auto element = self(call, w);
            return wrapElementOrNull(call, element->children().empty() ? nullptr : element->children().back());
        }),
        operation<elementInterface, "append", 0>([](Call& call, const Wrapper& w) { append(call, self(call, w), 0, "append"); }),
        operation<elementInterface, "remove", 0>([](Call& call, const Wrapper& w) { self(call, w)->remove(); }),
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
