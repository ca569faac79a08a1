#pragma once

#include <memory>
#include <string>
#include <string_view>

class Document;
class Element;

// A node of a page's tree: an element or a run of text. Always held by std::shared_ptr (made
// with make_shared): a parent owns its children, and a child points back at its parent, which
// resets that pointer when it goes.
class Node : public std::enable_shared_from_this<Node> {
public:
    enum class Type { Element = 1, Text = 3 };

    virtual ~Node() = default;
    Node(const Node&) = delete;
    Node& operator=(const Node&) = delete;

    Type nodeType() const { return type_; }
    bool isElement() const { return type_ == Type::Element; }
    bool isText() const { return type_ == Type::Text; }

    std::shared_ptr<Element> parent() const;
    // The parent without taking a reference: valid while this node is in its tree.
    Element* parentPointer() const { return parentElement_; }
    // Takes the node out of its parent, if any.
    void remove();
    // The top of the node's tree (the node itself when it has no parent).
    const Node& root() const;
    // The document whose tree the node is in, or null.
    Document* document() const;
    bool isConnected() const { return document() != nullptr; }

    // The text of the node and its descendants, in tree order.
    virtual std::string textContent() const = 0;

protected:
    explicit Node(Type type) : type_(type) {}

private:
    friend class Document;
    friend class Element;

    Type type_;
    Element* parentElement_ = nullptr;
    Document* ownerOfTree_ = nullptr; // set on a document's root element only
};

// A run of text in the tree.
class Text final : public Node {
public:
    explicit Text(std::string data) : Node(Type::Text), data_(std::move(data)) {}

    const std::string& data() const { return data_; }
    void setData(std::string data) { data_ = std::move(data); }
    std::string textContent() const override { return data_; }

private:
    std::string data_;
};
