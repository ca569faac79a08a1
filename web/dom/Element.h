#pragma once

#include "web/css/CSSColor.h"
#include "web/dom/ExceptionOr.h"
#include "web/dom/InlineStyle.h"
#include "web/dom/Node.h"

#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

class Document;
struct ComputedStyle;

inline constexpr std::string_view kHTMLNamespace = "http://www.w3.org/1999/xhtml";
inline constexpr std::string_view kSVGNamespace = "http://www.w3.org/2000/svg";

// What a canvas takes from its element's style: the basis of relative font sizes.
struct ElementFontBasis {
    double fontSize = 16;              // px, computed
    std::optional<double> lineHeight;  // px; nothing for "normal"
    double rootFontSize = 16;          // px, of the document's root element
    std::optional<double> rootLineHeight;
    std::vector<std::string> families; // unquoted, in order ("serif" when none is set)
};

// An element of a page's tree: its name, content attributes, children and inline style.
class Element : public Node {
public:
    explicit Element(std::string localName, std::string namespaceURI = std::string(kHTMLNamespace));
    ~Element() override;

    const std::string& localName() const { return localName_; }
    const std::string& namespaceURI() const { return namespaceURI_; }
    bool isHTML() const { return namespaceURI_ == kHTMLNamespace; }
    // The local name, in upper case for HTML elements.
    std::string tagName() const;

    // Content attributes. Names are taken as given: HTML lower-cases them before they get here.
    struct Attribute {
        std::string name;
        std::string value;
    };
    const std::vector<Attribute>& attributes() const { return attributes_; }
    const std::string* attribute(std::string_view name) const;
    void setAttribute(std::string_view name, std::string value);
    bool removeAttribute(std::string_view name);
    std::string id() const;

    // The tree.
    const std::vector<std::shared_ptr<Node>>& children() const { return children_; }
    // The children that are elements.
    std::vector<std::shared_ptr<Element>> elementChildren() const;
    // Inserts `child` into `parent` before `reference` (at the end when null), taking it out of
    // where it was first. HierarchyRequestError when `child` is `parent` or one of its
    // ancestors; NotFoundError when `reference` is not a child of `parent`.
    static ExceptionOr<void> insertBefore(const std::shared_ptr<Element>& parent, std::shared_ptr<Node> child,
                                          const Node* reference);
    // NotFoundError when `child` is not a child of this element.
    ExceptionOr<void> removeChild(Node& child);
    // Replaces the children with one text node (none for empty text).
    void setTextContent(std::string text);
    std::string textContent() const override;
    // Whether `other` is this element or one of its descendants.
    bool contains(const Node& other) const;

    // The style attribute's declarations, kept in step with the attribute.
    const InlineStyle& inlineStyle() const { return style_; }
    // Edits element.style makes; the attribute's text follows.
    bool setStyleProperty(std::string_view name, std::string_view value);
    std::string removeStyleProperty(std::string_view name);
    void setStyleText(std::string_view text);

    // The computed style now (initial values when the element is not in a document, as
    // scripts get nothing from the style of an element that is not rendered).
    ComputedStyle computedStyle() const;
    // The computed 'color': what currentColor stands for. Opaque black out of a document.
    CSSColor currentColor() const;
    // The font relative font sizes resolve against; nothing out of a document.
    std::optional<ElementFontBasis> fontBasis() const;

    // Whether focus() can focus the element: in a document and a link, a form control or an
    // element with a tabindex.
    virtual bool isFocusable() const;

protected:
    // After an attribute was set or removed: elements that reflect one (a canvas's size) follow it.
    virtual void attributeChanged(std::string_view) {}

private:
    friend class Node;
    void setStyleAttributeFromDeclarations();

    std::string localName_;
    std::string namespaceURI_;
    std::vector<Attribute> attributes_;
    InlineStyle style_;
    std::vector<std::shared_ptr<Node>> children_;
};

// HTML's rules for parsing non-negative integers: leading whitespace, an optional sign, digits,
// then anything. Nothing for an error (no digits, or a negative value).
std::optional<unsigned> parseNonNegativeInteger(std::string_view text);
