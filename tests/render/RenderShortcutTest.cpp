// The renderer calls a theme function compiled once and takes its canvas's data URL without
// decoding it. Either way the picture must be the one the call text and the decoded PNG give,
// and a script must not be able to change what the next one draws.
#include "support/ImagePixels.h"

#include "render/QLAWBatteryRenderer.h"
#include "render/ThemeScriptCall.h"
#include "store/ThemeScripts.h"

#include "platform/core/Base64.h"
#include "platform/core/UIScreen.h"
#include "platform/web/UIWebView.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstdio>
#include <fstream>
#include <sstream>
#include <unistd.h>

namespace {

std::string longFormScript()
{
    std::ifstream in(AMPWELL_SOURCE_DIR "/bench/peers/long-form.js");
    std::stringstream text;
    text << in.rdbuf();
    return text.str();
}

// Semi-transparent colours everywhere, so that the rounding of premultiplied pixels shows.
const std::string kTranslucent =
    "(h,l,c,m,e){var k=document.createElement('canvas'),x=k.getContext('2d');k.width=h;k.height=h/2;"
    "var g=x.createLinearGradient(0,0,h,0);g.addColorStop(0,'rgba('+e.join()+',0.13)');"
    "g.addColorStop(1,'rgba(250,7,90,0.71)');x.fillStyle=g;x.globalAlpha=0.83;x.fillRect(0,0,h,h/2);"
    "x.shadowColor='rgba(0,0,255,0.4)';x.shadowBlur=3;x.font=(h/3)+'px Helvetica';x.fillStyle='rgba(9,200,30,0.5)';"
    "x.fillText(l+'%',2,h/3);return k.toDataURL('image/jpeg',0.3)}";

PlistDict settingsFor(std::string script)
{
    return PlistDict{{"script", std::move(script)}, {"height", 26}, {"level", 55}, {"charging", false},
                     {"low", false}, {"lpm", true}, {"color", UIColor::whiteColor()},
                     {"baseColor", UIColor::colorWithRedGreenBlueAlpha(0, 0, 0, 0.456)}};
}

UIImage render(const std::string& script)
{
    return QLAWBatteryRenderer::renderBatteryImageWithSettingsForStyle(settingsFor(script), 0);
}

// What rendering was before the shortcuts: the call text evaluated, the PNG decoded.
UIImage decodedCall(const std::string& script)
{
    ThemeCallArguments arguments;
    arguments.pixelHeight = 52;
    arguments.level = 55;
    arguments.lowPowerMode = true;
    arguments.color[0] = arguments.color[1] = arguments.color[2] = 255;
    arguments.baseAlpha = 0.456;
    bool longForm = usesLongCallForm(*themeScriptParameterList(script));
    UIWebView view(CGRect{});
    view.loadHTMLStringBaseURL(std::nullopt, std::nullopt);
    std::string url = view.stringByEvaluatingJavaScriptFromString(themeScriptCallText(script, longForm, arguments));
    std::size_t marker = url.find("base64,");
    if (marker == std::string::npos)
        return {};
    std::optional<std::vector<std::uint8_t>> png = Base64::decode(std::string_view(url).substr(marker + 7));
    return png ? UIImage::imageWithDataScale(*png, 2) : UIImage();
}

class RenderShortcut : public ::testing::Test {
protected:
    void SetUp() override { UIScreen::mainScreen().setScale(2); }
};

TEST_F(RenderShortcut, GivesThePictureTheCallTextAndTheDecodedPNGGive)
{
    std::string canvas = "var k=document.createElement('canvas'),x=k.getContext('2d');k.width=9;k.height=7;"
                         "x.fillStyle='rgba(200,100,50,0.37)';x.fillRect(1,1,7,5);";
    for (const std::string& script : {
             std::string(kBuiltInPreviewScript),
             longFormScript(),
             kTranslucent,
             // Not the canvas's own URL, or not the last one made: decoded as before.
             "(h,l,c,m,e){" + canvas + "return Array.from(k.toDataURL()).join('')}",
             "(h,l,c,m,e){" + canvas + "var u=k.toDataURL();x.fillRect(0,0,9,7);k.toDataURL();return u}",
             // Not one function expression: the call text is evaluated.
             "(h,l,c,m,e){" + canvas + "return k.toDataURL()}.bind(null)",
             "(h,l,c,m,e){with(Math){" + canvas + "return k.toDataURL()}}",
         }) {
        UIImage expected = decodedCall(script);
        UIImage rendered = render(script);
        ASSERT_FALSE(expected.isNil()) << script;
        ASSERT_FALSE(rendered.isNil()) << script;
        EXPECT_EQ(rendered.scale(), expected.scale());
        EXPECT_TRUE(samePixels(rendered, expected)) << script;
    }
}

TEST_F(RenderShortcut, ResultsThatAreNoPictureFailAsBefore)
{
    for (const auto& [body, reason] : std::initializer_list<std::pair<std::string, std::string>>{
             {"var k=document.createElement('canvas');k.width=0;return k.toDataURL()", "no PNG data URL"},
             {"return document.createElement('canvas').toDataURL().slice(0,42)", "no readable PNG"},
             {"return document.createElement('canvas').toDataURL().replace('base64,','base64,!')", "not valid Base64"},
         }) {
        std::string failure;
        EXPECT_TRUE(QLAWBatteryRenderer::renderBatteryImageWithSettingsForStyle(
                        settingsFor("(h,l,c,m,e){" + body + "}"), 0, &failure)
                        .isNil());
        EXPECT_NE(failure.find(reason), std::string::npos) << body << ": " << failure;
    }
}

// The pixels of a picture as text, to compare across processes.
std::string pixelText(const UIImage& image)
{
    std::string text = std::to_string(image.pixelWidth()) + "x" + std::to_string(image.pixelHeight()) + ":";
    char hex[9];
    for (int y = 0; y < image.pixelHeight(); ++y) {
        for (int x = 0; x < image.pixelWidth(); ++x) {
            std::snprintf(hex, sizeof hex, "%08x", unsigned(pixel(image, x, y)));
            text += hex;
        }
    }
    return text;
}

std::string freshRenderPath(pid_t parent)
{
    return "/tmp/ampwell-fresh-render-" + std::to_string(parent);
}

// Run in a process of its own, which has made no engine before.
[[noreturn]] void writeFreshRenders(const std::vector<std::string>& scripts)
{
    UIScreen::mainScreen().setScale(2);
    std::ofstream out(freshRenderPath(::getppid()), std::ios::trunc);
    for (const std::string& script : scripts)
        out << pixelText(render(script)) << '\n';
    out.close();
    std::_Exit(out ? 0 : 1);
}

TEST(RenderIsolation, AfterAHostileScriptTheNextDrawsAsInAFreshEngine)
{
    const std::vector<std::string> good = {std::string(kBuiltInPreviewScript), longFormScript(), kTranslucent};
    // First of all, before this process renders anything: the good scripts in a fresh engine.
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    EXPECT_EXIT(writeFreshRenders(good), ::testing::ExitedWithCode(0), "");
    std::vector<std::string> fresh;
    {
        std::ifstream in(freshRenderPath(::getpid()));
        for (std::string line; std::getline(in, line);)
            fresh.push_back(line);
    }
    std::remove(freshRenderPath(::getpid()).c_str());
    ASSERT_EQ(fresh.size(), good.size());

    UIScreen::mainScreen().setScale(2);
    const std::string canvas = "var k=document.createElement('canvas');k.width=4;k.height=4;";
    for (std::string attack : {
             // Replaced built-ins the good scripts use.
             "Array.prototype.join=function(){return '255,0,0'};Math.round=function(){return 3};",
             "Math.PI=1;Math.floor=Math.ceil;Number.prototype.toString=function(){return '1'};",
             "CanvasRenderingContext2D.prototype.arc=function(){};"
             "CanvasRenderingContext2D.prototype.stroke=function(){this.fillRect(0,0,99,99)};",
             "HTMLCanvasElement.prototype.toDataURL=function(){return 'data:,'};",
             "delete CanvasRenderingContext2D.prototype.fillText;delete Array.prototype.join;",
             // Added properties, string and symbol keyed, that setters or lookups would find.
             "Object.prototype.font='99px serif';Object.prototype[Symbol.toPrimitive]=function(){return 1};",
             "CanvasGradient.prototype.addColorStop=function(){};Array.prototype[Symbol.iterator]=null;",
             // Descriptors and shapes, and the guards' own way round.
             "Object.defineProperty(CanvasRenderingContext2D.prototype,'lineWidth',{set(){},get(){return 9}});",
             "Object.prototype.__defineSetter__('fillStyle',function(){});Object.setPrototypeOf(Math,null);",
             "Object.freeze(CanvasRenderingContext2D.prototype);Object.preventExtensions(Array.prototype);",
             // Globals, the window's members and the document.
             "Math={round:function(){return 0},floor:function(){return 0},max:Math.max,PI:0};"
             "document={createElement:function(){return null}};window.e=[1,2,3];self.h=1;",
             "globalThis.JSON=null;String=Number;Array=function(){};",
             // The function, its prototype and whatever calls it.
             "arguments.callee.prototype.x=1;arguments.callee.toString=null;"
             "try{arguments.callee.caller.apply=null}catch(error){}",
             "Function.prototype.call=null;Function.prototype.apply=null;Function.prototype.bind=null;",
         }) {
        std::string hostile = "(h,l,c,m,e){" + attack + canvas + "return k.toDataURL()}";
        (void)render(hostile);
        for (std::size_t i = 0; i < good.size(); ++i)
            EXPECT_EQ(pixelText(render(good[i])), fresh[i]) << attack << " then script " << i;
    }
}

TEST(RenderIsolation, AScriptSeesNothingOfItsOwnEarlierRuns)
{
    UIScreen::mainScreen().setScale(2);
    // Each run that saw an earlier one would draw a wider canvas.
    for (std::string keep : {"Math.runs=(Math.runs||0)+1", "Object.prototype.runs=(({}).runs||0)+1",
                             "window.runs=(window.runs||0)+1", "arguments.callee.runs=(arguments.callee.runs||0)+1",
                             "Function.prototype.runs=((function(){}).runs||0)+1"}) {
        std::string script = "(h,l,c,m,e){var n=" + keep + ";var k=document.createElement('canvas');"
                             "k.width=10*n;k.height=3;return k.toDataURL()}";
        for (int i = 0; i < 3; ++i)
            EXPECT_EQ(render(script).pixelWidth(), 10) << keep;
    }
}

} // namespace
