#include "platform/web/text/CanvasText.h"

std::optional<CanvasTextAlign> parseCanvasTextAlign(std::string_view) { return std::nullopt; }
std::optional<CanvasTextBaseline> parseCanvasTextBaseline(std::string_view) { return std::nullopt; }
std::optional<CanvasDirection> parseCanvasDirection(std::string_view) { return std::nullopt; }
std::optional<CanvasFontKerning> parseCanvasFontKerning(std::string_view) { return std::nullopt; }
std::string_view toString(CanvasTextAlign) { return "start"; }
std::string_view toString(CanvasTextBaseline) { return "alphabetic"; }
std::string_view toString(CanvasDirection) { return "inherit"; }
std::string_view toString(CanvasFontKerning) { return "auto"; }
std::optional<double> parseCanvasSpacing(std::string_view, const CanvasFont&) { return std::nullopt; }
TextMetrics measureText(std::string_view, const CanvasTextStyle&) { return {}; }
void appendTextPath(cairo_t*, std::string_view, double, double, const CanvasTextStyle&, std::optional<double>) {}
