#pragma once

#include "web/canvas/FilterPrimitive.h"
#include "web/css/CSSFilter.h"

#include <memory>
#include <vector>

// A CanvasFilter object: the filter primitives a script put together (new CanvasFilter(...)),
// to set as a context's filter or a layer's. Immutable once made, so contexts share it.
class CanvasFilter {
public:
    explicit CanvasFilter(FilterChain chain) : chain_(std::make_shared<const FilterChain>(std::move(chain))) {}

    const std::shared_ptr<const FilterChain>& chain() const { return chain_; }

private:
    std::shared_ptr<const FilterChain> chain_;
};

// The primitives CSS filter functions stand for. url() references give nothing (there is no
// SVG document to find them in); drop-shadow() without a colour takes `currentColor`.
FilterChain filterChainForCSS(const std::vector<CSSFilterFunction>& functions, const CSSColorValue& currentColor);
