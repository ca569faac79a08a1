#pragma once

#include <string_view>

class CanvasPath;

// Adds the SVG path data (the "d" attribute grammar) to `path` through its canvas methods.
// As SVG renders an erroneous path up to the error, parsing stops at the first error and
// keeps what came before it. Returns whether the whole text parsed.
bool appendSVGPathData(CanvasPath& path, std::string_view data);
