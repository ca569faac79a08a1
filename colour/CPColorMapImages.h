#pragma once

#include "platform/core/CGGeometry.h"
#include "platform/core/UIImage.h"
#include "platform/core/UIImageCoreGraphics.h"

// The drawing behind CPColorMapView's images, usable from any thread as long as a scale is
// given: scale 0 reads the main screen's scale, which only the interface thread may do.
namespace CPColorMapImages {

// Whole tiles that fit a size. Zero columns or rows when a side holds less than one tile, or
// when the tiles would be so many that each is a sliver of a pixel (the image could not show them).
struct Grid {
    int columns = 0;
    int rows = 0;
    bool isEmpty() const { return columns <= 0 || rows <= 0; }
};
Grid gridForSize(CGSize size, double tileSize);

// Columns of hue, left to right, under rows of white that thicken downwards to the limit.
UIImage colorMapImage(CGSize size, double tileSize, double saturationUpperLimit, double scale);
// White, then black over every tile: black wherever the map has a tile.
UIImage backgroundImage(CGSize size, double tileSize, double scale);

} // namespace CPColorMapImages
