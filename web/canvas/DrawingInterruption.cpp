#include "web/canvas/DrawingInterruption.h"

namespace {

DrawingInterruption interruption = nullptr;

} // namespace

void setDrawingInterruption(DrawingInterruption shouldStop)
{
    interruption = shouldStop;
}

bool drawingShouldStop()
{
    return interruption && interruption();
}
