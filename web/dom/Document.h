#pragma once

#include "web/dom/Element.h"

#include <memory>
#include <string_view>

// A page's document: the tree under an html element with a head and a body, lookups by id and
// which element has the focus.
class Document {
public:
    Document();
    ~Document();
    Document(const Document&) = delete;
    Document& operator=(const Document&) = delete;

    const std::shared_ptr<Element>& documentElement() const { return root_; }
    std::shared_ptr<Element> head() const;
    std::shared_ptr<Element> body() const;

    // The first element in tree order with that id, or null.
    std::shared_ptr<Element> getElementById(std::string_view id) const;

    // The focused element, else the body (or null without a body).
    std::shared_ptr<Element> activeElement() const;
    // focus(): whether the element took the focus.
    bool focus(const std::shared_ptr<Element>& element);
    // blur(): the focus goes back to the body if the element had it.
    void blur(const Element& element);
    // Called when a subtree leaves the document: it takes the focus with it.
    void subtreeRemoved(const Node& subtree);

private:
    std::shared_ptr<Element> root_;
    std::weak_ptr<Element> focused_;
};
