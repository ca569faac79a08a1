#pragma once

#include "web/text/CanvasFont.h"
#include "web/text/CanvasTextStyle.h"
#include "web/text/TextMetrics.h"

#include <memory>
#include <optional>
#include <string_view>

typedef struct _cairo cairo_t;

// measureText(): the metrics of `utf8` (invalid UTF-8 reads as U+FFFD) in `style`. The
// metrics keep the style for their methods: a shared one is kept as it is, not copied.
TextMetrics measureText(std::string_view utf8, const CanvasTextStyle& style);
TextMetrics measureText(std::string_view utf8, std::shared_ptr<const CanvasTextStyle> style);

// Adds the outlines of `utf8` to cr's current path, in cr's current user space, with the
// alignment point at (x, y) placed by the style's align and baseline. With `maxWidth`, text
// wider than it is squeezed horizontally to fit; a maxWidth that is not finite or not
// positive adds nothing, and so do non-finite x or y. The caller fills or strokes the path, and
// says which by `use`.
void appendTextPath(cairo_t* cr, std::string_view utf8, double x, double y,
                    const CanvasTextStyle& style, std::optional<double> maxWidth,
                    TextPathUse use = TextPathUse::Outline);
