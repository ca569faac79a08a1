#include "web/dom/InlineLayout.h"

#include "web/dom/ComputedStyle.h"
#include "web/dom/Element.h"
#include "web/text/CanvasTextLayout.h"
#include "web/text/FontFace.h"

#include <algorithm>
#include <cmath>

namespace {

bool isWhiteSpaceOnly(std::string_view text)
{
    return text.find_first_not_of(" \t\n\r\f") == std::string_view::npos;
}

// Line breaks and tabs stand as spaces on a line that never wraps; each is one code unit, so
// offsets into the node stay offsets into the line.
std::string asLineText(std::string text)
{
    std::replace_if(text.begin(), text.end(), [](char c) { return c == '\n' || c == '\t' || c == '\r' || c == '\f'; }, ' ');
    return text;
}

double attributeSize(const Element& element, std::string_view name, double fallback)
{
    const std::string* text = element.attribute(name);
    if (!text)
        return fallback;
    auto value = parseNonNegativeInteger(*text);
    return value ? double(*value) : fallback;
}

bool isReplaced(const Element& element)
{
    const std::string& name = element.localName();
    return element.isHTML() && (name == "canvas" || name == "img" || name == "video");
}

enum class Side { Left, Right, Center };

Side physicalSide(const std::string& textAlign, bool rtl)
{
    if (textAlign == "center" || textAlign == "-webkit-center")
        return Side::Center;
    if (textAlign == "left" || textAlign == "-webkit-left")
        return Side::Left;
    if (textAlign == "right" || textAlign == "-webkit-right")
        return Side::Right;
    const bool end = textAlign == "end";
    return end != rtl ? Side::Right : Side::Left;
}

// The directional controls that do what unicode-bidi asks of an element's text: they open
// before it and close after it. Each is one UTF-16 code unit.
struct BidiControls {
    std::string open, close;
};

BidiControls bidiControls(const ComputedStyle& style)
{
    const bool rtl = style.direction == "rtl";
    const std::string embed = rtl ? "\u202B" : "\u202A", overriding = rtl ? "\u202E" : "\u202D";
    const std::string isolate = rtl ? "\u2067" : "\u2066", pop = "\u202C", popIsolate = "\u2069";
    const std::string& value = style.unicodeBidi;
    if (value == "embed")
        return {embed, pop};
    if (value == "bidi-override")
        return {overriding, pop};
    if (value == "isolate")
        return {isolate, popIsolate};
    if (value == "isolate-override")
        return {isolate + overriding, pop + popIsolate};
    if (value == "plaintext")
        return {"\u2068", popIsolate};
    return {};
}

} // namespace

CanvasTextStyle textStyleOf(const ComputedStyle& style)
{
    CanvasTextStyle text;
    text.font = parseCanvasFont(style.propertyValue("font")).value_or(text.font);
    text.align = CanvasTextAlign::Left;
    text.baseline = CanvasTextBaseline::Alphabetic;
    text.direction = style.direction == "rtl" ? CanvasDirection::Rtl : CanvasDirection::Ltr;
    if (style.letterSpacing != "normal")
        text.letterSpacing = parseCanvasSpacing(style.letterSpacing, text.font).value_or(0);
    if (style.wordSpacing != "normal")
        text.wordSpacing = parseCanvasSpacing(style.wordSpacing, text.font).value_or(0);
    return text;
}

std::optional<double> pixelLength(const std::string& value)
{
    auto length = parseCSSLength(value);
    if (!length || (length->unit != "px" && !(length->unit.empty() && length->value == 0)) || !std::isfinite(length->value))
        return std::nullopt;
    return std::max(0.0, length->value);
}

bool isInlineLevel(const ComputedStyle& style)
{
    if (style.position == "absolute" || style.position == "fixed")
        return false;
    return style.display == "inline" || style.display == "inline-block" || style.display == "inline-flex"
        || style.display == "inline-grid" || style.display == "inline-table" || style.display == "contents";
}

double TextFragment::right() const
{
    return left + (line ? line->width() : 0);
}

void InlineLine::add(const Element& parent, const ComputedStyle& parentStyle, const ComputedStyle& rootStyle,
                     std::size_t first, std::size_t end, unsigned depthLeft)
{
    const auto& children = parent.children();
    end = std::min(end, children.size());
    for (std::size_t i = first; i < end; ++i) {
        const Node& child = *children[i];
        if (child.isText()) {
            addText(static_cast<const Text&>(child), parentStyle);
            continue;
        }
        const auto& element = static_cast<const Element&>(child);
        const ComputedStyle style = computeChildStyle(element, parentStyle, &rootStyle);
        if (style.display == "none")
            continue;
        if (isReplaced(element)) {
            addAtomic(element, style);
        } else if (depthLeft > 0) {
            // Blocks inside an inline element join its line: there is one line per block here.
            const std::size_t firstItem = items_.size();
            const std::size_t open = inlines_.size();
            inlines_.push_back({&element, firstItem, firstItem});
            add(element, style, rootStyle, 0, element.children().size(), depthLeft - 1);
            inlines_[open].endItem = items_.size();
        }
    }
}

void InlineLine::addText(const Text& text, const ComputedStyle& style)
{
    if (isWhiteSpaceOnly(text.data()))
        return;
    const BidiControls controls = bidiControls(style);
    auto line = std::make_shared<const CanvasTextLayout>(controls.open + asLineText(text.data()) + controls.close,
                                                         textStyleOf(style));
    const auto prefix = std::uint32_t(controls.open.size() / 3);  // each control is 3 bytes of UTF-8
    const double textHeight = line->fontAscent() + line->fontDescent();
    double height = style.lineHeightPixels().value_or(0);
    if (style.lineHeightKind == ComputedStyle::LineHeight::Normal) {
        const double gap = line->primaryFace() ? line->primaryFace()->lineGap() * line->style().font.size : 0;
        height = textHeight + std::max(0.0, std::round(gap));
    }
    items_.push_back({&text, line, prefix, line->width(), height, textHeight});
}

void InlineLine::addAtomic(const Element& element, const ComputedStyle& style)
{
    const bool canvas = element.localName() == "canvas";
    const double width = pixelLength(style.width).value_or(attributeSize(element, "width", canvas ? 300 : 0));
    const double height = pixelLength(style.height).value_or(attributeSize(element, "height", canvas ? 150 : 0));
    items_.push_back({nullptr, nullptr, 0, width, height, 0});
}

double InlineLine::naturalWidth() const
{
    double width = 0;
    for (const Item& item : items_)
        width += item.width;
    return width;
}

InlineLine::Placed InlineLine::place(const ComputedStyle& blockStyle, double left, double top, double width,
                                     std::size_t boxIndex) const
{
    Placed placed;
    const bool rtl = blockStyle.direction == "rtl";
    const double natural = naturalWidth();
    // A line too long for its box starts at the box's start edge and overflows at its end.
    double offset = 0;
    const Side side = natural > width ? (rtl ? Side::Right : Side::Left) : physicalSide(blockStyle.textAlign, rtl);
    if (side == Side::Right)
        offset = width - natural;
    else if (side == Side::Center)
        offset = (width - natural) / 2;

    for (const Item& item : items_)
        placed.height = std::max(placed.height, item.height);

    // Items follow each other from the line's start edge.
    std::vector<DOMRectReadOnly> rects(items_.size());
    double x = left + offset;
    for (std::size_t k = 0; k < items_.size(); ++k) {
        const std::size_t i = rtl ? items_.size() - 1 - k : k;
        const Item& item = items_[i];
        if (item.text) {
            const double textTop = top + (placed.height - item.textHeight) / 2;
            placed.fragments.push_back({item.text, item.line, x, textTop, item.textHeight, item.prefix, boxIndex});
            rects[i] = DOMRectReadOnly(x, textTop, item.width, item.textHeight);
        } else {
            rects[i] = DOMRectReadOnly(x, top + placed.height - item.height, item.width, item.height);
        }
        x += item.width;
    }
    // Fragments in tree order, as ranges walk them.
    if (rtl)
        std::reverse(placed.fragments.begin(), placed.fragments.end());

    for (const OpenInline& open : inlines_) {
        double l = INFINITY, t = INFINITY, r = -INFINITY, b = -INFINITY;
        for (std::size_t i = open.firstItem; i < open.endItem; ++i) {
            l = std::min(l, rects[i].left());
            t = std::min(t, rects[i].top());
            r = std::max(r, rects[i].right());
            b = std::max(b, rects[i].bottom());
        }
        placed.inlineBoxes.push_back({open.element, l <= r ? DOMRectReadOnly(l, t, r - l, b - t)
                                                           : DOMRectReadOnly(left + offset, top, 0, 0)});
    }
    return placed;
}
