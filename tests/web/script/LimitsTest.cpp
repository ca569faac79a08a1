// Scripts that run away, eat memory, recurse or throw in odd places: each ends as an ordinary
// failure of its own evaluation, and the next render works.
#include "ScriptTestSupport.h"

#include "platform/core/SystemLog.h"

#include <fstream>

#include <vector>

namespace {

using LimitsTest = ScriptTest;

std::size_t residentBytes()
{
    std::ifstream statm("/proc/self/statm");
    std::size_t total = 0, resident = 0;
    statm >> total >> resident;
    return resident * 4096;
}

constexpr const char* kNextRender = "var c = document.createElement('canvas'); c.width = 4; c.height = 4;"
                                    "c.getContext('2d').fillRect(0, 0, 4, 4); c.toDataURL().slice(0, 22)";

TEST_F(LimitsTest, AnEndlessLoopIsStoppedAndTheNextRenderWorks)
{
    UIWebView::setExecutionTimeLimit(std::chrono::milliseconds(100));
    EXPECT_EQ(run("for (;;) {}"), "");
    EXPECT_EQ(lastError(), "stopped after 100 ms");
    // Caught exceptions cannot keep a stopped script alive.
    EXPECT_EQ(run("for (;;) { try { while (true) {} } catch (e) {} finally { continue; } }"), "");
    EXPECT_EQ(lastError(), "stopped after 100 ms");
    EXPECT_EQ(run(kNextRender), "data:image/png;base64,");
    EXPECT_EQ(lastError(), "");
}

TEST_F(LimitsTest, AScriptThatAllocatesWithoutEndIsStoppedBeforeTheProcessGrowsByAGigabyte)
{
    UIWebView::setExecutionTimeLimit(std::chrono::seconds(60));
    std::size_t before = residentBytes();
    EXPECT_EQ(run("var keep = []; for (;;) keep.push(new Float64Array(1 << 20).fill(1));"), "");
    EXPECT_EQ(lastError(), "stopped: used too much memory");
    EXPECT_LT(residentBytes(), before + (std::size_t(1) << 30));
    EXPECT_EQ(run(kNextRender), "data:image/png;base64,");
}

TEST_F(LimitsTest, PromiseJobsNeverRunSoTheirChainsCannotHang)
{
    std::vector<std::string> lines;
    setSystemLogObserver([&](const std::string& line) { lines.push_back(line); });
    EXPECT_EQ(run("function again() { Promise.resolve().then(again); } again();"
                  "(async function () { for (;;) await 0; })();"
                  "Promise.resolve().then(() => console.log('job ran')); 'queued'"),
              "queued");
    // Many documents later the queued jobs have been dropped without running.
    for (int i = 0; i < 70; ++i)
        EXPECT_EQ(run("Promise.reject(new Error('unhandled')); 'ok'"), "ok");
    setSystemLogObserver(nullptr);
    for (const std::string& line : lines)
        EXPECT_EQ(line.find("job ran"), std::string::npos);
    EXPECT_EQ(run(kNextRender), "data:image/png;base64,");
}

TEST_F(LimitsTest, RunawaysOfOtherKindsAreOrdinaryExceptions)
{
    EXPECT_EQ(run("function down() { return down() + 1; } down()"), "");
    EXPECT_EQ(lastError(), "RangeError: Maximum call stack size exceeded.");
    EXPECT_EQ(run("var a = []; a.push(a); JSON.stringify(a)"), "");
    EXPECT_EQ(lastError().rfind("TypeError: JSON.stringify cannot serialize cyclic structures", 0), 0u) << lastError();
    EXPECT_EQ(run("'x'.repeat(2 ** 31)"), "");
    EXPECT_EQ(lastError(), "RangeError: Out of memory");
    EXPECT_EQ(run("var s = 'ab'; for (var i = 0; i < 40; i++) s += s; s.length"), "");
    EXPECT_EQ(lastError(), "RangeError: Out of memory");
    // A throwing valueOf reaches the script as the exception it threw.
    EXPECT_EQ(run("var c = document.createElement('canvas').getContext('2d');"
                  "try { c.fillRect({ valueOf() { throw new SyntaxError('from valueOf'); } }, 0, 1, 1); '' }"
                  "catch (e) { e.name + ': ' + e.message }"),
              "SyntaxError: from valueOf");
    // A recursion through the bindings ends in the same RangeError.
    EXPECT_EQ(run("var c = document.createElement('canvas').getContext('2d');"
                  "var deep = { valueOf() { c.lineTo(deep, 0); return 1; } };"
                  "try { c.moveTo(deep, 0); 'no' } catch (e) { e instanceof RangeError ? 'range' : String(e) }"),
              "range");
    EXPECT_EQ(run(kNextRender), "data:image/png;base64,");
}

TEST_F(LimitsTest, CanvasesOfPastDocumentsAreLetGo)
{
    // 4 MB of bitmap per document: if nothing released them, the memory limit would stop us.
    std::size_t before = residentBytes();
    for (int i = 0; i < 150; ++i) {
        ASSERT_EQ(run("var c = document.createElement('canvas'); c.width = 1000; c.height = 1000;"
                      "var x = c.getContext('2d'); x.fillRect(0, 0, 1000, 1000); window.keep = c; 'drawn'"),
                  "drawn")
            << lastError();
    }
    EXPECT_LT(residentBytes(), before + (std::size_t(400) << 20));
}

TEST_F(LimitsTest, HugeNativeAllocationsFailWithTheStandardsErrors)
{
    // Too large an ImageData is refused before any allocation (browsers differ in the name).
    EXPECT_EQ(run("try { new ImageData(1 << 20, 1 << 20); 'made' } catch (e) {"
                  "  ['RangeError', 'IndexSizeError'].includes(e.name) ? 'refused' : e.name }"),
              "refused");
    EXPECT_EQ(run("var c = document.createElement('canvas'); c.width = 100000; c.height = 100000;"
                  "c.getContext('2d').fillRect(0, 0, 10, 10); c.toDataURL()"),
              "data:,");
    EXPECT_EQ(run("var c = document.createElement('canvas').getContext('2d');"
                  "try { c.getImageData(0, 0, 1 << 30, 1 << 30); 'made' } catch (e) {"
                  "  ['RangeError', 'IndexSizeError'].includes(e.name) ? 'refused' : e.name }"),
              "refused");
}

} // namespace
