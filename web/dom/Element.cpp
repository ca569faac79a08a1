#include "web/dom/Element.h"

#include "web/dom/ComputedStyle.h"
#include "web/dom/Document.h"

#include <algorithm>
#include <cctype>

Element::Element(std::string localName, std::string namespaceURI)
    : Node(Type::Element)
    , localName_(std::move(localName))
    , namespaceURI_(std::move(namespaceURI))
{
}

Element::~Element()
{
    // Children that scripts still hold outlive their parent as roots of their own. The others go
    // with it, one level at a time rather than by recursion: a script can nest elements as deep
    // as it likes.
    std::vector<std::shared_ptr<Node>> pending = std::move(children_);
    while (!pending.empty()) {
        std::shared_ptr<Node> child = std::move(pending.back());
        pending.pop_back();
        child->parentElement_ = nullptr;
        if (child.use_count() == 1 && child->isElement()) {
            auto& grandchildren = static_cast<Element&>(*child).children_;
            for (auto& grandchild : grandchildren)
                pending.push_back(std::move(grandchild));
            grandchildren.clear();
        }
    }
}

std::string Element::tagName() const
{
    std::string name = localName_;
    if (isHTML())
        std::transform(name.begin(), name.end(), name.begin(), [](unsigned char c) { return std::toupper(c); });
    return name;
}

const std::string* Element::attribute(std::string_view name) const
{
    for (const Attribute& attribute : attributes_)
        if (attribute.name == name)
            return &attribute.value;
    return nullptr;
}

void Element::setAttribute(std::string_view name, std::string value)
{
    if (name == "style")
        style_.parse(value);
    auto it = std::find_if(attributes_.begin(), attributes_.end(), [&](const Attribute& a) { return a.name == name; });
    if (it != attributes_.end())
        it->value = std::move(value);
    else
        attributes_.push_back({std::string(name), std::move(value)});
    attributeChanged(name);
}

bool Element::removeAttribute(std::string_view name)
{
    auto it = std::find_if(attributes_.begin(), attributes_.end(), [&](const Attribute& a) { return a.name == name; });
    if (it == attributes_.end())
        return false;
    std::string removed = std::move(it->name);
    attributes_.erase(it);
    if (removed == "style")
        style_.parse("");
    attributeChanged(removed);
    return true;
}

std::string Element::id() const
{
    const std::string* value = attribute("id");
    return value ? *value : std::string();
}

std::vector<std::shared_ptr<Element>> Element::elementChildren() const
{
    std::vector<std::shared_ptr<Element>> elements;
    for (const auto& child : children_)
        if (child->isElement())
            elements.push_back(std::static_pointer_cast<Element>(child));
    return elements;
}

ExceptionOr<void> Element::insertBefore(const std::shared_ptr<Element>& parent, std::shared_ptr<Node> child,
                                        const Node* reference)
{
    if (!parent || !child)
        return DOMException{"TypeError", "The node to be inserted is null."};
    if (child->isElement() && static_cast<const Element&>(*child).contains(*parent))
        return DOMException{"HierarchyRequestError", "The new child element contains the parent."};
    if (reference == child.get())
        return {};
    if (reference && reference->parentElement_ != parent.get())
        return DOMException{"NotFoundError", "The node before which the new node is to be inserted is not a child of this node."};
    child->remove();
    auto& siblings = parent->children_;
    auto at = std::find_if(siblings.begin(), siblings.end(), [&](const auto& c) { return c.get() == reference; });
    child->parentElement_ = parent.get();
    siblings.insert(at, std::move(child));
    return {};
}

ExceptionOr<void> Element::removeChild(Node& child)
{
    if (child.parentElement_ != this)
        return DOMException{"NotFoundError", "The node to be removed is not a child of this node."};
    child.remove();
    return {};
}

void Element::setTextContent(std::string text)
{
    while (!children_.empty())
        children_.back()->remove();
    if (text.empty())
        return;
    auto node = std::make_shared<Text>(std::move(text));
    node->parentElement_ = this;
    children_.push_back(std::move(node));
}

std::string Element::textContent() const
{
    std::string text;
    // Tree order without recursion.
    std::vector<const Node*> pending;
    for (auto it = children_.rbegin(); it != children_.rend(); ++it)
        pending.push_back(it->get());
    while (!pending.empty()) {
        const Node* node = pending.back();
        pending.pop_back();
        if (node->isText()) {
            text += static_cast<const Text*>(node)->data();
            continue;
        }
        const auto& children = static_cast<const Element*>(node)->children_;
        for (auto it = children.rbegin(); it != children.rend(); ++it)
            pending.push_back(it->get());
    }
    return text;
}

bool Element::contains(const Node& other) const
{
    for (const Node* n = &other; n; n = n->parentElement_)
        if (n == this)
            return true;
    return false;
}

bool Element::setStyleProperty(std::string_view name, std::string_view value)
{
    if (!style_.setProperty(name, value))
        return false;
    setStyleAttributeFromDeclarations();
    return true;
}

std::string Element::removeStyleProperty(std::string_view name)
{
    std::string old = style_.removeProperty(name);
    if (!old.empty())
        setStyleAttributeFromDeclarations();
    return old;
}

void Element::setStyleText(std::string_view text)
{
    // As browsers do, the attribute then holds the declarations that were kept, not the text.
    style_.parse(text);
    setStyleAttributeFromDeclarations();
}

void Element::setStyleAttributeFromDeclarations()
{
    std::string text = style_.cssText();
    for (Attribute& attribute : attributes_) {
        if (attribute.name == "style") {
            attribute.value = std::move(text);
            return;
        }
    }
    attributes_.push_back({"style", std::move(text)});
}

ComputedStyle Element::computedStyle() const { return computeStyle(*this); }

CSSColor Element::currentColor() const
{
    if (!isConnected())
        return CSSColor{0, 0, 0, 255};
    return computedStyle().color;
}

std::optional<ElementFontBasis> Element::fontBasis() const
{
    Document* document = this->document();
    if (!document)
        return {};
    ComputedStyle style = computedStyle();
    ComputedStyle rootStyle = document->documentElement()->computedStyle();
    return ElementFontBasis{style.fontSize, style.lineHeightPixels(), rootStyle.fontSize, rootStyle.lineHeightPixels(),
                            splitFontFamilies(style.fontFamily)};
}

bool Element::isFocusable() const
{
    if (!isConnected())
        return false;
    if (const std::string* tabIndex = attribute("tabindex")) {
        std::string_view text = *tabIndex;
        std::size_t i = text.find_first_not_of(" \t\n\f\r");
        if (i != std::string_view::npos && (text[i] == '-' || text[i] == '+'))
            ++i;
        if (i < text.size() && std::isdigit(static_cast<unsigned char>(text[i])))
            return true;
    }
    if (!isHTML())
        return false;
    if ((localName_ == "a" || localName_ == "area") && attribute("href"))
        return true;
    if (localName_ == "button" || localName_ == "select" || localName_ == "textarea"
        || (localName_ == "input" && !(attribute("type") && *attribute("type") == "hidden")))
        return !attribute("disabled");
    return localName_ == "iframe" || localName_ == "summary";
}

std::optional<unsigned> parseNonNegativeInteger(std::string_view text)
{
    std::size_t i = 0;
    while (i < text.size() && std::string_view(" \t\n\f\r").find(text[i]) != std::string_view::npos)
        ++i;
    bool negative = false;
    if (i < text.size() && (text[i] == '-' || text[i] == '+'))
        negative = text[i++] == '-';
    if (i >= text.size() || !std::isdigit(static_cast<unsigned char>(text[i])))
        return std::nullopt;
    unsigned long long value = 0;
    for (; i < text.size() && std::isdigit(static_cast<unsigned char>(text[i])); ++i)
        value = std::min<unsigned long long>(value * 10 + unsigned(text[i] - '0'), 0xFFFFFFFFull);
    if (negative && value != 0)
        return std::nullopt;
    return unsigned(value);
}
