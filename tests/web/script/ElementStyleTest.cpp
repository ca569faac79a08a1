// Inline style and what it computes to: element.style and the style attribute kept in step,
// inheritance of colour and font through the tree, getComputedStyle, and the basis a canvas
// takes its currentColor and relative font sizes from.
#include "ScriptTestSupport.h"

#include "web/canvas/HTMLCanvasElement.h"
#include "web/dom/ComputedStyle.h"
#include "web/dom/Document.h"
#include "web/dom/InlineStyle.h"

namespace {

using ElementStyleTest = ScriptTest;

TEST(InlineStyleTest, KeepsValidDeclarationsOfKnownPropertiesAndWritesThemBack)
{
    InlineStyle style;
    style.parse("COLOR: #0F0 !important; bogus: 1; font-size: -3px; width: 100px; width: 50%;; line-height: 1.5;"
                "color: rgba(255, 0, 0, 0.5) junk; font-family: 'Foo Bar', serif");
    EXPECT_EQ(style.cssText(), "color: rgb(0, 255, 0); width: 50%; line-height: 1.5; font-family: 'Foo Bar', serif;");
    EXPECT_EQ(style.propertyValue("Color"), "rgb(0, 255, 0)");
    EXPECT_EQ(style.propertyValue("font"), ""); // not every longhand is set

    // The shorthand sets every longhand and comes back together; a later longhand edits it.
    EXPECT_TRUE(style.setProperty("font", "italic bold 30px/40px Arial, sans-serif"));
    EXPECT_EQ(style.propertyValue("font"), "italic bold 30px / 40px Arial, sans-serif");
    EXPECT_EQ(style.propertyValue("font-weight"), "bold");
    EXPECT_TRUE(style.setProperty("font-size", "2em"));
    EXPECT_EQ(style.propertyValue("font"), "italic bold 2em / 40px Arial, sans-serif");
    EXPECT_FALSE(style.setProperty("font", "30px")); // no family: invalid, nothing changes
    EXPECT_FALSE(style.setProperty("font", "bold bold 30px serif"));
    EXPECT_EQ(style.removeProperty("font"), "italic bold 2em / 40px Arial, sans-serif");
    EXPECT_EQ(style.propertyValue("font-size"), "");
    EXPECT_TRUE(style.setProperty("font", "inherit"));
    EXPECT_EQ(style.propertyValue("font"), "inherit");

    // Hostile text: unbalanced quotes and brackets, no colon, huge numbers.
    style.parse("color: rgb(1, 2; font-family: 'open; width: 1e999px; : ; height:");
    EXPECT_EQ(style.cssText(), "");
}

TEST_F(ElementStyleTest, StylePropertiesAndTheStyleAttributeFollowEachOther)
{
    EXPECT_EQ(run("var e = document.createElement('div'), r = [];"
                  "e.style.color = '#0f0'; e.style.fontSize = '12PX'; e.style['line-height'] = 'normal';"
                  "r.push(e.getAttribute('style'), e.style.length, e.style.item(1));"
                  "e.setAttribute('style', 'font: 10px serif; color: nonsense');"
                  "r.push(e.style.color === '', e.style.font, e.style.cssText);"
                  "e.style.setProperty('color', 'red', 'important'); e.style.setProperty('color', 'blue', 'bogus');"
                  "r.push(e.style.getPropertyValue('color'), e.style.removeProperty('color'), e.style.color === '');"
                  "e.style.cssText = 'width: 5px'; r.push(e.getAttribute('style'));"
                  "e.removeAttribute('style'); r.push(e.style.width === '', e.style === e.style);"
                  "r.join('|')"),
              "color: rgb(0, 255, 0); font-size: 12px; line-height: normal;|3|font-size|true|10px serif|font: 10px serif;|"
              "rgb(255, 0, 0)|rgb(255, 0, 0)|true|width: 5px;|true|true");
}

TEST_F(ElementStyleTest, ColourAndFontAreInheritedAndResolvedThroughTheTree)
{
    EXPECT_EQ(run("var outer = document.createElement('div'), inner = document.createElement('span');"
                  "document.body.appendChild(outer); outer.appendChild(inner);"
                  "document.documentElement.style.fontSize = '20px';"
                  "outer.setAttribute('style', 'color: hsl(120, 100%, 25%); font-size: 150%; line-height: 2; font-family: Foo');"
                  "inner.setAttribute('style', 'font-size: 2rem; width: 3em; color: currentcolor');"
                  "var s = getComputedStyle(inner), o = getComputedStyle(outer), r = [];"
                  "r.push(s.color, s.fontSize, s.lineHeight, s.width, s.fontFamily, o.fontSize, o.getPropertyValue('line-height'));"
                  "outer.style.lineHeight = '10px'; r.push(s.lineHeight, s.font);"
                  "inner.style.fontSize = 'larger'; r.push(s.fontSize);"
                  "inner.style.color = 'initial'; r.push(s.color);"
                  // Live, read-only, and empty out of the document.
                  "try { s.color = 'red'; } catch (e) { r.push(e.name); }"
                  "outer.remove(); r.push(JSON.stringify(s.color), s.length);"
                  "r.join('|')"),
              "rgb(0, 128, 0)|40px|80px|120px|Foo|30px|60px|10px|40px / 10px Foo|36px|rgb(0, 0, 0)|"
              "NoModificationAllowedError|\"\"|0");
    // A canvas's computed size is its bitmap's unless the style says otherwise.
    EXPECT_EQ(run("var c = document.createElement('canvas'); c.width = 70; document.body.appendChild(c);"
                  "var s = getComputedStyle(c, null), r = [s.width, s.height];"
                  "c.style.width = '100px'; r.push(s.getPropertyValue('width'), s.display);"
                  "try { getComputedStyle({}); } catch (e) { r.push(e.name); }"
                  "r.join()"),
              "70px,150px,100px,inline,TypeError");
}

TEST(ElementFontBasisTest, CanvasesTakeCurrentColorAndFontFromTheirDocumentOnly)
{
    Document document;
    auto canvas = HTMLCanvasElement::create();
    canvas->setAttribute("style", "color: #00ff00; font-size: 30px; line-height: 40px; font-family: \"A B\", serif");
    EXPECT_EQ(canvas->currentColor(), (CSSColor{0, 0, 0, 255}));
    EXPECT_FALSE(canvas->fontBasis());

    ASSERT_FALSE(Element::insertBefore(document.body(), canvas, nullptr).isException());
    document.documentElement()->setAttribute("style", "font-size: 12px");
    EXPECT_EQ(canvas->currentColor(), (CSSColor{0, 255, 0, 255}));
    auto basis = canvas->fontBasis();
    ASSERT_TRUE(basis);
    EXPECT_EQ(basis->fontSize, 30);
    EXPECT_EQ(basis->lineHeight, 40);
    EXPECT_EQ(basis->rootFontSize, 12);
    EXPECT_FALSE(basis->rootLineHeight);
    EXPECT_EQ(basis->families, (std::vector<std::string>{"A B", "serif"}));

    canvas->setStyleProperty("line-height", "normal");
    canvas->setStyleProperty("color", "inherit");
    document.body()->setStyleProperty("color", "rgba(0, 0, 255, 0.5)");
    EXPECT_FALSE(canvas->fontBasis()->lineHeight);
    EXPECT_EQ(canvas->currentColor(), (CSSColor{0, 0, 255, 128}));
}

} // namespace
