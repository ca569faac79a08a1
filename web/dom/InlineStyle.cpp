#include "web/dom/InlineStyle.h"

#include <algorithm>

namespace {

// The declarations of a block, split at semicolons outside strings and brackets.
std::vector<std::string_view> splitDeclarations(std::string_view text)
{
    std::vector<std::string_view> parts;
    std::size_t start = 0;
    int depth = 0;
    char quote = 0;
    for (std::size_t i = 0; i < text.size(); ++i) {
        char c = text[i];
        if (quote) {
            if (c == '\\')
                ++i;
            else if (c == quote)
                quote = 0;
        } else if (c == '"' || c == '\'') {
            quote = c;
        } else if (c == '(' || c == '[') {
            ++depth;
        } else if ((c == ')' || c == ']') && depth > 0) {
            --depth;
        } else if (c == ';' && depth == 0) {
            parts.push_back(text.substr(start, i - start));
            start = i + 1;
        }
    }
    parts.push_back(text.substr(start));
    return parts;
}

// The value without a trailing "!important" (priorities make no difference to a lone
// declaration block).
std::string_view withoutPriority(std::string_view value)
{
    std::size_t bang = value.rfind('!');
    if (bang == std::string_view::npos)
        return value;
    std::string priority(trimCSSWhitespace(value.substr(bang + 1)));
    std::transform(priority.begin(), priority.end(), priority.begin(), [](unsigned char c) { return std::tolower(c); });
    return priority == "important" ? value.substr(0, bang) : value;
}

bool isFont(std::string_view name)
{
    std::string key(trimCSSWhitespace(name));
    std::transform(key.begin(), key.end(), key.begin(), [](unsigned char c) { return std::tolower(c); });
    return key == "font";
}

} // namespace

void InlineStyle::parse(std::string_view text)
{
    declarations_.clear();
    for (std::string_view declaration : splitDeclarations(text)) {
        std::size_t colon = declaration.find(':');
        if (colon == std::string_view::npos)
            continue;
        setProperty(declaration.substr(0, colon), withoutPriority(declaration.substr(colon + 1)));
    }
}

std::string InlineStyle::cssText() const
{
    std::string font = propertyValue("font");
    bool fontWritten = false;
    std::string text;
    for (const auto& [id, value] : declarations_) {
        bool partOfFont = std::find(fontLonghands().begin(), fontLonghands().end(), id) != fontLonghands().end();
        if (partOfFont && !font.empty()) {
            if (!fontWritten)
                text += (text.empty() ? "" : " ") + std::string("font: ") + font + ";";
            fontWritten = true;
            continue;
        }
        text += (text.empty() ? "" : " ") + std::string(cssPropertyName(id)) + ": " + value + ";";
    }
    return text;
}

std::optional<std::string> InlineStyle::value(CSSPropertyID id) const
{
    for (const auto& [declared, value] : declarations_)
        if (declared == id)
            return value;
    return {};
}

std::string InlineStyle::propertyValue(std::string_view name) const
{
    if (isFont(name)) {
        std::vector<std::string> longhands;
        for (CSSPropertyID id : fontLonghands()) {
            auto declared = value(id);
            if (!declared)
                return "";
            longhands.push_back(*declared);
        }
        // A CSS-wide keyword shows as the shorthand's value only when every longhand has it.
        if (isCSSWideKeyword(longhands[0]) || isCSSWideKeyword(longhands[4]))
            return std::all_of(longhands.begin(), longhands.end(), [&](const std::string& v) { return v == longhands[0]; })
                ? longhands[0]
                : "";
        return serializeFontShorthand(longhands);
    }
    auto id = cssPropertyID(name);
    return id ? value(*id).value_or("") : "";
}

bool InlineStyle::setProperty(std::string_view name, std::string_view text)
{
    if (trimCSSWhitespace(text).empty())
        return !removeProperty(name).empty();
    if (isFont(name)) {
        auto longhands = parseFontShorthand(text);
        if (!longhands)
            return false;
        for (auto& [id, value] : *longhands)
            set(id, std::move(value));
        return true;
    }
    auto id = cssPropertyID(name);
    if (!id)
        return false;
    auto value = parseCSSPropertyValue(*id, text);
    if (!value)
        return false;
    set(*id, std::move(*value));
    return true;
}

std::string InlineStyle::removeProperty(std::string_view name)
{
    std::string old = propertyValue(name);
    if (isFont(name)) {
        for (CSSPropertyID id : fontLonghands())
            remove(id);
    } else if (auto id = cssPropertyID(name)) {
        remove(*id);
    }
    return old;
}

std::string_view InlineStyle::item(std::size_t index) const
{
    return index < declarations_.size() ? cssPropertyName(declarations_[index].first) : std::string_view();
}

void InlineStyle::set(CSSPropertyID id, std::string value)
{
    for (auto& [declared, existing] : declarations_) {
        if (declared == id) {
            existing = std::move(value);
            return;
        }
    }
    declarations_.emplace_back(id, std::move(value));
}

bool InlineStyle::remove(CSSPropertyID id)
{
    auto it = std::find_if(declarations_.begin(), declarations_.end(), [&](const auto& d) { return d.first == id; });
    if (it == declarations_.end())
        return false;
    declarations_.erase(it);
    return true;
}
