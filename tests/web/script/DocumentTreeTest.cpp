// The document tree scripts build and walk: creating and moving elements, lookups by id,
// attributes (a canvas's size among them), focus, the empty boxes of elements nothing lays out,
// and trees a hostile script makes.
#include "ScriptTestSupport.h"

#include "web/dom/Document.h"

namespace {

using DocumentTreeTest = ScriptTest;

TEST_F(DocumentTreeTest, ElementsMoveBetweenParentsAndAreFoundByIdOnlyInTheDocument)
{
    EXPECT_EQ(run("var r = [], d = document.createElement('div'), p = document.createElement('P'), c = document.createElement('canvas');"
                  "d.id = 'box'; c.setAttribute('id', 'c');"
                  "r.push(document.getElementById('box'), p.tagName, p.localName, d instanceof HTMLElement, c instanceof Element);"
                  "document.body.appendChild(d); d.appendChild(p); p.appendChild(c);"
                  "r.push(document.getElementById('box') === d, document.getElementById('c') === c, c.parentNode === p,"
                  "       p.parentElement === d, d.contains(c), c.contains(d), c.isConnected, document.body.childElementCount);"
                  // Moving keeps one parent; removal takes the subtree out of the document.
                  "d.appendChild(c); r.push(p.childNodes.length, d.lastChild === c, c.previousSibling === p, p.nextSibling === c);"
                  "d.insertBefore(c, p); r.push(d.firstElementChild === c);"
                  "d.remove(); r.push(document.getElementById('c'), c.isConnected, c.parentNode === d);"
                  "r.join()"),
              ",P,p,true,true,true,true,true,true,true,false,true,1,0,true,true,true,true,,false,true");
    EXPECT_EQ(run("var r = [], a = document.createElement('div'), b = document.createElement('div');"
                  "a.appendChild(b);"
                  "for (var f of [() => b.appendChild(a), () => a.appendChild(a), () => a.removeChild(document.body),"
                  "               () => a.insertBefore(document.createElement('p'), document.body), () => a.appendChild({})]) {"
                  "  try { f(); r.push('ran'); } catch (e) { r.push(e.name); } }"
                  "r.push(document.documentElement.parentNode === document, document.body.parentNode === document.documentElement,"
                  "       document.head.localName);"
                  "r.join()"),
              "HierarchyRequestError,HierarchyRequestError,NotFoundError,NotFoundError,TypeError,true,true,head");
}

TEST_F(DocumentTreeTest, AttributesAreKeptAsWrittenAndSizeACanvasByHTMLRules)
{
    EXPECT_EQ(run("var c = document.createElement('canvas'), r = [];"
                  "c.setAttribute('WIDTH', '0x100'); r.push(c.width, c.getAttribute('width'), c.hasAttribute('Width'));"
                  "c.setAttribute('height', '  +12.7px'); r.push(c.height);"
                  "c.setAttribute('width', '-1'); r.push(c.width);"
                  "c.width = 40; r.push(c.getAttribute('width'));"
                  "c.removeAttribute('height'); r.push(c.height, c.getAttributeNames().join('/'));"
                  "try { c.setAttribute('a b', 'x'); } catch (e) { r.push(e.name); }"
                  "r.join()"),
              "0,0x100,true,12,300,40,150,width,InvalidCharacterError");
    // Elements of other namespaces keep their names as written.
    EXPECT_EQ(run("var svg = document.createElementNS('http://www.w3.org/2000/svg', 'image');"
                  "var other = document.createElementNS('urn:x', 'Thing');"
                  "[svg instanceof SVGImageElement, svg.tagName, other.tagName, other instanceof HTMLElement,"
                  " typeof other.style].join()"),
              "true,image,Thing,false,undefined");
}

TEST_F(DocumentTreeTest, FocusGoesOnlyToFocusableConnectedElements)
{
    EXPECT_EQ(run("var r = [], link = document.createElement('a'), p = document.createElement('p'), box = document.createElement('div');"
                  "document.body.append(box); box.append(link, p);"
                  "r.push(document.activeElement === document.body);"
                  "link.focus(); r.push(document.activeElement === document.body);"
                  "link.setAttribute('href', 'x'); link.focus(); r.push(document.activeElement === link);"
                  "p.tabIndex = 1; r.push(p.tabIndex, link.tabIndex); p.focus(); r.push(document.activeElement === p);"
                  "p.blur(); r.push(document.activeElement === document.body);"
                  "link.focus(); box.remove(); r.push(document.activeElement === document.body);"
                  "link.focus(); r.push(document.activeElement === document.body);"
                  "r.join()"),
              "true,true,true,1,0,true,true,true,true");
}

TEST_F(DocumentTreeTest, ElementsAnswerAsUnrenderedOnesWithEmptyBoxesWhereverTheyAre)
{
    // Theme scripts may measure the canvas they made; the answer must never be an exception.
    EXPECT_EQ(run("var r = [], placed = document.createElement('canvas'); placed.width = 300; document.body.appendChild(placed);"
                  "var svg = document.createElementNS('http://www.w3.org/2000/svg', 'image');"
                  "for (var e of [document.createElement('canvas'), placed, document.createElement('div'), new Image(), svg]) {"
                  "  var box = e.getBoundingClientRect(), list = e.getClientRects();"
                  "  r.push([box instanceof DOMRect, box.x, box.y, box.width, box.height, box.bottom, list.length].join(' '));"
                  // Each call gives a rectangle of its own: one a script edited is not handed out again.
                  "  box.width = 5; r.push(e.getBoundingClientRect().width, e.getClientRects() !== list); }"
                  "try { Element.prototype.getBoundingClientRect.call({}); } catch (e) { r.push(e.name); }"
                  "r.join('|')"),
              "true 0 0 0 0 0 0|0|true|true 0 0 0 0 0 0|0|true|true 0 0 0 0 0 0|0|true|true 0 0 0 0 0 0|0|true|"
              "true 0 0 0 0 0 0|0|true|TypeError");
}

TEST_F(DocumentTreeTest, TextNodesAndMarkupMakeChildren)
{
    EXPECT_EQ(run("var d = document.createElement('div'), r = [];"
                  "d.innerHTML = 'a &lt;b&gt; &amp;&#x1F3C1;&nbsp;c';"
                  "var t = d.childNodes[0];"
                  "r.push(d.childNodes.length, t.nodeType, t.nodeName, t.parentNode === d, t.data.length, t.length, d.children.length);"
                  "d.innerHTML = '<p id=x class=\"k\">one<br>two<!-- c --></p><canvas width=\"7\"></canvas>tail';"
                  "var p = d.firstChild, c = d.children[1];"
                  "r.push(d.childNodes.length, p.tagName, p.id, p.childNodes.length, c.width, d.textContent, d.innerHTML);"
                  "d.textContent = 'plain <i>'; r.push(d.childNodes.length, d.innerHTML, d.firstChild instanceof Text);"
                  "try { t.appendChild(p); } catch (e) { r.push(e.name); }"
                  "var n = document.createTextNode('x'); d.append(n, 'y'); r.push(d.textContent, n.nextSibling.data, new Text('z').data);"
                  "r.join('|')"),
              "1|3|#text|true|11|11|0|"
              "3|P|x|3|7|onetwotail|<p id=\"x\" class=\"k\">one<br>two</p><canvas width=\"7\"></canvas>tail|"
              "1|plain &lt;i&gt;|true|HierarchyRequestError|plain <i>xy|y|z");
}

TEST_F(DocumentTreeTest, DeepTreesNeitherCrashNorOutliveTheirDocument)
{
    UIWebView::setExecutionTimeLimit(std::chrono::milliseconds(5000));
    // Deeper than any recursion could go (built from the leaf up, which costs linear time):
    // lookups, style and the tree's release are iterative.
    EXPECT_EQ(run("var leaf = document.createElement('span'), e = leaf;"
                  "for (var i = 0; i < 200000; i++) { var p = document.createElement(i % 2 ? 'span' : 'div'); p.appendChild(e); e = p; }"
                  "document.body.appendChild(e); leaf.id = 'deep'; leaf.style.color = 'inherit';"
                  "[document.getElementById('deep') === leaf, getComputedStyle(leaf).color, document.getElementById('none')].join()"),
              "true,rgb(0, 0, 0),");
    EXPECT_EQ(run("var leaf = document.createElement('div'), e = leaf;"
                  "for (var i = 0; i < 200000; i++) { var p = document.createElement('div'); p.appendChild(e); e = p; }"
                  "e = null; String(leaf.isConnected)"),
              "false");
    EXPECT_EQ(run("String(document.getElementById('deep'))"), "null");
}

TEST(ElementTreeTest, AChainDeeperThanTheStackGoesWithItsRootAndLeavesHeldElementsBehind)
{
    // Built from the leaf up: each insertion then checks a parent without ancestors.
    auto held = std::make_shared<Element>("p");
    auto top = std::make_shared<Element>("div");
    ASSERT_FALSE(Element::insertBefore(top, held, nullptr).isException());
    for (int i = 0; i < 500000; ++i) {
        auto parent = std::make_shared<Element>("div");
        ASSERT_FALSE(Element::insertBefore(parent, top, nullptr).isException());
        top = parent;
    }
    EXPECT_EQ(&held->root(), top.get());
    EXPECT_TRUE(top->contains(*held));
    top.reset();
    EXPECT_EQ(held->parent(), nullptr);
    EXPECT_EQ(&held->root(), held.get());
}

} // namespace
