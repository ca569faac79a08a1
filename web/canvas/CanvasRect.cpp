#include "web/canvas/CanvasRenderingContext2D.h"

#include "web/canvas/CanvasPainter.h"

#include <array>
#include <cmath>

namespace {

// The rectangle as a closed device-space path.
std::array<cairo_path_data_t, 9> rectanglePath(const AffineTransform& transform, double x, double y, double w, double h)
{
    std::array<cairo_path_data_t, 9> data;
    double corners[4][2] = {{x, y}, {x + w, y}, {x + w, y + h}, {x, y + h}};
    for (int i = 0; i < 4; ++i) {
        data[2 * i].header = {i == 0 ? CAIRO_PATH_MOVE_TO : CAIRO_PATH_LINE_TO, 2};
        double px = corners[i][0], py = corners[i][1];
        transform.map(px, py);
        data[2 * i + 1].point = {px, py};
    }
    data[8].header = {CAIRO_PATH_CLOSE_PATH, 1};
    return data;
}

bool finite(double x, double y, double w, double h)
{
    return std::isfinite(x) && std::isfinite(y) && std::isfinite(w) && std::isfinite(h);
}

} // namespace

void CanvasRenderingContext2D::clearRect(double x, double y, double w, double h)
{
    if (!finite(x, y, w, h) || w == 0 || h == 0)
        return;
    cairo_t* cr = cairo();
    if (!cr)
        return;
    auto path = rectanglePath(state_.transform, x, y, w, h);
    CanvasPainter(cr, state_, targetArea(), drawingSpace()).clear(CanvasShape{path, false, false});
}

void CanvasRenderingContext2D::fillRect(double x, double y, double w, double h)
{
    if (!finite(x, y, w, h) || (w == 0 && h == 0))
        return;
    if (w == 0 || h == 0) {
        // Browsers skip only a rectangle with neither width nor height. A flat one fills no
        // pixel but is still composited: under destination-in it clears the canvas, as a
        // level bar masked to `width * level / 100` must show nothing at level 0.
        compositeNothing();
        return;
    }
    auto path = rectanglePath(state_.transform, x, y, w, h);
    paint(CanvasShape{path, false, false}, &state_.fillStyle);
}

void CanvasRenderingContext2D::strokeRect(double x, double y, double w, double h)
{
    if (!finite(x, y, w, h))
        return;
    if (w == 0 && h == 0)
        return;
    if (w == 0 || h == 0) {
        // A flat rectangle strokes as a line there and back, closed: joins at its ends, no
        // caps, as browsers draw it.
        std::array<cairo_path_data_t, 5> line;
        double x0 = x, y0 = y, x1 = x + w, y1 = y + h;
        state_.transform.map(x0, y0);
        state_.transform.map(x1, y1);
        line[0].header = {CAIRO_PATH_MOVE_TO, 2};
        line[1].point = {x0, y0};
        line[2].header = {CAIRO_PATH_LINE_TO, 2};
        line[3].point = {x1, y1};
        line[4].header = {CAIRO_PATH_CLOSE_PATH, 1};
        paint(CanvasShape{line, false, true}, &state_.strokeStyle);
        return;
    }
    auto path = rectanglePath(state_.transform, x, y, w, h);
    paint(CanvasShape{path, false, true}, &state_.strokeStyle);
}
