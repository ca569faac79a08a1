#pragma once

#include "CGGeometry.h"

#include <cairo.h>

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

// An immutable bitmap (a Cairo ARGB32 surface, premultiplied) and the scale that turns its
// pixels into points. A default-constructed image is nil. Copies share the bitmap.
class UIImage {
public:
    UIImage() = default;
    // Takes over the reference to the surface. A surface in an error state gives nil.
    UIImage(cairo_surface_t* surface, double scale);

    // Decodes PNG data; nil for anything that is not a PNG of sensible size.
    static UIImage imageWithDataScale(const std::uint8_t* data, std::size_t size, double scale);
    static UIImage imageWithDataScale(const std::vector<std::uint8_t>& data, double scale)
    {
        return imageWithDataScale(data.data(), data.size(), scale);
    }
    static UIImage imageWithContentsOfFile(const std::string& path, double scale = 1.0);

    bool isNil() const { return !surface_; }
    explicit operator bool() const { return !isNil(); }

    CGSize size() const; // in points
    double scale() const { return scale_; }
    int pixelWidth() const;
    int pixelHeight() const;
    cairo_surface_t* CGImage() const { return surface_.get(); }

    // PNG data of the bitmap, empty for nil.
    std::vector<std::uint8_t> pngData() const;
    bool writePNG(const std::string& path) const;

    // Largest bitmap accepted from data, in pixels per side and in all.
    static constexpr int kMaxPixelsPerSide = 16384;
    static constexpr long kMaxPixels = 64L * 1024 * 1024;

private:
    std::shared_ptr<cairo_surface_t> surface_;
    double scale_ = 1.0;
};
