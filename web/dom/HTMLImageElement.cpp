#include "web/dom/HTMLImageElement.h"

#include <algorithm>
#include <cctype>

HTMLImageElement::HTMLImageElement()
    : Element("img")
{
}

bool HTMLImageElement::complete() const
{
    const std::string* src = attribute("src");
    const std::string* srcset = attribute("srcset");
    return (!src || src->empty()) && (!srcset || srcset->empty());
}

unsigned HTMLImageElement::width() const
{
    const std::string* value = attribute("width");
    return value ? parseNonNegativeInteger(*value).value_or(naturalWidth()) : naturalWidth();
}

unsigned HTMLImageElement::height() const
{
    const std::string* value = attribute("height");
    return value ? parseNonNegativeInteger(*value).value_or(naturalHeight()) : naturalHeight();
}

SVGImageElement::SVGImageElement()
    : Element("image", std::string(kSVGNamespace))
{
}
