#include "web/canvas/CanvasRenderingContext2D.h"

#include "web/canvas/CairoMapping.h"
#include "web/canvas/CanvasImageSource.h"
#include "web/canvas/CanvasPainter.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace {

struct Rect {
    double x, y, width, height;

    // The same rectangle with positive width and height.
    Rect normalized() const
    {
        Rect r = *this;
        if (r.width < 0)
            r.x += r.width, r.width = -r.width;
        if (r.height < 0)
            r.y += r.height, r.height = -r.height;
        return r;
    }
};

// A copy of a surface, for drawing a canvas onto itself.
cairo_surface_t* copyOf(cairo_surface_t* surface)
{
    cairo_surface_t* copy = cairo_surface_create_similar_image(surface, cairo_image_surface_get_format(surface),
                                                               cairo_image_surface_get_width(surface),
                                                               cairo_image_surface_get_height(surface));
    cairo_t* cr = cairo_create(copy);
    cairo_set_operator(cr, CAIRO_OPERATOR_SOURCE);
    cairo_set_source_surface(cr, surface, 0, 0);
    cairo_paint(cr);
    cairo_destroy(cr);
    return copy;
}

} // namespace

ExceptionOr<void> CanvasRenderingContext2D::drawImage(CanvasImageSource& image, double dx, double dy)
{
    if (!std::isfinite(dx) || !std::isfinite(dy))
        return {};
    double width = image.imageWidth(), height = image.imageHeight();
    return drawImage(image, 0, 0, width, height, dx, dy, width, height);
}

ExceptionOr<void> CanvasRenderingContext2D::drawImage(CanvasImageSource& image, double dx, double dy, double dw, double dh)
{
    if (!std::isfinite(dx) || !std::isfinite(dy) || !std::isfinite(dw) || !std::isfinite(dh))
        return {};
    return drawImage(image, 0, 0, image.imageWidth(), image.imageHeight(), dx, dy, dw, dh);
}

ExceptionOr<void> CanvasRenderingContext2D::drawImage(CanvasImageSource& image, double sx, double sy, double sw, double sh,
                                                      double dx, double dy, double dw, double dh)
{
    for (double v : {sx, sy, sw, sh, dx, dy, dw, dh}) {
        if (!std::isfinite(v))
            return {};
    }
    auto usable = image.checkUsability();
    if (usable.isException())
        return usable.exception();
    if (auto layers = checkNoOpenLayers(image, "drawImage"); layers.isException())
        return layers;
    if (!usable.value())
        return {};
    Rect source = Rect{sx, sy, sw, sh}.normalized();
    Rect destination = Rect{dx, dy, dw, dh}.normalized();
    if (source.width == 0 || source.height == 0 || destination.width == 0 || destination.height == 0)
        return {};

    // A source rectangle reaching outside the image is cut to it, and the destination with it
    // in proportion.
    double imageWidth = image.imageWidth(), imageHeight = image.imageHeight();
    double scaleX = destination.width / source.width, scaleY = destination.height / source.height;
    double left = std::max(source.x, 0.0), top = std::max(source.y, 0.0);
    double right = std::min(source.x + source.width, imageWidth), bottom = std::min(source.y + source.height, imageHeight);
    if (right <= left || bottom <= top)
        return {};
    destination = {destination.x + (left - source.x) * scaleX, destination.y + (top - source.y) * scaleY,
                   (right - left) * scaleX, (bottom - top) * scaleY};
    source = {left, top, right - left, bottom - top};

    cairo_surface_t* pixels = image.imageSurface();
    cairo_t* cr = cairo();
    if (!pixels || !cr || !state_.transform.isInvertible())
        return {};
    bool self = pixels == canvas_.bitmap();
    cairo_surface_t* surface = self ? copyOf(pixels) : cairo_surface_reference(pixels);

    // Filtering may reach past the source rectangle into the rest of the image, as in
    // browsers; beyond the image's own edges its border pixels repeat.
    CanvasImagePaint paintImage;
    paintImage.surface = surface;
    cairo_matrix_init(&paintImage.patternMatrix, 1 / scaleX, 0, 0, 1 / scaleY, source.x - destination.x / scaleX,
                      source.y - destination.y / scaleY);
    paintImage.filter = to_cairo_filter(state_.imageSmoothingEnabled, state_.imageSmoothingQuality);
    if (paintImage.filter == CAIRO_FILTER_NEAREST) {
        // A pixel whose centre lands exactly on the edge between two source pixels takes the
        // one before it in browsers; Cairo would take the one after. The nudge stays far
        // below a source pixel, so only such ties change.
        constexpr double kTieBreak = 1.0 / 1024;
        paintImage.patternMatrix.x0 -= kTieBreak;
        paintImage.patternMatrix.y0 -= kTieBreak;
    }
    paintImage.extend = CAIRO_EXTEND_PAD;

    std::array<cairo_path_data_t, 9> path;
    double corners[4][2] = {{destination.x, destination.y},
                            {destination.x + destination.width, destination.y},
                            {destination.x + destination.width, destination.y + destination.height},
                            {destination.x, destination.y + destination.height}};
    for (int i = 0; i < 4; ++i) {
        path[2 * i].header = {i == 0 ? CAIRO_PATH_MOVE_TO : CAIRO_PATH_LINE_TO, 2};
        double x = corners[i][0], y = corners[i][1];
        state_.transform.map(x, y);
        path[2 * i + 1].point = {x, y};
    }
    path[8].header = {CAIRO_PATH_CLOSE_PATH, 1};
    paint(CanvasShape{path, false, false, CAIRO_FILL_RULE_WINDING}, paintImage);

    cairo_surface_destroy(surface);
    return {};
}
