// DOMMatrix, DOMPoint and Path2D as scripts use them: constructors from their several inits,
// the read-only and mutable halves, dictionaries and the typed array forms.
#include "ScriptTestSupport.h"

namespace {

using GeometryBindingsTest = ScriptTest;

TEST_F(GeometryBindingsTest, MatricesAreMadeFromEveryKindOfInit)
{
    EXPECT_EQ(run("[new DOMMatrix().toString(), new DOMMatrix([1, 2, 3, 4, 5, 6]).toString(),"
                  " new DOMMatrix((function* () { yield* [1, 0, 0, 1, 7, 8]; })()).f, new DOMMatrix('translate(10px, 20px)').e,"
                  " DOMMatrix.fromMatrix({a: 2, d: 2}).toString(), DOMMatrixReadOnly.fromMatrix() instanceof DOMMatrix,"
                  " DOMMatrix.fromFloat32Array(new Float32Array([1, 0, 0, 1, 3, 4])).e,"
                  " DOMMatrix.fromFloat64Array(new Float64Array(16).fill(0)).is2D].join('|')"),
              "matrix(1, 0, 0, 1, 0, 0)|matrix(1, 2, 3, 4, 5, 6)|8|10|matrix(2, 0, 0, 2, 0, 0)|false|3|false");
    EXPECT_EQ(run("var r = [];"
                  "for (var init of [[1, 2, 3], 'not a transform', {length: 6}]) {"
                  "  try { new DOMMatrix(init); r.push('made'); } catch (e) { r.push(e.name); } }"
                  "try { DOMMatrix.fromFloat32Array([1, 2, 3, 4, 5, 6]); } catch (e) { r.push(e.name); }"
                  "try { DOMMatrix.fromMatrix({a: 1, m11: 2}); } catch (e) { r.push(e.name); }"
                  "r.join()"),
              "TypeError,SyntaxError,SyntaxError,TypeError,TypeError");
}

TEST_F(GeometryBindingsTest, ReadOnlyMatricesMakeNewOnesAndMutableOnesChangeInPlace)
{
    EXPECT_EQ(run("var m = new DOMMatrixReadOnly([1, 0, 0, 1, 0, 0]); m.a = 5;"
                  "var t = m.translate(2, 3), s = new DOMMatrix(); var same = s.translateSelf(2, 3).scaleSelf(2);"
                  "s.e = 9;"
                  "[m.a, t.e, t instanceof DOMMatrix, m instanceof DOMMatrix, same === s, s.a, s.e,"
                  " m.transformPoint({x: 1, y: 1}).x, s.inverse().multiply(s).isIdentity,"
                  " Array.from(t.toFloat32Array().slice(12, 14)).join('/'), JSON.stringify(t).includes('\"m41\":2'),"
                  " typeof Object.getOwnPropertyDescriptor(DOMMatrixReadOnly.prototype, 'a').set].join()"),
              "1,2,true,false,true,2,9,1,true,2/3,true,undefined");
    // setMatrixValue leaves the matrix alone when the text is bad.
    EXPECT_EQ(run("var m = new DOMMatrix([2, 0, 0, 2, 0, 0]);"
                  "try { m.setMatrixValue('skew(nonsense)'); } catch (e) { e.name + ' ' + m.a }"),
              "SyntaxError 2");
}

TEST_F(GeometryBindingsTest, PointsTakeDictionariesAndMatrices)
{
    EXPECT_EQ(run("var p = new DOMPoint(1, 2), ro = new DOMPointReadOnly(3, 4, 5, 6); p.x = 10; ro.x = 10;"
                  "var q = p.matrixTransform({a: 2, d: 3, e: 1});"
                  "[p.x, p.w, ro.x, ro.w, q.x, q.y, q instanceof DOMPoint, DOMPoint.fromPoint({y: 7}).y,"
                  " DOMPointReadOnly.fromPoint(p) instanceof DOMPoint, JSON.stringify(ro)].join('|')"),
              "10|1|3|6|21|6|true|7|false|{\"x\":3,\"y\":4,\"z\":5,\"w\":6}");
    EXPECT_EQ(run("try { new DOMPoint().matrixTransform(5); } catch (e) { e.name }"), "TypeError");
}

TEST_F(GeometryBindingsTest, PathsAreCopiedAndCombined)
{
    EXPECT_EQ(run("var c = document.createElement('canvas').getContext('2d');"
                  "var a = new Path2D('M 0 0 h 10 v 10 h -10 z'), copy = new Path2D(a), b = new Path2D();"
                  "a.rect(50, 50, 5, 5);"
                  "b.addPath(copy, {e: 100}); b.addPath(b);"
                  "[c.isPointInPath(a, 52, 52), c.isPointInPath(copy, 52, 52), c.isPointInPath(b, 105, 5),"
                  " c.isPointInPath(b, 5, 5), new Path2D(undefined) instanceof Path2D,"
                  " (function () { try { b.addPath({}); } catch (e) { return e.name; } })()].join()"),
              "true,false,true,false,true,TypeError");
}

} // namespace
