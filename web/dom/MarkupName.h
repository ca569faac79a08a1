#pragma once

#include <cctype>
#include <string_view>

// Whether `name` may name an element or an attribute made by script: the lenient rule browsers
// follow (no white space, none of < > " ' / = &, not starting with a digit, '-' or '.').
inline bool isValidMarkupName(std::string_view name)
{
    if (name.empty() || std::isdigit(static_cast<unsigned char>(name[0])) || name[0] == '-' || name[0] == '.')
        return false;
    for (char ch : name) {
        if (std::isspace(static_cast<unsigned char>(ch)) || std::string_view("<>\"'/=&").find(ch) != std::string_view::npos)
            return false;
    }
    return true;
}
