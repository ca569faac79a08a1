// Strokes and curved fills drawn through coverage masks must look like Cairo's own strokes and
// fills of the same path, whichever caps and joins they use, and must fall back where the
// masks would go wrong.
#include "CanvasTestSupport.h"

#include "web/canvas/PolylineStroker.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstdint>
#include <functional>
#include <string>
#include <vector>

namespace {

using PathBuilder = std::function<void(CanvasRenderingContext2D&)>;
using CairoPathBuilder = std::function<void(cairo_t*)>;

struct StrokeCase {
    const char* name;
    PathBuilder canvasPath;
    CairoPathBuilder cairoPath;
};

// The largest difference in alpha between the canvas's stroke and Cairo's stroke of the same
// path with the same pen.
int largestAlphaDifference(const StrokeCase& c, double width, const char* cap, const char* join, bool fill)
{
    TestCanvas canvas(60, 60);
    canvas->setLineWidth(width);
    canvas->setLineCap(cap);
    canvas->setLineJoin(join);
    c.canvasPath(*canvas.context);
    fill ? canvas->fill() : canvas->stroke();

    cairo_surface_t* reference = cairo_image_surface_create(CAIRO_FORMAT_ARGB32, 60, 60);
    cairo_t* cr = cairo_create(reference);
    cairo_set_line_width(cr, width);
    cairo_set_line_cap(cr, std::string_view(cap) == "round" ? CAIRO_LINE_CAP_ROUND
                           : std::string_view(cap) == "square" ? CAIRO_LINE_CAP_SQUARE
                                                                : CAIRO_LINE_CAP_BUTT);
    cairo_set_line_join(cr, std::string_view(join) == "round" ? CAIRO_LINE_JOIN_ROUND
                            : std::string_view(join) == "bevel" ? CAIRO_LINE_JOIN_BEVEL
                                                                 : CAIRO_LINE_JOIN_MITER);
    c.cairoPath(cr);
    fill ? cairo_fill(cr) : cairo_stroke(cr);
    cairo_surface_flush(reference);

    int worst = 0;
    const unsigned char* data = cairo_image_surface_get_data(reference);
    int stride = cairo_image_surface_get_stride(reference);
    for (int y = 0; y < 60; ++y) {
        for (int x = 0; x < 60; ++x)
            worst = std::max(worst, std::abs(pixelAt(canvas, x, y)[3] - int(data[y * stride + x * 4 + 3])));
    }
    cairo_destroy(cr);
    cairo_surface_destroy(reference);
    return worst;
}

const StrokeCase kCases[] = {
    {"full circle", [](auto& c) { (void)c.arc(30, 30, 20, 0, 2 * M_PI); },
     [](cairo_t* cr) { cairo_arc(cr, 30, 30, 20, 0, 2 * M_PI); }},
    {"open arc", [](auto& c) { (void)c.arc(30, 30, 18, 0.3, 4); },
     [](cairo_t* cr) { cairo_arc(cr, 30, 30, 18, 0.3, 4); }},
    {"corner into a curve",
     [](auto& c) {
         c.moveTo(8, 50);
         c.lineTo(8, 20);
         c.quadraticCurveTo(30, 0, 52, 20);
         c.lineTo(40, 52);
     },
     [](cairo_t* cr) {
         cairo_move_to(cr, 8, 50);
         cairo_line_to(cr, 8, 20);
         cairo_curve_to(cr, 8 + 2.0 / 3 * 22, 20 - 2.0 / 3 * 20, 52 - 2.0 / 3 * 22, 20 - 2.0 / 3 * 20, 52, 20);
         cairo_line_to(cr, 40, 52);
     }},
    {"closed rounded shape",
     [](auto& c) {
         (void)c.arc(20, 20, 10, M_PI, 1.5 * M_PI);
         (void)c.arc(40, 20, 10, 1.5 * M_PI, 0);
         c.lineTo(40, 45);
         c.closePath();
     },
     [](cairo_t* cr) {
         cairo_arc(cr, 20, 20, 10, M_PI, 1.5 * M_PI);
         cairo_arc(cr, 40, 20, 10, 1.5 * M_PI, 0);
         cairo_line_to(cr, 40, 45);
         cairo_close_path(cr);
     }},
};

TEST(CoverageStroke, StrokesMatchCairoForEveryCapAndJoin)
{
    for (const StrokeCase& c : kCases) {
        for (double width : {1.0, 3.0, 7.5}) {
            for (const char* cap : {"butt", "round", "square"}) {
                for (const char* join : {"miter", "round", "bevel"}) {
                    EXPECT_LE(largestAlphaDifference(c, width, cap, join, false), 40)
                        << c.name << ", width " << width << ", " << cap << " caps, " << join << " joins";
                }
            }
        }
        EXPECT_LE(largestAlphaDifference(c, 1, "butt", "miter", true), 40) << c.name << " filled";
    }
}

TEST(CoverageStroke, TheEndsOfAFullCircleMeetWithoutANotch)
{
    TestCanvas canvas(60, 60);
    canvas->setLineWidth(6);
    (void)canvas->arc(30, 30, 20, 0, 2 * M_PI);
    canvas->stroke();
    // The seam at angle 0 looks like the rest of the ring, at the same distance from the centre.
    for (int dy : {-1, 0})
        EXPECT_NEAR(pixelAt(canvas, 52, 30 + dy)[3], pixelAt(canvas, 7, 30 + dy)[3], 4);
    EXPECT_EQ(pixelAt(canvas, 50, 30)[3], 255);
}

TEST(CoverageStroke, AStrokeRunningEitherWayCovers)
{
    for (bool anticlockwise : {false, true}) {
        TestCanvas canvas(40, 40);
        canvas->setLineWidth(6);
        (void)canvas->arc(20, 20, 12, 0, M_PI, anticlockwise);
        canvas->stroke();
        EXPECT_EQ(pixelAt(canvas, 20, anticlockwise ? 8 : 32)[3], 255);
        EXPECT_EQ(pixelAt(canvas, 20, anticlockwise ? 32 : 8)[3], 0);
    }
}

TEST(CoverageStroke, OutlinesItCannotFillAsAUnionAreLeftToCairo)
{
    FlattenedPath retraced;
    retraced.subpaths.push_back({{{0, 0}, {10, 0}, {10, 10}, {0, 10}, {0, 0}, {10, 0}}, false, {1, 0}, {1, 0}});
    EXPECT_FALSE(strokeOutline(retraced, {}).has_value());

    FlattenedPath six;  // a lead-in line and a loop that comes back across it
    six.subpaths.push_back({{{0, 0}, {20, 0}, {25, 5}, {20, 10}, {15, 5}, {18, 0}}, false, {1, 0}, {1, -1}});
    EXPECT_FALSE(strokeOutline(six, {}).has_value());

    FlattenedPath reversal;
    reversal.subpaths.push_back({{{0, 0}, {10, 0}, {0, 0}}, false, {1, 0}, {-1, 0}});
    EXPECT_FALSE(strokeOutline(reversal, {}).has_value());

    FlattenedPath tightBend;
    tightBend.subpaths.push_back({{{0, 0}, {1, 0}, {1, 1}, {0, 1}}, true, {}, {}});
    StrokeGeometry wide;
    wide.halfWidth = 5;
    EXPECT_FALSE(strokeOutline(tightBend, wide).has_value());

    FlattenedPath roundCapsAllRound;
    roundCapsAllRound.subpaths.push_back({{{0, 0}, {10, 0}, {10, 10}, {0, 10}, {0, 1}}, false, {1, 0}, {0, -1}});
    StrokeGeometry roundCaps;
    roundCaps.cap = CAIRO_LINE_CAP_ROUND;
    EXPECT_FALSE(strokeOutline(roundCapsAllRound, roundCaps).has_value());

    FlattenedPath lonePoint;
    lonePoint.subpaths.push_back({{{3, 3}}, false, {}, {}});
    ASSERT_TRUE(strokeOutline(lonePoint, {}).has_value());
    EXPECT_TRUE(strokeOutline(lonePoint, {})->empty());

    // And the canvas still draws them, through Cairo.
    TestCanvas canvas(40, 40);
    canvas->setLineWidth(4);
    (void)canvas->arc(20, 20, 12, 0, 3 * M_PI);
    canvas->stroke();
    EXPECT_EQ(pixelAt(canvas, 32, 21)[3], 255);
}

// A curved fill's flat top, the ends of a line, lands on the nearest quarter pixel as in the
// reference's pictures, at any fraction and under a transform, while a fill of straight edges
// keeps its exact coverage: the top row, a fraction f of it inside, comes out in quarter steps
// of alpha where exact coverage gives f.
TEST(CurvedFill, FlatEndsTakeQuarterPixelSteps)
{
    auto topRowAlpha = [](double top, bool curved, double scale) {
        TestCanvas canvas(60, 60);
        canvas->scale(scale, scale);
        canvas->beginPath();
        canvas->moveTo(10 / scale, top / scale);
        canvas->lineTo(40 / scale, top / scale);
        if (curved)
            canvas->quadraticCurveTo(50 / scale, 40 / scale, 40 / scale, 50 / scale);
        else
            canvas->lineTo(40 / scale, 50 / scale);
        canvas->lineTo(10 / scale, 50 / scale);
        canvas->closePath();
        canvas->fill();
        return pixelAt(canvas, 25, int(std::floor(top)))[3];
    };
    for (double scale : {1.0, 2.5}) {
        for (double fraction : {0.05, 0.2, 0.3, 0.45, 0.6, 0.7, 0.85, 0.95}) {
            const double top = 20 + fraction;
            const double inside = 1 - fraction;
            const double stepped = 1 - std::floor(fraction * 4 + 0.5) / 4;
            const std::string where = "top at " + std::to_string(top) + ", scale " + std::to_string(scale);
            EXPECT_NEAR(topRowAlpha(top, true, scale), stepped * 255, 1.5) << where;
            EXPECT_NEAR(topRowAlpha(top, false, scale), inside * 255, 1.5) << where;
        }
    }
}

} // namespace

namespace {

// Every pixel of the canvas, unpremultiplied.
std::vector<std::uint8_t> allPixels(const TestCanvas& canvas, int width, int height)
{
    auto data = canvas->getImageData(0, 0, width, height);
    if (data.isException())
        return {};
    return std::vector<std::uint8_t>(data.value()->data(), data.value()->data() + std::size_t(width) * height * 4);
}

// A ring, part of a ring and a number, as a battery draws them, at `offset` and on a canvas of
// `size` pixels square (smaller canvases cut them off).
std::vector<std::uint8_t> drawBattery(double offset, int size, const char* colour, double lineWidth = 2)
{
    TestCanvas canvas(size, size);
    canvas->setLineWidth(lineWidth);
    canvas->setStrokeStyle(std::string(colour));
    canvas->setFillStyle(std::string(colour));
    (void)canvas->arc(20.5 + offset, 20.5, 19.5, 0, 2 * M_PI);
    canvas->stroke();
    canvas->beginPath();
    (void)canvas->arc(20.5 + offset, 20.5, 19.5, -0.4 * M_PI, 1.5 * M_PI);
    canvas->stroke();
    canvas->setFont("26px Helvetica Neue");
    canvas->fillText("55", 8 + offset, 30);
    return allPixels(canvas, size, size);
}

// Fills every cache the drawing goes through (its flattened path, its stroke's outline, its
// coverage mask) with other drawings, so that the next one is
// drawn afresh.
void drawOtherShapes()
{
    for (int i = 0; i < 80; ++i)
        drawBattery((i + 0.5) / 16, 41, "#123456");
}

} // namespace

TEST(CoverageCacheTest, ADrawingRepeatedIsTheDrawingMadeAfresh)
{
    // Positions a fraction of a pixel apart, a canvas that cuts the drawing off, colours whose
    // text coverage differs and pens of other widths: drawn one after the other, each must give
    // what it gives drawn afresh.
    const struct {
        double offset;
        int size;
        const char* colour;
        double lineWidth;
    } drawings[] = {{0, 41, "white", 2}, {0.25, 41, "white", 2}, {0, 23, "white", 2}, {0, 41, "black", 2},
                    {0, 41, "rgba(0, 0, 255, 0.5)", 2}, {0, 41, "white", 3}};
    std::vector<std::vector<std::uint8_t>> fresh;
    for (const auto& d : drawings) {
        drawOtherShapes();
        fresh.push_back(drawBattery(d.offset, d.size, d.colour, d.lineWidth));
        ASSERT_FALSE(fresh.back().empty());
    }
    for (int round = 0; round < 2; ++round) {
        for (std::size_t i = 0; i < std::size(drawings); ++i) {
            const auto& d = drawings[i];
            SCOPED_TRACE(std::to_string(i));
            EXPECT_EQ(drawBattery(d.offset, d.size, d.colour, d.lineWidth), fresh[i]);
        }
    }
    EXPECT_NE(fresh[0], fresh[1]);
    EXPECT_NE(fresh[0], fresh[5]);
}
