#pragma once

#include "web/canvas/CanvasImageSource.h"
#include "web/dom/Element.h"

// A video element that never gets any data: there is nothing to play here. It stays at
// HAVE_NOTHING, so a canvas draws nothing from it and makes no pattern of it.
class HTMLVideoElement : public Element, public CanvasImageSource {
public:
    static constexpr unsigned short kHaveNothing = 0;
    static constexpr unsigned short kNetworkEmpty = 0;

    HTMLVideoElement();

    unsigned short readyState() const { return kHaveNothing; }
    unsigned short networkState() const { return kNetworkEmpty; }
    bool paused() const { return paused_; }
    // play() only marks the element as no longer paused; the promise it returns never settles.
    void play() { paused_ = false; }
    void pause() { paused_ = true; }

    ExceptionOr<bool> checkUsability() const override { return false; }
    unsigned imageWidth() const override { return 0; }
    unsigned imageHeight() const override { return 0; }
    cairo_surface_t* imageSurface() override { return nullptr; }

private:
    bool paused_ = true;
};
