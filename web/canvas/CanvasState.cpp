#include "web/canvas/CanvasRenderingContext2D.h"

// Deep nesting is a script bug, not a drawing need; past this, save() stops pushing (and
// the matching restore() calls pop nothing).
static constexpr std::size_t kMaxSavedStates = 1 << 16;

void CanvasRenderingContext2D::save()
{
    if (stateStack_.size() >= kMaxSavedStates)
        return;
    stateStack_.push_back(state_);
}

ExceptionOr<void> CanvasRenderingContext2D::restore()
{
    if (!layers_.empty() && layers_.back().depth == stateStack_.size())
        return DOMException{"InvalidStateError", "Called `restore()` with no matching `save()` inside layer."};
    if (stateStack_.empty())
        return {};
    changeTransform(stateStack_.back().transform);
    state_ = std::move(stateStack_.back());
    stateStack_.pop_back();
    return {};
}

void CanvasRenderingContext2D::reset()
{
    discardLayers();
    if (cairo_t* cr = cairo()) {
        cairo_save(cr);
        cairo_reset_clip(cr);
        cairo_set_operator(cr, CAIRO_OPERATOR_CLEAR);
        cairo_paint(cr);
        cairo_restore(cr);
    }
    resetToInitialState();
}
