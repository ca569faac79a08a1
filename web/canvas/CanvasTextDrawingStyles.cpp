#include "web/canvas/CanvasRenderingContext2D.h"

#include <algorithm>
#include <array>

namespace {

struct StretchKeyword {
    std::string_view name;
    double percentage;
};
constexpr std::array<StretchKeyword, 9> kStretches = {{
    {"ultra-condensed", 50}, {"extra-condensed", 62.5}, {"condensed", 75}, {"semi-condensed", 87.5}, {"normal", 100},
    {"semi-expanded", 112.5}, {"expanded", 125}, {"extra-expanded", 150}, {"ultra-expanded", 200},
}};
constexpr std::array<std::string_view, 7> kVariantCaps = {
    "normal", "small-caps", "all-small-caps", "petite-caps", "all-petite-caps", "unicase", "titling-caps"};
constexpr std::array<std::string_view, 4> kTextRenderings = {"auto", "optimizeSpeed", "optimizeLegibility", "geometricPrecision"};

// What relative sizes in a font refer to: the canvas element's computed font while it is in a
// document, else the default.
CanvasFontBasis fontBasisOf(const HTMLCanvasElement& canvas)
{
    CanvasFontBasis basis;
    if (auto element = canvas.fontBasis()) {
        basis.fontSize = element->fontSize;
        basis.lineHeight = element->lineHeight;
        basis.rootFontSize = element->rootFontSize;
        basis.rootLineHeight = element->rootLineHeight;
        basis.families = element->families;
    }
    return basis;
}

// Spacing in units of the font ("1em", "0.5ch") follows the font as it changes.
void resolveSpacing(CanvasTextDrawingState& text)
{
    for (auto [written, pixels] : {std::pair{&text.letterSpacing, &text.style.letterSpacing},
                                   std::pair{&text.wordSpacing, &text.style.wordSpacing}}) {
        if (!written->ends_with("px"))
            *pixels = parseCanvasSpacing(*written, text.style.font).value_or(*pixels);
    }
}

} // namespace

std::shared_ptr<CanvasTextDrawingState> CanvasRenderingContext2D::mutableText()
{
    // Copy on write: saved states and the shared initial state keep theirs.
    std::shared_ptr<CanvasTextDrawingState> text;
    if (state_.text.use_count() == 1)
        text = std::const_pointer_cast<CanvasTextDrawingState>(state_.text);
    else
        text = std::make_shared<CanvasTextDrawingState>(*state_.text);
    state_.text = text;
    return text;
}

std::string CanvasRenderingContext2D::font() const { return state_.text->style.font.serialization(); }

void CanvasRenderingContext2D::setFont(std::string_view font)
{
    auto parsed = parseCanvasFont(font, fontBasisOf(canvas_));
    if (!parsed)
        return;
    if (*parsed == state_.text->style.font)
        return;
    // The font shorthand sets the stretch and capitals the separate attributes report.
    auto text = mutableText();
    text->fontVariantCaps = parsed->variant == CanvasFontVariant::SmallCaps ? "small-caps" : "normal";
    text->fontStretch = "normal";
    for (const auto& keyword : kStretches) {
        if (keyword.percentage == parsed->stretch)
            text->fontStretch = std::string(keyword.name);
    }
    text->style.font = std::move(*parsed);
    resolveSpacing(*text);
}

std::string_view CanvasRenderingContext2D::textAlign() const { return toString(state_.text->style.align); }

void CanvasRenderingContext2D::setTextAlign(std::string_view align)
{
    auto value = parseCanvasTextAlign(align);
    if (value && *value != state_.text->style.align)
        mutableText()->style.align = *value;
}

std::string_view CanvasRenderingContext2D::textBaseline() const { return toString(state_.text->style.baseline); }

void CanvasRenderingContext2D::setTextBaseline(std::string_view baseline)
{
    auto value = parseCanvasTextBaseline(baseline);
    if (value && *value != state_.text->style.baseline)
        mutableText()->style.baseline = *value;
}

std::string_view CanvasRenderingContext2D::direction() const { return toString(state_.text->style.direction); }

void CanvasRenderingContext2D::setDirection(std::string_view direction)
{
    auto value = parseCanvasDirection(direction);
    if (value && *value != state_.text->style.direction)
        mutableText()->style.direction = *value;
}

std::string_view CanvasRenderingContext2D::fontKerning() const { return toString(state_.text->style.kerning); }

void CanvasRenderingContext2D::setFontKerning(std::string_view kerning)
{
    auto value = parseCanvasFontKerning(kerning);
    if (value && *value != state_.text->style.kerning)
        mutableText()->style.kerning = *value;
}

std::string CanvasRenderingContext2D::letterSpacing() const { return state_.text->letterSpacing; }

void CanvasRenderingContext2D::setLetterSpacing(std::string_view spacing)
{
    auto value = parseCanvasSpacing(spacing, state_.text->style.font);
    if (!value)
        return;
    auto text = mutableText();
    text->style.letterSpacing = *value;
    text->letterSpacing = serializeCanvasSpacing(spacing);
}

std::string CanvasRenderingContext2D::wordSpacing() const { return state_.text->wordSpacing; }

void CanvasRenderingContext2D::setWordSpacing(std::string_view spacing)
{
    auto value = parseCanvasSpacing(spacing, state_.text->style.font);
    if (!value)
        return;
    auto text = mutableText();
    text->style.wordSpacing = *value;
    text->wordSpacing = serializeCanvasSpacing(spacing);
}

std::string_view CanvasRenderingContext2D::fontStretch() const { return state_.text->fontStretch; }

void CanvasRenderingContext2D::setFontStretch(std::string_view stretch)
{
    for (const auto& keyword : kStretches) {
        if (keyword.name == stretch) {
            auto text = mutableText();
            text->fontStretch = std::string(keyword.name);
            text->style.font.stretch = keyword.percentage;
            resolveSpacing(*text);
            return;
        }
    }
}

std::string_view CanvasRenderingContext2D::fontVariantCaps() const { return state_.text->fontVariantCaps; }

void CanvasRenderingContext2D::setFontVariantCaps(std::string_view caps)
{
    if (std::find(kVariantCaps.begin(), kVariantCaps.end(), caps) == kVariantCaps.end())
        return;
    auto text = mutableText();
    text->fontVariantCaps = std::string(caps);
    text->style.font.variant = caps == "small-caps" ? CanvasFontVariant::SmallCaps : CanvasFontVariant::Normal;
}

std::string_view CanvasRenderingContext2D::textRendering() const { return state_.text->textRendering; }

void CanvasRenderingContext2D::setLang(std::string_view lang)
{
    if (lang != state_.text->lang)
        mutableText()->lang = std::string(lang);
}

void CanvasRenderingContext2D::setTextRendering(std::string_view rendering)
{
    if (std::find(kTextRenderings.begin(), kTextRenderings.end(), rendering) != kTextRenderings.end())
        mutableText()->textRendering = std::string(rendering);
}
