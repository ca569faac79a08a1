// Argument conversions where the engine's API is more lenient than WebIDL, and the getContext
// and ImageData edge cases scripts in the wild (and the conformance suite) lean on.
#include "ScriptTestSupport.h"

namespace {

using ArgumentConversionTest = ScriptTest;

TEST_F(ArgumentConversionTest, BigIntIsNotANumber)
{
    EXPECT_EQ(run("var c = document.createElement('canvas').getContext('2d'), r = [];"
                  "for (var f of [() => c.roundRect(0, 0, 10, 10, 0n), () => c.fillRect(0n, 0, 1, 1),"
                  "               () => { c.lineWidth = 5n; }, () => c.moveTo({valueOf() { return 1n; }}, 0),"
                  "               () => c.getImageData(0, 0, 1n, 1)]) {"
                  "  try { f(); r.push('ran'); } catch (e) { r.push(e instanceof TypeError); } }"
                  // Ordinary objects still convert through valueOf, once.
                  "var calls = 0; c.lineWidth = {valueOf() { calls++; return 4; }};"
                  "r.push(c.lineWidth, calls, c.lineWidth = '2', c.lineWidth);"
                  "r.join()"),
              "true,true,true,true,true,4,1,2,2");
}

TEST_F(ArgumentConversionTest, GetContextToleratesOddOptionsAndIgnoresThemOnceMade)
{
    EXPECT_EQ(run("var r = [];"
                  "for (var o of [false, 123, 'test', undefined, null, Symbol.hasInstance])"
                  "  r.push(document.createElement('canvas').getContext('2d', o) !== null);"
                  "var canvas = document.createElement('canvas');"
                  "var ctx = canvas.getContext('2d', {alpha: false});"
                  "var getterRan = false;"
                  "r.push(canvas.getContext('2d', {get alpha() { getterRan = true; return true; }}) === ctx, getterRan,"
                  "       ctx.getContextAttributes().alpha);"
                  "try { document.createElement('canvas').getContext('2d', {colorSpace: 'bogus'}); } catch (e) { r.push(e.name); }"
                  "r.join()"),
              "true,true,true,true,true,true,true,false,false,TypeError");
}

TEST_F(ArgumentConversionTest, HugeImageDataIsAnIndexSizeError)
{
    EXPECT_EQ(run("var r = [];"
                  "for (var size of [[1 << 31, 1 << 31], [2 ** 32 - 1, 2 ** 32 - 1], [65536, 65536], [1, 2 ** 30]]) {"
                  "  try { new ImageData(size[0], size[1]); r.push('made'); } catch (e) { r.push(e.name); } }"
                  "r.push(new ImageData(4, 2).data.length);"
                  "r.join()"),
              "IndexSizeError,IndexSizeError,IndexSizeError,IndexSizeError,32");
}

} // namespace
