#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace Base64 {

std::string encode(const std::uint8_t* data, std::size_t size);
inline std::string encode(const std::vector<std::uint8_t>& data) { return encode(data.data(), data.size()); }

// Strict decoding: the standard alphabet, padded to a multiple of four; any other character,
// line breaks included, gives nothing.
std::optional<std::vector<std::uint8_t>> decode(std::string_view text);

} // namespace Base64
