#include "CPColorMapImages.h"

#include "HSVColor.h"

#include "platform/core/UIGraphics.h"

#include <cmath>

namespace CPColorMapImages {

namespace {

UIImage drawImage(CGSize size, double scale, const UIImageRenderer& renderer)
{
    if (scale > 0) {
        UIGraphicsImageContext context(size, true, scale);
        if (context.context())
            renderer(context.context(), CGRectMake(0, 0, size.width, size.height));
        return context.takeImage();
    }
    return cp_imageWithSizeOpaqueRenderer(size, true, renderer);
}

CGSize gridSize(const Grid& grid, double tileSize)
{
    return {grid.columns * tileSize, grid.rows * tileSize};
}

void fillRect(cairo_t* cr, double x, double y, double width, double height)
{
    cairo_rectangle(cr, x, y, width, height);
    cairo_fill(cr);
}

} // namespace

Grid gridForSize(CGSize size, double tileSize)
{
    if (!std::isfinite(tileSize) || tileSize <= 0 || !std::isfinite(size.width) || !std::isfinite(size.height))
        return {};
    double columns = std::floor(size.width / tileSize);
    double rows = std::floor(size.height / tileSize);
    // More tiles than any image side may have pixels: each would be thinner than a pixel.
    constexpr double kMostTiles = UIImage::kMaxPixelsPerSide;
    if (!(columns >= 1 && rows >= 1 && columns <= kMostTiles && rows <= kMostTiles))
        return {};
    return {static_cast<int>(columns), static_cast<int>(rows)};
}

UIImage colorMapImage(CGSize size, double tileSize, double saturationUpperLimit, double scale)
{
    Grid grid = gridForSize(size, tileSize);
    if (grid.isEmpty())
        return {};
    double limit = clampUnit(saturationUpperLimit);
    CGSize imageSize = gridSize(grid, tileSize);
    return drawImage(imageSize, scale, [&](cairo_t* cr, CGRect rect) {
        // Tiles meet edge to edge; smoothing their edges would leave dark seams where two
        // half-covered pixels each let the black ground show through.
        cairo_set_antialias(cr, CAIRO_ANTIALIAS_NONE);
        for (int i = 0; i < grid.columns; ++i) {
            UIColor hue = colorWithHueSaturationBrightnessAlpha(static_cast<double>(i) / grid.columns, 1, 1, 1);
            cairo_set_source_rgb(cr, hue.red(), hue.green(), hue.blue());
            fillRect(cr, i * tileSize, 0, tileSize, rect.size.height);
        }
        for (int j = 0; j < grid.rows; ++j) {
            // A single row has nothing to wash out towards: it stays fully saturated.
            double white = grid.rows > 1 ? static_cast<double>(j) / (grid.rows - 1) * limit : 0;
            if (white <= 0)
                continue;
            cairo_set_source_rgba(cr, 1, 1, 1, white);
            fillRect(cr, 0, j * tileSize, rect.size.width, tileSize);
        }
    });
}

UIImage backgroundImage(CGSize size, double tileSize, double scale)
{
    Grid grid = gridForSize(size, tileSize);
    if (grid.isEmpty())
        return {};
    CGSize imageSize = gridSize(grid, tileSize);
    return drawImage(imageSize, scale, [&](cairo_t* cr, CGRect rect) {
        cairo_set_antialias(cr, CAIRO_ANTIALIAS_NONE);
        cairo_set_source_rgb(cr, 1, 1, 1);
        fillRect(cr, 0, 0, rect.size.width, rect.size.height);
        // The tiles lie edge to edge and cover the grid exactly, so filling their union as one
        // rectangle paints the same pixels as filling each tile, without a fill per tile.
        cairo_set_source_rgb(cr, 0, 0, 0);
        fillRect(cr, 0, 0, grid.columns * tileSize, grid.rows * tileSize);
    });
}

} // namespace CPColorMapImages
