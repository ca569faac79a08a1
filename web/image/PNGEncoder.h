#pragma once

#include <cairo.h>

#include <string>

// A PNG file (8-bit RGBA, unpremultiplied) of a Cairo ARGB32 or RGB24 image surface, made
// for speed rather than size: canvases are small and the data URL is decoded at once. Empty
// for anything else.
std::string encodePNG(cairo_surface_t* surface);
