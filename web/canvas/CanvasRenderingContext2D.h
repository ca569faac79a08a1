#pragma once

#include "web/canvas/CanvasDrawingState.h"
#include "web/canvas/CanvasEnums.h"
#include "web/canvas/CanvasPainter.h"
#include "web/canvas/CanvasPath.h"
#include "web/canvas/CanvasStyle.h"
#include "web/canvas/HTMLCanvasElement.h"
#include "web/canvas/ImageData.h"
#include "web/dom/ExceptionOr.h"
#include "web/geometry/DOMMatrix.h"
#include "web/text/TextMetrics.h"

#include <cairo.h>

#include <functional>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

class CanvasGradient;
class CanvasImageSource;
struct CanvasImagePaint;
struct CanvasShape;
class CanvasFilter;
class CanvasPattern;
class Path2D;

// The 2D context of a canvas, drawing with Cairo on the canvas's bitmap. It lives inside its
// canvas (HTMLCanvasElement::getContext2d), so whoever holds it must hold the canvas:
// canvas().shared_from_this().
//
// Non-finite arguments make drawing and path calls do nothing and setters keep their value.
// Enumerated attributes ignore unknown keywords. Errors come back as ExceptionOr values.
class CanvasRenderingContext2D final : public CanvasPath {
public:
    CanvasRenderingContext2D(HTMLCanvasElement& canvas, const CanvasRenderingContext2DSettings& settings);
    ~CanvasRenderingContext2D() override;
    CanvasRenderingContext2D(const CanvasRenderingContext2D&) = delete;
    CanvasRenderingContext2D& operator=(const CanvasRenderingContext2D&) = delete;

    HTMLCanvasElement& canvas() const { return canvas_; }
    CanvasRenderingContext2DSettings getContextAttributes() const { return settings_; }

    // CanvasState
    void save();
    // InvalidStateError when the state on top belongs to a layer (endLayer() closes it).
    ExceptionOr<void> restore();
    void reset();
    bool isContextLost() const { return false; }

    // CanvasTransform
    void scale(double x, double y);
    void rotate(double angle);
    void translate(double x, double y);
    void transform(double a, double b, double c, double d, double e, double f);
    DOMMatrix getTransform() const;
    void setTransform(double a, double b, double c, double d, double e, double f);
    // TypeError when the dictionary is inconsistent.
    ExceptionOr<void> setTransform(const DOMMatrix2DInit& transform = {});
    void resetTransform();

    // CanvasCompositing
    double globalAlpha() const { return state_.globalAlpha; }
    void setGlobalAlpha(double alpha);
    std::string_view globalCompositeOperation() const;
    void setGlobalCompositeOperation(std::string_view operation);

    // CanvasImageSmoothing
    bool imageSmoothingEnabled() const { return state_.imageSmoothingEnabled; }
    void setImageSmoothingEnabled(bool enabled) { state_.imageSmoothingEnabled = enabled; }
    std::string_view imageSmoothingQuality() const;
    void setImageSmoothingQuality(std::string_view quality);

    // CanvasFillStrokeStyles. A string that is not a CSS colour leaves the style unchanged.
    CanvasStyle strokeStyle() const;
    void setStrokeStyle(const CanvasStyle& style);
    CanvasStyle fillStyle() const;
    void setFillStyle(const CanvasStyle& style);
    // TypeError for non-finite arguments; IndexSizeError for a negative radius.
    ExceptionOr<std::shared_ptr<CanvasGradient>> createLinearGradient(double x0, double y0, double x1, double y1);
    ExceptionOr<std::shared_ptr<CanvasGradient>> createRadialGradient(double x0, double y0, double r0,
                                                                      double x1, double y1, double r1);
    ExceptionOr<std::shared_ptr<CanvasGradient>> createConicGradient(double startAngle, double x, double y);
    // See CanvasPattern::create; a null pointer is the script's null.
    ExceptionOr<std::shared_ptr<CanvasPattern>> createPattern(CanvasImageSource& image, std::string_view repetition);

    // CanvasShadowStyles
    double shadowOffsetX() const { return state_.shadowOffsetX; }
    void setShadowOffsetX(double offset);
    double shadowOffsetY() const { return state_.shadowOffsetY; }
    void setShadowOffsetY(double offset);
    double shadowBlur() const { return state_.shadowBlur; }
    void setShadowBlur(double blur);
    std::string shadowColor() const;
    void setShadowColor(std::string_view color);

    // CanvasFilters. filter() is the CSS text last set; while a CanvasFilter object is set,
    // filterObject() is it. Text that is not a filter list changes nothing.
    std::string filter() const { return state_.filter; }
    const std::shared_ptr<CanvasFilter>& filterObject() const { return state_.filterObject; }
    void setFilter(std::string_view filter);
    void setFilter(std::shared_ptr<CanvasFilter> filter);
    // The primitives of a CSS filter list (currentcolor being the canvas element's colour);
    // null for "none" and for text that is not a filter list.
    std::shared_ptr<const FilterChain> resolveFilter(std::string_view filter) const;

    // Layers: beginLayer() saves the state, resets alpha, compositing, shadows and filter, and
    // sends drawing to a new transparent layer; endLayer() restores the state and draws the
    // layer through `filter` and the restored state as one image. InvalidStateError from
    // endLayer() when the state on top is not a layer's.
    ExceptionOr<void> beginLayer(std::shared_ptr<const FilterChain> filter = nullptr);
    ExceptionOr<void> endLayer();
    std::size_t openLayerCount() const { return layers_.size(); }

    // CanvasRect
    void clearRect(double x, double y, double w, double h);
    void fillRect(double x, double y, double w, double h);
    void strokeRect(double x, double y, double w, double h);

    // CanvasDrawPath
    void beginPath();
    void fill(CanvasFillRule fillRule = CanvasFillRule::Nonzero);
    void fill(const Path2D& path, CanvasFillRule fillRule = CanvasFillRule::Nonzero);
    void stroke();
    void stroke(const Path2D& path);
    void clip(CanvasFillRule fillRule = CanvasFillRule::Nonzero);
    void clip(const Path2D& path, CanvasFillRule fillRule = CanvasFillRule::Nonzero);
    // x and y are in canvas pixels, untouched by the current transform.
    bool isPointInPath(double x, double y, CanvasFillRule fillRule = CanvasFillRule::Nonzero);
    bool isPointInPath(const Path2D& path, double x, double y, CanvasFillRule fillRule = CanvasFillRule::Nonzero);
    bool isPointInStroke(double x, double y);
    bool isPointInStroke(const Path2D& path, double x, double y);

    // CanvasText (UTF-8 text)
    void fillText(std::string_view text, double x, double y, std::optional<double> maxWidth = {});
    void strokeText(std::string_view text, double x, double y, std::optional<double> maxWidth = {});
    TextMetrics measureText(std::string_view text);
    // A cluster from TextMetrics.getTextClusters(), in the font it was measured with and the
    // context's current fill or stroke style.
    void fillTextCluster(const TextCluster& cluster, double x, double y, const TextClusterOptions& options = {});
    void strokeTextCluster(const TextCluster& cluster, double x, double y, const TextClusterOptions& options = {});

    // CanvasDrawImage. InvalidStateError for a source of zero size.
    ExceptionOr<void> drawImage(CanvasImageSource& image, double dx, double dy);
    ExceptionOr<void> drawImage(CanvasImageSource& image, double dx, double dy, double dw, double dh);
    ExceptionOr<void> drawImage(CanvasImageSource& image, double sx, double sy, double sw, double sh,
                                double dx, double dy, double dw, double dh);

    // CanvasImageData. IndexSizeError for a zero width or height, RangeError when too large.
    ExceptionOr<std::shared_ptr<ImageData>> createImageData(int sw, int sh, const ImageDataSettings& settings = {});
    ExceptionOr<std::shared_ptr<ImageData>> createImageData(const ImageData& imageData);
    ExceptionOr<std::shared_ptr<ImageData>> getImageData(int sx, int sy, int sw, int sh, const ImageDataSettings& settings = {});
    // getImageData and putImageData: InvalidStateError while layers are open.
    ExceptionOr<void> putImageData(const ImageData& imageData, int dx, int dy);
    ExceptionOr<void> putImageData(const ImageData& imageData, int dx, int dy, int dirtyX, int dirtyY, int dirtyWidth,
                                   int dirtyHeight);

    // CanvasPathDrawingStyles
    double lineWidth() const { return state_.lineWidth; }
    void setLineWidth(double width);
    std::string_view lineCap() const;
    void setLineCap(std::string_view cap);
    std::string_view lineJoin() const;
    void setLineJoin(std::string_view join);
    double miterLimit() const { return state_.miterLimit; }
    void setMiterLimit(double limit);
    // Ignored when a value is negative or not finite; an odd count is repeated.
    void setLineDash(std::span<const double> segments);
    std::vector<double> getLineDash() const { return state_.lineDash; }
    double lineDashOffset() const { return state_.lineDashOffset; }
    void setLineDashOffset(double offset);

    // CanvasTextDrawingStyles
    std::string font() const;
    void setFont(std::string_view font);
    std::string_view textAlign() const;
    void setTextAlign(std::string_view align);
    std::string_view textBaseline() const;
    void setTextBaseline(std::string_view baseline);
    std::string_view direction() const;
    void setDirection(std::string_view direction);
    std::string letterSpacing() const;
    void setLetterSpacing(std::string_view spacing);
    std::string_view fontKerning() const;
    void setFontKerning(std::string_view kerning);
    std::string_view fontStretch() const;
    void setFontStretch(std::string_view stretch);
    std::string_view fontVariantCaps() const;
    void setFontVariantCaps(std::string_view caps);
    std::string_view textRendering() const;
    void setTextRendering(std::string_view rendering);
    std::string wordSpacing() const;
    void setWordSpacing(std::string_view spacing);
    // The language of the text; kept and reported ("inherit" until set).
    std::string lang() const { return state_.text->lang; }
    void setLang(std::string_view lang);

    // CanvasPath: closePath, moveTo, lineTo, ... inherited.

    // For the canvas: its bitmap was replaced or cleared; back to the initial state.
    void resetToInitialState();

    const CanvasDrawingState& drawingState() const { return state_; }

protected:
    const AffineTransform& pathTransform() const override { return state_.transform; }
    bool acceptsPathCalls() const override { return state_.transform.hasInverse(); }

private:
    // An open layer: its pixels (reaching past the canvas where its filters and the state it
    // is drawn with can pull from), and where in the saved states it began.
    struct Layer {
        cairo_surface_t* surface = nullptr; // null past kMaxLayers: drawing then goes below
        CanvasDeviceRect area;
        std::shared_ptr<const FilterChain> filter;
        std::size_t depth = 0; // stateStack_.size() once beginLayer() pushed the state
    };

    // The Cairo context on the current target (the top layer, else the canvas's bitmap) with
    // the current clip applied; null when the canvas has no bitmap.
    cairo_t* cairo();
    void releaseCairo();
    // Where drawing goes: the top layer with a surface, else the bitmap; and its device area.
    cairo_surface_t* targetSurface();
    CanvasDeviceRect targetArea() const;
    CSSColorSpace drawingSpace() const { return toCSSColorSpace(settings_.colorSpace); }
    void discardLayers();
    // InvalidStateError when `image` is a canvas with open layers of its own.
    static ExceptionOr<void> checkNoOpenLayers(CanvasImageSource& image, const char* operation);
    // A tiny context for hit testing, which must work even without a bitmap.
    cairo_t* scratchCairo();
    void paint(const CanvasShape& shape, const std::variant<const CanvasPaintStyle*, CanvasImagePaint>& source);
    // A drawing that covers nothing but still takes part in compositing (CanvasPainter).
    void compositeNothing();
    // Sets the current transform; a path carried over a change is no longer a lone line.
    void changeTransform(const AffineTransform& transform);
    void fillOrStroke(const CanvasPath& path, bool inUserSpace, bool stroke, CanvasFillRule fillRule);
    void addClip(std::vector<cairo_path_data_t> devicePath, CanvasFillRule fillRule);
    bool hitTest(std::span<const cairo_path_data_t> path, bool inUserSpace, double x, double y, bool stroke, CanvasFillRule fillRule);
    // Paints the path `appendText` adds in user space (glyph outlines of text `fontSize` pixels
    // high) as a fill or a stroke.
    void drawText(const std::function<void(cairo_t*)>& appendText, double fontSize, bool stroke);
    // Sets `style` from a CanvasStyle value, leaving it alone for text that is not a colour.
    void setStyle(CanvasPaintStyle& style, const CanvasStyle& value) const;
    // A CSS colour, currentcolor being the canvas element's colour.
    std::optional<CSSColorValue> parseColor(std::string_view text) const;
    static CanvasStyle styleValue(const CanvasPaintStyle& style);
    std::shared_ptr<CanvasTextDrawingState> mutableText();

    HTMLCanvasElement& canvas_;
    CanvasRenderingContext2DSettings settings_;
    CanvasDrawingState state_;
    std::vector<CanvasDrawingState> stateStack_;
    std::vector<Layer> layers_;
    cairo_t* cairo_ = nullptr;
    std::shared_ptr<const CanvasClip> appliedClip_;
    cairo_t* scratchCairo_ = nullptr;
};
