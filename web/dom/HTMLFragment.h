#pragma once

#include <memory>
#include <string>
#include <string_view>

class Element;

// innerHTML: markup for an element's children, and children from markup. The parser knows
// what pages of text and simple elements need: start and end tags with attributes, void
// elements, character references, comments; no scripting, no tables' or forms' special rules.
std::string serializeChildren(const Element& element);
void replaceChildrenWithMarkup(const std::shared_ptr<Element>& element, std::string_view markup);
