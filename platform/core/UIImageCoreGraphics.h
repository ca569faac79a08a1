#pragma once

#include "CGGeometry.h"
#include "UIImage.h"

#include <cairo.h>

#include <functional>

// Draws a new image of the given size at the main screen's scale through a routine that
// receives the context (in points, origin top left) and the rectangle (0, 0, width, height).
using UIImageRenderer = std::function<void(cairo_t*, CGRect)>;

UIImage cp_imageWithSizeRenderer(CGSize size, const UIImageRenderer& renderer);
UIImage cp_imageWithSizeOpaqueRenderer(CGSize size, bool opaque, const UIImageRenderer& renderer);
