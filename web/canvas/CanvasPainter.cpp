#include "web/canvas/CanvasPainter.h"

#include "web/canvas/CairoMapping.h"
#include "web/canvas/CanvasGradient.h"
#include "web/canvas/CanvasPattern.h"
#include "web/canvas/ConicGradient.h"
#include "web/canvas/FilterEffects.h"
#include "web/canvas/GaussianBlur.h"

#include <algorithm>
#include <cmath>

namespace {

void setIdentity(cairo_t* cr)
{
    cairo_identity_matrix(cr);
}

// Clips `cr` to the band a one-way repeating pattern covers: its rows (repeat-x) or columns
// (repeat-y), as far as the device rectangle reaches.
void clipToPatternBand(cairo_t* cr, const CanvasPattern& pattern, const AffineTransform& ctm, const CanvasDeviceRect& bounds)
{
    AffineTransform toDevice = ctm.multiply(pattern.transform());
    auto toPattern = toDevice.inverse();
    if (!toPattern)
        return;
    double minX = INFINITY, minY = INFINITY, maxX = -INFINITY, maxY = -INFINITY;
    for (auto [x, y] : {std::pair<double, double>{double(bounds.x), double(bounds.y)},
                        {double(bounds.x + bounds.width), double(bounds.y)},
                        {double(bounds.x), double(bounds.y + bounds.height)},
                        {double(bounds.x + bounds.width), double(bounds.y + bounds.height)}}) {
        toPattern->map(x, y);
        minX = std::min(minX, x), maxX = std::max(maxX, x);
        minY = std::min(minY, y), maxY = std::max(maxY, y);
    }
    // The band takes in the transparent margins, where filtering fades the edge out.
    int margin = CanvasPattern::kBandMargin;
    if (pattern.repetition() == CanvasPatternRepetition::RepeatX) {
        minY = -margin, maxY = pattern.height() + margin;
    } else {
        minX = -margin, maxX = pattern.width() + margin;
    }
    cairo_matrix_t m = to_cairo_matrix(toDevice);
    cairo_set_matrix(cr, &m);
    cairo_new_path(cr);
    cairo_rectangle(cr, minX, minY, maxX - minX, maxY - minY);
    setIdentity(cr);
    cairo_clip(cr);
}

CanvasDeviceRect intersect(const CanvasDeviceRect& a, const CanvasDeviceRect& b)
{
    int left = std::max(a.x, b.x), top = std::max(a.y, b.y);
    int right = std::min(a.x + a.width, b.x + b.width), bottom = std::min(a.y + a.height, b.y + b.height);
    return {left, top, std::max(0, right - left), std::max(0, bottom - top)};
}

// The device pixels a filled shape can touch: the bounds of its points, curves' control
// points included; nothing when they are not numbers.
std::optional<CanvasDeviceRect> fillBounds(const CanvasShape& shape, const AffineTransform& transform)
{
    double minX = INFINITY, minY = INFINITY, maxX = -INFINITY, maxY = -INFINITY;
    for (std::size_t i = 0; i < shape.path.size(); i += shape.path[i].header.length) {
        for (int j = 1; j < shape.path[i].header.length; ++j) {
            double x = shape.path[i + j].point.x, y = shape.path[i + j].point.y;
            if (shape.inUserSpace)
                transform.map(x, y);
            minX = std::min(minX, x), maxX = std::max(maxX, x);
            minY = std::min(minY, y), maxY = std::max(maxY, y);
        }
    }
    if (!(minX <= maxX && minY <= maxY))
        return std::nullopt;
    auto clampToInt = [](double v) { return int(std::clamp(v, -1e9, 1e9)); };
    int left = clampToInt(std::floor(minX)) - 1, top = clampToInt(std::floor(minY)) - 1;
    int right = clampToInt(std::ceil(maxX)) + 1, bottom = clampToInt(std::ceil(maxY)) + 1;
    return CanvasDeviceRect{left, top, right - left, bottom - top};
}

bool needsBandClip(const CanvasPaintSource& source)
{
    auto* style = std::get_if<const CanvasPaintStyle*>(&source);
    if (!style || !(*style)->pattern)
        return false;
    auto repetition = (*style)->pattern->repetition();
    return repetition == CanvasPatternRepetition::RepeatX || repetition == CanvasPatternRepetition::RepeatY;
}

} // namespace

std::array<cairo_path_data_t, 9> deviceRectanglePath(const CanvasDeviceRect& r)
{
    std::array<cairo_path_data_t, 9> data;
    double corners[4][2] = {{double(r.x), double(r.y)},
                            {double(r.x) + r.width, double(r.y)},
                            {double(r.x) + r.width, double(r.y) + r.height},
                            {double(r.x), double(r.y) + r.height}};
    for (int i = 0; i < 4; ++i) {
        data[2 * i].header = {i == 0 ? CAIRO_PATH_MOVE_TO : CAIRO_PATH_LINE_TO, 2};
        data[2 * i + 1].point = {corners[i][0], corners[i][1]};
    }
    data[8].header = {CAIRO_PATH_CLOSE_PATH, 1};
    return data;
}

bool CanvasPainter::drawsShadow(const CanvasDrawingState& state)
{
    return state.shadowColor.srgb.alpha != 0 && (state.shadowBlur > 0 || state.shadowOffsetX != 0 || state.shadowOffsetY != 0);
}

void CanvasPainter::paint(const CanvasShape& shape, const CanvasPaintSource& source)
{
    if (!state_.transform.isInvertible() || shape.path.empty())
        return;
    shapeBounds_ = shape.stroke ? std::nullopt : fillBounds(shape, state_.transform);
    if (state_.filterChain) {
        paintFiltered(shape, source);
        return;
    }
    if (drawsShadow(state_))
        paintShadow(shape, source);

    cairo_operator_t op = to_cairo_operator(state_.globalCompositeOperation);
    if (isUnboundedOperator(state_.globalCompositeOperation)) {
        // The shape with its alpha becomes a layer composited over the whole clip.
        cairo_push_group(cr_);
        cairo_reset_clip(cr_);
        cairo_set_operator(cr_, CAIRO_OPERATOR_OVER);
        drawShape(cr_, shape, source, state_.globalAlpha, canvasRect_);
        setIdentity(cr_);
        cairo_pop_group_to_source(cr_);
        cairo_set_operator(cr_, op);
        cairo_paint(cr_);
    } else {
        cairo_set_operator(cr_, op);
        drawShape(cr_, shape, source, state_.globalAlpha, canvasRect_);
    }
    cairo_set_operator(cr_, CAIRO_OPERATOR_OVER);
    cairo_set_source_rgba(cr_, 0, 0, 0, 0); // drop references to patterns and images
}

void CanvasPainter::paintFiltered(const CanvasShape& shape, const CanvasPaintSource& source)
{
    const FilterChain& chain = *state_.filterChain;
    int reach = filterReach(chain);
    // What lands on the target comes from within the filter's reach of it; a filter that
    // paints only near what was drawn needs no more than the shape's surroundings.
    CanvasDeviceRect area{canvasRect_.x - reach, canvasRect_.y - reach, canvasRect_.width + 2 * reach,
                          canvasRect_.height + 2 * reach};
    if (shapeBounds_ && !filterFillsRegion(chain)) {
        const CanvasDeviceRect& b = *shapeBounds_;
        area = intersect(area, {b.x - reach, b.y - reach, b.width + 2 * reach, b.height + 2 * reach});
    }
    if (area.width <= 0 || area.height <= 0)
        return;
    cairo_surface_t* image = cairo_image_surface_create(CAIRO_FORMAT_ARGB32, area.width, area.height);
    if (cairo_surface_status(image) != CAIRO_STATUS_SUCCESS) {
        cairo_surface_destroy(image);
        return;
    }
    cairo_surface_set_device_offset(image, -area.x, -area.y);
    cairo_t* imageCairo = cairo_create(image);
    drawShape(imageCairo, shape, source, 1, area);
    cairo_destroy(imageCairo);
    applyFilterChain(image, area, chain, colorSpace_);

    CanvasDrawingState filtered = state_;
    filtered.transform = AffineTransform();
    filtered.filterChain.reset();
    filtered.filterObject.reset();
    CanvasImagePaint result;
    result.surface = image;
    cairo_matrix_init_identity(&result.patternMatrix);
    result.filter = CAIRO_FILTER_NEAREST;
    result.extend = CAIRO_EXTEND_NONE;
    auto rectangle = deviceRectanglePath(area);
    CanvasPainter(cr_, filtered, canvasRect_, colorSpace_).paint(CanvasShape{rectangle, false, false}, result);
    cairo_surface_destroy(image);
}

void CanvasPainter::clear(const CanvasShape& shape)
{
    if (!state_.transform.isInvertible())
        return;
    std::vector<cairo_path_data_t> storage;
    setPath(cr_, devicePath(shape, storage));
    cairo_set_operator(cr_, CAIRO_OPERATOR_CLEAR);
    cairo_set_fill_rule(cr_, shape.fillRule);
    cairo_fill(cr_);
    cairo_set_operator(cr_, CAIRO_OPERATOR_OVER);
}

void CanvasPainter::compositeNothing()
{
    // The source is transparent everywhere, and so is its shadow: source-over and its kind
    // leave every pixel, while copy, source-in, source-out, destination-in and
    // destination-atop make every pixel in the clip transparent.
    if (!state_.transform.isInvertible() || !isUnboundedOperator(state_.globalCompositeOperation))
        return;
    setIdentity(cr_);
    cairo_set_operator(cr_, CAIRO_OPERATOR_CLEAR);
    cairo_paint(cr_);
    cairo_set_operator(cr_, CAIRO_OPERATOR_OVER);
}

void CanvasPainter::paintShadow(const CanvasShape& shape, const CanvasPaintSource& source)
{
    if (state_.globalCompositeOperation == CanvasCompositeOperation::Clear) {
        // Browsers composite a shadow as a layer over the whole canvas, and "clear" then
        // clears all of it (within the clip).
        setIdentity(cr_);
        cairo_set_operator(cr_, CAIRO_OPERATOR_CLEAR);
        cairo_paint(cr_);
        cairo_set_operator(cr_, CAIRO_OPERATOR_OVER);
        return;
    }
    // The shadow of what lands in the canvas comes from the canvas's rectangle moved back by
    // the offset, widened by the blur's reach.
    double sigma = state_.shadowBlur / 2;
    int margin = int(std::ceil(std::min(sigma, kMaxBlurSigma) * 3));
    double offsetX = state_.shadowOffsetX, offsetY = state_.shadowOffsetY;
    if (!std::isfinite(offsetX) || !std::isfinite(offsetY) || std::fabs(offsetX) > 1e6 || std::fabs(offsetY) > 1e6)
        return;
    if (sigma > 0) {
        // Browsers move a blurred shadow by whole pixels.
        offsetX = std::floor(offsetX + 0.5);
        offsetY = std::floor(offsetY + 0.5);
    }
    CanvasDeviceRect layerRect{int(std::floor(-offsetX)) - margin, int(std::floor(-offsetY)) - margin,
                               canvasRect_.width + 2 * margin + 1, canvasRect_.height + 2 * margin + 1};
    if (shapeBounds_) {
        const CanvasDeviceRect& b = *shapeBounds_;
        layerRect = intersect(layerRect, {b.x - margin, b.y - margin, b.width + 2 * margin, b.height + 2 * margin});
        if (layerRect.width == 0 || layerRect.height == 0)
            return;
    }
    cairo_surface_t* layer = cairo_image_surface_create(CAIRO_FORMAT_A8, layerRect.width, layerRect.height);
    if (cairo_surface_status(layer) != CAIRO_STATUS_SUCCESS) {
        cairo_surface_destroy(layer);
        return;
    }
    cairo_surface_set_device_offset(layer, -layerRect.x, -layerRect.y);
    cairo_t* layerCairo = cairo_create(layer);
    drawShape(layerCairo, shape, source, 1, layerRect);
    cairo_destroy(layerCairo);
    cairo_surface_flush(layer);
    if (sigma > 0)
        gaussianBlurAlpha(layer, sigma);

    // Other operators than source-over take the coloured shadow as a layer: unbounded ones
    // must reach the whole clip, and Cairo's blend modes mishandle a mask's empty parts.
    cairo_operator_t op = to_cairo_operator(state_.globalCompositeOperation);
    bool viaLayer = state_.globalCompositeOperation != CanvasCompositeOperation::SourceOver;
    setIdentity(cr_);
    if (viaLayer) {
        cairo_push_group(cr_);
        cairo_reset_clip(cr_);
    }
    cairo_set_operator(cr_, CAIRO_OPERATOR_OVER);
    set_cairo_source_color(cr_, state_.shadowColor.bytesIn(colorSpace_), state_.globalAlpha);
    cairo_mask_surface(cr_, layer, offsetX, offsetY);
    if (viaLayer) {
        cairo_pop_group_to_source(cr_);
        cairo_set_operator(cr_, op);
        cairo_paint(cr_);
    }
    cairo_surface_destroy(layer);
}

void CanvasPainter::drawShape(cairo_t* cr, const CanvasShape& shape, const CanvasPaintSource& source, double alpha,
                              const CanvasDeviceRect& bounds) const
{
    auto* style = std::get_if<const CanvasPaintStyle*>(&source);
    bool solid = style && (*style)->isColor();
    bool bandClip = needsBandClip(source);
    bool group = !solid && alpha < 1;
    if (group) {
        // Alpha on a gradient, pattern or image: paint it whole, then fade the result.
        cairo_push_group(cr);
        cairo_reset_clip(cr);
        cairo_set_operator(cr, CAIRO_OPERATOR_OVER);
    }
    if (bandClip) {
        cairo_save(cr);
        clipToPatternBand(cr, *(*style)->pattern, state_.transform, bounds);
    }
    if (setSource(cr, source, group ? 1 : alpha, bounds)) {
        std::vector<cairo_path_data_t> storage;
        fillOrStroke(cr, shape, devicePath(shape, storage));
    }
    if (bandClip)
        cairo_restore(cr);
    if (group) {
        setIdentity(cr);
        cairo_pop_group_to_source(cr);
        cairo_paint_with_alpha(cr, alpha);
    }
}

bool CanvasPainter::setSource(cairo_t* cr, const CanvasPaintSource& source, double alpha, const CanvasDeviceRect& bounds) const
{
    cairo_matrix_t ctm = to_cairo_matrix(state_.transform);
    if (auto* image = std::get_if<CanvasImagePaint>(&source)) {
        cairo_pattern_t* pattern = cairo_pattern_create_for_surface(image->surface);
        cairo_pattern_set_matrix(pattern, &image->patternMatrix);
        cairo_pattern_set_filter(pattern, image->filter);
        cairo_pattern_set_extend(pattern, image->extend);
        cairo_set_matrix(cr, &ctm);
        cairo_set_source(cr, pattern);
        cairo_pattern_destroy(pattern);
        return true;
    }

    const CanvasPaintStyle& style = *std::get<const CanvasPaintStyle*>(source);
    if (style.isColor()) {
        set_cairo_source_color(cr, style.color.bytesIn(colorSpace_), alpha);
        return true;
    }
    if (style.gradient) {
        const CanvasGradient& gradient = *style.gradient;
        if (gradient.colorStops().empty() || gradient.paintsNothing())
            return false;
        if (gradient.kind() == CanvasGradient::Kind::Conic) {
            // Rendered by hand, pixel by pixel: only where the shape can reach.
            CanvasDeviceRect area = shapeBounds_ ? intersect(bounds, *shapeBounds_) : bounds;
            cairo_surface_t* surface = renderConicGradient(gradient, state_.transform, area, colorSpace_);
            if (!surface)
                return false;
            setIdentity(cr);
            cairo_set_source_surface(cr, surface, area.x, area.y);
            cairo_surface_destroy(surface);
            return true;
        }
        cairo_set_matrix(cr, &ctm);
        cairo_set_source(cr, gradient.cairoPattern(colorSpace_));
        return true;
    }
    const CanvasPattern& canvasPattern = *style.pattern;
    auto inverse = canvasPattern.transform().inverse();
    if (!inverse)
        return false;
    // One-way repetition draws from the image with margins across (see clipToPatternBand).
    bool band = canvasPattern.repetition() == CanvasPatternRepetition::RepeatX
        || canvasPattern.repetition() == CanvasPatternRepetition::RepeatY;
    cairo_pattern_t* pattern = cairo_pattern_create_for_surface(band ? canvasPattern.bandSurface() : canvasPattern.surface());
    AffineTransform toImage = *inverse;
    if (band) {
        double margin = CanvasPattern::kBandMargin;
        bool rows = canvasPattern.repetition() == CanvasPatternRepetition::RepeatX;
        toImage = AffineTransform::translation(rows ? 0 : margin, rows ? margin : 0).multiply(toImage);
    }
    cairo_matrix_t patternMatrix = to_cairo_matrix(toImage);
    cairo_pattern_set_matrix(pattern, &patternMatrix);
    cairo_pattern_set_filter(pattern, to_cairo_filter(state_.imageSmoothingEnabled, state_.imageSmoothingQuality));
    cairo_pattern_set_extend(pattern, canvasPattern.repetition() == CanvasPatternRepetition::NoRepeat ? CAIRO_EXTEND_NONE
                                                                                                        : CAIRO_EXTEND_REPEAT);
    cairo_set_matrix(cr, &ctm);
    cairo_set_source(cr, pattern);
    cairo_pattern_destroy(pattern);
    return true;
}
