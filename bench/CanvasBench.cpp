// The canvas calls of the built-in preview script at a 52 pixel battery, without the script
// engine: what our Canvas 2D costs per battery, canvas creation and data URL included.
#include "web/canvas/CanvasRenderingContext2D.h"
#include "web/canvas/HTMLCanvasElement.h"

#include <benchmark/benchmark.h>

#include <cmath>
#include <string>

namespace {

std::string drawPreview(int height, int level)
{
    double d = std::round(3.0 * height / 4) / 2;
    int lineWidth = height / 20;
    double side = 2 * d + lineWidth;
    double centre = side / 2;
    auto canvas = HTMLCanvasElement::create();
    CanvasRenderingContext2D* a = canvas->getContext2d();
    canvas->setWidth(unsigned(side));
    canvas->setHeight(unsigned(side));
    a->setLineWidth(lineWidth);
    a->setStrokeStyle(std::string("rgba(255,255,255,0.3)"));
    (void)a->arc(centre, centre, d, 0, 2 * M_PI);
    a->stroke();
    a->setStrokeStyle(std::string("rgb(255,255,255)"));
    a->setFillStyle(a->strokeStyle());
    a->beginPath();
    (void)a->arc(centre, centre, d, M_PI * ((100.0 - level) / 50 - 0.5), 1.5 * M_PI);
    a->stroke();
    a->setFont(std::to_string(4 * d / 3) + "px Helvetica Neue");
    a->setTextAlign("center");
    a->setTextBaseline("middle");
    a->fillText(std::to_string(level), centre, centre);
    return canvas->toDataURL("image/png");
}

void BM_CanvasPreviewCalls(benchmark::State& state)
{
    for (auto _ : state)
        benchmark::DoNotOptimize(drawPreview(52, 55));
}
BENCHMARK(BM_CanvasPreviewCalls);

// The data URL alone, of a drawn 41 by 41 canvas.
void BM_CanvasToDataURL(benchmark::State& state)
{
    auto canvas = HTMLCanvasElement::create();
    CanvasRenderingContext2D* a = canvas->getContext2d();
    canvas->setWidth(41);
    canvas->setHeight(41);
    a->setLineWidth(2);
    (void)a->arc(20.5, 20.5, 19.5, 0, 2 * M_PI);
    a->stroke();
    for (auto _ : state)
        benchmark::DoNotOptimize(canvas->toDataURL("image/png"));
}
BENCHMARK(BM_CanvasToDataURL);

} // namespace
