#include "tests/web/script/ScriptTestSupport.h"

namespace {

using CanvasStyleScript = ScriptTest;

TEST_F(CanvasStyleScript, CurrentColorComesFromTheCanvasElement)
{
    EXPECT_EQ(run("var c = document.createElement('canvas'); c.setAttribute('style', 'color: magenta');"
                  "document.body.appendChild(c);"
                  "var x = c.getContext('2d');"
                  "x.fillStyle = 'rgb(from currentColor g r b)'; x.strokeStyle = 'color-mix(in srgb, currentcolor, blue)';"
                  "x.shadowColor = 'CurrentColor';"
                  "[x.fillStyle, x.strokeStyle, x.shadowColor].join(';')"),
              "color(srgb 0 1 1);color(srgb 0.5 0 1);#ff00ff");
    // Out of the document, currentcolor is black; a value that is not a colour changes nothing.
    EXPECT_EQ(run("var x = document.createElement('canvas').getContext('2d');"
                  "x.fillStyle = 'color-mix(in srgb, currentcolor, white)'; var a = x.fillStyle;"
                  "x.fillStyle = 'color-mix(in srgb, currentcolor)'; [a, x.fillStyle].join(';')"),
              "color(srgb 0.5 0.5 0.5);color(srgb 0.5 0.5 0.5)");
}

TEST_F(CanvasStyleScript, GradientsWithModernStopsInterpolateInOKLab)
{
    // Chromium's pixels for the same gradient: legacy stops mix in sRGB, others in OKLab.
    EXPECT_EQ(run("var x = document.createElement('canvas').getContext('2d');"
                  "function at(px) { return Array.from(x.getImageData(px, 5, 1, 1).data, v => Math.round(v / 2)).join(','); }"
                  "var g = x.createLinearGradient(0, 0, 100, 0); g.addColorStop(0, '#f00'); g.addColorStop(1, '#008080');"
                  "x.fillStyle = g; x.fillRect(0, 0, 100, 10); var legacy = at(50);"
                  "g = x.createLinearGradient(0, 0, 100, 0); g.addColorStop(0, '#f00');"
                  "g.addColorStop(1, 'color-mix(in srgb, #0f0, #00f)');"
                  "x.fillStyle = g; x.fillRect(0, 0, 100, 10); [legacy, at(25), at(50), at(75)].join(';')"),
              "63,33,33,128;106,41,31,128;83,53,44,128;57,60,55,128"); // halved: within a level
}

} // namespace
