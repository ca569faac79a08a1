#include "Base64.h"

#include <array>

namespace Base64 {
namespace {

constexpr char kAlphabet[] = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";

constexpr std::array<std::int8_t, 256> makeDecodeTable()
{
    std::array<std::int8_t, 256> table{};
    for (auto& entry : table)
        entry = -1;
    for (int i = 0; i < 64; ++i)
        table[static_cast<unsigned char>(kAlphabet[i])] = static_cast<std::int8_t>(i);
    return table;
}

constexpr auto kDecodeTable = makeDecodeTable();

} // namespace

std::string encode(const std::uint8_t* data, std::size_t size)
{
    std::string out;
    out.reserve((size + 2) / 3 * 4);
    std::size_t i = 0;
    for (; i + 3 <= size; i += 3) {
        std::uint32_t n = (std::uint32_t{data[i]} << 16) | (std::uint32_t{data[i + 1]} << 8) | data[i + 2];
        out += kAlphabet[(n >> 18) & 63];
        out += kAlphabet[(n >> 12) & 63];
        out += kAlphabet[(n >> 6) & 63];
        out += kAlphabet[n & 63];
    }
    if (std::size_t rest = size - i) {
        std::uint32_t n = std::uint32_t{data[i]} << 16;
        if (rest == 2)
            n |= std::uint32_t{data[i + 1]} << 8;
        out += kAlphabet[(n >> 18) & 63];
        out += kAlphabet[(n >> 12) & 63];
        out += rest == 2 ? kAlphabet[(n >> 6) & 63] : '=';
        out += '=';
    }
    return out;
}

std::optional<std::vector<std::uint8_t>> decode(std::string_view text)
{
    if (text.size() % 4 != 0)
        return std::nullopt;
    std::size_t padding = 0;
    if (!text.empty() && text.back() == '=')
        padding = text.size() >= 2 && text[text.size() - 2] == '=' ? 2 : 1;

    std::vector<std::uint8_t> out;
    out.reserve(text.size() / 4 * 3);
    std::size_t digits = text.size() - padding;
    std::uint32_t accumulator = 0;
    for (std::size_t i = 0; i < digits; ++i) {
        std::int8_t value = kDecodeTable[static_cast<unsigned char>(text[i])];
        if (value < 0)
            return std::nullopt;
        accumulator = (accumulator << 6) | static_cast<std::uint32_t>(value);
        if (i % 4 == 3) {
            out.push_back(static_cast<std::uint8_t>(accumulator >> 16));
            out.push_back(static_cast<std::uint8_t>(accumulator >> 8));
            out.push_back(static_cast<std::uint8_t>(accumulator));
            accumulator = 0;
        }
    }
    if (padding == 1) {
        out.push_back(static_cast<std::uint8_t>(accumulator >> 10));
        out.push_back(static_cast<std::uint8_t>(accumulator >> 2));
    } else if (padding == 2) {
        out.push_back(static_cast<std::uint8_t>(accumulator >> 4));
    }
    return out;
}

} // namespace Base64
