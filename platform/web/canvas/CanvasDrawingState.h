#pragma once

#include "platform/web/canvas/AffineTransform.h"
#include "platform/web/canvas/CanvasEnums.h"
#include "platform/web/canvas/CanvasStyle.h"
#include "platform/web/css/CSSColor.h"
#include "platform/web/text/CanvasText.h"

#include <memory>
#include <string>
#include <vector>

// The text part of the drawing state: what places text, plus the attributes that are only
// reported. Shared copy-on-write between saved states, since fonts own strings.
struct CanvasTextDrawingState {
    CanvasTextStyle style;
    std::string letterSpacing = "0px";
    std::string wordSpacing = "0px";
    std::string fontStretch = "normal";
    std::string fontVariantCaps = "normal";
    std::string textRendering = "auto";

    static const std::shared_ptr<const CanvasTextDrawingState>& initial();
};

// Everything save() pushes and restore() pops, with the standard's initial values. The
// clipping region is the one part kept elsewhere: in the Cairo context's own state, saved and
// restored alongside this.
struct CanvasDrawingState {
    AffineTransform transform;
    CanvasPaintStyle fillStyle;
    CanvasPaintStyle strokeStyle;
    double globalAlpha = 1.0;
    CanvasCompositeOperation globalCompositeOperation = CanvasCompositeOperation::SourceOver;
    bool imageSmoothingEnabled = true;
    ImageSmoothingQuality imageSmoothingQuality = ImageSmoothingQuality::Low;
    double shadowOffsetX = 0;
    double shadowOffsetY = 0;
    double shadowBlur = 0;
    CSSColor shadowColor{0, 0, 0, 0};
    double lineWidth = 1;
    CanvasLineCap lineCap = CanvasLineCap::Butt;
    CanvasLineJoin lineJoin = CanvasLineJoin::Miter;
    double miterLimit = 10;
    std::vector<double> lineDash;
    double lineDashOffset = 0;
    std::string filter = "none";
    std::shared_ptr<const CanvasTextDrawingState> text = CanvasTextDrawingState::initial();
};
