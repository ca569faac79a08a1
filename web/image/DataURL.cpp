#include "web/image/DataURL.h"

#include <cstdint>

namespace {

template <typename Char>
std::basic_string<Char> base64DataURLIn(std::string_view mediaType, std::string_view data)
{
    static constexpr char kAlphabet[] = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
    std::string prefix = "data:" + std::string(mediaType) + ";base64,";
    // Made with zeros, which the library fills as memory; a wide character of any other value
    // would be filled one at a time, at a cost of its own.
    std::basic_string<Char> url(prefix.size() + (data.size() + 2) / 3 * 4, Char(0));
    Char* out = url.data();
    for (char c : prefix)
        *out++ = Char(static_cast<unsigned char>(c));
    auto* in = reinterpret_cast<const std::uint8_t*>(data.data());
    std::size_t i = 0;
    for (; i + 3 <= data.size(); i += 3, out += 4) {
        std::uint32_t n = std::uint32_t(in[i]) << 16 | std::uint32_t(in[i + 1]) << 8 | in[i + 2];
        out[0] = Char(kAlphabet[n >> 18]);
        out[1] = Char(kAlphabet[(n >> 12) & 63]);
        out[2] = Char(kAlphabet[(n >> 6) & 63]);
        out[3] = Char(kAlphabet[n & 63]);
    }
    if (std::size_t rest = data.size() - i) {
        std::uint32_t n = std::uint32_t(in[i]) << 16 | (rest == 2 ? std::uint32_t(in[i + 1]) << 8 : 0);
        out[0] = Char(kAlphabet[n >> 18]);
        out[1] = Char(kAlphabet[(n >> 12) & 63]);
        out[2] = rest == 2 ? Char(kAlphabet[(n >> 6) & 63]) : Char('=');
        out[3] = Char('=');
    }
    return url;
}

} // namespace

std::string base64DataURL(std::string_view mediaType, std::string_view data)
{
    return base64DataURLIn<char>(mediaType, data);
}

std::u16string base64DataURLUTF16(std::string_view mediaType, std::string_view data)
{
    return base64DataURLIn<char16_t>(mediaType, data);
}
