// Drawings that cover nothing, under the operators that reach past what is drawn: which ones
// a browser skips and which ones still clear the canvas. data/compositing-empty.tsv holds what
// Chromium does for each; every row runs here through the script engine.
#include "CanvasTestSupport.h"
#include "tests/web/script/ScriptTestSupport.h"

#include "web/canvas/Path2D.h"

#include <filesystem>
#include <fstream>
#include <sstream>
#include <vector>

namespace {

const std::filesystem::path kTable = std::filesystem::path(AMPWELL_SOURCE_DIR) / "tests/web/canvas/data/compositing-empty.tsv";

struct Row {
    std::string call, emptiness, drawing, unbounded, sourceOver;
};

std::vector<Row> loadRows()
{
    std::ifstream file(kTable);
    std::vector<Row> rows;
    std::string line;
    while (std::getline(file, line)) {
        if (line.empty() || line[0] == '#')
            continue;
        std::vector<std::string> fields;
        std::istringstream cells(line);
        for (std::string cell; std::getline(cells, cell, '\t');)
            fields.push_back(cell);
        if (fields.size() == 5)
            rows.push_back({fields[0], fields[1], fields[2], fields[3], fields[4]});
        else
            rows.push_back({"malformed", line, "", "", ""});
    }
    return rows;
}

// The set-up the table describes, then the drawing under each operator; the outcomes joined
// with "|", source-over last.
std::string probeScript(const std::string& drawing)
{
    return R"JS((function (draw) {
  var ops = ["copy", "source-in", "source-out", "destination-in", "destination-atop", "source-over"];
  var red = document.createElement("canvas"); red.width = 10; red.height = 10;
  var r = red.getContext("2d"); r.fillStyle = "#f00"; r.fillRect(0, 0, 10, 10);
  var zeroWide = document.createElement("canvas"); zeroWide.width = 0; zeroWide.height = 10;
  return ops.map(function (op) {
    var c = document.createElement("canvas"); c.width = 20; c.height = 20;
    var x = c.getContext("2d");
    var pixels = x.createImageData(4, 4);
    for (var i = 0; i < pixels.data.length; i += 4) { pixels.data[i + 1] = 255; pixels.data[i + 3] = 255; }
    x.fillStyle = "#00f"; x.fillRect(0, 0, 20, 20);
    x.globalCompositeOperation = op; x.fillStyle = "#f00"; x.strokeStyle = "#f00"; x.font = "16px sans-serif";
    var thrown = "";
    try { draw(x, red, zeroWide, pixels); } catch (e) { thrown = "throws " + e.name + ", "; }
    var d = x.getImageData(0, 0, 20, 20).data, kept = 0, cleared = 0, inClip = 0, lime = 0;
    for (var p = 0; p < 400; p++) {
      var q = 4 * p;
      if (d[q] == 0 && d[q + 1] == 0 && d[q + 2] == 255 && d[q + 3] == 255) kept++;
      else if (d[q] == 0 && d[q + 1] == 255 && d[q + 2] == 0 && d[q + 3] == 255) lime++;
      else if (d[q + 3] == 0) { cleared++; if (p % 20 < 8 && p < 160) inClip++; }
    }
    var outcome = kept == 400 ? "kept" : cleared == 400 ? "cleared"
      : kept == 336 && inClip == 64 ? "cleared in clip" : kept == 384 && lime == 16 ? "put"
      : "kept " + kept + ", cleared " + cleared + ", other " + (400 - kept - cleared);
    return thrown + outcome;
  }).join("|");
}))JS" "(function (x, red, zeroWide, pixels) { "
        + drawing + " })";
}

using CanvasEmptyCompositingTable = ScriptTest;

TEST_F(CanvasEmptyCompositingTable, EveryRowAsChromiumDrawsIt)
{
    const auto rows = loadRows();
    ASSERT_GT(rows.size(), 100u) << kTable << " is missing or short";
    for (const Row& row : rows) {
        std::string expected;
        for (int i = 0; i < 5; ++i)
            expected += row.unbounded + "|";
        expected += row.sourceOver;
        EXPECT_EQ(run(probeScript(row.drawing)), expected)
            << row.call << ", " << row.emptiness << ": " << row.drawing << " " << lastError()
            << " (outcomes under copy|source-in|source-out|destination-in|destination-atop|source-over)";
    }
}

// The same rules through the context's own interface, where the script bindings play no part.

TEST(CanvasEmptyCompositing, AFlatRectangleClearsUnderDestinationInAndNothingElseDoes)
{
    TestCanvas canvas(10, 10);
    canvas->setFillStyle(std::string("blue"));
    canvas->fillRect(0, 0, 10, 10);
    canvas->setGlobalCompositeOperation("destination-in");
    canvas->fillRect(0, 0, 0, 0); // no width nor height: skipped
    EXPECT_EQ(pixelAt(canvas, 5, 5), kBlue);
    canvas->setGlobalCompositeOperation("source-over");
    canvas->fillRect(3, 0, 0, 10);
    canvas->setGlobalCompositeOperation("xor");
    canvas->fillRect(3, 0, 0, 10);
    canvas->setGlobalCompositeOperation("destination-out");
    canvas->fillRect(3, 0, 10, 0);
    EXPECT_EQ(pixelAt(canvas, 3, 5), kBlue);
    EXPECT_EQ(pixelAt(canvas, 0, 0), kBlue);

    // The level bar of a theme at 0 %: nothing of the gradient below survives.
    canvas->setGlobalCompositeOperation("destination-in");
    canvas->fillRect(0, 0, 10 * 0 / 100.0, 10);
    EXPECT_EQ(pixelAt(canvas, 0, 0), kTransparent);
    EXPECT_EQ(pixelAt(canvas, 9, 9), kTransparent);
}

TEST(CanvasEmptyCompositing, AnEmptyDrawingClearsOnlyWithinTheClipAndTheLayer)
{
    TestCanvas canvas(10, 10);
    canvas->setFillStyle(std::string("blue"));
    canvas->fillRect(0, 0, 10, 10);
    canvas->save();
    canvas->rect(0, 0, 5, 10);
    canvas->clip();
    canvas->setGlobalCompositeOperation("copy");
    canvas->fillText("", 2, 8);
    ASSERT_FALSE(canvas->restore().isException());
    EXPECT_EQ(pixelAt(canvas, 2, 5), kTransparent);
    EXPECT_EQ(pixelAt(canvas, 7, 5), kBlue);

    // Inside a layer, like any drawing, it clears the layer and not the canvas below; the layer
    // then lands source-over.
    ASSERT_FALSE(canvas->beginLayer().isException());
    canvas->setFillStyle(std::string("red"));
    canvas->fillRect(5, 0, 5, 10);
    canvas->setGlobalCompositeOperation("source-in");
    canvas->fillRect(5, 0, 0, 10);
    ASSERT_FALSE(canvas->endLayer().isException());
    EXPECT_EQ(pixelAt(canvas, 7, 5), kBlue);
    EXPECT_EQ(pixelAt(canvas, 2, 5), kTransparent);
}

TEST(CanvasEmptyCompositing, OnlyALoneLineMadeByCallsIsSkippedByFill)
{
    auto fillsUnderCopy = [](auto build) {
        TestCanvas canvas(4, 4);
        canvas->fillRect(0, 0, 4, 4);
        canvas->setGlobalCompositeOperation("copy");
        build(*canvas.context);
        return pixelAt(canvas, 0, 0) == kTransparent;
    };
    EXPECT_FALSE(fillsUnderCopy([](CanvasRenderingContext2D& x) { x.fill(); }));
    EXPECT_FALSE(fillsUnderCopy([](CanvasRenderingContext2D& x) { x.moveTo(1, 1), x.lineTo(3, 3), x.fill(); }));
    EXPECT_FALSE(fillsUnderCopy([](CanvasRenderingContext2D& x) { x.lineTo(1, 1), x.fill(); }));
    EXPECT_FALSE(fillsUnderCopy([](CanvasRenderingContext2D& x) { (void)x.arc(2, 2, 0, 0, 1), x.fill(); }));
    EXPECT_FALSE(fillsUnderCopy([](CanvasRenderingContext2D& x) { x.rect(1, 1, 0, 0), x.lineTo(3, 3), x.fill(); }));
    EXPECT_TRUE(fillsUnderCopy([](CanvasRenderingContext2D& x) { x.moveTo(1, 1), x.fill(); }));
    EXPECT_TRUE(fillsUnderCopy([](CanvasRenderingContext2D& x) { x.moveTo(1, 1), x.lineTo(3, 3), x.lineTo(3, 3), x.fill(); }));
    EXPECT_TRUE(fillsUnderCopy([](CanvasRenderingContext2D& x) { x.moveTo(1, 1), x.lineTo(3, 3), x.closePath(), x.fill(); }));
    EXPECT_TRUE(fillsUnderCopy([](CanvasRenderingContext2D& x) { x.moveTo(1, 1), x.moveTo(2, 2), x.lineTo(3, 3), x.fill(); }));
    EXPECT_TRUE(fillsUnderCopy([](CanvasRenderingContext2D& x) { x.moveTo(1, 1), (void)x.arc(2, 2, 0, 0, 1), x.fill(); }));
    EXPECT_TRUE(fillsUnderCopy([](CanvasRenderingContext2D& x) { x.moveTo(1, 1), x.scale(2, 2), x.lineTo(1.5, 1.5), x.fill(); }));
    EXPECT_TRUE(fillsUnderCopy([](CanvasRenderingContext2D& x) { x.moveTo(1, 1), x.lineTo(3, 3), x.save(), x.translate(1, 0), (void)x.restore(), x.fill(); }));
    // beginPath() forgets what the last path was.
    EXPECT_FALSE(fillsUnderCopy([](CanvasRenderingContext2D& x) { x.rect(0, 0, 1, 1), x.beginPath(), x.moveTo(1, 1), x.lineTo(3, 3), x.fill(); }));

    Path2D line;
    line.moveTo(1, 1);
    line.lineTo(3, 3);
    EXPECT_FALSE(fillsUnderCopy([&](CanvasRenderingContext2D& x) { x.fill(line); }));
    EXPECT_TRUE(fillsUnderCopy([&](CanvasRenderingContext2D& x) { x.fill(Path2D(line)); }));
    EXPECT_TRUE(fillsUnderCopy([&](CanvasRenderingContext2D& x) { x.fill(Path2D("M1 1L3 3")); }));
    EXPECT_TRUE(fillsUnderCopy([&](CanvasRenderingContext2D& x) {
        Path2D joined = line;
        (void)joined.addPath(Path2D());
        x.fill(joined);
    }));
}

TEST(CanvasEmptyCompositing, AStrokeNeedsPointsApart)
{
    auto strokesUnderCopy = [](auto build) {
        TestCanvas canvas(20, 20);
        canvas->fillRect(0, 0, 20, 20);
        canvas->setGlobalCompositeOperation("copy");
        canvas->setLineCap("round");
        canvas->setLineWidth(4);
        build(*canvas.context);
        return pixelAt(canvas, 19, 19) == kTransparent;
    };
    EXPECT_FALSE(strokesUnderCopy([](CanvasRenderingContext2D& x) { x.stroke(); }));
    EXPECT_FALSE(strokesUnderCopy([](CanvasRenderingContext2D& x) { x.moveTo(5, 5), x.lineTo(5, 5), x.stroke(); }));
    EXPECT_FALSE(strokesUnderCopy([](CanvasRenderingContext2D& x) { x.moveTo(5, 5), x.lineTo(5 + 1e-9, 5), x.stroke(); }));
    // A start point no segment leaves is not part of the stroke.
    EXPECT_FALSE(strokesUnderCopy([](CanvasRenderingContext2D& x) { x.moveTo(5, 5), x.lineTo(5, 5), x.moveTo(15, 15), x.stroke(); }));
    EXPECT_FALSE(strokesUnderCopy([](CanvasRenderingContext2D& x) { x.rect(5, 5, 0, 0), x.rect(15, 15, 0, 0), x.stroke(); }));
    EXPECT_TRUE(strokesUnderCopy([](CanvasRenderingContext2D& x) { x.moveTo(5, 5), x.lineTo(5, 5), x.moveTo(15, 15), x.lineTo(15, 15), x.stroke(); }));
    EXPECT_TRUE(strokesUnderCopy([](CanvasRenderingContext2D& x) { x.moveTo(0, 0), x.lineTo(1e-6, 0), x.stroke(); }));
    EXPECT_TRUE(strokesUnderCopy([](CanvasRenderingContext2D& x) { x.moveTo(5, 5), x.lineTo(5, 15), x.stroke(); }));
}

} // namespace
