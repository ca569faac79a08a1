#include "web/dom/Node.h"

#include "web/dom/Document.h"
#include "web/dom/Element.h"

#include <algorithm>

std::shared_ptr<Element> Node::parent() const
{
    return parentElement_ ? std::static_pointer_cast<Element>(parentElement_->shared_from_this()) : nullptr;
}

void Node::remove()
{
    Element* parent = parentElement_;
    if (!parent)
        return;
    if (Document* document = this->document())
        document->subtreeRemoved(*this);
    // Keeps this node alive while the parent lets go of it.
    auto& siblings = parent->children_;
    auto it = std::find_if(siblings.begin(), siblings.end(), [&](const auto& c) { return c.get() == this; });
    std::shared_ptr<Node> self = std::move(*it);
    siblings.erase(it);
    parentElement_ = nullptr;
}

const Node& Node::root() const
{
    const Node* top = this;
    while (top->parentElement_)
        top = top->parentElement_;
    return *top;
}

Document* Node::document() const { return root().ownerOfTree_; }
