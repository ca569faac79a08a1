#pragma once

#include <cairo.h>

#include <cstdint>
#include <string>
#include <vector>

// The image data of a PNG file we write, as its zlib stream holds it: each row a filter byte
// (always 0, none) and the row's RGBA bytes, unpremultiplied.
struct PNGImageData {
    int width = 0;
    int height = 0;
    std::vector<unsigned char> rows;
    // The premultiplied pixels the rows were made from, row after row, when decoding gives them
    // back unchanged (no channel above its alpha: premultiplying what unpremultiplying gave
    // rounds back to every such pixel); empty otherwise.
    std::vector<std::uint32_t> premultiplied;
};

// A PNG file (8-bit RGBA, unpremultiplied) of a Cairo ARGB32 or RGB24 image surface, made
// for speed rather than size: canvases are small and the data URL is decoded at once. Empty
// for anything else. `data`, when given, receives the image data the file holds.
std::string encodePNG(cairo_surface_t* surface, PNGImageData* data = nullptr);

// The PNG file of the given image data, as encodePNG() writes it.
std::string encodePNG(const PNGImageData& data);

// The premultiplied ARGB32 surface that decoding the PNG file of `data` gives
// (UIImage::imageWithDataScale), made without the file: the pixels the data was made from where
// they come back unchanged, else the colours premultiplied with the decoder's rounding. Null when the data is inconsistent or no surface can be made.
cairo_surface_t* decodedPNGSurface(const PNGImageData& data);
