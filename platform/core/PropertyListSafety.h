#pragma once

#include <cstddef>
#include <cstdint>

// Checks run on untrusted property-list data before the parser sees it, which recurses once
// per nesting level and copies shared binary objects once per reference.
namespace PropertyListSafety {

constexpr int kMaxNesting = 256;
constexpr std::size_t kMaxBinaryNodes = 1 << 20;

bool xmlNestingWithinLimit(const char* data, std::size_t size);
bool binaryStructureWithinLimits(const std::uint8_t* data, std::size_t size);

} // namespace PropertyListSafety
