#include "web/css/CSSScanner.h"

#include "web/css/DecimalNumber.h"

#include <charconv>
#include <cmath>

namespace {

bool isWhitespace(char c) { return c == ' ' || c == '\t' || c == '\n' || c == '\r' || c == '\f'; }
bool isDigit(char c) { return c >= '0' && c <= '9'; }
bool isNameStart(char c) { return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || c == '_' || static_cast<unsigned char>(c) >= 0x80; }
bool isNameChar(char c) { return isNameStart(c) || isDigit(c) || c == '-'; }
char toLower(char c) { return (c >= 'A' && c <= 'Z') ? char(c - 'A' + 'a') : c; }

} // namespace

bool CSSScanner::skipWhitespace()
{
    std::size_t start = pos_;
    while (!atEnd()) {
        if (isWhitespace(text_[pos_])) {
            ++pos_;
        } else if (text_.substr(pos_, 2) == "/*") {
            std::size_t end = text_.find("*/", pos_ + 2);
            pos_ = end == std::string_view::npos ? text_.size() : end + 2;
        } else {
            break;
        }
    }
    return pos_ != start;
}

bool CSSScanner::consume(char c)
{
    if (peek() != c)
        return false;
    ++pos_;
    return true;
}

bool CSSScanner::startsIdentifier(std::size_t at) const
{
    if (at >= text_.size())
        return false;
    if (text_[at] == '-') {
        return at + 1 < text_.size() && (isNameStart(text_[at + 1]) || text_[at + 1] == '-');
    }
    return isNameStart(text_[at]);
}

std::optional<CSSScanner::Numeric> CSSScanner::numeric()
{
    std::size_t start = pos_;
    auto numberEnd = decimalNumberEnd(text_, start, false);
    if (!numberEnd)
        return {};
    std::size_t i = *numberEnd;
    // from_chars does not take a leading '+'.
    std::size_t parseStart = text_[start] == '+' ? start + 1 : start;
    Numeric result;
    auto [end, error] = std::from_chars(text_.data() + parseStart, text_.data() + i, result.value);
    if (error == std::errc::result_out_of_range) {
        // Overflow or underflow: the sign of the exponent tells which.
        std::string_view digits = text_.substr(start, i - start);
        std::size_t exponent = digits.find_first_of("eE");
        bool underflow = exponent != std::string_view::npos && exponent + 1 < digits.size() && digits[exponent + 1] == '-';
        double magnitude = underflow ? 0.0 : HUGE_VAL;
        result.value = text_[start] == '-' ? -magnitude : magnitude;
    } else if (error != std::errc() || end != text_.data() + i) {
        return {};
    }
    pos_ = i;
    if (consume('%')) {
        result.type = Numeric::Type::Percentage;
    } else if (startsIdentifier(pos_)) {
        result.type = Numeric::Type::Dimension;
        result.unit = *identifier();
    }
    return result;
}

bool CSSScanner::consumeOnlyKeyword(std::string_view keyword)
{
    std::size_t start = pos_;
    skipWhitespace();
    if (auto name = identifier(); name && *name == keyword) {
        skipWhitespace();
        if (atEnd())
            return true;
    }
    pos_ = start;
    return false;
}

std::optional<std::string> CSSScanner::identifier()
{
    if (!startsIdentifier(pos_))
        return {};
    std::string name;
    while (!atEnd() && isNameChar(text_[pos_]))
        name.push_back(toLower(text_[pos_++]));
    return name;
}

std::optional<std::string> CSSScanner::functionName()
{
    std::size_t start = pos_;
    auto name = identifier();
    if (!name || !consume('(')) {
        pos_ = start;
        return {};
    }
    return name;
}
