#pragma once

#include "platform/core/CGGeometry.h"

#include <memory>
#include <type_traits>

// The web view as the renderer makes it: with a zero frame when it takes one.
template <typename WebView> std::unique_ptr<WebView> makeWebView()
{
    if constexpr (std::is_default_constructible_v<WebView>)
        return std::make_unique<WebView>();
    else
        return std::make_unique<WebView>(CGRect{});
}
