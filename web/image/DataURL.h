#pragma once

#include <string>
#include <string_view>

// "data:<mediaType>;base64,<data in Base64>", written in one pass into a string of the final
// size.
std::string base64DataURL(std::string_view mediaType, std::string_view data);
// The same in UTF-16, as the script engine keeps long strings: no pass to widen it after.
std::u16string base64DataURLUTF16(std::string_view mediaType, std::string_view data);
