#include "web/image/FastDeflate.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <optional>

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

// The stream's checksum, taken pixel by pixel as the pixels are written: a pixel's bytes
// p0..p3 add s = p0+p1+p2+p3 to the first sum and 4a + (4p0+3p1+2p2+p3) to the second, and k
// equal pixels in a row add k·s and 4ka + 2s·k(k-1) + k(4p0+3p1+2p2+p3). The sums are
// reduced every so many steps, long before they could grow past 64 bits.
class Adler32 {
public:
    void addByte(std::uint8_t value)
    {
        a_ += value;
        b_ += a_;
    }
    void addPixels(std::uint32_t pixel, std::uint64_t count)
    {
        std::uint64_t p0 = pixel & 0xff, p1 = (pixel >> 8) & 0xff, p2 = (pixel >> 16) & 0xff, p3 = pixel >> 24;
        std::uint64_t sum = p0 + p1 + p2 + p3, weighted = 4 * p0 + 3 * p1 + 2 * p2 + p3;
        b_ += 4 * count * a_ + 2 * sum * count * (count - 1) + count * weighted;
        a_ += count * sum;
    }
    void addZeros(std::uint64_t count)
    {
        b_ += count * a_;
        reduce();
    }
    void reduce()
    {
        a_ %= kBase;
        b_ %= kBase;
    }
    std::uint32_t value()
    {
        reduce();
        return std::uint32_t(b_ << 16 | a_);
    }

private:
    static constexpr std::uint64_t kBase = 65521;
    std::uint64_t a_ = 1, b_ = 0;
};

// Steps (a pixel or a match of at most 64) between reductions of the checksum's sums, and most
// pixels one match repeats (256 bytes; deflate's longest match is 258).
constexpr std::size_t kStepsBetweenReductions = 1024;
constexpr std::size_t kMostRepeatedPixels = 64;
constexpr std::size_t kLongestMatch = 258;

// A pixel's four bytes, the first in the lowest bits.
std::uint32_t pixelAt(const std::uint8_t* bytes)
{
    return std::uint32_t(bytes[0]) | std::uint32_t(bytes[1]) << 8 | std::uint32_t(bytes[2]) << 16
        | std::uint32_t(bytes[3]) << 24;
}

class ScanlineDeflater {
public:
    ScanlineDeflater(unsigned char* out, const std::uint8_t* rows, std::size_t width, std::size_t height)
        : writer_(out), rows_(rows), width_(width), height_(height), rowSize_(1 + 4 * width)
    {
    }

    unsigned char* deflate()
    {
        writer_.put(3, 3); // final block, fixed codes
        for (std::size_t y = 0; y < height_; ++y) {
            literal(rows_[rowSize_ * y]);
            checksum_.addByte(rows_[rowSize_ * y]);
            // The pixel the four bytes before the next one hold, once they hold one.
            std::optional<std::uint32_t> previous;
            std::size_t steps = 0;
            for (std::size_t x = 0; x < width_;) {
                std::uint32_t pixel = pixelAt(pixels(y) + 4 * x);
                if (previous && pixel != *previous && ((pixel ^ *previous) & 0xffffff) == 0) {
                    // The colour of the pixel before at another alpha, as edges are drawn.
                    const Code& match = kLengths[3];
                    writer_.put(match.bits, match.length);
                    literal(int(pixel >> 24));
                    checksum_.addPixels(pixel, 1);
                    previous = pixel;
                    ++x;
                } else if (pixel != previous) {
                    literals(pixel);
                    checksum_.addPixels(pixel, 1);
                    previous = pixel;
                    ++x;
                } else if (pixel != 0) {
                    std::size_t last = std::min(width_, x + kMostRepeatedPixels), run = 1;
                    while (x + run < last && pixelAt(pixels(y) + 4 * (x + run)) == pixel)
                        ++run;
                    const Code& match = kLengths[4 * run];
                    writer_.put(match.bits, match.length);
                    checksum_.addPixels(pixel, run);
                    x += run;
                } else {
                    // Transparent pixels run on through the ends of rows, filter bytes and
                    // all: `y` moves on with them, and the row they end in goes on from there.
                    std::size_t run = zerosFrom(y, x);
                    std::size_t bytes = 4 * run;
                    x += run;
                    while (x == width_ && y + 1 < height_ && rows_[rowSize_ * (y + 1)] == 0) {
                        ++y;
                        x = zerosFrom(y, 0);
                        bytes += 1 + 4 * x;
                    }
                    zeros(bytes);
                }
                if (++steps == kStepsBetweenReductions) {
                    checksum_.reduce();
                    steps = 0;
                }
            }
        }
        literal(256);
        unsigned char* tail = writer_.finish();
        std::uint32_t sum = checksum_.value();
        for (int k = 0; k < 4; ++k)
            *tail++ = static_cast<unsigned char>(sum >> (24 - 8 * k));
        return tail;
    }

private:
    const std::uint8_t* pixels(std::size_t y) const { return rows_ + rowSize_ * y + 1; }

    // How many transparent pixels row `y` has from `x` on.
    std::size_t zerosFrom(std::size_t y, std::size_t x) const
    {
        std::size_t n = 0;
        while (x + n < width_ && pixelAt(pixels(y) + 4 * (x + n)) == 0)
            ++n;
        return n;
    }

    void literal(int symbol)
    {
        const Code& code = kLiterals[symbol];
        writer_.put(code.bits, code.length);
    }

    void literals(std::uint32_t pixel)
    {
        // Two literals at a time: at most 18 bits.
        const Code& c0 = kLiterals[pixel & 0xff];
        const Code& c1 = kLiterals[(pixel >> 8) & 0xff];
        const Code& c2 = kLiterals[(pixel >> 16) & 0xff];
        const Code& c3 = kLiterals[pixel >> 24];
        writer_.put(c0.bits | c1.bits << c0.length, c0.length + c1.length);
        writer_.put(c2.bits | c3.bits << c2.length, c2.length + c3.length);
    }

    // `count` zero bytes that follow at least four others, as matches four back.
    void zeros(std::size_t count)
    {
        checksum_.addZeros(count);
        while (count >= 3) {
            std::size_t length = std::min(count, kLongestMatch);
            if (count - length > 0 && count - length < 3)
                length = count - 3;
            const Code& match = kLengths[length];
            writer_.put(match.bits, match.length);
            count -= length;
        }
        for (; count > 0; --count)
            literal(0);
    }

    BitWriter writer_;
    Adler32 checksum_;
    const std::uint8_t* rows_;
    std::size_t width_, height_, rowSize_;
};

} // namespace

void appendZlibOfScanlines(std::string& out, const std::uint8_t* rows, std::size_t width, std::size_t height)
{
    const std::size_t size = (1 + 4 * width) * height;
    std::size_t start = out.size();
    out.resize(start + 2 + size + size / 8 + 32 + 4);
    auto* base = reinterpret_cast<unsigned char*>(out.data()) + start;
    base[0] = 0x78; // deflate, 32K window
    base[1] = 0x01; // fastest, no dictionary; (0x7801 % 31 == 0)
    unsigned char* tail = ScanlineDeflater(base + 2, rows, width, height).deflate();
    out.resize(std::size_t(tail - reinterpret_cast<unsigned char*>(out.data())));
}
