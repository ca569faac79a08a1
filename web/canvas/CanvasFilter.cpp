#include "web/canvas/CanvasFilter.h"

namespace {

using Kind = CSSFilterFunction::Kind;

// The same transfer function for red, green and blue; alpha untouched.
ComponentTransferPrimitive colorTransfer(const TransferFunction& function)
{
    ComponentTransferPrimitive primitive;
    for (int i = 0; i < 3; ++i)
        primitive.functions[i] = function;
    return primitive;
}

std::optional<FilterPrimitive> primitiveFor(const CSSFilterFunction& f, const CSSColorValue& currentColor)
{
    using Type = TransferFunction::Type;
    switch (f.kind) {
    case Kind::Blur:
        return GaussianBlurPrimitive{f.amount, f.amount};
    case Kind::Brightness:
        return colorTransfer({Type::Linear, {}, f.amount, 0});
    case Kind::Contrast:
        return colorTransfer({Type::Linear, {}, f.amount, 0.5 - 0.5 * f.amount});
    case Kind::Invert:
        return colorTransfer({Type::Table, {f.amount, 1 - f.amount}});
    case Kind::Opacity: {
        ComponentTransferPrimitive primitive;
        primitive.functions[3] = {Type::Table, {0, f.amount}};
        return primitive;
    }
    case Kind::Grayscale:
        return ColorMatrixPrimitive::grayscale(f.amount);
    case Kind::Sepia:
        return ColorMatrixPrimitive::sepia(f.amount);
    case Kind::Saturate:
        return ColorMatrixPrimitive::saturate(f.amount);
    case Kind::HueRotate:
        return ColorMatrixPrimitive::hueRotate(f.amount);
    case Kind::DropShadow:
        return DropShadowPrimitive{f.offsetX, f.offsetY, f.blur, f.blur, f.color.value_or(currentColor), 1};
    case Kind::Url:
        break;
    }
    return {};
}

} // namespace

FilterChain filterChainForCSS(const std::vector<CSSFilterFunction>& functions, const CSSColorValue& currentColor)
{
    FilterChain chain;
    for (const auto& function : functions) {
        if (auto primitive = primitiveFor(function, currentColor))
            chain.push_back(std::move(*primitive));
    }
    return chain;
}
