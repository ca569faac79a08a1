// What the bindings owe WebIDL: interface objects and prototypes shaped as browsers shape them,
// argument handling, conversions, exceptions and wrapper identity.
#include "ScriptTestSupport.h"

namespace {

using BindingsTest = ScriptTest;

TEST_F(BindingsTest, InterfaceObjectsAndPrototypesHaveTheBrowsersShape)
{
    EXPECT_EQ(run("var d = Object.getOwnPropertyDescriptor(window, 'CanvasRenderingContext2D');"
                  "var p = Object.getOwnPropertyDescriptor(CanvasRenderingContext2D, 'prototype');"
                  "[typeof CanvasRenderingContext2D, d.writable, d.enumerable, d.configurable,"
                  " p.writable, p.enumerable, p.configurable, CanvasRenderingContext2D.name, CanvasRenderingContext2D.length,"
                  " CanvasRenderingContext2D.prototype.constructor === CanvasRenderingContext2D,"
                  " Object.prototype.toString.call(CanvasRenderingContext2D.prototype)].join()"),
              "function,true,false,true,false,false,false,CanvasRenderingContext2D,0,true,[object CanvasRenderingContext2D]");
    // Operations are enumerable data properties with their WebIDL length; attributes are accessors.
    EXPECT_EQ(run("var P = CanvasRenderingContext2D.prototype;"
                  "var op = Object.getOwnPropertyDescriptor(P, 'fillRect');"
                  "var at = Object.getOwnPropertyDescriptor(P, 'lineWidth');"
                  "[op.writable, op.enumerable, op.configurable, P.fillRect.length, P.fillRect.name,"
                  " typeof at.get, typeof at.set, at.enumerable, at.set.length, at.get.name, P.hasOwnProperty('arc')].join()"),
              "true,true,true,4,fillRect,function,function,true,1,get lineWidth,true");
    EXPECT_EQ(run("[Object.getPrototypeOf(DOMMatrix) === DOMMatrixReadOnly,"
                  " Object.getPrototypeOf(DOMMatrix.prototype) === DOMMatrixReadOnly.prototype,"
                  " Object.getPrototypeOf(HTMLCanvasElement.prototype) === HTMLElement.prototype,"
                  " Object.getPrototypeOf(DOMException.prototype) === Error.prototype,"
                  " Object.getPrototypeOf(Path2D) === Function.prototype].join()"),
              "true,true,true,true,true");
}

TEST_F(BindingsTest, ConstructorsAndIllegalConstructors)
{
    EXPECT_EQ(run("var r = [];"
                  "for (var I of [CanvasRenderingContext2D, HTMLCanvasElement, CanvasGradient, CanvasPattern, TextMetrics]) {"
                  "  try { new I(); r.push('made'); } catch (e) { r.push(e instanceof TypeError && e.message); } }"
                  "try { Path2D(); } catch (e) { r.push(e instanceof TypeError); }"
                  "r.push(new Path2D() instanceof Path2D, new DOMPoint(1, 2).y, new DOMMatrix().isIdentity,"
                  " new ImageData(1, 2).height, new DOMException('m', 'SyntaxError').code);"
                  "r.join()"),
              "Illegal constructor,Illegal constructor,Illegal constructor,Illegal constructor,Illegal constructor,"
              "true,true,2,true,2,12");
}

TEST_F(BindingsTest, ReceiversAndArgumentCountsAreChecked)
{
    EXPECT_EQ(run("var c = document.createElement('canvas').getContext('2d'), r = [];"
                  "for (var f of [() => c.fillRect(1, 2, 3), () => c.arc(), () => CanvasRenderingContext2D.prototype.save.call({}),"
                  "               () => Object.getOwnPropertyDescriptor(CanvasRenderingContext2D.prototype, 'lineWidth').get.call(null),"
                  "               () => c.drawImage(c.canvas, 1, 2, 3), () => c.setTransform(1, 2), () => c.putImageData(new ImageData(1, 1), 0, 0, 0)]) {"
                  "  try { f(); r.push('ran'); } catch (e) { r.push(e.constructor.name + ':' + e.message); } }"
                  "r.join('\\n')"),
              "TypeError:Failed to execute 'fillRect' on 'CanvasRenderingContext2D': 4 arguments required, but only 3 present.\n"
              "TypeError:Failed to execute 'arc' on 'CanvasRenderingContext2D': 5 arguments required, but only 0 present.\n"
              "TypeError:Illegal invocation\n"
              "TypeError:Illegal invocation\n"
              "TypeError:Failed to execute 'drawImage' on 'CanvasRenderingContext2D': Valid arities are: [3, 5, 9], but 4 arguments provided.\n"
              "TypeError:Failed to execute 'setTransform' on 'CanvasRenderingContext2D': Valid arities are: [0, 1, 6], but 2 arguments provided.\n"
              "TypeError:Failed to execute 'putImageData' on 'CanvasRenderingContext2D': Valid arities are: [3, 7], but 4 arguments provided.");
}

TEST_F(BindingsTest, ConversionsFollowWebIDL)
{
    // Enumerations: ignored by attributes, a TypeError as arguments.
    EXPECT_EQ(run("var c = document.createElement('canvas').getContext('2d'), r = [];"
                  "c.lineCap = 'round'; c.lineCap = 'bogus'; r.push(c.lineCap);"
                  "try { c.fill('bogus'); } catch (e) { r.push(e instanceof TypeError); }"
                  "c.lineWidth = '7'; c.lineWidth = {valueOf() { return 3; }}; r.push(c.lineWidth);"
                  "c.imageSmoothingEnabled = 0; r.push(c.imageSmoothingEnabled);"
                  "c.setLineDash(new Set([4, 2])); r.push(c.getLineDash().join('/'));"
                  "try { c.setLineDash(5); } catch (e) { r.push(e instanceof TypeError); }"
                  "r.join()"),
              "round,true,3,false,4/2,true");
    // [EnforceRange] long, dictionaries and unions.
    EXPECT_EQ(run("var c = document.createElement('canvas').getContext('2d'), r = [];"
                  "try { c.getImageData(0, 0, Infinity, 1); } catch (e) { r.push(e instanceof TypeError); }"
                  "try { c.createImageData(1, 2 ** 31); } catch (e) { r.push(e instanceof TypeError); }"
                  "c.setTransform({a: 2, d: 3, e: 4}); var m = c.getTransform(); r.push([m.a, m.d, m.e, m instanceof DOMMatrix].join('/'));"
                  "try { c.setTransform({a: 1, m11: 2}); } catch (e) { r.push(e instanceof TypeError); }"
                  "try { c.setTransform(5); } catch (e) { r.push(e instanceof TypeError); }"
                  "c.roundRect(0, 0, 10, 10, [1, {x: 2, y: 3}, new DOMPoint(4, 5)]); c.roundRect(0, 0, 10, 10, 2);"
                  "try { c.roundRect(0, 0, 10, 10, []); } catch (e) { r.push(e.name); }"
                  "try { c.roundRect(0, 0, 10, 10, [1, 2, 3, 4, 5]); } catch (e) { r.push(e.name); }"
                  "r.join()"),
              "true,true,2/3/4/true,true,true,RangeError,RangeError");
}

TEST_F(BindingsTest, DOMExceptionsCarryNameCodeAndMessage)
{
    EXPECT_EQ(run("var c = document.createElement('canvas').getContext('2d');"
                  "try { c.arc(0, 0, -1, 0, 1); } catch (e) {"
                  "  [e instanceof DOMException, e instanceof Error, e.name, e.code, e.code === DOMException.INDEX_SIZE_ERR,"
                  "   typeof e.message, Object.prototype.toString.call(e), String(e).startsWith('IndexSizeError')].join() }"),
              "true,true,IndexSizeError,1,true,string,[object DOMException],true");
    EXPECT_EQ(run("var g = document.createElement('canvas').getContext('2d').createLinearGradient(0, 0, 1, 1);"
                  "try { g.addColorStop(0, 'not a colour'); } catch (e) { e.name + e.code }"),
              "SyntaxError12");
}

TEST_F(BindingsTest, WrappersKeepTheirIdentity)
{
    EXPECT_EQ(run("var canvas = document.createElement('canvas'), c = canvas.getContext('2d');"
                  "var g = c.createRadialGradient(0, 0, 1, 0, 0, 2), p = c.createPattern(canvas, 'repeat');"
                  "c.canvas.expando = 1; c.fillStyle = g; c.strokeStyle = p; c.save(); c.fillStyle = 'red'; c.restore();"
                  "[c.canvas === canvas, canvas.getContext('2d') === c, canvas.getContext('2d', {alpha: false}) === c,"
                  " canvas.getContext('webgl'), c.fillStyle === g, c.strokeStyle === p, canvas.expando,"
                  " c instanceof CanvasRenderingContext2D, canvas instanceof HTMLElement].join()"),
              "true,true,true,,true,true,1,true,true");
}

TEST_F(BindingsTest, ImageDataDataIsTheBitmapsBytes)
{
    // The array aliases the C++ bytes: what a script writes there is what putImageData draws.
    EXPECT_EQ(run("var c = document.createElement('canvas').getContext('2d');"
                  "var d = c.createImageData(2, 1); d.data[0] = 255; d.data[3] = 255; d.data[6] = 300;"
                  "c.putImageData(d, 0, 0); var back = c.getImageData(0, 0, 2, 1).data;"
                  "[d.data === d.data, d.data instanceof Uint8ClampedArray, d.data[6], Array.from(back).join(' ')].join()"),
              "true,true,255,255 0 0 255 0 0 0 0");
    // new ImageData(array, w) wraps the script's own array.
    EXPECT_EQ(run("var a = new Uint8ClampedArray(8); var d = new ImageData(a, 2); a[1] = 9; a[3] = 255;"
                  "var c = document.createElement('canvas').getContext('2d'); c.putImageData(d, 0, 0);"
                  "[d.data === a, d.height, c.getImageData(0, 0, 1, 1).data[1], "
                  " (function () { try { new ImageData(new Uint8ClampedArray(new ArrayBuffer(8, {maxByteLength: 16})), 2); }"
                  "                catch (e) { return e.name; } })(),"
                  // The array's buffer is pinned: it cannot be detached from under the ImageData.
                  " (function () { try { a.buffer.transfer(); } catch (e) {} return a.length; })()].join()"),
              "true,1,9,TypeError,8");
}

TEST_F(BindingsTest, CanvasSizeAttributesReflect)
{
    // Content attributes parse as HTML's non-negative integers; anything else is the default.
    EXPECT_EQ(run("var c = document.createElement('canvas'), r = [];"
                  "for (var v of ['100px', ' \\n100', '-100', '-0', '+7', '0x100', '\\u00a0100', '', '3000000000']) {"
                  "  c.setAttribute('WIDTH', v); r.push(c.width); }"
                  "r.push(c.getAttribute('width')); c.removeAttribute('width'); r.push(c.width, c.getAttribute('width'));"
                  "c.height = 77; r.push(c.getAttribute('height')); c.height = -1; r.push(c.height, c.getAttribute('height'));"
                  "r.join()"),
              "100,100,300,0,7,0,300,300,300,3000000000,300,,77,150,150");
}

TEST_F(BindingsTest, TheWindowHasWhatACanvasScriptNeedsAndNoMore)
{
    EXPECT_EQ(run("[typeof window, window === self, self === globalThis, typeof devicePixelRatio, typeof console.log,"
                  " typeof setTimeout, typeof setInterval, typeof fetch, typeof XMLHttpRequest, typeof importScripts,"
                  " typeof WebAssembly, typeof document.createElement('div').appendChild].join()"),
              "object,true,true,number,function,undefined,undefined,undefined,undefined,undefined,undefined,function");
    EXPECT_EQ(run("var e = document.createElement('Div'); [e.tagName, e.localName, e instanceof HTMLElement,"
                  " e instanceof HTMLCanvasElement, document.createElement('CANVAS') instanceof HTMLCanvasElement].join()"),
              "DIV,div,true,false,true");
}

} // namespace
