#include "platform/web/css/CSSTransform.h"

std::optional<CSSTransformMatrix> parseCSSTransformList(std::string_view) { return {}; }
