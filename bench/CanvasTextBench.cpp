// Canvas text: the built-in preview script writes the battery level in the middle of a small
// canvas on every render, so setting its font and drawing two digits must cost next to
// nothing once warm; the cold paths show what a script with ever-changing text pays.
#include "web/text/CanvasText.h"

#include <benchmark/benchmark.h>
#include <cairo.h>

#include <string>

namespace {

// The preview script at height 52: a 28 pixel canvas, the level in a 17.33 pixel font.
void BM_PreviewLevelText(benchmark::State& state)
{
    cairo_surface_t* surface = cairo_image_surface_create(CAIRO_FORMAT_ARGB32, 28, 28);
    cairo_t* cr = cairo_create(surface);
    CanvasTextStyle style;
    style.align = CanvasTextAlign::Center;
    style.baseline = CanvasTextBaseline::Middle;
    for (auto _ : state) {
        style.font = *parseCanvasFont(std::to_string(4 * 13 / 3.0) + "px Helvetica Neue");
        appendTextPath(cr, "55", 14, 14, style, std::nullopt);
        cairo_fill(cr);
    }
    cairo_destroy(cr);
    cairo_surface_destroy(surface);
}
BENCHMARK(BM_PreviewLevelText);

void BM_MeasureShortText(benchmark::State& state)
{
    CanvasTextStyle style;
    style.font = *parseCanvasFont("12px Helvetica Neue");
    for (auto _ : state)
        benchmark::DoNotOptimize(measureText("100%", style));
}
BENCHMARK(BM_MeasureShortText);

// Every call a text never seen before: shaping and font lookup without the caches' help.
void BM_MeasureNewText(benchmark::State& state)
{
    CanvasTextStyle style;
    style.font = *parseCanvasFont("12px Helvetica Neue");
    unsigned n = 0;
    for (auto _ : state)
        benchmark::DoNotOptimize(measureText("Level " + std::to_string(++n), style));
}
BENCHMARK(BM_MeasureNewText);

void BM_ParseNewFont(benchmark::State& state)
{
    unsigned n = 0;
    for (auto _ : state)
        benchmark::DoNotOptimize(parseCanvasFont("bold " + std::to_string(++n % 100000) + "px Helvetica Neue, sans-serif"));
}
BENCHMARK(BM_ParseNewFont);

void BM_DrawLongText(benchmark::State& state)
{
    cairo_surface_t* surface = cairo_image_surface_create(CAIRO_FORMAT_ARGB32, 400, 40);
    cairo_t* cr = cairo_create(surface);
    CanvasTextStyle style;
    style.font = *parseCanvasFont("14px sans-serif");
    const std::string text(state.range(0), 'a');
    for (auto _ : state) {
        appendTextPath(cr, text, 0, 20, style, 400.0);
        cairo_new_path(cr);
    }
    state.SetComplexityN(state.range(0));
    cairo_destroy(cr);
    cairo_surface_destroy(surface);
}
BENCHMARK(BM_DrawLongText)->Arg(1000)->Arg(100000);

} // namespace
