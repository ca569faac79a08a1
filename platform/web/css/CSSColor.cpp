#include "platform/web/css/CSSColor.h"

std::optional<CSSColor> parseCSSColor(std::string_view) { return {}; }
std::string serializeCanvasColor(const CSSColor&) { return "#000000"; }
