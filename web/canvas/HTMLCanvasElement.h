#pragma once

#include "web/canvas/CanvasImageSource.h"
#include "web/canvas/HalfFloatPixels.h"
#include "web/canvas/PredefinedColorSpace.h"
#include "web/dom/Element.h"
#include "web/image/PNGEncoder.h"

#include <cairo.h>

#include <memory>
#include <optional>
#include <string>
#include <string_view>

class CanvasRenderingContext2D;

// How many bits a canvas keeps per channel: bytes, or half floats that also hold colours
// beyond the canvas's gamut.
enum class CanvasColorType { Unorm8, Float16 };

inline std::optional<CanvasColorType> parseCanvasColorType(std::string_view text)
{
    if (text == "unorm8")
        return CanvasColorType::Unorm8;
    if (text == "float16")
        return CanvasColorType::Float16;
    return {};
}

inline std::string_view toString(CanvasColorType type)
{
    return type == CanvasColorType::Float16 ? "float16" : "unorm8";
}

struct CanvasRenderingContext2DSettings {
    bool alpha = true;
    bool desynchronized = false;
    PredefinedColorSpace colorSpace = PredefinedColorSpace::Srgb;
    CanvasColorType colorType = CanvasColorType::Unorm8;
    bool willReadFrequently = false;
};

// A canvas element: a bitmap of width x height pixels and, once asked for, its 2D context. As an
// element it can stand in a document, whose style gives its currentColor and relative fonts.
// Always held by std::shared_ptr (create()); the context lives inside the element.
class HTMLCanvasElement final : public Element, public CanvasImageSource {
    struct Token {};

public:
    static constexpr unsigned kDefaultWidth = 300;
    static constexpr unsigned kDefaultHeight = 150;
    // Larger bitmaps cannot be made: the canvas then draws nothing and reads as transparent.
    static constexpr unsigned kMaxSide = 8192;
    static constexpr unsigned long kMaxArea = 16UL * 1024 * 1024;

    static std::shared_ptr<HTMLCanvasElement> create();

    // Told the size in bytes of every bitmap made. Bitmaps are made on first drawing, at the
    // size the canvas has then; whoever owns the canvases' wrappers (the script engine, whose
    // collector cannot see this memory) learns what they hold.
    using BitmapObserver = void (*)(std::size_t bytes);
    static void setBitmapObserver(BitmapObserver observer);
    std::shared_ptr<HTMLCanvasElement> shared_from_this()
    {
        return std::static_pointer_cast<HTMLCanvasElement>(Node::shared_from_this());
    }
    std::shared_ptr<const HTMLCanvasElement> shared_from_this() const
    {
        return std::static_pointer_cast<const HTMLCanvasElement>(Node::shared_from_this());
    }
    explicit HTMLCanvasElement(Token);
    ~HTMLCanvasElement() override;
    HTMLCanvasElement(const HTMLCanvasElement&) = delete;
    HTMLCanvasElement& operator=(const HTMLCanvasElement&) = delete;

    unsigned width() const { return width_; }
    unsigned height() const { return height_; }
    // Setting either, even to the value it has, clears the bitmap and resets the context's
    // state. Values over 2^31 - 1 fall back to the default, as reflected attributes do.
    void setWidth(unsigned width);
    void setHeight(unsigned height);

    // getContext("2d", settings): the same context every time; the settings of the first call
    // stick.
    CanvasRenderingContext2D* getContext2d(const CanvasRenderingContext2DSettings& settings = {});
    CanvasRenderingContext2D* context2d() const { return context_.get(); }

    // "data:image/png;base64,..." for every type (PNG is the one we write), "data:," when the
    // canvas has no bitmap (a side of zero, or too large). `data`, when given, receives the
    // image data of the PNG (nothing for "data:,").
    std::string toDataURL(std::string_view type = "image/png", std::optional<double> quality = {},
                          PNGImageData* data = nullptr);
    // The file toDataURL() encodes: PNG for every type, empty when it gives "data:,".
    std::string encodedImage(std::string_view type, std::optional<double> quality, PNGImageData* data = nullptr);

    // Whether a bitmap of this size can exist (both sides non-zero and within the limits).
    bool hasBitmap() const;
    // The bitmap, premultiplied ARGB32, made on first use; null when hasBitmap() is false.
    // Call cairo_surface_flush() before reading and cairo_surface_mark_dirty() after writing.
    cairo_surface_t* bitmap();
    // Whether the bitmap is opaque by construction (a context made with alpha: false).
    bool isOpaque() const { return opaque_; }
    // For a float16 context: the half-float values kept beside the bitmap; null otherwise.
    HalfFloatPixels* halfFloatPixels() { return colorType_ == CanvasColorType::Float16 ? &halfFloatPixels_ : nullptr; }

    // CanvasImageSource
    ExceptionOr<bool> checkUsability() const override;
    unsigned imageWidth() const override { return width_; }
    unsigned imageHeight() const override { return height_; }
    cairo_surface_t* imageSurface() override { return bitmap(); }

private:
    // The width and height attributes set the size (the default when absent or not a
    // non-negative integer).
    void attributeChanged(std::string_view name) override;
    void resetBitmap();

    unsigned width_ = kDefaultWidth;
    unsigned height_ = kDefaultHeight;
    bool opaque_ = false;
    CanvasColorType colorType_ = CanvasColorType::Unorm8;
    cairo_surface_t* surface_ = nullptr;
    HalfFloatPixels halfFloatPixels_;
    std::unique_ptr<CanvasRenderingContext2D> context_;
};
