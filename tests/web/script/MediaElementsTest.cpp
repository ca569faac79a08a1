// Images, videos and SVG images that never load, as canvas image sources, and the focus ring
// drawFocusIfNeeded draws for focused fallback content.
#include "ScriptTestSupport.h"

namespace {

using MediaElementsTest = ScriptTest;

TEST_F(MediaElementsTest, UnloadedImagesDrawNothingAndMakeNoPattern)
{
    EXPECT_EQ(run("var c = document.createElement('canvas').getContext('2d'), r = [];"
                  "var plain = document.createElement('img'), sized = new Image(3, 4), loading = new Image();"
                  "loading.src = '/images/red.png';"
                  "r.push(plain instanceof HTMLImageElement, sized instanceof Image, Image.prototype === HTMLImageElement.prototype,"
                  "       plain.complete, loading.complete, plain.naturalWidth, sized.width, sized.height, loading.src);"
                  "var svg = document.createElementNS('http://www.w3.org/2000/svg', 'image');"
                  "var video = document.createElement('video');"
                  "for (var source of [plain, loading, svg, video])"
                  "  r.push(c.createPattern(source, 'repeat'), c.createPattern(source, 'bogus'));"
                  "c.fillStyle = '#0f0'; c.fillRect(0, 0, 10, 10);"
                  "for (var source of [plain, loading, svg, video]) { c.drawImage(source, 0, 0); c.drawImage(source, 0, 0, 5, 5, 0, 0, 9, 9); }"
                  "r.push(c.getImageData(5, 5, 1, 1).data.join(' '));"
                  "try { c.drawImage(document.createElement('div'), 0, 0); } catch (e) { r.push(e.name); }"
                  "r.join()"),
              "true,true,true,true,false,0,3,4,/images/red.png,,,,,,,,,0 255 0 255,TypeError");
}

TEST_F(MediaElementsTest, VideosPlayNothingAndSayWhy)
{
    EXPECT_EQ(run("var v = document.createElement('video'), r = [];"
                  "r.push(v.paused, v.readyState, v.networkState, v.HAVE_NOTHING, HTMLMediaElement.HAVE_ENOUGH_DATA, v instanceof HTMLMediaElement);"
                  "var p = v.play(); r.push(p instanceof Promise, v.paused, isNaN(v.duration), v.videoWidth, v.error);"
                  "v.pause(); v.muted = true; r.push(v.paused, v.muted, v.getAttribute('muted'));"
                  "r.join()"),
              "true,0,0,0,4,true,true,false,true,0,,true,true,");
}

TEST_F(MediaElementsTest, FocusRingsAreDrawnForFocusedFallbackContentOnly)
{
    // Whether drawFocusIfNeeded changed any pixel, for an element in various places.
    const std::string setup = "function ringDrawn(canvas, element, path) {"
                              "  var ctx = canvas.getContext('2d');"
                              "  ctx.fillStyle = 'white'; ctx.fillRect(0, 0, 40, 40);"
                              "  ctx.shadowColor = 'red'; ctx.shadowBlur = 4; ctx.globalAlpha = 0.1;"
                              "  var before = ctx.getImageData(0, 0, 40, 40).data.join();"
                              "  ctx.beginPath(); ctx.rect(5, 5, 30, 30);"
                              "  if (path) ctx.drawFocusIfNeeded(path, element); else ctx.drawFocusIfNeeded(element);"
                              "  return ctx.getImageData(0, 0, 40, 40).data.join() !== before;"
                              "}"
                              "var canvas = document.createElement('canvas'), other = document.createElement('canvas');"
                              "canvas.width = canvas.height = other.width = other.height = 40;"
                              "document.body.append(canvas, other);"
                              "var button = document.createElement('button'); canvas.appendChild(button);"
                              "var outside = document.createElement('button'); other.appendChild(outside);";
    EXPECT_EQ(run(setup + "var r = [ringDrawn(canvas, button)];"
                          "button.focus(); r.push(ringDrawn(canvas, button), ringDrawn(canvas, button, new Path2D('M2 2h10v10z')));"
                          "outside.focus(); r.push(ringDrawn(canvas, outside));"
                          "canvas.tabIndex = 0; canvas.focus(); r.push(ringDrawn(canvas, canvas));"
                          // The ring leaves the context's state alone.
                          "button.focus(); var ctx = canvas.getContext('2d'); ctx.lineWidth = 7; ctx.strokeStyle = '#123456';"
                          "ringDrawn(canvas, button); r.push(ctx.lineWidth, ctx.strokeStyle, ctx.shadowColor, ctx.globalAlpha);"
                          "try { ctx.drawFocusIfNeeded({}); } catch (e) { r.push(e.name); }"
                          "r.join()"),
              "false,true,true,false,false,7,#123456,#ff0000,0.1,TypeError");
}

} // namespace
