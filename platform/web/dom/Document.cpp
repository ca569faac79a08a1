#include "platform/web/dom/Document.h"

#include <vector>

namespace {

std::shared_ptr<Element> childNamed(const Element& parent, std::string_view localName)
{
    for (const auto& child : parent.children())
        if (child->localName() == localName && child->isHTML())
            return child;
    return nullptr;
}

// Tree order without recursion: a script can nest elements as deep as it likes.
std::shared_ptr<Element> findById(const std::shared_ptr<Element>& root, std::string_view id)
{
    std::vector<const std::shared_ptr<Element>*> pending{&root};
    while (!pending.empty()) {
        const std::shared_ptr<Element>& element = *pending.back();
        pending.pop_back();
        const std::string* value = element->attribute("id");
        if (value && *value == id)
            return element;
        const auto& children = element->children();
        for (auto it = children.rbegin(); it != children.rend(); ++it)
            pending.push_back(&*it);
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

void Document::subtreeRemoved(const Element& subtree)
{
    if (auto focused = focused_.lock(); focused && subtree.contains(*focused))
        focused_.reset();
}
