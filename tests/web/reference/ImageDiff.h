#pragma once

#include <cairo.h>

#include <string>

// How far one render lies from a reference render. Pixels are compared as premultiplied RGBA,
// so a pixel that is nearly transparent in both never counts as different however its colour
// came out. Only pixels that either picture paints form the base of the share: a small shape on a
// large empty canvas is judged by the shape, not by the empty space around it.
//
// Beside the case's own tolerance, every comparison is also judged by one strict measure, the
// same for every picture: a picture is close when at most 1 % of its painted pixels have a
// channel off by more than 32, and grossly different when more than 20 % do.
constexpr int kStrictChannelTolerance = 32;
constexpr double kCloseShare = 0.01;
constexpr double kGrossShare = 0.20;

struct ImageDiff {
    bool sameSize = false;
    int width = 0, height = 0;
    long differing = 0; // pixels with a channel off by more than the tolerance
    long strictlyDiffering = 0; // pixels with a channel off by more than kStrictChannelTolerance
    long painted = 0;   // pixels not fully transparent in one picture or the other
    int largestDelta = 0;

    double share() const { return painted ? double(differing) / double(painted) : 0.0; }
    double strictShare() const { return painted ? double(strictlyDiffering) / double(painted) : 0.0; }
    bool within(double allowedShare) const { return sameSize && share() <= allowedShare; }
    bool close() const { return sameSize && strictShare() <= kCloseShare; }
    bool grosslyDifferent() const { return !sameSize || strictShare() > kGrossShare; }
    std::string describe() const;
};

// Both surfaces must be ARGB32 (as UIImage keeps them).
ImageDiff compareImages(cairo_surface_t* ours, cairo_surface_t* reference, int channelTolerance);

// A picture for people: the reference in faint grey, differing pixels in red, stronger the
// larger the difference. Null when the sizes differ. The caller owns the surface.
cairo_surface_t* diffPicture(cairo_surface_t* ours, cairo_surface_t* reference, int channelTolerance);
