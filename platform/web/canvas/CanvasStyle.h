#pragma once

#include "platform/web/css/CSSColor.h"

#include <memory>
#include <string>
#include <variant>

class CanvasGradient;
class CanvasPattern;

// fillStyle and strokeStyle as a script sees them: a serialized colour or the object it set.
using CanvasStyle = std::variant<std::string, std::shared_ptr<CanvasGradient>, std::shared_ptr<CanvasPattern>>;

// What the drawing state keeps: the parsed colour, or the gradient or pattern when one is set.
struct CanvasPaintStyle {
    CSSColor color{0, 0, 0, 255};
    std::shared_ptr<CanvasGradient> gradient;
    std::shared_ptr<CanvasPattern> pattern;

    bool isColor() const { return !gradient && !pattern; }
};
