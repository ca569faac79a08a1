// Canvas scripts end to end through the web view, as the renderer runs them.
#include "ScriptTestSupport.h"

#include "platform/core/Base64.h"
#include "platform/core/SystemLog.h"
#include "platform/core/UIImage.h"

#include <vector>

namespace {

using CanvasScriptTest = ScriptTest;

// The built-in preview script, called as the renderer calls it.
constexpr const char* kBuiltInCall =
    "(function(c,g,l,m,e){var d=Math.round(3*c/4)/2;c=Math.floor(c/20);var h=2*d+c,f=document.createElement(\"canvas\"),"
    "a=f.getContext(\"2d\");e=e.join();var b=h/2,n=4*d/3,k=Math.PI;100==g&&(n=d);f.width=h;f.height=h;a.lineWidth=c;"
    "a.strokeStyle=\"rgba(\"+e+\",0.3)\";m&&(a.strokeStyle=\"rgba(255,59,48,0.3)\");l&&(a.strokeStyle=\"rgba(76,217,100,0.3)\");"
    "a.arc(b,b,d,0,2*k);a.stroke();a.strokeStyle=\"rgb(\"+e+\")\";m&&(a.strokeStyle=\"#FF3B30\");l&&(a.strokeStyle=\"#4CD964\");"
    "a.fillStyle=a.strokeStyle;a.beginPath();a.arc(b,b,d,k*((100-g)/50-.5),1.5*k);a.stroke();a.font=n+\"px Helvetica Neue\";"
    "a.textAlign=\"center\";a.textBaseline=\"middle\";a.fillText(g,b,b);return f.toDataURL(\"image/png\")})"
    "(52,55,!!0,!!0,[255,255,255])";

UIImage decode(const std::string& dataURL)
{
    const std::string marker = "base64,";
    std::size_t at = dataURL.find(marker);
    if (at == std::string::npos)
        return {};
    auto bytes = Base64::decode(std::string_view(dataURL).substr(at + marker.size()));
    return bytes ? UIImage::imageWithDataScale(*bytes, 1) : UIImage();
}

TEST_F(CanvasScriptTest, TheBuiltInScriptDrawsItsRingAtTheGivenHeight)
{
    std::string url = run(kBuiltInCall);
    ASSERT_EQ(url.rfind("data:image/png;base64,", 0), 0u) << lastError();
    UIImage image = decode(url);
    ASSERT_TRUE(image);
    // d = round(3 * 52 / 4) / 2 = 19.5, line width floor(52 / 20) = 2, side 2d + 2 = 41.
    EXPECT_EQ(image.pixelWidth(), 41);
    EXPECT_EQ(image.pixelHeight(), 41);
    // The same call in a new document gives the same picture.
    EXPECT_EQ(run(kBuiltInCall), url);
}

TEST_F(CanvasScriptTest, ResultsThatAreNotStringsGiveNothing)
{
    EXPECT_EQ(run("42"), "");
    EXPECT_EQ(lastError(), "the result is not a string");
    EXPECT_EQ(run("document.createElement('canvas')"), "");
    EXPECT_EQ(lastError(), "the result is not a string");
    EXPECT_EQ(run("undefined"), "");
    EXPECT_EQ(run("'' + 42"), "42");
    EXPECT_EQ(lastError(), "");
    EXPECT_EQ(run("throw {toString() { throw 1; }}"), "");
    EXPECT_EQ(lastError(), "uncaught exception");
    EXPECT_EQ(run("throw 5"), "");
    EXPECT_EQ(lastError(), "5");
    EXPECT_EQ(run("throw Symbol('s')"), "");
    EXPECT_EQ(lastError(), "uncaught exception");
    EXPECT_EQ(run("(function broken( {"), "");
    EXPECT_EQ(lastError().rfind("SyntaxError", 0), 0u) << lastError();
    // Unicode survives the way in and out.
    EXPECT_EQ(run("'gr\\u00fc\\u00df \\ud83d\\udd0b' + '\\0' + 'end'"), std::string("gr\u00fc\u00df \U0001F50B") + '\0' + "end");
}

TEST_F(CanvasScriptTest, PixelsComeOutWhereTheScriptPutThem)
{
    EXPECT_EQ(run("var c = document.createElement('canvas'); c.width = 10; c.height = 10; var x = c.getContext('2d');"
                  "x.fillStyle = '#ff0000'; x.fillRect(2, 2, 4, 4); x.translate(5, 5); x.fillStyle = 'rgba(0, 0, 255, 1)';"
                  "x.fillRect(1, 1, 2, 2);"
                  "[x.getImageData(3, 3, 1, 1).data, x.getImageData(6, 6, 1, 1).data, x.getImageData(9, 0, 1, 1).data]"
                  "  .map((d) => Array.from(d).join(' ')).join(',')"),
              "255 0 0 255,0 0 255 255,0 0 0 0");
    EXPECT_EQ(run("var p = new Path2D('M0 0 H10 V10 Z'), c = document.createElement('canvas').getContext('2d');"
                  "[c.isPointInPath(p, 8, 2), c.isPointInPath(p, 2, 8), c.isPointInPath(p, 2, 8, 'evenodd')].join()"),
              "true,false,false");
}

TEST_F(CanvasScriptTest, ConsoleLinesGoToTheSystemLog)
{
    std::vector<std::string> lines;
    setSystemLogObserver([&](const std::string& line) { lines.push_back(line); });
    run("console.log('battery %d%%', 55.7, {}); console.error('broken'); console.assert(1 > 2, 'maths');"
        "for (var i = 0; i < 1000; i++) console.log('flood'); ''");
    setSystemLogObserver(nullptr);
    ASSERT_GE(lines.size(), 3u);
    EXPECT_EQ(lines[0], "AMPW: console: battery 55% [object Object]");
    EXPECT_EQ(lines[1], "AMPW: console: broken");
    EXPECT_EQ(lines[2], "AMPW: console: Assertion failed: maths");
    EXPECT_LT(lines.size(), 300u); // a script cannot flood the log
}

} // namespace
