#pragma once

#include "web/dom/ExceptionOr.h"

#include <cairo.h>

// Whatever drawImage() and createPattern() accept. Today that is a canvas; an image element or
// bitmap can join by implementing this.
class CanvasImageSource {
public:
    virtual ~CanvasImageSource() = default;

    // The standard's "check the usability of the image argument": InvalidStateError for a
    // source with no pixels to speak of (a canvas of zero width or height), else whether there
    // is anything to draw (false: the call silently does nothing).
    virtual ExceptionOr<bool> checkUsability() const = 0;
    // Natural size in CSS pixels: the defaults of drawImage's size arguments.
    virtual unsigned imageWidth() const = 0;
    virtual unsigned imageHeight() const = 0;
    // The pixels, premultiplied ARGB32, imageWidth() x imageHeight(); null when there are none.
    // Valid until the source changes.
    virtual cairo_surface_t* imageSurface() = 0;
};
