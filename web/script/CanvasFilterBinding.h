#pragma once

#include "web/canvas/FilterPrimitive.h"
#include "web/script/Binding.h"

#include <memory>

class CanvasRenderingContext2D;

namespace script {

// ctx.filter: the CanvasFilter object while one is set, else the CSS text; set from either
// (anything else is taken as text).
JSValueRef filterValue(Call& call, CanvasRenderingContext2D& context);
void setFilterValue(Call& call, CanvasRenderingContext2D& context, JSValueRef value);
// The filter of beginLayer()'s options (a CSS string, a CanvasFilter, or its dictionaries);
// null for none. TypeError when the options are not a dictionary or a dictionary is wrong.
std::shared_ptr<const FilterChain> layerFilter(Call& call, CanvasRenderingContext2D& context, JSValueRef options);

} // namespace script
