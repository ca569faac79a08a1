#include "web/canvas/PiecewiseStroke.h"

#include "web/canvas/DrawingInterruption.h"

#include <algorithm>

namespace {

constexpr std::size_t kPiecewiseFrom = 10000;  // points in the whole path
constexpr std::size_t kPointsPerPiece = 2500;

// One piece, points [first, last] of `subpath`, closing back to its start when it is the end
// of a closed subpath.
void appendPiece(cairo_t* cr, const FlattenedSubpath& subpath, std::size_t first, std::size_t last)
{
    const auto& points = subpath.points;
    cairo_move_to(cr, points[first].x, points[first].y);
    for (std::size_t i = first + 1; i <= last; ++i)
        cairo_line_to(cr, points[i].x, points[i].y);
    if (subpath.closed && last == points.size() - 1) {
        if (first == 0)
            cairo_close_path(cr);
        else
            cairo_line_to(cr, points[0].x, points[0].y);
    }
}

} // namespace

bool needsPiecewiseStroke(const FlattenedPath& path)
{
    std::size_t points = 0;
    for (const auto& subpath : path.subpaths)
        points += subpath.points.size();
    return points >= kPiecewiseFrom;
}

void strokeInPieces(cairo_t* cr, const FlattenedPath& path)
{
    cairo_matrix_t userToDevice;
    cairo_get_matrix(cr, &userToDevice);
    cairo_pattern_t* source = cairo_pattern_reference(cairo_get_source(cr));
    cairo_operator_t op = cairo_get_operator(cr);

    cairo_identity_matrix(cr);
    cairo_push_group_with_content(cr, CAIRO_CONTENT_ALPHA);
    cairo_set_operator(cr, CAIRO_OPERATOR_OVER);
    cairo_set_source_rgba(cr, 0, 0, 0, 1);
    bool stopped = false;
    for (const auto& subpath : path.subpaths) {
        const std::size_t count = subpath.points.size();
        for (std::size_t first = 0; first + 1 < count + (subpath.closed ? 1 : 0) && !stopped; first += kPointsPerPiece) {
            std::size_t last = std::min(first + kPointsPerPiece, count - 1);
            cairo_new_path(cr);
            cairo_identity_matrix(cr);
            appendPiece(cr, subpath, first, last);
            cairo_set_matrix(cr, &userToDevice);
            cairo_stroke(cr);
            stopped = drawingShouldStop();
            if (last == count - 1)
                break;
        }
    }
    cairo_identity_matrix(cr);
    cairo_pattern_t* mask = cairo_pop_group(cr);

    // The source goes back in the user space it was set in; the mask is in device space.
    cairo_set_matrix(cr, &userToDevice);
    cairo_set_source(cr, source);
    cairo_set_operator(cr, op);
    cairo_identity_matrix(cr);
    if (!stopped)
        cairo_mask(cr, mask);
    cairo_pattern_destroy(mask);
    cairo_pattern_destroy(source);
    cairo_new_path(cr);
    cairo_set_matrix(cr, &userToDevice);
}
