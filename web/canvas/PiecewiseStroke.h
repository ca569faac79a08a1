#pragma once

#include "web/canvas/FlattenedPath.h"

#include <cairo.h>

// A stroke along a path of many thousand segments costs Cairo seconds in one call, longer than
// a script may run. Such a path is stroked a few thousand segments at a time, asking between
// pieces whether to go on (drawingShouldStop), and the pieces' coverage is gathered in one mask
// so that the stroke is still painted once: a translucent colour does not darken where pieces
// meet. Where a piece ends the path's join becomes two butt ends.
bool needsPiecewiseStroke(const FlattenedPath& path);

// Strokes `path` (device space) with the pen, source and operator set on `cr`, whose matrix
// maps user space, in which the pen is given, to device space. Draws nothing once told to stop.
void strokeInPieces(cairo_t* cr, const FlattenedPath& path);
