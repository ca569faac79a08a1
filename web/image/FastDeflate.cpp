#include "web/image/FastDeflate.h"

#include <algorithm>
#include <array>
#include <cstring>

namespace {

// Deflate writes Huffman codes most significant bit first into a stream filled from the least
// significant bit, so the tables hold the codes bit-reversed.
constexpr std::uint32_t reversed(std::uint32_t code, int length)
{
    std::uint32_t result = 0;
    for (int i = 0; i < length; ++i)
        result |= ((code >> i) & 1u) << (length - 1 - i);
    return result;
}

// Matches reach back one RGBA pixel: runs of equal pixels, transparent ones above all.
constexpr std::size_t kDistance = 4;

struct Code {
    std::uint32_t bits;
    int length;
};

// The fixed literal/length code (RFC 1951, 3.2.6).
constexpr Code fixedCode(int symbol)
{
    if (symbol < 144)
        return {reversed(0x30 + symbol, 8), 8};
    if (symbol < 256)
        return {reversed(0x190 + symbol - 144, 9), 9};
    if (symbol < 280)
        return {reversed(symbol - 256, 7), 7};
    return {reversed(0xc0 + symbol - 280, 8), 8};
}

constexpr auto kLiterals = [] {
    std::array<Code, 286> table{};
    for (int symbol = 0; symbol < 286; ++symbol)
        table[symbol] = fixedCode(symbol);
    return table;
}();

// For every match length 3..258: its length symbol's code followed by the extra bits, as one
// bit string; then distance code 3 (distance 4, one pixel back), no extra bits.
constexpr auto kLengths = [] {
    constexpr int base[] = {3, 4, 5, 6, 7, 8, 9, 10, 11, 13, 15, 17, 19, 23, 27, 31,
                            35, 43, 51, 59, 67, 83, 99, 115, 131, 163, 195, 227, 258};
    constexpr int extra[] = {0, 0, 0, 0, 0, 0, 0, 0, 1, 1, 1, 1, 2, 2, 2, 2, 3, 3, 3, 3, 4, 4, 4, 4, 5, 5, 5, 5, 0};
    std::array<Code, 259> table{};
    for (int length = 3; length <= 258; ++length) {
        int index = 28;
        while (base[index] > length)
            --index;
        Code symbol = fixedCode(257 + index);
        std::uint32_t extraValue = std::uint32_t(length - base[index]);
        int lengthBits = symbol.length + extra[index];
        table[length] = {symbol.bits | extraValue << symbol.length | reversed(3, 5) << lengthBits, lengthBits + 5};
    }
    return table;
}();

// Writes bits into memory reserved beforehand for the worst case, nine bits a byte.
class BitWriter {
public:
    explicit BitWriter(unsigned char* out) : out_(out) {}
    void put(std::uint32_t bits, int count)
    {
        buffer_ |= std::uint64_t(bits) << used_;
        used_ += count;
        if (used_ >= 32) {
            std::uint32_t word = std::uint32_t(buffer_);
            for (int i = 0; i < 4; ++i)
                out_[i] = static_cast<unsigned char>(word >> (8 * i));
            out_ += 4;
            buffer_ >>= 32;
            used_ -= 32;
        }
    }
    unsigned char* finish()
    {
        while (used_ > 0) {
            *out_++ = static_cast<unsigned char>(buffer_);
            buffer_ >>= 8;
            used_ = used_ > 8 ? used_ - 8 : 0;
        }
        return out_;
    }

private:
    unsigned char* out_;
    std::uint64_t buffer_ = 0;
    int used_ = 0;
};

// How many bytes from `at` repeat the bytes four before them (the pixel before), up to
// `limit`; eight at a time where it can.
std::size_t repeats(const std::uint8_t* data, std::size_t at, std::size_t size, std::size_t limit)
{
    std::size_t n = 0;
    while (n + 8 <= limit && at + n + 8 <= size) {
        std::uint64_t word, before;
        std::memcpy(&word, data + at + n, 8);
        std::memcpy(&before, data + at + n - kDistance, 8);
        if (word != before)
            break;
        n += 8;
    }
    while (n < limit && at + n < size && data[at + n] == data[at + n - kDistance])
        ++n;
    return n;
}

} // namespace

std::uint32_t adler32Of(const std::uint8_t* data, std::size_t size)
{
    // Sixteen bytes at a time: each adds its value to the first sum and, weighted by how many
    // bytes of the block follow it and itself, to the second, with the first sum as it stood
    // sixteen times over. The sums at the end of a block are those a byte at a time would
    // reach, so zlib's bound (5552 bytes before the sums could overflow) still holds.
    constexpr std::uint32_t kBase = 65521;
    constexpr std::size_t kMostBeforeModulo = 5552;
    std::uint32_t a = 1, b = 0;
    while (size > 0) {
        std::size_t chunk = std::min(size, kMostBeforeModulo);
        size -= chunk;
        for (; chunk >= 16; chunk -= 16, data += 16) {
            std::uint32_t sum = 0, weighted = 0;
            for (int i = 0; i < 16; ++i) {
                sum += data[i];
                weighted += std::uint32_t(16 - i) * data[i];
            }
            b += 16 * a + weighted;
            a += sum;
        }
        for (; chunk > 0; --chunk) {
            a += *data++;
            b += a;
        }
        a %= kBase;
        b %= kBase;
    }
    return b << 16 | a;
}

void appendZlibFast(std::string& out, const std::uint8_t* data, std::size_t size)
{
    std::size_t start = out.size();
    out.resize(start + 2 + size + size / 8 + 32 + 4);
    auto* base = reinterpret_cast<unsigned char*>(out.data()) + start;
    base[0] = 0x78; // deflate, 32K window
    base[1] = 0x01; // fastest, no dictionary; (0x7801 % 31 == 0)
    BitWriter writer(base + 2);
    writer.put(3, 3); // final block, fixed codes
    std::size_t i = 0;
    while (i < size) {
        const Code& literal = kLiterals[data[i]];
        writer.put(literal.bits, literal.length);
        ++i;
        // Most literals in a drawing's edges differ from the pixel before at once; only a
        // match worth its code is looked for further.
        std::size_t run = i >= kDistance && i + 2 < size && data[i] == data[i - kDistance]
                && data[i + 1] == data[i + 1 - kDistance] && data[i + 2] == data[i + 2 - kDistance]
            ? repeats(data, i, size, 258)
            : 0;
        if (run >= 3) {
            const Code& match = kLengths[run];
            writer.put(match.bits, match.length);
            i += run;
        }
    }
    const Code& end = kLiterals[256];
    writer.put(end.bits, end.length);
    unsigned char* tail = writer.finish();
    std::uint32_t checksum = adler32Of(data, size);
    for (int k = 0; k < 4; ++k)
        *tail++ = static_cast<unsigned char>(checksum >> (24 - 8 * k));
    out.resize(std::size_t(tail - reinterpret_cast<unsigned char*>(out.data())));
}
