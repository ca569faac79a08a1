#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

// Just enough of CSS tokenization for colour and transform values: numbers with their unit,
// identifiers, delimiters, whitespace and comments. Identifiers and units come back in ASCII
// lower case, since every keyword we look for is ASCII case-insensitive.
class CSSScanner {
public:
    struct Numeric {
        enum class Type { Number, Percentage, Dimension };
        double value = 0;
        Type type = Type::Number;
        std::string unit; // for dimensions

        bool isNumber() const { return type == Type::Number; }
        bool isPercentage() const { return type == Type::Percentage; }
    };

    explicit CSSScanner(std::string_view text) : text_(text) {}

    // Skips whitespace and comments; returns whether there was any.
    bool skipWhitespace();
    bool atEnd() const { return pos_ >= text_.size(); }
    char peek() const { return atEnd() ? '\0' : text_[pos_]; }
    // Consumes `c` if it is next.
    bool consume(char c);
    std::optional<Numeric> numeric();
    std::optional<std::string> identifier();
    // An identifier directly followed by "(": a function name.
    std::optional<std::string> functionName();
    std::size_t position() const { return pos_; }
    std::string_view text() const { return text_; }
    // The character at `at`, or '\0' past the end.
    char peekAt(std::size_t at) const { return at < text_.size() ? text_[at] : '\0'; }
    void rewind(std::size_t position) { pos_ = position; }
    // Whether all that is left, white space aside, is the keyword `keyword`; consumes it if so,
    // else leaves the scanner where it was.
    bool consumeOnlyKeyword(std::string_view keyword);

private:
    bool startsIdentifier(std::size_t at) const;

    std::string_view text_;
    std::size_t pos_ = 0;
};
