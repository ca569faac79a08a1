#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

// Appends a zlib stream of `data` to `out`: one deflate block with the fixed Huffman codes,
// repeated bytes as matches at distance 1, everything else as literals. Many times faster than
// zlib's fastest level and about as small on filtered scanlines of flat drawings, whose
// repeats are runs of zeros.
void appendZlibFast(std::string& out, const std::uint8_t* data, std::size_t size);
