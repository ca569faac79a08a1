#include "web/image/DataURL.h"

#include <cstdint>

std::string base64DataURL(std::string_view mediaType, std::string_view data)
{
    static constexpr char kAlphabet[] = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
    std::string prefix = "data:" + std::string(mediaType) + ";base64,";
    std::string url(prefix.size() + (data.size() + 2) / 3 * 4, '=');
    url.replace(0, prefix.size(), prefix);
    char* out = url.data() + prefix.size();
    auto* in = reinterpret_cast<const std::uint8_t*>(data.data());
    std::size_t i = 0;
    for (; i + 3 <= data.size(); i += 3, out += 4) {
        std::uint32_t n = std::uint32_t(in[i]) << 16 | std::uint32_t(in[i + 1]) << 8 | in[i + 2];
        out[0] = kAlphabet[n >> 18];
        out[1] = kAlphabet[(n >> 12) & 63];
        out[2] = kAlphabet[(n >> 6) & 63];
        out[3] = kAlphabet[n & 63];
    }
    if (std::size_t rest = data.size() - i) {
        std::uint32_t n = std::uint32_t(in[i]) << 16 | (rest == 2 ? std::uint32_t(in[i + 1]) << 8 : 0);
        out[0] = kAlphabet[n >> 18];
        out[1] = kAlphabet[(n >> 12) & 63];
        if (rest == 2)
            out[2] = kAlphabet[(n >> 6) & 63];
    }
    return url;
}
