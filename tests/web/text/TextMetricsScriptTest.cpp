// TextMetrics' methods, TextCluster and the text attributes as scripts see them: argument
// conversions, the errors thrown, the objects returned, drawing a cluster.
#include "platform/web/UIWebView.h"

#include <gtest/gtest.h>

#include <string>

namespace {

std::string run(const std::string& script)
{
    static UIWebView view(CGRect{});
    view.loadHTMLStringBaseURL(std::nullopt, std::nullopt);
    std::string result = view.stringByEvaluatingJavaScriptFromString(
        "var ctx = document.createElement('canvas').getContext('2d'); ctx.font = '50px sans-serif';" + script);
    return result.empty() ? "error: " + view.lastError() : result;
}

TEST(TextMetricsScriptTest, IndicesAreEnforcedAndCheckedAgainstTheText)
{
    EXPECT_EQ(run("var tm = ctx.measureText('abc'), r = [];"
                  "for (var f of [() => tm.getActualBoundingBox(-1, 0), () => tm.getSelectionRects(0, NaN),"
                  "               () => tm.getTextClusters(2 ** 32, 3), () => tm.getIndexFromOffset(Infinity),"
                  "               () => tm.getActualBoundingBox(3, 0), () => tm.getSelectionRects(4, 4),"
                  "               () => tm.getTextClusters(0, 4), () => tm.getTextClusters(1),"
                  "               () => tm.getTextClusters({align: 'middle'}), () => tm.getIndexFromOffset()])"
                  "  try { f(); r.push('ok'); } catch (e) { r.push(e.name + (e instanceof DOMException ? e.code : '')); }"
                  // Fractions truncate; null options are the defaults.
                  "r.push(tm.getActualBoundingBox(2.7, 3.9).width === tm.getActualBoundingBox(2, 3).width,"
                  "       tm.getTextClusters(null).length, tm.getTextClusters(0, 3, undefined).length);"
                  "r.join()"),
              "TypeError,TypeError,TypeError,TypeError,IndexSizeError1,IndexSizeError1,IndexSizeError1,TypeError,"
              "TypeError,TypeError,true,3,3");
}

TEST(TextMetricsScriptTest, RectanglesAndClustersAreTheirOwnObjects)
{
    EXPECT_EQ(run("var tm = ctx.measureText('ab'), box = tm.getActualBoundingBox(0, 2);"
                  "var rects = tm.getSelectionRects(0, 1), clusters = tm.getTextClusters({align: 'center'});"
                  "[box instanceof DOMRectReadOnly, box instanceof DOMRect, box.top === box.y, box.left === box.x,"
                  " Array.isArray(rects), rects.length, rects[0].bottom - rects[0].top,"
                  " clusters.length, clusters[0] instanceof TextCluster, clusters[0].align, clusters[0].baseline,"
                  " clusters[1].start, clusters[1].end, clusters[0] === tm.getTextClusters({align: 'center'})[0],"
                  " (() => { try { new TextCluster(); } catch (e) { return e.name; } })(),"
                  " typeof Object.getOwnPropertyDescriptor(TextCluster.prototype, 'x').set].join()"),
              "true,false,true,true,true,1,56,2,true,center,alphabetic,1,2,false,TypeError,undefined");
    EXPECT_EQ(run("var r = new DOMRect(1, 2, -3, 4); r.x = 10;"
                  "var j = DOMRectReadOnly.fromRect({x: 1, width: 2}).toJSON();"
                  "[r.left, r.right, r.top, r.bottom, j.x, j.right, j.height, new DOMRectReadOnly().width].join()"),
              "7,10,2,6,1,3,0,0");
}

TEST(TextMetricsScriptTest, ClustersDrawInTheFontTheyWereMeasuredIn)
{
    // A cluster measured at 50px still draws at 50px after the font changes, at the point its
    // options name, in the context's current fill style.
    EXPECT_EQ(run("var c = ctx.canvas; c.width = 100; c.height = 100;"
                  "ctx.font = '50px sans-serif'; ctx.textBaseline = 'top';"
                  "var cluster = ctx.measureText('\u2588').getTextClusters()[0];"
                  "ctx.font = '5px serif'; ctx.fillStyle = '#00ff00';"
                  "ctx.fillTextCluster(cluster, 0, 0, {x: 20, y: 20});"
                  "var at = (x, y) => ctx.getImageData(x, y, 1, 1).data.join('-');"
                  "[at(10, 40), at(30, 40), at(30, 65)].join()"),
              "0-0-0-0,0-255-0-255,0-255-0-255");
    EXPECT_EQ(run("var r = [];"
                  "for (var f of [() => ctx.fillTextCluster({}, 0, 0), () => ctx.strokeTextCluster(null, 0, 0),"
                  "               () => ctx.fillTextCluster(ctx.measureText('a').getTextClusters()[0], 0, 0, 5)])"
                  "  try { f(); r.push('ok'); } catch (e) { r.push(e.name); }"
                  "ctx.fillTextCluster(ctx.measureText('a').getTextClusters()[0], NaN, 0);"
                  "r.join()"),
              "TypeError,TypeError,TypeError");
}

TEST(TextMetricsScriptTest, SpacingInFontUnitsFollowsTheFont)
{
    EXPECT_EQ(run("ctx.font = '10px serif';"
                  "var plain = t => { var l = ctx.letterSpacing, w = ctx.wordSpacing; ctx.letterSpacing = ctx.wordSpacing = '0px';"
                  "                   var width = ctx.measureText(t).width; ctx.letterSpacing = l; ctx.wordSpacing = w; return width; };"
                  "ctx.letterSpacing = '1em'; ctx.wordSpacing = '1IC';"
                  "var r = [ctx.letterSpacing, ctx.wordSpacing, ctx.measureText('a b').width - plain('a b')];"
                  "ctx.font = '20px serif'; r.push(ctx.measureText('a b').width - plain('a b'));"
                  "ctx.save(); ctx.font = '40px serif'; ctx.restore(); r.push(ctx.measureText('a b').width - plain('a b'));"
                  "ctx.letterSpacing = '2px'; ctx.font = '30px serif'; r.push(ctx.measureText('ab').width - plain('ab'));"
                  "r.join()"),
              "1em,1ic,40,80,80,4");
}

TEST(TextMetricsScriptTest, RelativeFontSizesReferToTheCanvasElement)
{
    EXPECT_EQ(run("var canvas = ctx.canvas, r = [];"
                  "ctx.font = '50% serif'; r.push(ctx.font);"  // not in a document: the default 10px
                  "canvas.setAttribute('style', 'font-size: 30px; line-height: 40px'); document.body.appendChild(canvas);"
                  "ctx.font = '2em serif'; r.push(ctx.font);"
                  "ctx.font = '2lh/100 serif'; r.push(ctx.font);"
                  "canvas.style.fontSize = '100px'; r.push(ctx.font);"  // resolved when set, not later
                  "r.join()"),
              "5px serif,60px serif,80px serif,80px serif");
}

TEST(TextMetricsScriptTest, LangIsKeptAsWritten)
{
    EXPECT_EQ(run("var r = [ctx.lang];"
                  "for (var lang of ['', 'en-US', 'not-a-real-lang']) { ctx.lang = lang; r.push(ctx.lang); }"
                  "ctx.save(); ctx.lang = 'tr'; ctx.restore(); r.push(ctx.lang);"
                  "ctx.reset(); r.push(ctx.lang);"
                  "r.join('|')"),
              "inherit||en-US|not-a-real-lang|not-a-real-lang|inherit");
}

} // namespace
