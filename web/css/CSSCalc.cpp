#include "web/css/CSSCalc.h"

#include "web/css/CSSUnits.h"

#include <cmath>

namespace {

using Type = CalcValue::Type;

class CalcParser {
public:
    CalcParser(CSSScanner& scanner, CalcKeywords keywords) : scanner_(scanner), keywords_(keywords) {}

    std::optional<CalcValue> sum()
    {
        auto left = product();
        while (left) {
            scanner_.skipWhitespace();
            char op = scanner_.peek();
            // "+" and "-" must stand between spaces, or they would begin a number.
            bool spaced = op == '+' || op == '-';
            if (!spaced || !isSpace(scanner_.peekAt(scanner_.position() + 1)))
                break;
            scanner_.consume(op);
            auto right = product();
            if (!right || right->type != left->type)
                return {};
            left->value += op == '+' ? right->value : -right->value;
        }
        return left;
    }

private:
    static bool isSpace(char c) { return c == ' ' || c == '\t' || c == '\n' || c == '\r' || c == '\f'; }

    std::optional<CalcValue> product()
    {
        auto left = term();
        while (left) {
            std::size_t at = scanner_.position();
            scanner_.skipWhitespace();
            char op = scanner_.peek();
            if (op != '*' && op != '/') {
                scanner_.rewind(at);
                break;
            }
            scanner_.consume(op);
            auto right = term();
            if (!right)
                return {};
            if (op == '*') {
                if (left->type != Type::Number && right->type != Type::Number)
                    return {};
                Type type = left->type == Type::Number ? right->type : left->type;
                left = CalcValue{left->value * right->value, type};
            } else {
                if (right->type != Type::Number)
                    return {};
                left->value /= right->value;
            }
        }
        return left;
    }

    std::optional<CalcValue> term()
    {
        scanner_.skipWhitespace();
        if (++depth_ > kMaxDepth)
            return {};
        struct Leave {
            int& depth;
            ~Leave() { --depth; }
        } leave{depth_};
        if (scanner_.consume('('))
            return closed(sum());
        std::size_t start = scanner_.position();
        if (auto function = scanner_.functionName()) {
            if (*function == "calc")
                return closed(sum());
            scanner_.rewind(start);
            return {};
        }
        if (auto numeric = scanner_.numeric())
            return fromNumeric(*numeric);
        if (auto name = scanner_.identifier()) {
            for (const auto& [keyword, value] : keywords_) {
                if (*name == keyword)
                    return CalcValue{value, Type::Number};
            }
            if (*name == "pi")
                return CalcValue{M_PI, Type::Number};
            if (*name == "e")
                return CalcValue{M_E, Type::Number};
        }
        return {};
    }

    std::optional<CalcValue> closed(std::optional<CalcValue> inner)
    {
        scanner_.skipWhitespace();
        if (!inner || !scanner_.consume(')'))
            return {};
        return inner;
    }

    static std::optional<CalcValue> fromNumeric(const CSSScanner::Numeric& n)
    {
        if (n.isNumber())
            return CalcValue{n.value, Type::Number};
        if (n.isPercentage())
            return CalcValue{n.value, Type::Percentage};
        if (auto degrees = degreesPerAngleUnit(n.unit))
            return CalcValue{n.value * *degrees, Type::Angle};
        return {};
    }

    // Hostile nesting must not exhaust the stack.
    static constexpr int kMaxDepth = 64;
    CSSScanner& scanner_;
    CalcKeywords keywords_;
    int depth_ = 0;
};

} // namespace

std::optional<CalcValue> consumeCalc(CSSScanner& scanner, CalcKeywords keywords)
{
    std::size_t start = scanner.position();
    auto function = scanner.functionName();
    if (!function || *function != "calc") {
        scanner.rewind(start);
        return {};
    }
    CalcParser parser(scanner, keywords);
    auto value = parser.sum();
    scanner.skipWhitespace();
    if (!value || !scanner.consume(')') || std::isnan(value->value)) {
        scanner.rewind(start);
        return {};
    }
    return value;
}
