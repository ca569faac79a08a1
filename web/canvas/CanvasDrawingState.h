#pragma once

#include "web/canvas/AffineTransform.h"
#include "web/canvas/CanvasEnums.h"
#include "web/canvas/CanvasStyle.h"
#include "web/canvas/FilterPrimitive.h"
#include "web/css/CSSColor.h"
#include "web/text/CanvasText.h"

#include <cairo.h>

#include <memory>
#include <string>
#include <vector>

class CanvasFilter;

// The text part of the drawing state: what places text, plus the attributes that are only
// reported. Shared copy-on-write between saved states, since fonts own strings.
struct CanvasTextDrawingState {
    CanvasTextStyle style;
    std::string letterSpacing = "0px";
    std::string wordSpacing = "0px";
    std::string fontStretch = "normal";
    std::string fontVariantCaps = "normal";
    std::string textRendering = "auto";
    std::string lang = "inherit";

    static const std::shared_ptr<const CanvasTextDrawingState>& initial();
};

// One clip() call: the region is the intersection of a node's path with its parent's region.
// Saved states share the chain.
struct CanvasClip {
    std::shared_ptr<const CanvasClip> parent;
    std::vector<cairo_path_data_t> path; // device space
    cairo_fill_rule_t fillRule = CAIRO_FILL_RULE_WINDING;
};

// Everything save() pushes and restore() pops, with the standard's initial values. Cheap to
// copy: the text state and the clip are shared until changed.
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
    CanvasColor shadowColor = CanvasColor::transparentBlack();
    double lineWidth = 1;
    CanvasLineCap lineCap = CanvasLineCap::Butt;
    CanvasLineJoin lineJoin = CanvasLineJoin::Miter;
    double miterLimit = 10;
    std::vector<double> lineDash;
    double lineDashOffset = 0;
    // The filter as set (CSS text, or a CanvasFilter object) and the primitives it draws with;
    // no chain for "none".
    std::string filter = "none";
    std::shared_ptr<CanvasFilter> filterObject;
    std::shared_ptr<const FilterChain> filterChain;
    std::shared_ptr<const CanvasTextDrawingState> text = CanvasTextDrawingState::initial();
    std::shared_ptr<const CanvasClip> clip; // none: the whole canvas
};
