#include "web/text/CssTokens.h"

#include <charconv>
#include <cmath>
#include <cstdio>

namespace {

bool isWhitespace(char c)
{
    return c == ' ' || c == '\t' || c == '\n' || c == '\r' || c == '\f';
}
bool isDigit(char c)
{
    return c >= '0' && c <= '9';
}
bool isHexDigit(char c)
{
    return isDigit(c) || (c >= 'a' && c <= 'f') || (c >= 'A' && c <= 'F');
}
bool isNameStart(char c)
{
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || c == '_' || static_cast<unsigned char>(c) >= 0x80;
}
bool isNameChar(char c)
{
    return isNameStart(c) || isDigit(c) || c == '-';
}

void appendUtf8(std::string& out, char32_t c)
{
    if (c == 0 || c > 0x10FFFF || (c >= 0xD800 && c <= 0xDFFF))
        c = 0xFFFD;
    if (c < 0x80) {
        out += static_cast<char>(c);
    } else if (c < 0x800) {
        out += static_cast<char>(0xC0 | (c >> 6));
        out += static_cast<char>(0x80 | (c & 0x3F));
    } else if (c < 0x10000) {
        out += static_cast<char>(0xE0 | (c >> 12));
        out += static_cast<char>(0x80 | ((c >> 6) & 0x3F));
        out += static_cast<char>(0x80 | (c & 0x3F));
    } else {
        out += static_cast<char>(0xF0 | (c >> 18));
        out += static_cast<char>(0x80 | ((c >> 12) & 0x3F));
        out += static_cast<char>(0x80 | ((c >> 6) & 0x3F));
        out += static_cast<char>(0x80 | (c & 0x3F));
    }
}

class Tokenizer {
public:
    explicit Tokenizer(std::string_view text) : s_(text) {}

    std::optional<std::vector<CssToken>> run()
    {
        std::vector<CssToken> tokens;
        while (true) {
            skipWhitespaceAndComments();
            if (i_ >= s_.size())
                return tokens;
            const char c = s_[i_];
            if (c == '"' || c == '\'') {
                auto text = string(c);
                if (!text)
                    return std::nullopt;
                tokens.push_back(CssToken{CssToken::String, std::move(*text), 0, false});
            } else if (c == '/') {
                ++i_;
                tokens.push_back(CssToken{CssToken::Slash, {}, 0, false});
            } else if (c == ',') {
                ++i_;
                tokens.push_back(CssToken{CssToken::Comma, {}, 0, false});
            } else if (startsNumber()) {
                tokens.push_back(number());
            } else if (startsIdentifier(i_)) {
                std::string name = identifier();
                if (i_ < s_.size() && s_[i_] == '(')
                    return std::nullopt;  // functions (calc, var, ...) are not supported
                tokens.push_back(CssToken{CssToken::Ident, std::move(name), 0, false});
            } else {
                return std::nullopt;
            }
        }
    }

private:
    void skipWhitespaceAndComments()
    {
        while (i_ < s_.size()) {
            if (isWhitespace(s_[i_])) {
                ++i_;
            } else if (s_.substr(i_, 2) == "/*") {
                const auto end = s_.find("*/", i_ + 2);
                i_ = end == std::string_view::npos ? s_.size() : end + 2;
            } else {
                return;
            }
        }
    }

    bool validEscape(std::size_t at) const
    {
        return at + 1 < s_.size() && s_[at] == '\\' && s_[at + 1] != '\n' && s_[at + 1] != '\r' && s_[at + 1] != '\f';
    }

    bool startsIdentifier(std::size_t at) const
    {
        if (at >= s_.size())
            return false;
        const char c = s_[at];
        if (c == '-') {
            return (at + 1 < s_.size() && (isNameStart(s_[at + 1]) || s_[at + 1] == '-')) || validEscape(at + 1);
        }
        return isNameStart(c) || validEscape(at);
    }

    bool startsNumber() const
    {
        std::size_t at = i_;
        if (s_[at] == '+' || s_[at] == '-')
            ++at;
        if (at < s_.size() && isDigit(s_[at]))
            return true;
        return at + 1 < s_.size() && s_[at] == '.' && isDigit(s_[at + 1]);
    }

    // Consumes an escape after its backslash.
    void escape(std::string& out)
    {
        if (i_ >= s_.size()) {
            appendUtf8(out, 0xFFFD);
            return;
        }
        if (isHexDigit(s_[i_])) {
            char32_t value = 0;
            for (int n = 0; n < 6 && i_ < s_.size() && isHexDigit(s_[i_]); ++n, ++i_) {
                const char h = s_[i_];
                value = value * 16 + static_cast<char32_t>(isDigit(h) ? h - '0' : (h | 0x20) - 'a' + 10);
            }
            if (i_ < s_.size() && isWhitespace(s_[i_]))
                ++i_;
            appendUtf8(out, value);
            return;
        }
        out += s_[i_++];
    }

    std::string identifier()
    {
        std::string out;
        while (i_ < s_.size()) {
            if (isNameChar(s_[i_])) {
                out += s_[i_++];
            } else if (validEscape(i_)) {
                ++i_;
                escape(out);
            } else {
                break;
            }
        }
        return out;
    }

    std::optional<std::string> string(char quote)
    {
        std::string out;
        ++i_;
        while (i_ < s_.size()) {
            const char c = s_[i_++];
            if (c == quote)
                return out;
            if (c == '\n' || c == '\r' || c == '\f')
                return std::nullopt;
            if (c == '\\') {
                if (i_ < s_.size() && (s_[i_] == '\n' || s_[i_] == '\f'))
                    ++i_;
                else if (i_ < s_.size())
                    escape(out);
                continue;
            }
            out += c;
        }
        return out;  // a string left open at the end of the text ends there
    }

    CssToken number()
    {
        const std::size_t start = i_;
        bool integer = true;
        if (s_[i_] == '+' || s_[i_] == '-')
            ++i_;
        while (i_ < s_.size() && isDigit(s_[i_]))
            ++i_;
        if (i_ + 1 < s_.size() && s_[i_] == '.' && isDigit(s_[i_ + 1])) {
            integer = false;
            ++i_;
            while (i_ < s_.size() && isDigit(s_[i_]))
                ++i_;
        }
        if (i_ < s_.size() && (s_[i_] == 'e' || s_[i_] == 'E')) {
            std::size_t at = i_ + 1;
            if (at < s_.size() && (s_[at] == '+' || s_[at] == '-'))
                ++at;
            if (at < s_.size() && isDigit(s_[at])) {
                integer = false;
                i_ = at;
                while (i_ < s_.size() && isDigit(s_[i_]))
                    ++i_;
            }
        }
        std::string digits(s_.substr(start, i_ - start));
        if (!digits.empty() && digits[0] == '+')
            digits.erase(0, 1);
        double value = 0;
        const auto [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), value);
        (void)end;
        if (error == std::errc::result_out_of_range) {
            // Too large saturates, too small is zero.
            const auto e = digits.find_first_of("eE");
            const bool tiny = e != std::string::npos && digits.find('-', e) != std::string::npos;
            value = tiny ? 0 : (digits[0] == '-' ? -1e300 : 1e300);
        }
        CssToken token{CssToken::Number, {}, value, integer};
        if (i_ < s_.size() && s_[i_] == '%') {
            ++i_;
            token.type = CssToken::Percentage;
        } else if (startsIdentifier(i_)) {
            token.type = CssToken::Dimension;
            token.text = asciiLower(identifier());
        }
        return token;
    }

    std::string_view s_;
    std::size_t i_ = 0;
};

} // namespace

std::optional<std::vector<CssToken>> tokenizeCss(std::string_view text)
{
    return Tokenizer(text).run();
}

std::string asciiLower(std::string_view text)
{
    std::string out(text);
    for (char& c : out) {
        if (c >= 'A' && c <= 'Z')
            c = static_cast<char>(c + ('a' - 'A'));
    }
    return out;
}

bool isCssIdentifier(std::string_view name)
{
    if (name.empty())
        return false;
    std::size_t i = 0;
    if (name[0] == '-') {
        if (name.size() == 1)
            return false;
        i = 1;
        if (name[1] == '-')
            i = 2;
        else if (!isNameStart(name[1]))
            return false;
    } else if (!isNameStart(name[0])) {
        return false;
    }
    for (; i < name.size(); ++i) {
        if (!isNameChar(name[i]))
            return false;
    }
    return true;
}

std::string serializeCssString(std::string_view text)
{
    std::string out = "\"";
    for (char c : text) {
        if (c == '"' || c == '\\') {
            out += '\\';
            out += c;
        } else if ((c >= 0 && c < 0x20) || c == 0x7F) {
            char buffer[8];
            std::snprintf(buffer, sizeof buffer, "\\%x ", static_cast<unsigned>(c));
            out += buffer;
        } else {
            out += c;
        }
    }
    return out + '"';
}
