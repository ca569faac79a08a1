#include "web/dom/HTMLFragment.h"

#include "web/dom/Element.h"
#include "web/dom/ElementFactory.h"

#include <cctype>
#include <vector>

namespace {

bool isVoidElement(std::string_view name)
{
    static constexpr std::string_view kVoid[] = {"area", "base", "br", "col", "embed", "hr", "img", "input",
                                                 "link", "meta", "param", "source", "track", "wbr"};
    for (std::string_view v : kVoid)
        if (v == name)
            return true;
    return false;
}

void appendUTF8(std::string& out, unsigned long code)
{
    if (code == 0 || code > 0x10FFFF || (code >= 0xD800 && code <= 0xDFFF))
        code = 0xFFFD;
    if (code < 0x80) {
        out += char(code);
    } else if (code < 0x800) {
        out += char(0xC0 | (code >> 6));
        out += char(0x80 | (code & 0x3F));
    } else if (code < 0x10000) {
        out += char(0xE0 | (code >> 12));
        out += char(0x80 | ((code >> 6) & 0x3F));
        out += char(0x80 | (code & 0x3F));
    } else {
        out += char(0xF0 | (code >> 18));
        out += char(0x80 | ((code >> 12) & 0x3F));
        out += char(0x80 | ((code >> 6) & 0x3F));
        out += char(0x80 | (code & 0x3F));
    }
}

// Text with its character references replaced: the common named ones and numeric ones.
std::string decodeReferences(std::string_view text)
{
    static constexpr std::pair<std::string_view, unsigned long> kNamed[] = {
        {"amp", '&'}, {"lt", '<'}, {"gt", '>'}, {"quot", '"'}, {"apos", '\''}, {"nbsp", 0xA0}};
    std::string out;
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] != '&') {
            out += text[i];
            continue;
        }
        std::size_t semicolon = text.find(';', i);
        if (semicolon != std::string_view::npos && semicolon - i <= 10) {
            std::string_view name = text.substr(i + 1, semicolon - i - 1);
            if (name.size() > 1 && name[0] == '#') {
                bool hex = name[1] == 'x' || name[1] == 'X';
                std::string digits(name.substr(hex ? 2 : 1));
                char* end = nullptr;
                unsigned long code = digits.empty() ? 0 : std::strtoul(digits.c_str(), &end, hex ? 16 : 10);
                if (!digits.empty() && end && *end == '\0') {
                    appendUTF8(out, code);
                    i = semicolon;
                    continue;
                }
            }
            bool found = false;
            for (const auto& [named, code] : kNamed) {
                if (named == name) {
                    appendUTF8(out, code);
                    i = semicolon;
                    found = true;
                    break;
                }
            }
            if (found)
                continue;
        }
        out += '&';
    }
    return out;
}

std::string escape(std::string_view text, bool attribute)
{
    std::string out;
    for (std::size_t i = 0; i < text.size(); ++i) {
        char c = text[i];
        if (c == '&')
            out += "&amp;";
        else if (c == '\xC2' && i + 1 < text.size() && text[i + 1] == '\xA0')
            out += "&nbsp;", ++i;
        else if (c == '"' && attribute)
            out += "&quot;";
        else if ((c == '<' || c == '>') && !attribute)
            out += c == '<' ? "&lt;" : "&gt;";
        else
            out += c;
    }
    return out;
}

std::string lower(std::string_view text)
{
    std::string out(text);
    for (char& c : out)
        c = char(std::tolower(static_cast<unsigned char>(c)));
    return out;
}

} // namespace

std::string serializeChildren(const Element& element)
{
    std::string out;
    // An explicit stack of (element, next child) instead of recursion.
    struct Frame {
        const Element* element;
        std::size_t next;
    };
    std::vector<Frame> stack{{&element, 0}};
    while (!stack.empty()) {
        Frame& frame = stack.back();
        if (frame.next >= frame.element->children().size()) {
            if (stack.size() > 1)
                out += "</" + frame.element->localName() + ">";
            stack.pop_back();
            continue;
        }
        const Node& child = *frame.element->children()[frame.next++];
        if (child.isText()) {
            out += escape(static_cast<const Text&>(child).data(), false);
            continue;
        }
        const auto& e = static_cast<const Element&>(child);
        out += "<" + e.localName();
        for (const auto& attribute : e.attributes())
            out += " " + attribute.name + "=\"" + escape(attribute.value, true) + "\"";
        out += ">";
        if (!(e.isHTML() && isVoidElement(e.localName())))
            stack.push_back({&e, 0});
    }
    return out;
}

void replaceChildrenWithMarkup(const std::shared_ptr<Element>& element, std::string_view markup)
{
    element->setTextContent("");
    std::vector<std::shared_ptr<Element>> open{element};
    std::string text;
    auto flushText = [&] {
        if (!text.empty())
            (void)Element::insertBefore(open.back(), std::make_shared<Text>(decodeReferences(text)), nullptr);
        text.clear();
    };
    std::size_t i = 0;
    while (i < markup.size()) {
        char c = markup[i];
        bool tag = c == '<' && i + 1 < markup.size()
            && (std::isalpha(static_cast<unsigned char>(markup[i + 1])) || markup[i + 1] == '/' || markup[i + 1] == '!');
        if (!tag) {
            text += c;
            ++i;
            continue;
        }
        flushText();
        if (markup.substr(i, 4) == "<!--") {
            std::size_t end = markup.find("-->", i + 4);
            i = end == std::string_view::npos ? markup.size() : end + 3;
            continue;
        }
        // The tag's end, past quoted attribute values.
        std::size_t end = i + 1;
        char quote = 0;
        while (end < markup.size() && (quote || markup[end] != '>')) {
            if (quote && markup[end] == quote)
                quote = 0;
            else if (!quote && (markup[end] == '"' || markup[end] == '\''))
                quote = markup[end];
            ++end;
        }
        std::string_view body = markup.substr(i + 1, end - i - 1);
        i = end + 1;
        if (body.empty() || body[0] == '!')
            continue;
        bool closing = body[0] == '/';
        if (closing)
            body.remove_prefix(1);
        std::size_t nameEnd = 0;
        while (nameEnd < body.size() && !std::isspace(static_cast<unsigned char>(body[nameEnd])) && body[nameEnd] != '/')
            ++nameEnd;
        std::string name = lower(body.substr(0, nameEnd));
        if (name.empty())
            continue;
        if (closing) {
            for (std::size_t k = open.size(); k-- > 1;) {
                if (open[k]->localName() == name) {
                    open.resize(k);
                    break;
                }
            }
            continue;
        }
        auto child = createElement(name);
        // Attributes: name[=value], the value quoted or not.
        std::size_t a = nameEnd;
        while (a < body.size()) {
            while (a < body.size() && (std::isspace(static_cast<unsigned char>(body[a])) || body[a] == '/'))
                ++a;
            std::size_t start = a;
            while (a < body.size() && !std::isspace(static_cast<unsigned char>(body[a])) && body[a] != '=' && body[a] != '/')
                ++a;
            if (a == start)
                break;
            std::string attributeName = lower(body.substr(start, a - start));
            std::string value;
            if (a < body.size() && body[a] == '=') {
                ++a;
                if (a < body.size() && (body[a] == '"' || body[a] == '\'')) {
                    std::size_t close = body.find(body[a], a + 1);
                    if (close == std::string_view::npos)
                        close = body.size();
                    value = decodeReferences(body.substr(a + 1, close - a - 1));
                    a = close + 1;
                } else {
                    std::size_t valueStart = a;
                    while (a < body.size() && !std::isspace(static_cast<unsigned char>(body[a])))
                        ++a;
                    value = decodeReferences(body.substr(valueStart, a - valueStart));
                }
            }
            if (!child->attribute(attributeName))
                child->setAttribute(attributeName, std::move(value));
        }
        (void)Element::insertBefore(open.back(), child, nullptr);
        bool selfClosing = !body.empty() && body.back() == '/';
        if (!isVoidElement(name) && !selfClosing)
            open.push_back(child);
    }
    flushText();
}
