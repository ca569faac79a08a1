#pragma once

#include "web/canvas/CanvasImageSource.h"
#include "web/dom/Element.h"

// An img element that never loads: a web view here has no network and no files, and a page's
// images are not fetched. With no src the element is complete and has no size; with a src it
// stays "loading" for good, so a canvas treats it as an image that is not decodable yet
// (drawImage draws nothing, createPattern gives null) and never as a broken one.
class HTMLImageElement : public Element, public CanvasImageSource {
public:
    HTMLImageElement();

    // complete: true when there is no src (or an empty one), as nothing is being loaded.
    bool complete() const;
    unsigned naturalWidth() const { return 0; }
    unsigned naturalHeight() const { return 0; }
    // The width and height attributes (HTML's non-negative integers), else the natural size.
    unsigned width() const;
    unsigned height() const;

    // CanvasImageSource: never usable, never an error.
    ExceptionOr<bool> checkUsability() const override { return false; }
    unsigned imageWidth() const override { return 0; }
    unsigned imageHeight() const override { return 0; }
    cairo_surface_t* imageSurface() override { return nullptr; }
};

// An SVG image element: the same never-loading image, in the SVG namespace.
class SVGImageElement : public Element, public CanvasImageSource {
public:
    SVGImageElement();

    ExceptionOr<bool> checkUsability() const override { return false; }
    unsigned imageWidth() const override { return 0; }
    unsigned imageHeight() const override { return 0; }
    cairo_surface_t* imageSurface() override { return nullptr; }
};
