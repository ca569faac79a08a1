#include "web/canvas/CanvasFocusRing.h"

#include "web/canvas/CanvasRenderingContext2D.h"
#include "web/canvas/HTMLCanvasElement.h"
#include "web/dom/Document.h"

namespace {

// The ring as Chromium draws it on Linux: two pixels of its focus ring colour.
constexpr const char* kFocusRingColor = "#101010";
constexpr double kFocusRingWidth = 2;

} // namespace

void drawFocusIfNeeded(CanvasRenderingContext2D& context, const Element& element, const Path2D* path)
{
    Document* document = element.document();
    const HTMLCanvasElement& canvas = context.canvas();
    if (!document || document->activeElement().get() != &element || &element == &canvas || !canvas.contains(element))
        return;
    context.save();
    context.setShadowColor("transparent");
    context.setGlobalAlpha(1);
    context.setGlobalCompositeOperation("source-over");
    context.setFilter("none");
    context.setLineDash({});
    context.setLineWidth(kFocusRingWidth);
    context.setLineCap("butt");
    context.setLineJoin("round");
    context.setStrokeStyle(std::string(kFocusRingColor));
    if (path)
        context.stroke(*path);
    else
        context.stroke();
    // Cannot fail: the state on top is the one saved above, not a layer's.
    (void)context.restore();
}
