#include "web/svg/SVGPathParser.h"

#include "web/canvas/CanvasPath.h"
#include "web/css/DecimalNumber.h"

#include <charconv>
#include <cmath>
#include <optional>

namespace {

bool isSpace(char c) { return c == ' ' || c == '\t' || c == '\n' || c == '\r' || c == '\f'; }
bool isDigit(char c) { return c >= '0' && c <= '9'; }

class Scanner {
public:
    explicit Scanner(std::string_view text) : text_(text) {}

    void skipSpaces()
    {
        while (pos_ < text_.size() && isSpace(text_[pos_]))
            ++pos_;
    }
    // Whitespace, then optionally a comma and more whitespace.
    void skipSeparator()
    {
        skipSpaces();
        if (pos_ < text_.size() && text_[pos_] == ',') {
            ++pos_;
            skipSpaces();
        }
    }
    bool atEnd() const { return pos_ >= text_.size(); }
    char peek() const { return atEnd() ? '\0' : text_[pos_]; }
    void advance() { ++pos_; }
    bool startsNumber() const
    {
        char c = peek();
        return isDigit(c) || c == '.' || c == '-' || c == '+';
    }

    std::optional<double> number()
    {
        auto numberEnd = decimalNumberEnd(text_, pos_, true);
        if (!numberEnd)
            return {};
        std::size_t i = *numberEnd;
        std::size_t start = text_[pos_] == '+' ? pos_ + 1 : pos_;
        double value = 0;
        auto [end, error] = std::from_chars(text_.data() + start, text_.data() + i, value);
        if (error != std::errc() || end != text_.data() + i || !std::isfinite(value))
            return {};
        pos_ = i;
        skipSeparator();
        return value;
    }

    // An arc flag: a single 0 or 1, which needs no separator after it.
    std::optional<bool> flag()
    {
        char c = peek();
        if (c != '0' && c != '1')
            return {};
        ++pos_;
        skipSeparator();
        return c == '1';
    }

private:
    std::string_view text_;
    std::size_t pos_ = 0;
};

struct Point {
    double x = 0;
    double y = 0;
};

// The SVG elliptical arc from `from` to `to`, as the centre parameterisation an ellipse()
// call takes (SVG implementation notes, F.6.5 and F.6.6).
void appendArc(CanvasPath& path, Point from, double rx, double ry, double angleDegrees, bool largeArc, bool sweep, Point to)
{
    if (from.x == to.x && from.y == to.y)
        return;
    rx = std::fabs(rx);
    ry = std::fabs(ry);
    if (rx == 0 || ry == 0) {
        path.lineTo(to.x, to.y);
        return;
    }
    double phi = std::fmod(angleDegrees, 360) * M_PI / 180;
    double cosPhi = std::cos(phi), sinPhi = std::sin(phi);
    double dx = (from.x - to.x) / 2, dy = (from.y - to.y) / 2;
    double x1 = cosPhi * dx + sinPhi * dy;
    double y1 = -sinPhi * dx + cosPhi * dy;
    double lambda = (x1 * x1) / (rx * rx) + (y1 * y1) / (ry * ry);
    if (lambda > 1) {
        double scale = std::sqrt(lambda);
        rx *= scale;
        ry *= scale;
    }
    double numerator = rx * rx * ry * ry - rx * rx * y1 * y1 - ry * ry * x1 * x1;
    double denominator = rx * rx * y1 * y1 + ry * ry * x1 * x1;
    double root = denominator == 0 ? 0 : std::sqrt(std::max(0.0, numerator / denominator));
    if (largeArc == sweep)
        root = -root;
    double cx1 = root * rx * y1 / ry;
    double cy1 = -root * ry * x1 / rx;
    double cx = cosPhi * cx1 - sinPhi * cy1 + (from.x + to.x) / 2;
    double cy = sinPhi * cx1 + cosPhi * cy1 + (from.y + to.y) / 2;
    double startAngle = std::atan2((y1 - cy1) / ry, (x1 - cx1) / rx);
    double endAngle = std::atan2((-y1 - cy1) / ry, (-x1 - cx1) / rx);
    double sweepAngle = endAngle - startAngle;
    if (sweep && sweepAngle < 0)
        sweepAngle += 2 * M_PI;
    else if (!sweep && sweepAngle > 0)
        sweepAngle -= 2 * M_PI;
    (void)path.ellipse(cx, cy, rx, ry, phi, startAngle, startAngle + sweepAngle, !sweep);
}

} // namespace

bool appendSVGPathData(CanvasPath& path, std::string_view data)
{
    Scanner scanner(data);
    scanner.skipSpaces();
    Point current, subpathStart, lastControl;
    char previous = 0;
    char command = 0;
    bool first = true;
    while (!scanner.atEnd()) {
        char c = scanner.peek();
        if ((c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z')) {
            command = c;
            scanner.advance();
            scanner.skipSpaces();
        } else if (!command || !scanner.startsNumber() || command == 'Z' || command == 'z') {
            return false;
        }
        // (else: the previous command repeats; after a move, as a line.)
        if (first && command != 'M' && command != 'm')
            return false;
        first = false;
        bool relative = command >= 'a';
        char upper = char(relative ? command - 32 : command);
        Point base = relative ? current : Point{};
        auto read = [&](int count, double* out) {
            for (int i = 0; i < count; ++i) {
                auto n = scanner.number();
                if (!n)
                    return false;
                out[i] = *n;
            }
            return true;
        };
        double v[6];
        switch (upper) {
        case 'Z':
            path.closePath();
            current = subpathStart;
            break;
        case 'M':
            if (!read(2, v))
                return false;
            current = {base.x + v[0], base.y + v[1]};
            path.moveTo(current.x, current.y);
            subpathStart = current;
            // Further pairs are lines.
            command = relative ? 'l' : 'L';
            upper = 'L';
            break;
        case 'L':
            if (!read(2, v))
                return false;
            current = {base.x + v[0], base.y + v[1]};
            path.lineTo(current.x, current.y);
            break;
        case 'H':
            if (!read(1, v))
                return false;
            current.x = (relative ? current.x : 0) + v[0];
            path.lineTo(current.x, current.y);
            break;
        case 'V':
            if (!read(1, v))
                return false;
            current.y = (relative ? current.y : 0) + v[0];
            path.lineTo(current.x, current.y);
            break;
        case 'C':
        case 'S': {
            Point c1;
            if (upper == 'C') {
                if (!read(6, v))
                    return false;
                c1 = {base.x + v[0], base.y + v[1]};
            } else {
                if (!read(4, v))
                    return false;
                bool reflect = previous == 'C' || previous == 'S';
                c1 = reflect ? Point{2 * current.x - lastControl.x, 2 * current.y - lastControl.y} : current;
                v[4] = v[2], v[5] = v[3], v[2] = v[0], v[3] = v[1];
            }
            Point c2{base.x + v[2], base.y + v[3]};
            current = {base.x + v[4], base.y + v[5]};
            path.bezierCurveTo(c1.x, c1.y, c2.x, c2.y, current.x, current.y);
            lastControl = c2;
            break;
        }
        case 'Q':
        case 'T': {
            Point control;
            if (upper == 'Q') {
                if (!read(4, v))
                    return false;
                control = {base.x + v[0], base.y + v[1]};
                current = {base.x + v[2], base.y + v[3]};
            } else {
                if (!read(2, v))
                    return false;
                bool reflect = previous == 'Q' || previous == 'T';
                control = reflect ? Point{2 * current.x - lastControl.x, 2 * current.y - lastControl.y} : current;
                current = {base.x + v[0], base.y + v[1]};
            }
            path.quadraticCurveTo(control.x, control.y, current.x, current.y);
            lastControl = control;
            break;
        }
        case 'A': {
            if (!read(3, v))
                return false;
            auto largeArc = scanner.flag();
            if (!largeArc)
                return false;
            auto sweep = scanner.flag();
            if (!sweep || !read(2, v + 3))
                return false;
            Point to{base.x + v[3], base.y + v[4]};
            appendArc(path, current, v[0], v[1], v[2], *largeArc, *sweep, to);
            current = to;
            break;
        }
        default:
            return false;
        }
        previous = upper;
    }
    return true;
}
