#pragma once

#include "CGGeometry.h"
#include "UIImage.h"

#include <cairo.h>

// An off-screen bitmap context with its origin at the top left, drawn in points. Scale 0
// means the main screen's scale.
class UIGraphicsImageContext {
public:
    UIGraphicsImageContext(CGSize size, bool opaque, double scale);
    ~UIGraphicsImageContext();
    UIGraphicsImageContext(const UIGraphicsImageContext&) = delete;
    UIGraphicsImageContext& operator=(const UIGraphicsImageContext&) = delete;

    // Null when the size holds no pixel; drawing into nothing then does nothing.
    cairo_t* context() const { return cr_; }
    // Ends drawing and returns what was drawn; nil for an empty size.
    UIImage takeImage();

private:
    cairo_surface_t* surface_ = nullptr;
    cairo_t* cr_ = nullptr;
    double scale_ = 1.0;
};

// Draws the image's bitmap into the rectangle the way the platform's bitmap drawing does in a
// context whose origin is at the top left: upside down. Callers flip the context first when
// they want it upright.
void CGContextDrawImage(cairo_t* cr, CGRect rect, const UIImage& image);

// The pattern CGContextDrawImage paints with, for use as a mask.
cairo_pattern_t* imagePatternForRect(CGRect rect, const UIImage& image);
