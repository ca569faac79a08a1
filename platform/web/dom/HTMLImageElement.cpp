#include "platform/web/dom/HTMLImageElement.h"

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
