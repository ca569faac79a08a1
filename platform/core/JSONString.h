#pragma once

#include <string>
#include <string_view>

// `text` as a JSON string, quotes included; also a valid JavaScript string literal.
std::string jsonString(std::string_view text);
