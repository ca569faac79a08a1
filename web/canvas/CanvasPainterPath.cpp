// How a shape's path reaches Cairo, and whether Cairo or a coverage mask fills or strokes it.
#include "web/canvas/CanvasPainter.h"

#include "web/canvas/CairoMapping.h"
#include "web/canvas/CairoSafePath.h"
#include "web/canvas/CoverageMask.h"
#include "web/canvas/PiecewiseStroke.h"
#include "web/canvas/PolylineStroker.h"

#include <cmath>
#include <vector>

namespace {

DeviceContours outlineOf(const FlattenedPath& path)
{
    DeviceContours contours;
    contours.reserve(path.subpaths.size());
    for (const auto& subpath : path.subpaths)
        contours.push_back(subpath.points);
    return contours;
}

// Measured against the reference's pictures, as for glyphs (see text_geometry): it fills a
// curved outline as if every end of its lines and curves lay on the nearest quarter of a pixel
// vertically, the curves between keeping their shape. The same ends moved here, each curve's
// control points with the end beside them, put the flat ends of curves on the reference's
// pixels. Device-space path data in, the same data moved out.
std::vector<cairo_path_data_t> withEndsOnQuarterRows(std::span<const cairo_path_data_t> data)
{
    std::vector<cairo_path_data_t> moved(data.begin(), data.end());
    auto nearestQuarter = [](double y) { return std::floor(y * 4 + 0.5) / 4; };
    double shift = 0;  // how far the last end was moved
    for (std::size_t i = 0; i < moved.size(); i += moved[i].header.length) {
        cairo_path_data_t* element = &moved[i];
        switch (element->header.type) {
        case CAIRO_PATH_MOVE_TO:
        case CAIRO_PATH_LINE_TO: {
            const double y = element[1].point.y;
            element[1].point.y = nearestQuarter(y);
            shift = element[1].point.y - y;
            break;
        }
        case CAIRO_PATH_CURVE_TO: {
            element[1].point.y += shift;
            const double y = element[3].point.y;
            element[3].point.y = nearestQuarter(y);
            shift = element[3].point.y - y;
            element[2].point.y += shift;
            break;
        }
        case CAIRO_PATH_CLOSE_PATH:
            break;
        }
        if (element->header.length < 1)
            break;
    }
    return moved;
}

// Porter and Duff's operators that leave the target alone where the source is absent, so that
// a mask's empty parts change nothing (Cairo's blend modes do not keep to that).
bool masksLikeFills(cairo_operator_t op)
{
    return op == CAIRO_OPERATOR_OVER || op == CAIRO_OPERATOR_ATOP || op == CAIRO_OPERATOR_DEST_OVER
        || op == CAIRO_OPERATOR_DEST_OUT || op == CAIRO_OPERATOR_XOR || op == CAIRO_OPERATOR_ADD;
}

} // namespace

std::span<const cairo_path_data_t> CanvasPainter::devicePath(const CanvasShape& shape,
                                                             std::vector<cairo_path_data_t>& storage) const
{
    return prepareForCairo(shape.path, shape.inUserSpace ? &state_.transform : nullptr, shape.stroke, storage);
}

void CanvasPainter::setPath(cairo_t* cr, std::span<const cairo_path_data_t> data) const
{
    cairo_new_path(cr);
    cairo_identity_matrix(cr);
    cairo_path_t path{CAIRO_STATUS_SUCCESS, const_cast<cairo_path_data_t*>(data.data()), int(data.size())};
    cairo_append_path(cr, &path);
    // Line widths and dashes are in user space.
    cairo_matrix_t ctm = to_cairo_matrix(state_.transform);
    cairo_set_matrix(cr, &ctm);
}

void CanvasPainter::setStrokeStyle(cairo_t* cr) const
{
    cairo_set_line_width(cr, state_.lineWidth);
    cairo_set_line_cap(cr, to_cairo_line_cap(state_.lineCap));
    cairo_set_line_join(cr, to_cairo_line_join(state_.lineJoin));
    cairo_set_miter_limit(cr, state_.miterLimit);
    const auto& dash = state_.lineDash;
    if (hasDashes())
        cairo_set_dash(cr, dash.data(), int(dash.size()), state_.lineDashOffset);
    else
        cairo_set_dash(cr, nullptr, 0, 0);
}

bool CanvasPainter::paintByCoverage(cairo_t* cr, const CanvasShape& shape, const FlattenedPath& path) const
{
    // Cairo stays in charge of what this does not cover: dashes, strokes whose pen a transform
    // stretches, and operators that reach beyond the shape. Glyphs go through a mask under
    // every operator that composites a mask as it would a fill, as the reference's glyph
    // masks do.
    const cairo_operator_t op = cairo_get_operator(cr);
    if (shape.glyphs && !shape.stroke && masksLikeFills(op))
        return paintCoverage(cr, outlineOf(path), shape.fillRule, shape.coverageTable);
    if (op != CAIRO_OPERATOR_OVER)
        return false;
    if (!shape.stroke) {
        // A font's glyphs, which are drawn to be filled so, or one convex outline: elsewhere,
        // where the rasterizer sums windings a crossing would show.
        bool simple = shape.glyphs || (path.subpaths.size() == 1 && path.subpaths[0].totalTurning(true) <= 2 * M_PI + 1e-6);
        return simple && paintCoverage(cr, outlineOf(path), shape.fillRule);
    }
    const AffineTransform& m = state_.transform;
    double scaleX = std::hypot(m.a, m.b), scaleY = std::hypot(m.c, m.d);
    bool uniform = std::fabs(scaleX - scaleY) <= 1e-9 * scaleX && std::fabs(m.a * m.c + m.b * m.d) <= 1e-9 * scaleX * scaleY;
    // Separate subpaths may cross, and the edges of their overlap would come out too dark.
    if (!uniform || hasDashes() || path.subpaths.size() != 1)
        return false;
    StrokeGeometry geometry{state_.lineWidth * scaleX / 2, to_cairo_line_cap(state_.lineCap), to_cairo_line_join(state_.lineJoin),
                            state_.miterLimit, cairo_get_tolerance(cr)};
    auto outline = strokeOutline(path, geometry);
    return outline && paintCoverage(cr, *outline, CAIRO_FILL_RULE_WINDING);
}

bool CanvasPainter::hasDashes() const
{
    double total = 0;
    for (double segment : state_.lineDash)
        total += segment;
    return !state_.lineDash.empty() && total > 0 && std::isfinite(total);
}

void CanvasPainter::fillOrStroke(cairo_t* cr, const CanvasShape& shape, std::span<const cairo_path_data_t> data) const
{
    // Cairo is given the path only when it draws the shape: most shapes are painted through a
    // coverage mask, which needs none.
    const std::span<const cairo_path_data_t> asGiven = data;
    // Straight-edged fills stay with Cairo, which draws them faster still; everything else is
    // flattened once, for a coverage mask or for a long stroke's pieces.
    bool flatten = shape.stroke || shape.glyphs || containsCurves(data);
    // Curved fills take the reference's quarter-pixel steps; glyphs have taken them already,
    // and strokes are outlined from the path as it is.
    std::vector<cairo_path_data_t> stepped;
    if (flatten && !shape.stroke && !shape.glyphs) {
        stepped = withEndsOnQuarterRows(data);
        data = stepped;
    }
    FlattenedPath path = flatten ? flattenPath(data, cairo_get_tolerance(cr)) : FlattenedPath{};
    if (flatten && paintByCoverage(cr, shape, path))
        return;
    setPath(cr, asGiven);
    if (shape.stroke) {
        setStrokeStyle(cr);
        if (needsPiecewiseStroke(path))
            strokeInPieces(cr, path);
        else
            cairo_stroke(cr);
    } else {
        cairo_set_fill_rule(cr, shape.fillRule);
        cairo_fill(cr);
    }
}
