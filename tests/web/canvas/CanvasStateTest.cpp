#include "CanvasTestSupport.h"

#include "web/canvas/CanvasGradient.h"

#include <cmath>
#include <vector>

namespace {

std::string fillText(const CanvasStyle& style) { return std::get<std::string>(style); }

TEST(CanvasState, StartsWithTheStandardsDefaults)
{
    TestCanvas canvas(10, 10);
    EXPECT_EQ(fillText(canvas->fillStyle()), "#000000");
    EXPECT_EQ(fillText(canvas->strokeStyle()), "#000000");
    EXPECT_EQ(canvas->globalAlpha(), 1);
    EXPECT_EQ(canvas->globalCompositeOperation(), "source-over");
    EXPECT_EQ(canvas->lineWidth(), 1);
    EXPECT_EQ(canvas->lineCap(), "butt");
    EXPECT_EQ(canvas->lineJoin(), "miter");
    EXPECT_EQ(canvas->miterLimit(), 10);
    EXPECT_TRUE(canvas->getLineDash().empty());
    EXPECT_EQ(canvas->shadowColor(), "rgba(0, 0, 0, 0)");
    EXPECT_EQ(canvas->shadowBlur(), 0);
    EXPECT_EQ(canvas->font(), "10px sans-serif");
    EXPECT_EQ(canvas->textAlign(), "start");
    EXPECT_EQ(canvas->textBaseline(), "alphabetic");
    EXPECT_EQ(canvas->direction(), "inherit");
    EXPECT_EQ(canvas->letterSpacing(), "0px");
    EXPECT_TRUE(canvas->imageSmoothingEnabled());
    EXPECT_EQ(canvas->imageSmoothingQuality(), "low");
    EXPECT_EQ(canvas->filter(), "none");
    EXPECT_TRUE(canvas->getTransform().isIdentity());
}

TEST(CanvasState, SettersIgnoreWhatTheyCannotTake)
{
    TestCanvas canvas(10, 10);
    canvas->setFillStyle(std::string("red"));
    canvas->setFillStyle(std::string("not a colour"));
    EXPECT_EQ(fillText(canvas->fillStyle()), "#ff0000");
    canvas->setGlobalAlpha(0.5);
    for (double bad : {-0.1, 1.1, double(NAN), double(INFINITY)})
        canvas->setGlobalAlpha(bad);
    EXPECT_EQ(canvas->globalAlpha(), 0.5);
    canvas->setGlobalCompositeOperation("xor");
    for (std::string_view bad : {std::string_view("XOR"), std::string_view("xor\0", 4), std::string_view("over"), std::string_view("")})
        canvas->setGlobalCompositeOperation(bad);
    EXPECT_EQ(canvas->globalCompositeOperation(), "xor");
    canvas->setLineWidth(3);
    for (double bad : {0.0, -1.0, double(NAN), double(INFINITY)})
        canvas->setLineWidth(bad);
    EXPECT_EQ(canvas->lineWidth(), 3);
    canvas->setMiterLimit(0);
    canvas->setShadowBlur(-1);
    canvas->setShadowOffsetX(NAN);
    EXPECT_EQ(canvas->miterLimit(), 10);
    EXPECT_EQ(canvas->shadowBlur(), 0);
    EXPECT_EQ(canvas->shadowOffsetX(), 0);
    canvas->setLineCap("Round");
    canvas->setLineJoin("bevel");
    EXPECT_EQ(canvas->lineCap(), "butt");
    EXPECT_EQ(canvas->lineJoin(), "bevel");
    canvas->setFont("bold 12px serif");
    canvas->setFont("12px");
    EXPECT_EQ(canvas->font(), "bold 12px serif");
    canvas->setTextAlign("middle");
    canvas->setTextAlign("center");
    EXPECT_EQ(canvas->textAlign(), "center");
}

TEST(CanvasState, LineDashesRepeatOddListsAndRejectBadValues)
{
    TestCanvas canvas(10, 10);
    std::vector<double> odd{1, 2, 3};
    canvas->setLineDash(odd);
    EXPECT_EQ(canvas->getLineDash(), (std::vector<double>{1, 2, 3, 1, 2, 3}));
    for (std::vector<double> bad : {std::vector<double>{1, -1}, {1, NAN}, {INFINITY, 2}})
        canvas->setLineDash(bad);
    EXPECT_EQ(canvas->getLineDash().size(), 6u);
    canvas->setLineDash(std::vector<double>{});
    EXPECT_TRUE(canvas->getLineDash().empty());
}

TEST(CanvasState, SaveAndRestoreCoverEveryPartIncludingTheClip)
{
    TestCanvas canvas(20, 10);
    canvas->save();
    canvas->setFillStyle(std::string("red"));
    canvas->translate(5, 0);
    canvas->setLineWidth(4);
    std::vector<double> dash{2, 2};
    canvas->setLineDash(dash);
    canvas->setFont("20px serif");
    canvas->rect(0, 0, 5, 10);
    canvas->clip();
    EXPECT_FALSE(canvas->restore().isException());
    EXPECT_EQ(fillText(canvas->fillStyle()), "#000000");
    EXPECT_TRUE(canvas->getTransform().isIdentity());
    EXPECT_EQ(canvas->lineWidth(), 1);
    EXPECT_TRUE(canvas->getLineDash().empty());
    EXPECT_EQ(canvas->font(), "10px sans-serif");
    // The clip went with the state; the path did not.
    canvas->fillRect(0, 0, 20, 10);
    EXPECT_EQ(pixelAt(canvas, 15, 5), kBlack);
    canvas->fill();
    // Unbalanced restores are harmless.
    EXPECT_FALSE(canvas->restore().isException());
    EXPECT_FALSE(canvas->restore().isException());
    EXPECT_EQ(canvas->lineWidth(), 1);
}

TEST(CanvasState, ResetAndResizingClearEverything)
{
    TestCanvas canvas(10, 10);
    canvas->setFillStyle(std::string("red"));
    canvas->fillRect(0, 0, 10, 10);
    canvas->save();
    canvas->scale(2, 2);
    canvas->rect(0, 0, 1, 1);
    canvas.element->setWidth(10); // the same width still resets
    EXPECT_EQ(pixelAt(canvas, 5, 5), kTransparent);
    EXPECT_EQ(fillText(canvas->fillStyle()), "#000000");
    EXPECT_TRUE(canvas->getTransform().isIdentity());
    canvas->fill(); // the old path is gone
    EXPECT_EQ(pixelAt(canvas, 0, 0), kTransparent);
    EXPECT_FALSE(canvas->restore().isException()); // and so is the saved state
    EXPECT_TRUE(canvas->getTransform().isIdentity());

    canvas->setFillStyle(std::string("blue"));
    canvas->fillRect(0, 0, 10, 10);
    canvas->setGlobalAlpha(0.2);
    canvas->reset();
    EXPECT_EQ(pixelAt(canvas, 5, 5), kTransparent);
    EXPECT_EQ(canvas->globalAlpha(), 1);
}

TEST(CanvasState, TransformsComposeAndIgnoreNonFiniteArguments)
{
    TestCanvas canvas(10, 10);
    canvas->translate(10, 20);
    canvas->scale(2, 3);
    canvas->rotate(NAN);
    canvas->translate(INFINITY, 0);
    DOMMatrix m = canvas->getTransform();
    EXPECT_EQ(m.a(), 2);
    EXPECT_EQ(m.d(), 3);
    EXPECT_EQ(m.e(), 10);
    EXPECT_EQ(m.f(), 20);
    canvas->transform(1, 0, 0, 1, 1, 1);
    EXPECT_EQ(canvas->getTransform().e(), 12);
    canvas->setTransform(1, 2, 3, 4, 5, 6);
    EXPECT_EQ(canvas->getTransform().c(), 3);
    DOMMatrix2DInit init;
    init.m11 = 2;
    init.a = 3;
    EXPECT_EQ(canvas->setTransform(init).exception().name, "TypeError");
    EXPECT_EQ(canvas->getTransform().c(), 3);
    EXPECT_FALSE(canvas->setTransform(DOMMatrix2DInit{}).isException());
    EXPECT_TRUE(canvas->getTransform().isIdentity());
}

TEST(CanvasState, StylesHoldGradientsAndPatternsAsTheSameObjects)
{
    TestCanvas canvas(10, 10);
    auto gradient = canvas->createLinearGradient(0, 0, 10, 0).releaseValue();
    canvas->setStrokeStyle(gradient);
    EXPECT_EQ(std::get<std::shared_ptr<CanvasGradient>>(canvas->strokeStyle()), gradient);
    canvas->setStrokeStyle(std::string("junk"));
    EXPECT_EQ(std::get<std::shared_ptr<CanvasGradient>>(canvas->strokeStyle()), gradient);
    EXPECT_EQ(canvas->createLinearGradient(0, NAN, 1, 1).exception().name, "TypeError");
    EXPECT_EQ(canvas->createRadialGradient(0, 0, -1, 1, 1, 1).exception().name, "IndexSizeError");
    EXPECT_EQ(gradient->addColorStop(1.5, "red").exception().name, "IndexSizeError");
    EXPECT_EQ(gradient->addColorStop(NAN, "red").exception().name, "TypeError");
    EXPECT_EQ(gradient->addColorStop(0.5, "nope").exception().name, "SyntaxError");
}

} // namespace
