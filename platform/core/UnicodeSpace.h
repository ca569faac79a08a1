#pragma once

#include <cstddef>
#include <string_view>

// White space and line breaks as the platform's scanners and regular expressions know them:
// ASCII tab to carriage return and space, and the Unicode space separators and line breaks.
// Returns the length in bytes of the one at the start of the UTF-8 text, or 0.
inline std::size_t unicodeSpaceLength(std::string_view text)
{
    static constexpr std::string_view wide[] = {
        "\xC2\x85", "\xC2\xA0", "\xE1\x9A\x80", "\xE2\x80\x80", "\xE2\x80\x81", "\xE2\x80\x82", "\xE2\x80\x83",
        "\xE2\x80\x84", "\xE2\x80\x85", "\xE2\x80\x86", "\xE2\x80\x87", "\xE2\x80\x88", "\xE2\x80\x89",
        "\xE2\x80\x8A", "\xE2\x80\xA8", "\xE2\x80\xA9", "\xE2\x80\xAF", "\xE2\x81\x9F", "\xE3\x80\x80"};
    if (text.empty())
        return 0;
    char c = text.front();
    if (c == ' ' || (c >= '\t' && c <= '\r'))
        return 1;
    for (std::string_view space : wide)
        if (text.starts_with(space))
            return space.size();
    return 0;
}

inline std::string_view skipUnicodeSpaces(std::string_view text)
{
    while (std::size_t n = unicodeSpaceLength(text))
        text.remove_prefix(n);
    return text;
}
