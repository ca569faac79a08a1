#pragma once

// Drawing that may take long (a stroke along many thousand segments) is done in pieces, and
// between pieces it asks whether to go on: a script past its time budget then stops soon
// rather than after seconds inside one drawing call. Whoever runs the scripts says how to
// tell; by default drawing always goes on.
using DrawingInterruption = bool (*)();

void setDrawingInterruption(DrawingInterruption shouldStop);
bool drawingShouldStop();
