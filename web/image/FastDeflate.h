#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

// Appends a zlib stream of PNG scanlines (`height` rows, each a filter byte and `width` RGBA
// pixels) to `out`: one deflate block with the fixed Huffman codes, runs of a pixel as matches
// one pixel back, everything else as literals. Many times faster than zlib's fastest level and
// about as small on unfiltered scanlines of flat drawings, and the matches cost a decoder
// little more than a copy.
void appendZlibOfScanlines(std::string& out, const std::uint8_t* rows, std::size_t width, std::size_t height);
