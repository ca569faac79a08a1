// Where the document puts its elements and text: boxes of blocks and absolutely positioned
// elements, the rectangles a range of text covers, the caret position under a point, and
// ranges and the selection as scripts edit them.
#include "ScriptTestSupport.h"

namespace {

using DocumentLayoutTest = ScriptTest;

// Defines place(tag, text, style): a new element with that text and inline style in the body.
const std::string kPlace =
    "function place(tag, text, style) {"
    "  var el = document.createElement(tag); el.innerHTML = text;"
    "  for (var k in style) el.style[k] = style[k];"
    "  document.body.appendChild(el); return el; }"
    "var ctx = document.createElement('canvas').getContext('2d'); ctx.font = '50px sans-serif';"
    "function near(a, b) { return Math.abs(a - b) < 0.01; }";

TEST_F(DocumentLayoutTest, BlocksStackInTheBodyAndAbsoluteBoxesShrinkToTheirText)
{
    EXPECT_EQ(run(kPlace
                  + "var a = place('div', 'first', {font: '50px sans-serif'}), b = place('div', 'second', {font: '20px serif'});"
                    "var p = place('p', 'UNAVAILABLE', {font: '50px sans-serif', position: 'absolute', margin: '0px'});"
                    "var ra = a.getBoundingClientRect(), rb = b.getBoundingClientRect(), rp = p.getBoundingClientRect();"
                    // Blocks fill the body's width inside its 8px margin, one below the other.
                    "var r = [ra.x, ra.width, ra.y, ra.height > 50, near(rb.y, ra.bottom), rb.height < ra.height,"
                    // The positioned box is as wide as its text, where the flow would have put it.
                    "         rp.x, near(rp.width, ctx.measureText('UNAVAILABLE').width), near(rp.y, rb.bottom)];"
                    // Padding widens a box; a box without layout is empty.
                    "b.style.padding = '10px'; r.push(b.getBoundingClientRect().width, b.getBoundingClientRect().x);"
                    "b.style.display = 'none'; r.push(b.getBoundingClientRect().width, b.getClientRects().length,"
                    "  near(p.getBoundingClientRect().y, ra.bottom));"
                    "a.remove(); r.push(a.getBoundingClientRect().height, document.createElement('div').getBoundingClientRect().x);"
                    "r.join()"),
              "8,784,8,true,true,true,8,true,true,784,8,0,0,true,0,0");
}

TEST_F(DocumentLayoutTest, RangeRectsAreTheCanvasSelectionRectsPlacedByTextAlign)
{
    // Text aligned left, right and centre in a div: the whole text's rectangle is as wide as
    // measureText says, and a part of it is where the canvas puts that part's selection.
    EXPECT_EQ(run(kPlace
                  + "var r = [], tm = ctx.measureText('bidiמתמטיקה');"
                    "for (var [align, share] of [['left', 0], ['right', 1], ['center', 0.5]]) {"
                    "  var el = place('div', 'bidiמתמטיקה', {font: '50px sans-serif', textAlign: align});"
                    "  var range = document.createRange(), text = el.firstChild;"
                    "  range.setStart(text, 0); range.setEnd(text, text.length);"
                    "  var whole = range.getBoundingClientRect();"
                    "  r.push(near(whole.x, 8 + (784 - tm.width) * share), near(whole.width, tm.width));"
                    "  range.setStart(text, 2); range.setEnd(text, 7);"
                    "  var rects = range.getClientRects(), expected = tm.getSelectionRects(2, 7);"
                    "  r.push(rects.length === expected.length && Array.from(rects).every((rect, i) =>"
                    "    near(rect.x - whole.x, expected[i].x) && near(rect.width, expected[i].width)"
                    "    && near(rect.height, expected[i].height)));"
                    "  el.remove(); }"
                    "r.join()"),
              "true,true,true,true,true,true,true,true,true");
    // Right to left, start is the right edge; letter spacing widens the text as on a canvas.
    EXPECT_EQ(run(kPlace
                  + "ctx.letterSpacing = '10px';"
                    "var el = place('div', 'abc', {font: '50px sans-serif', direction: 'rtl', letterSpacing: '10px'});"
                    "var range = document.createRange(); range.selectNodeContents(el.firstChild);"
                    "var rect = range.getClientRects()[0], tm = ctx.measureText('abc');"
                    "[near(rect.right, 792), near(rect.width, tm.width), near(rect.height, tm.fontBoundingBoxAscent + "
                    "tm.fontBoundingBoxDescent)].join()"),
              "true,true,true");
}

TEST_F(DocumentLayoutTest, CaretPositionFromPointAgreesWithTheCanvasIndexFromOffset)
{
    EXPECT_EQ(run(kPlace
                  + "var r = [], text = '）（ああ）（';"
                    "for (var dir of ['ltr', 'rtl']) {"
                    "  ctx.direction = dir; var tm = ctx.measureText(text);"
                    "  var p = place('p', text, {font: '50px sans-serif', direction: dir, position: 'absolute', margin: '0'});"
                    "  var box = p.getBoundingClientRect(), y = box.y + box.height / 2, same = true;"
                    "  for (var x = 0; x <= tm.width; x += 7) {"
                    "    var position = document.caretPositionFromPoint(box.x + x, y);"
                    "    var offset = dir == 'rtl' ? x - tm.width : x;"
                    "    same = same && position.offsetNode === p.firstChild && position.offset === tm.getIndexFromOffset(offset);"
                    "  }"
                    "  r.push(same); p.remove(); }"
                    // Past the text's ends on its line: the nearest end.
                    "var p = place('p', 'abc', {font: '50px sans-serif', position: 'absolute', margin: '0'}), b = p.getBoundingClientRect();"
                    "r.push(document.caretPositionFromPoint(b.right + 100, b.y + 5).offset, document.caretPositionFromPoint(1, b.y + 5).offset);"
                    // Outside the viewport there is nothing; a box without text is its own position.
                    "r.push(document.caretPositionFromPoint(-1, 10), document.caretPositionFromPoint(10, 1e9),"
                    "       document.caretPositionFromPoint(NaN, 0));"
                    "var empty = place('div', '', {position: 'absolute', width: '50px', height: '50px', margin: '0'});"
                    "var e = empty.getBoundingClientRect(), c = document.caretPositionFromPoint(e.x + 10, e.y + 10);"
                    "r.push(c.offsetNode === empty, c.offset);"
                    "r.join()"),
              "true,true,3,0,,,,true,0");
}

TEST_F(DocumentLayoutTest, UnicodeBidiOverridesTheOrderOfAnElementsText)
{
    // bidi-override lays 'abc' out right to left in an rtl element, as the canvas does with
    // the override controls around it; offsets stay the node's own.
    EXPECT_EQ(run(kPlace
                  + "ctx.direction = 'rtl'; var tm = ctx.measureText('\\u202Eabc\\u202C');"
                    "var p = place('p', 'abc', {font: '50px sans-serif', direction: 'rtl', unicodeBidi: 'bidi-override',"
                    "  position: 'absolute', margin: '0'});"
                    "var box = p.getBoundingClientRect(), y = box.y + box.height / 2, range = document.createRange();"
                    "range.setStart(p.firstChild, 0); range.setEnd(p.firstChild, 1);"
                    "var a = range.getClientRects()[0], expected = tm.getSelectionRects(1, 2)[0];"
                    "[getComputedStyle(p).unicodeBidi, near(box.width, tm.width), near(a.x - box.x, expected.x + tm.width),"
                    " near(a.right, box.right), document.caretPositionFromPoint(box.x + 1, y).offset,"
                    " document.caretPositionFromPoint(box.right - 1, y).offset].join()"),
              "bidi-override,true,true,true,3,0");
}

TEST_F(DocumentLayoutTest, RangesKeepTheirEndsInOrderAndTheSelectionHoldsOneRange)
{
    EXPECT_EQ(run(kPlace
                  + "var r = [], el = place('div', 'hello world', {}), text = el.firstChild, range = document.createRange();"
                    "r.push(range.startContainer === document, range.collapsed);"
                    "range.setStart(text, 3); range.setEnd(text, 8); r.push(range.toString());"
                    // An end before the start collapses the range there; a start after the end too.
                    "range.setEnd(text, 1); r.push(range.startOffset, range.collapsed);"
                    "range.setEnd(text, 5); range.setStart(el, 1); r.push(range.startContainer === el, range.endContainer === el);"
                    "try { range.setStart(text, 12); } catch (e) { r.push(e.name); }"
                    "try { range.setStart({}, 0); } catch (e) { r.push(e.name); }"
                    // Ranges over several nodes read their text in tree order.
                    "var more = place('p', 'again', {}); range.setStart(text, 6); range.setEnd(more.firstChild, 3);"
                    "r.push(range.toString(), range.commonAncestorContainer === document.body, range.getClientRects().length);"
                    "var sel = window.getSelection(); r.push(sel === document.getSelection(), sel.rangeCount, sel.type);"
                    "sel.addRange(range); sel.addRange(document.createRange());"
                    "r.push(sel.rangeCount, sel.getRangeAt(0) === range, sel.toString(), sel.anchorNode === text, sel.focusOffset);"
                    "sel.removeAllRanges(); try { sel.getRangeAt(0); } catch (e) { r.push(e.name); }"
                    "r.join()"),
              "true,true,lo wo,1,true,true,true,IndexSizeError,TypeError,worldaga,true,2,true,0,None,1,true,worldaga,true,3,"
              "IndexSizeError");
}

TEST_F(DocumentLayoutTest, DeepTreesAndOddStylesLayOutWithoutHarm)
{
    // Nesting deeper than layout goes leaves the rest without boxes; strange values count as none.
    EXPECT_EQ(run(kPlace
                  + "var at = document.createElement('div'), top = at; at.textContent = 'deep';"
                    "for (var i = 0; i < 20000; i++) { var d = document.createElement(i % 2 ? 'span' : 'div'); d.appendChild(top); top = d; }"
                    "var outer = place('div', '', {}); outer.appendChild(top);"
                    "var range = document.createRange(); range.selectNodeContents(at.firstChild);"
                    "var r = [at.getBoundingClientRect().width, range.getClientRects().length, outer.getBoundingClientRect().width];"
                    "var odd = place('div', 'x\\ny', {font: '1e30px sans-serif', letterSpacing: '-1e300px', padding: '1e308px'});"
                    "r.push(typeof odd.getBoundingClientRect().width, typeof document.caretPositionFromPoint(10, 10));"
                    "r.join()"),
              "0,0,784,number,object") << lastError();
}

} // namespace
