#pragma once

class CanvasRenderingContext2D;
class Element;
class Path2D;

// drawFocusIfNeeded(): when `element` has the focus and is fallback content of the context's
// canvas (a descendant of it), strokes a focus ring along the path (the current default path
// when `path` is null). The ring ignores shadows, global alpha, compositing, filters and line
// styles, but not the clip, and leaves the context's state as it was.
void drawFocusIfNeeded(CanvasRenderingContext2D& context, const Element& element, const Path2D* path = nullptr);
