#include "web/dom/Document.h"

#include <vector>

namespace {

std::shared_ptr<Element> childNamed(const Element& parent, std::string_view localName)
{
    for (const auto& child : parent.elementChildren())
        if (child->localName() == localName && child->isHTML())
            return child;
    return nullptr;
}

// Tree order without recursion: a script can nest elements as deep as it likes.
std::shared_ptr<Element> findById(const std::shared_ptr<Element>& root, std::string_view id)
{
    std::vector<const Element*> pending{root.get()};
    while (!pending.empty()) {
        const Element* element = pending.back();
        pending.pop_back();
        const std::string* value = element->attribute("id");
        if (value && *value == id)
            return std::static_pointer_cast<Element>(const_cast<Element*>(element)->shared_from_this());
        const auto& children = element->children();
        for (auto it = children.rbegin(); it != children.rend(); ++it)
            if ((*it)->isElement())
                pending.push_back(static_cast<const Element*>(it->get()));
    }
    return nullptr;
}

} // namespace

Document::Document()
    : root_(std::make_shared<Element>("html"))
{
    root_->ownerOfTree_ = this;
    (void)Element::insertBefore(root_, std::make_shared<Element>("head"), nullptr);
    (void)Element::insertBefore(root_, std::make_shared<Element>("body"), nullptr);
}

Document::~Document()
{
    root_->ownerOfTree_ = nullptr;
}

std::shared_ptr<Element> Document::head() const { return childNamed(*root_, "head"); }

std::shared_ptr<Element> Document::body() const { return childNamed(*root_, "body"); }

std::shared_ptr<Element> Document::getElementById(std::string_view id) const
{
    if (id.empty())
        return nullptr;
    return findById(root_, id);
}

std::shared_ptr<Element> Document::activeElement() const
{
    if (auto focused = focused_.lock())
        return focused;
    return body();
}

bool Document::focus(const std::shared_ptr<Element>& element)
{
    if (!element || element->document() != this || !element->isFocusable())
        return false;
    focused_ = element;
    return true;
}

void Document::blur(const Element& element)
{
    if (focused_.lock().get() == &element)
        focused_.reset();
}

void Document::subtreeRemoved(const Node& subtree)
{
    auto focused = focused_.lock();
    if (focused && subtree.isElement() && static_cast<const Element&>(subtree).contains(*focused))
        focused_.reset();
}
