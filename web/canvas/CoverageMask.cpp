#include "web/canvas/CoverageMask.h"

#include "web/canvas/CacheKey.h"
#include "web/text/LruCache.h"

#include <ft2build.h>
#include FT_FREETYPE_H
#include FT_OUTLINE_H

#include <algorithm>
#include <cmath>
#include <cstring>
#include <limits>
#include <string>

namespace {

// Outline coordinates are 26.6 fixed point; far beyond any bitmap, Cairo copes better.
constexpr double kLargestCoordinate = 1 << 20;

FT_Library rasterLibrary()
{
    // One per thread: the rasterizer keeps working memory in its library.
    thread_local struct Library {
        FT_Library handle = nullptr;
        Library()
        {
            if (FT_Init_FreeType(&handle))
                handle = nullptr;
        }
        ~Library()
        {
            if (handle)
                FT_Done_FreeType(handle);
        }
    } library;
    return library.handle;
}

struct PixelBox {
    int left = 0, top = 0, right = 0, bottom = 0;
    bool empty() const { return right <= left || bottom <= top; }
};

// Where the target's pixels are, in device space (the space of the outlines).
PixelBox targetBox(cairo_t* cr)
{
    cairo_surface_t* target = cairo_get_target(cr);
    if (cairo_surface_get_type(target) != CAIRO_SURFACE_TYPE_IMAGE)
        return {};
    double offsetX = 0, offsetY = 0;
    cairo_surface_get_device_offset(target, &offsetX, &offsetY);
    int left = int(std::floor(-offsetX)), top = int(std::floor(-offsetY));
    return {left, top, left + cairo_image_surface_get_width(target), top + cairo_image_surface_get_height(target)};
}

struct SpanTarget {
    unsigned char* pixels;
    int stride;
    PixelBox box;
    const std::array<unsigned char, 256>* table;
};

void writeSpans(int y, int count, const FT_Span* spans, void* user)
{
    auto* target = static_cast<SpanTarget*>(user);
    if (y < target->box.top || y >= target->box.bottom)
        return;
    unsigned char* row = target->pixels + std::size_t(y - target->box.top) * target->stride;
    for (int i = 0; i < count; ++i) {
        int start = std::max(int(spans[i].x), target->box.left);
        int end = std::min(int(spans[i].x) + int(spans[i].len), target->box.right);
        const unsigned char coverage = target->table ? (*target->table)[spans[i].coverage] : spans[i].coverage;
        if (end > start)
            std::memset(row + (start - target->box.left), coverage, std::size_t(end - start));
    }
}

// A drawing repeated frame after frame, or a theme previewed on a light and a dark side, gives
// the rasterizer the same outline again; its mask is then taken from here. The key is all the
// rasterizer reads and writes by (the outline in its own fixed point, the fill rule, the
// coverage table and the pixels it covers), so the mask is the one it would make.
constexpr std::size_t kCachedMasks = 32;
constexpr int kLargestCachedMask = 32 * 1024; // pixels: at most a megabyte in all

class SurfaceReference {
public:
    explicit SurfaceReference(cairo_surface_t* surface) : surface_(cairo_surface_reference(surface)) {}
    SurfaceReference(const SurfaceReference& other) : surface_(cairo_surface_reference(other.surface_)) {}
    SurfaceReference& operator=(const SurfaceReference& other)
    {
        cairo_surface_t* previous = surface_;
        surface_ = cairo_surface_reference(other.surface_);
        cairo_surface_destroy(previous);
        return *this;
    }
    ~SurfaceReference() { cairo_surface_destroy(surface_); }
    cairo_surface_t* get() const { return surface_; }

private:
    cairo_surface_t* surface_;
};

std::string maskKey(const std::vector<FT_Vector>& points, const std::vector<short>& ends, int flags,
                    const std::array<unsigned char, 256>* table, const PixelBox& box)
{
    CacheKey key(64 + points.size() * sizeof(FT_Vector) + ends.size() * sizeof(short) + (table ? table->size() : 0));
    key.add(points.size());
    key.add(ends.size());
    key.add(flags);
    key.add(table != nullptr);
    key.add(box);
    key.addBytes(points.data(), points.size() * sizeof(FT_Vector));
    key.addBytes(ends.data(), ends.size() * sizeof(short));
    if (table)
        key.addBytes(table->data(), table->size());
    return std::move(key).take();
}

LruCache<std::string, SurfaceReference>& maskCache()
{
    thread_local LruCache<std::string, SurfaceReference> cache(kCachedMasks);
    return cache;
}

// The mask of `outline` over `box`, or null when the rasterizer cannot draw it.
cairo_surface_t* renderMask(FT_Library library, FT_Outline& outline, const PixelBox& box,
                            const std::array<unsigned char, 256>* table)
{
    int width = box.right - box.left, height = box.bottom - box.top;
    int stride = cairo_format_stride_for_width(CAIRO_FORMAT_A8, width);
    cairo_surface_t* mask = cairo_image_surface_create(CAIRO_FORMAT_A8, width, height);
    if (cairo_surface_status(mask) != CAIRO_STATUS_SUCCESS || cairo_image_surface_get_stride(mask) != stride) {
        cairo_surface_destroy(mask);
        return nullptr;
    }
    cairo_surface_flush(mask);
    SpanTarget target{cairo_image_surface_get_data(mask), stride, box, table};
    FT_Raster_Params params{};
    params.source = &outline;
    params.flags = FT_RASTER_FLAG_AA | FT_RASTER_FLAG_DIRECT | FT_RASTER_FLAG_CLIP;
    params.gray_spans = &writeSpans;
    params.user = &target;
    params.clip_box = {box.left, box.top, box.right, box.bottom};
    bool drawn = FT_Outline_Render(library, &outline, &params) == 0;
    cairo_surface_mark_dirty(mask);
    if (!drawn) {
        cairo_surface_destroy(mask);
        return nullptr;
    }
    return mask;
}

} // namespace

bool paintCoverage(cairo_t* cr, const DeviceContours& contours, cairo_fill_rule_t rule,
                   const std::array<unsigned char, 256>* table)
{
    FT_Library library = rasterLibrary();
    if (!library)
        return false;
    std::size_t pointCount = 0;
    double minX = std::numeric_limits<double>::infinity(), minY = minX, maxX = -minX, maxY = -minX;
    for (const auto& contour : contours) {
        pointCount += contour.size();
        for (const DevicePoint& p : contour) {
            if (!(std::fabs(p.x) < kLargestCoordinate && std::fabs(p.y) < kLargestCoordinate))
                return false;
            minX = std::min(minX, p.x), maxX = std::max(maxX, p.x);
            minY = std::min(minY, p.y), maxY = std::max(maxY, p.y);
        }
    }
    if (pointCount > std::size_t(std::numeric_limits<short>::max()) || contours.size() > std::size_t(std::numeric_limits<short>::max()))
        return false;
    if (pointCount == 0)
        return true;

    PixelBox box = targetBox(cr);
    if (box.empty())
        return false;
    box.left = std::max(box.left, int(std::floor(minX)));
    box.top = std::max(box.top, int(std::floor(minY)));
    box.right = std::min(box.right, int(std::ceil(maxX)) + 1);
    box.bottom = std::min(box.bottom, int(std::ceil(maxY)) + 1);
    if (box.empty())
        return true;

    std::vector<FT_Vector> points;
    std::vector<char> tags(pointCount, FT_CURVE_TAG_ON);
    std::vector<short> ends;
    points.reserve(pointCount);
    for (const auto& contour : contours) {
        if (contour.empty())
            continue;
        for (const DevicePoint& p : contour)
            points.push_back({FT_Pos(std::floor(p.x * 64 + 0.5)), FT_Pos(std::floor(p.y * 64 + 0.5))});
        ends.push_back(short(points.size() - 1));
    }
    FT_Outline outline{};
    outline.n_points = short(points.size());
    outline.n_contours = short(ends.size());
    outline.points = points.data();
    outline.tags = tags.data();
    outline.contours = ends.data();
    outline.flags = rule == CAIRO_FILL_RULE_EVEN_ODD ? FT_OUTLINE_EVEN_ODD_FILL : FT_OUTLINE_NONE;

    const bool cacheable = std::int64_t(box.right - box.left) * (box.bottom - box.top) <= kLargestCachedMask;
    std::string key = cacheable ? maskKey(points, ends, outline.flags, table, box) : std::string();
    cairo_surface_t* mask = nullptr;
    if (const SurfaceReference* cached = cacheable ? maskCache().find(key) : nullptr) {
        mask = cairo_surface_reference(cached->get());
    } else {
        mask = renderMask(library, outline, box, table);
        if (!mask)
            return false;
        if (cacheable)
            maskCache().insert(key, SurfaceReference(mask));
    }
    cairo_save(cr);
    cairo_identity_matrix(cr);
    cairo_mask_surface(cr, mask, box.left, box.top);
    cairo_restore(cr);
    cairo_surface_destroy(mask);
    return true;
}
