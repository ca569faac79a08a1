// A new document must not see anything a script of an earlier document made or changed, though
// the engine keeps one realm for all of them.
#include "ScriptTestSupport.h"

#include "web/script/ScriptEngine.h"

namespace {

using IsolationTest = ScriptTest;

TEST_F(IsolationTest, GlobalsOfAScriptAreGoneInTheNextDocument)
{
    EXPECT_EQ(run("window.a = 1; var b = 2; c = 3; function d() {} let e = 5; const f = 6; class G {} 'set'"), "set");
    EXPECT_EQ(run("[typeof a, typeof b, typeof c, typeof d, typeof e, typeof f, typeof G].join()"),
              "undefined,undefined,undefined,undefined,undefined,undefined,undefined");
    // Top-level let and const stay with their script: declaring them again is no redeclaration.
    EXPECT_EQ(run("let e = 1; const f = 2; 'again'"), "again");
}

TEST_F(IsolationTest, ReplacedBuiltInsAreBackInTheNextDocument)
{
    EXPECT_EQ(run("Array.prototype.map = function () { return 'evil'; };"
                  "Math.round = () => 42; JSON.stringify = () => 'no'; String.prototype.trim = null;"
                  "Math = {}; Object.prototype.injected = 1; Array.prototype[Symbol.iterator] = null;"
                  "Object.prototype[Symbol.toPrimitive] = () => 7; 'spoiled'"),
              "spoiled");
    EXPECT_EQ(run("[[1, 2].map((x) => x * 2).join(), Math.round(1.6), JSON.stringify({a: 1}), ' x '.trim(),"
                  " ({}).injected, [...[3]], `${{}}`].join('|')"),
              "2,4|2|{\"a\":1}|x||3|[object Object]");
}

TEST_F(IsolationTest, DescriptorAndShapeChangesAreUndone)
{
    EXPECT_EQ(run("Object.defineProperty(Array.prototype, 'hidden', {value: 1});"
                  "Object.defineProperty(Math, 'max', {get() { throw 1; }});"
                  "Object.setPrototypeOf(Array.prototype, null); Object.freeze(Object.prototype);"
                  "Reflect.deleteProperty(Function.prototype, 'call'); delete Object.prototype.__proto__; 'done'"),
              "done");
    EXPECT_EQ(run("[typeof [].hidden, Math.max(1, 2), Array.prototype instanceof Object, Object.isFrozen(Object.prototype),"
                  " typeof Function.prototype.call, typeof ({}).__proto__].join()"),
              "undefined,2,true,false,function,object");
}

TEST_F(IsolationTest, AccessorsDeletedAndAssignedAgainComeBack)
{
    // Deleted and assigned again, an accessor is a data property under the same key: the key
    // count stays, and so does the key's presence.
    EXPECT_EQ(run("delete CanvasRenderingContext2D.prototype.lineWidth; CanvasRenderingContext2D.prototype.lineWidth = 5;"
                  "delete Map.prototype.size; Map.prototype.size = 7;"
                  "delete RegExp.prototype.flags; RegExp.prototype.flags = 'x'; 'reassigned'"),
              "reassigned");
    EXPECT_EQ(run("var c = document.createElement('canvas').getContext('2d'); c.lineWidth = 3;"
                  "[c.lineWidth, new Map([[1, 2]]).size, /a/g.flags,"
                  " typeof Object.getOwnPropertyDescriptor(CanvasRenderingContext2D.prototype, 'lineWidth').get].join()"),
              "3,1,g,function");
}

TEST_F(IsolationTest, MethodsDeletedAndAssignedAgainStayHidden)
{
    // The same function back under the same key, but now enumerable: for-in over any array
    // would list it.
    EXPECT_EQ(run("var m = Array.prototype.map; delete Array.prototype.map; Array.prototype.map = m;"
                  "var r = Math.round; delete Math.round; Math.round = r; 'reassigned'"),
              "reassigned");
    EXPECT_EQ(run("var keys = []; for (var k in []) keys.push(k); for (var k in Math) keys.push(k);"
                  "[keys.length, Object.keys(Math).length, Array.prototype.propertyIsEnumerable('map')].join()"),
              "0,0,false");
}

TEST_F(IsolationTest, TrailingKeysDeletedAndAssignedAgainInTheirOrderComeBack)
{
    // Taken off the end of the strings or of the symbols, up to the last that was not a plain
    // property, and assigned again in order, keys leave the list of keys as it was: only what
    // they are now gives them away.
    const std::string describe = "Reflect.ownKeys(o).map((k) => { var d = Object.getOwnPropertyDescriptor(o, k);"
                                 " return [String(k), 'value' in d, d.writable, d.enumerable, d.configurable]; }).join('|')";
    const std::string reassign = "{"
                                 "  var keys = Reflect.ownKeys(o).filter((k) => (typeof k === 'symbol') === symbols), from = keys.length;"
                                 "  while (from > 0) {"
                                 "    var d = Object.getOwnPropertyDescriptor(o, keys[from - 1]);"
                                 "    if (!d.configurable) break;"
                                 "    from--;"
                                 "    if (!('value' in d && d.writable && d.enumerable)) break;"
                                 "  }"
                                 "  var taken = keys.slice(from).map((k) => {"
                                 "    var d = Object.getOwnPropertyDescriptor(o, k); return [k, 'value' in d ? d.value : d.get]; });"
                                 "  taken.forEach(([k]) => delete o[k]);"
                                 "  taken.forEach(([k, v]) => { o[k] = v; });"
                                 "} 'reassigned'";
    // One object and one section a document: a change found anywhere makes a new realm for
    // everything.
    for (std::string object : {"Math", "Array.prototype", "String.prototype", "Map.prototype", "Object",
                               "Symbol.prototype", "CanvasRenderingContext2D.prototype", "Path2D.prototype"}) {
        for (std::string symbols : {"false", "true"}) {
            SCOPED_TRACE(object + (symbols == "true" ? " symbols" : " strings"));
            const std::string take = "var o = " + object + ", symbols = " + symbols + "; ";
            const std::string before = run(take + describe);
            EXPECT_EQ(run(take + reassign), "reassigned");
            EXPECT_EQ(run(take + describe), before);
        }
    }
}

TEST_F(IsolationTest, BuiltInFunctionsKeepTheirNamesAndLengths)
{
    EXPECT_EQ(run("delete Math.max.name; delete Math.max.length; delete Array.prototype.push.name;"
                  "delete CanvasRenderingContext2D.prototype.arc.length; 'deleted'"),
              "deleted");
    EXPECT_EQ(run("[Math.max.name, Math.max.length, [].push.name, CanvasRenderingContext2D.prototype.arc.length].join()"),
              "max,2,push,5");
}

TEST_F(IsolationTest, TheWindowsOwnMembersComeBack)
{
    EXPECT_EQ(run("self = 5; devicePixelRatio = 'x'; Object.defineProperty(window, 'y', {value: 1, configurable: true});"
                  "String(self)"),
              "5");
    EXPECT_EQ(run("[self === window, typeof devicePixelRatio, typeof y, window.window === window].join()"),
              "true,number,undefined,true");
}

TEST_F(IsolationTest, EachDocumentIsNew)
{
    EXPECT_EQ(run("document.marker = 1; window.kept = document.createElement('canvas'); typeof document.marker"), "number");
    EXPECT_EQ(run("[typeof document.marker, typeof kept, document.body.tagName].join()"), "undefined,undefined,BODY");
    // Within one document, scripts see each other's work.
    EXPECT_EQ(run("var shared = 'same document'; ''"), "");
    EXPECT_EQ(runHere("shared"), "same document");
}

TEST_F(IsolationTest, InterfacesScriptsChangedAreRestored)
{
    EXPECT_EQ(run("CanvasRenderingContext2D.prototype.fillRect = function () { window.called = true; };"
                  "delete CanvasRenderingContext2D.prototype.arc; HTMLCanvasElement.prototype.extra = 1; 'patched'"),
              "patched");
    EXPECT_EQ(run("var c = document.createElement('canvas').getContext('2d'); c.fillRect(0, 0, 1, 1);"
                  "[typeof called, typeof c.arc, typeof c.canvas.extra].join()"),
              "undefined,function,undefined");
}

TEST_F(IsolationTest, ARealmIsKeptWhileScriptsLeaveTheBuiltInsAlone)
{
    run("1");
    unsigned before = script::ScriptEngine::shared().realmsMade();
    for (int i = 0; i < 20; ++i)
        EXPECT_EQ(run("var g = " + std::to_string(i) + "; undeclared = g; String(g)"), std::to_string(i));
    EXPECT_EQ(script::ScriptEngine::shared().realmsMade(), before);
}

TEST_F(IsolationTest, ViewsDoNotRunInEachOthersDocuments)
{
    UIWebView other(CGRect{});
    other.loadHTMLStringBaseURL(std::nullopt, std::nullopt);
    EXPECT_EQ(other.stringByEvaluatingJavaScriptFromString("var mine = 'other'; mine"), "other");
    EXPECT_EQ(runHere("typeof mine"), "undefined");
}

} // namespace
