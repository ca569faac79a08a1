// A theme function compiled once and called with argument values must behave as evaluating its
// call text does, and must leave nothing behind that the next call could see.
#include "ScriptTestSupport.h"

#include "web/script/ScriptEngine.h"

#include <vector>

namespace {

using script::ScriptArgument;
using script::ScriptEngine;

class FunctionExpressionCall : public ScriptTest {
protected:
    // The call in a fresh document, or "(slow)" when the text is not one function expression.
    static std::string call(const std::string& text, const std::vector<ScriptArgument>& arguments = {})
    {
        view().loadHTMLStringBaseURL(std::nullopt, std::nullopt);
        std::optional<UIWebView::DataURLResult> result = view().dataURLByCallingFunction(text, arguments, 1);
        if (!result)
            return "(slow)";
        return result->fromCanvas ? "(canvas)" : result->text.empty() ? "error: " + lastError() : result->text;
    }
    // The call text "(function<text>)(<arguments>)" evaluated in a fresh document.
    static std::string evaluated(const std::string& text, const std::string& arguments)
    {
        std::string value = run("(function" + text + ")(" + arguments + ")");
        return value.empty() ? "error: " + lastError() : value;
    }
};

TEST_F(FunctionExpressionCall, GivesWhatTheCallTextGives)
{
    const std::vector<ScriptArgument> arguments{52.0, 55.0, true, false, std::vector<double>{255, 0, 127}};
    const std::string literals = "52,55,!!1,!!0,[255,0,127]";
    for (std::string text : {
             // Values and their types, `this`, the argument count.
             "(a,b,c,d,e){return [a,b,c,d,e.join('/'),Array.isArray(e),typeof c,arguments.length].join()}",
             "(a){return String(this === globalThis)}",
             "(a){'use strict';return String(this)}",
             // Nothing above the function to reach.
             "(a){return String(arguments.callee.caller)}",
             "(a){return typeof arguments.callee.caller}",
             // Exceptions, their text and non-string results.
             "(a){throw new RangeError('at '+a)}",
             "(a){null.x}",
             "(a){return 5}",
             // A named function expression sees itself by its name, and only there.
             " named(a){return typeof named+','+(named.name)}",
             // Comments and odd spacing around the body.
             "(a /* ) */ , b) // x\n { return '' + a + b } ",
         }) {
        EXPECT_EQ(call(text, arguments), evaluated(text, literals)) << text;
    }
}

TEST_F(FunctionExpressionCall, TextsThatAreNotOneFunctionExpressionRunNothing)
{
    for (std::string text : {
             "(){}; window.ran = 1; (function(){}",
             "(){}, window.ran = 1, function(){}",
             "(){}.call(window.ran = 1)",
             "(){}(window.ran = 1)",
             "(){} // }",
             "(){window.ran = 1} + function(){}",
             "(){}.constructor`window.ran = 1`",
             "(){ with (Math) { return 'sloppy only' } }",
             "(a, a){ return 'duplicate parameters' }",
             "(){ return 1 ",
             "",
         }) {
        EXPECT_EQ(call(text), "(slow)") << text;
        EXPECT_EQ(runHere("typeof ran"), "undefined") << text;
    }
    // The slow way gives them their meaning.
    EXPECT_EQ(evaluated("(){ with (Math) { return String(PI > 3) } }", ""), "true");
}

TEST_F(FunctionExpressionCall, EachCallGetsAFunctionObjectOfItsOwn)
{
    // Everything the function (or its `this`) keeps would show in the next call.
    std::string counter = "(){var f = arguments.callee; f.n = (f.n || 0) + 1;"
                          "f.prototype.m = (f.prototype.m || 0) + 1; this.g = (this.g || 0) + 1;"
                          "return [f.n, f.prototype.m, this.g].join()}";
    for (int i = 0; i < 3; ++i)
        EXPECT_EQ(call(counter), "1,1,1");
}

TEST_F(FunctionExpressionCall, ACanvasDataURLComesBackAsItsImageOnlyWhenUntouched)
{
    std::string canvas = "var c = document.createElement('canvas'); c.width = 3; c.height = 2;";
    EXPECT_EQ(call("(){" + canvas + "return c.toDataURL()}"), "(canvas)");
    EXPECT_EQ(call("(){" + canvas + "return c.toDataURL('image/jpeg', 0.1)}"), "(canvas)");
    // A copy, part of one, or the URL of a canvas that was not the last one asked: the text.
    std::string copy = call("(){" + canvas + "return Array.from(c.toDataURL()).join('')}");
    EXPECT_EQ(copy, run(canvas + "c.toDataURL()"));
    EXPECT_EQ(call("(){" + canvas + "return c.toDataURL().slice(0, 22)}"), "data:image/png;base64,");
    EXPECT_EQ(call("(){" + canvas + "var u = c.toDataURL(); c.width = 5; c.toDataURL(); return u}"), copy);
    // A canvas with no bitmap gives "data:,", which is text.
    EXPECT_EQ(call("(){var c = document.createElement('canvas'); c.width = 0; return c.toDataURL()}"), "data:,");
    // A URL made in an earlier evaluation is not this one's.
    view().loadHTMLStringBaseURL(std::nullopt, std::nullopt);
    EXPECT_EQ(runHere(canvas + "window.url = c.toDataURL(); ''"), "");
    std::optional<UIWebView::DataURLResult> later = view().dataURLByCallingFunction("(){return window.url}", {}, 1);
    ASSERT_TRUE(later);
    EXPECT_FALSE(later->fromCanvas);
    EXPECT_EQ(later->text, copy);
}

TEST_F(FunctionExpressionCall, LimitsHold)
{
    UIWebView::setExecutionTimeLimit(std::chrono::milliseconds(100));
    EXPECT_EQ(call("(){for (;;) {}}"), "error: stopped after 100 ms");
    EXPECT_TRUE(view().lastStopWasLimit());
    UIWebView::setExecutionTimeLimit(std::chrono::seconds(60));
    EXPECT_EQ(call("(){var keep = []; for (;;) keep.push(new Float64Array(1 << 20).fill(1))}"),
              "error: stopped: used too much memory");
    EXPECT_EQ(call("(){var c = document.createElement('canvas'); c.width = 1; c.height = 1; return c.toDataURL()}"),
              "(canvas)");
}

} // namespace
