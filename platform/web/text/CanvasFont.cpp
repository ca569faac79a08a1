#include "platform/web/text/CanvasFont.h"

std::string CanvasFont::serialization() const
{
    return "10px sans-serif";
}

std::string CanvasFont::cacheKey() const
{
    return serialization();
}

std::optional<CanvasFont> parseCanvasFont(std::string_view)
{
    return std::nullopt;
}

CanvasFont defaultCanvasFont()
{
    return CanvasFont{};
}
