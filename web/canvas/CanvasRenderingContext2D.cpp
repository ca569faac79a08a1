#include "web/canvas/CanvasRenderingContext2D.h"

#include "web/canvas/CairoSafePath.h"
#include "web/canvas/CanvasPainter.h"

const std::shared_ptr<const CanvasTextDrawingState>& CanvasTextDrawingState::initial()
{
    static const auto state = std::make_shared<const CanvasTextDrawingState>();
    return state;
}

CanvasRenderingContext2D::CanvasRenderingContext2D(HTMLCanvasElement& canvas, const CanvasRenderingContext2DSettings& settings)
    : canvas_(canvas), settings_(settings)
{
}

CanvasRenderingContext2D::~CanvasRenderingContext2D()
{
    discardLayers();
    if (scratchCairo_)
        cairo_destroy(scratchCairo_);
}

void CanvasRenderingContext2D::resetToInitialState()
{
    discardLayers();
    clearPath();
    stateStack_.clear();
    state_ = CanvasDrawingState();
}

cairo_t* CanvasRenderingContext2D::cairo()
{
    if (cairo_ && cairo_status(cairo_) != CAIRO_STATUS_SUCCESS)
        releaseCairo();
    if (!cairo_) {
        cairo_surface_t* target = targetSurface();
        if (!target)
            return nullptr;
        cairo_ = cairo_create(target);
        appliedClip_.reset();
    }
    if (appliedClip_ != state_.clip) {
        // Rebuild the clip from the chain, outermost first.
        cairo_reset_clip(cairo_);
        cairo_identity_matrix(cairo_);
        std::vector<const CanvasClip*> chain;
        for (const CanvasClip* node = state_.clip.get(); node; node = node->parent.get())
            chain.push_back(node);
        for (auto it = chain.rbegin(); it != chain.rend(); ++it) {
            std::vector<cairo_path_data_t> storage;
            auto data = prepareForCairo((*it)->path, nullptr, false, storage);
            cairo_new_path(cairo_);
            cairo_path_t path{CAIRO_STATUS_SUCCESS, const_cast<cairo_path_data_t*>(data.data()), int(data.size())};
            cairo_append_path(cairo_, &path);
            cairo_set_fill_rule(cairo_, (*it)->fillRule);
            cairo_clip(cairo_);
        }
        appliedClip_ = state_.clip;
    }
    return cairo_;
}

void CanvasRenderingContext2D::releaseCairo()
{
    if (cairo_)
        cairo_destroy(cairo_);
    cairo_ = nullptr;
    appliedClip_.reset();
}

cairo_t* CanvasRenderingContext2D::scratchCairo()
{
    if (!scratchCairo_) {
        cairo_surface_t* surface = cairo_image_surface_create(CAIRO_FORMAT_A8, 1, 1);
        scratchCairo_ = cairo_create(surface);
        cairo_surface_destroy(surface);
    }
    cairo_new_path(scratchCairo_);
    cairo_identity_matrix(scratchCairo_);
    return scratchCairo_;
}

void CanvasRenderingContext2D::paint(const CanvasShape& shape, const CanvasPaintSource& source)
{
    cairo_t* cr = cairo();
    if (!cr)
        return;
    CanvasPainter(cr, state_, targetArea(), drawingSpace()).paint(shape, source);
}

void CanvasRenderingContext2D::compositeNothing()
{
    if (cairo_t* cr = cairo())
        CanvasPainter(cr, state_, targetArea(), drawingSpace()).compositeNothing();
}
