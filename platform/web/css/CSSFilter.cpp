#include "platform/web/css/CSSFilter.h"

#include "platform/web/css/CSSColor.h"
#include "platform/web/css/CSSScanner.h"

#include <array>
#include <cctype>
#include <string>

namespace {

using Numeric = CSSScanner::Numeric;

bool isLength(const Numeric& n, bool nonNegative)
{
    static constexpr std::array<std::string_view, 16> kUnits = {"px", "em", "rem", "ex", "ch", "in", "cm", "mm", "q", "pt", "pc",
                                                                "vw", "vh", "vmin", "vmax", "lh"};
    if (nonNegative && n.value < 0)
        return false;
    if (n.isNumber())
        return n.value == 0;
    if (n.type != Numeric::Type::Dimension)
        return false;
    for (auto unit : kUnits) {
        if (n.unit == unit)
            return true;
    }
    return false;
}

bool isAngle(const Numeric& n)
{
    if (n.isNumber())
        return n.value == 0;
    return n.type == Numeric::Type::Dimension && (n.unit == "deg" || n.unit == "rad" || n.unit == "grad" || n.unit == "turn");
}

// The text of one colour value at the scanner: a name, a hex colour or a colour function.
bool skipColor(CSSScanner& scanner, std::string_view text)
{
    std::size_t start = scanner.position();
    if (scanner.consume('#')) {
        while (!scanner.atEnd() && std::isalnum(static_cast<unsigned char>(scanner.peek())))
            scanner.rewind(scanner.position() + 1);
    } else if (scanner.functionName()) {
        int depth = 1;
        while (!scanner.atEnd() && depth > 0) {
            char c = scanner.peek();
            depth += c == '(' ? 1 : c == ')' ? -1 : 0;
            scanner.rewind(scanner.position() + 1);
        }
        if (depth != 0)
            return false;
    } else if (!scanner.identifier()) {
        return false;
    }
    return parseCSSColor(text.substr(start, scanner.position() - start)).has_value();
}

bool parseDropShadow(CSSScanner& scanner, std::string_view text)
{
    int lengths = 0;
    bool color = false;
    bool lengthsDone = false;
    while (true) {
        scanner.skipWhitespace();
        if (scanner.consume(')'))
            return lengths >= 2;
        std::size_t at = scanner.position();
        if (auto n = scanner.numeric()) {
            if (lengthsDone || lengths == 3 || !isLength(*n, lengths == 2))
                return false;
            ++lengths;
            continue;
        }
        scanner.rewind(at);
        if (color || !skipColor(scanner, text))
            return false;
        color = true;
        lengthsDone = lengths > 0;
    }
}

bool parseFunction(const std::string& name, CSSScanner& scanner, std::string_view text)
{
    if (name == "drop-shadow")
        return parseDropShadow(scanner, text);
    if (name == "url") {
        while (!scanner.atEnd() && scanner.peek() != ')')
            scanner.rewind(scanner.position() + 1);
        return scanner.consume(')');
    }
    scanner.skipWhitespace();
    if (scanner.consume(')'))
        return name == "blur" || name == "brightness" || name == "contrast" || name == "grayscale" || name == "hue-rotate"
            || name == "invert" || name == "opacity" || name == "saturate" || name == "sepia";
    auto n = scanner.numeric();
    if (!n)
        return false;
    bool valid;
    if (name == "blur")
        valid = isLength(*n, true);
    else if (name == "hue-rotate")
        valid = isAngle(*n);
    else if (name == "brightness" || name == "contrast" || name == "grayscale" || name == "invert" || name == "opacity"
             || name == "saturate" || name == "sepia")
        valid = (n->isNumber() || n->isPercentage()) && n->value >= 0;
    else
        valid = false;
    scanner.skipWhitespace();
    return valid && scanner.consume(')');
}

} // namespace

bool isValidCSSFilter(std::string_view text)
{
    CSSScanner scanner(text);
    scanner.skipWhitespace();
    if (scanner.atEnd())
        return false;
    std::size_t start = scanner.position();
    if (auto keyword = scanner.identifier(); keyword && *keyword == "none") {
        scanner.skipWhitespace();
        return scanner.atEnd();
    }
    scanner.rewind(start);
    while (!scanner.atEnd()) {
        auto name = scanner.functionName();
        if (!name || !parseFunction(*name, scanner, text))
            return false;
        scanner.skipWhitespace();
    }
    return true;
}
