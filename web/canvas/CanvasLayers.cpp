#include "web/canvas/CanvasRenderingContext2D.h"

#include "web/canvas/FilterEffects.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace {

// Nested layers past this draw straight into the one below: each costs a canvas-sized
// surface, and a script nesting thousands would otherwise take that many.
constexpr std::size_t kMaxLayers = 32;

// How far past the canvas a layer must keep what is drawn into it: as far as its own filter,
// and the filter and shadow it will be drawn with, can carry pixels back onto the canvas.
int layerMargin(const std::shared_ptr<const FilterChain>& layerFilter, const CanvasDrawingState& outer)
{
    int margin = layerFilter ? filterReach(*layerFilter) : 0;
    if (outer.filterChain)
        margin += filterReach(*outer.filterChain);
    if (CanvasPainter::drawsShadow(outer)) {
        double reach = std::max(std::fabs(outer.shadowOffsetX), std::fabs(outer.shadowOffsetY)) + outer.shadowBlur * 1.5 + 2;
        margin += int(std::min(reach, double(kMaxFilterReach)));
    }
    return std::min(margin, kMaxFilterReach);
}

} // namespace

ExceptionOr<void> CanvasRenderingContext2D::beginLayer(std::shared_ptr<const FilterChain> filter)
{
    std::size_t depth = stateStack_.size();
    save();
    if (stateStack_.size() == depth)
        return {}; // too deeply nested to save: no layer either
    Layer layer;
    layer.depth = stateStack_.size();
    layer.filter = filter && !filter->empty() ? std::move(filter) : nullptr;
    int margin = layerMargin(layer.filter, state_);
    layer.area = {-margin, -margin, int(canvas_.width()) + 2 * margin, int(canvas_.height()) + 2 * margin};
    if (layers_.size() < kMaxLayers && canvas_.hasBitmap()) {
        layer.surface = cairo_image_surface_create(CAIRO_FORMAT_ARGB32, layer.area.width, layer.area.height);
        if (cairo_surface_status(layer.surface) != CAIRO_STATUS_SUCCESS) {
            cairo_surface_destroy(layer.surface);
            layer.surface = nullptr;
        } else {
            cairo_surface_set_device_offset(layer.surface, margin, margin);
        }
    }
    layers_.push_back(std::move(layer));
    releaseCairo();

    // Inside, drawing starts plain: the layer as a whole gets these when it ends.
    state_.globalAlpha = 1;
    state_.globalCompositeOperation = CanvasCompositeOperation::SourceOver;
    state_.shadowOffsetX = state_.shadowOffsetY = state_.shadowBlur = 0;
    state_.shadowColor = CanvasColor::transparentBlack();
    state_.filter = "none";
    state_.filterObject.reset();
    state_.filterChain.reset();
    return {};
}

ExceptionOr<void> CanvasRenderingContext2D::endLayer()
{
    if (layers_.empty() || layers_.back().depth != stateStack_.size())
        return DOMException{"InvalidStateError", "Called `endLayer()` with no matching `beginLayer()`."};
    Layer layer = std::move(layers_.back());
    layers_.pop_back();
    changeTransform(stateStack_.back().transform);
    state_ = std::move(stateStack_.back());
    stateStack_.pop_back();
    releaseCairo();
    if (!layer.surface)
        return {};

    if (layer.filter)
        applyFilterChain(layer.surface, layer.area, *layer.filter, drawingSpace());
    // The layer is one image in device space, drawn with the state it was begun in.
    if (cairo_t* cr = cairo()) {
        CanvasDrawingState composite = state_;
        composite.transform = AffineTransform();
        CanvasImagePaint image;
        image.surface = layer.surface;
        cairo_matrix_init_identity(&image.patternMatrix);
        image.filter = CAIRO_FILTER_NEAREST;
        image.extend = CAIRO_EXTEND_NONE;
        auto rectangle = deviceRectanglePath(layer.area);
        CanvasPainter(cr, composite, targetArea(), drawingSpace()).paint(CanvasShape{rectangle, false, false}, image);
    }
    cairo_surface_destroy(layer.surface);
    return {};
}

void CanvasRenderingContext2D::discardLayers()
{
    for (Layer& layer : layers_) {
        if (layer.surface)
            cairo_surface_destroy(layer.surface);
    }
    layers_.clear();
    releaseCairo();
}

cairo_surface_t* CanvasRenderingContext2D::targetSurface()
{
    for (auto it = layers_.rbegin(); it != layers_.rend(); ++it) {
        if (it->surface)
            return it->surface;
    }
    return canvas_.bitmap();
}

CanvasDeviceRect CanvasRenderingContext2D::targetArea() const
{
    for (auto it = layers_.rbegin(); it != layers_.rend(); ++it) {
        if (it->surface)
            return it->area;
    }
    return {0, 0, int(canvas_.width()), int(canvas_.height())};
}

ExceptionOr<void> CanvasRenderingContext2D::checkNoOpenLayers(CanvasImageSource& image, const char* operation)
{
    auto* canvas = dynamic_cast<HTMLCanvasElement*>(&image);
    if (canvas && canvas->context2d() && canvas->context2d()->openLayerCount() > 0)
        return DOMException{"InvalidStateError", std::string("`") + operation
                                                     + "()` with a canvas as a source cannot be called while layers are open "
                                                       "in the source canvas."};
    return {};
}
