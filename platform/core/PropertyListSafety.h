#pragma once

#include <cstddef>
#include <cstdint>

// Checks run on untrusted property-list data before the parser sees it: the parser recurses
// once per nesting level, copies shared binary objects once per reference, and asserts (ending
// the process) on strings holding NUL.
namespace PropertyListSafety {

constexpr int kMaxNesting = 256;
constexpr std::size_t kMaxBinaryNodes = 1 << 20;

// No NUL characters and no deeper nesting than kMaxNesting.
bool xmlWithinLimits(const char* data, std::size_t size);
// A sound structure: references in range, no cycles, no NUL in strings, bounded depth and
// expansion.
bool binaryStructureWithinLimits(const std::uint8_t* data, std::size_t size);

} // namespace PropertyListSafety
