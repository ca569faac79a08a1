#pragma once

#include "web/canvas/CanvasPath.h"
#include "web/script/Binding.h"
#include "web/script/GeometryConversions.h"

#include <vector>

namespace script {

// roundRect's radii: (unrestricted double or DOMPointInit or
// sequence<(unrestricted double or DOMPointInit)>), absent meaning the default 0.
std::vector<RoundRectRadius> toRoundRectRadii(const Call& call, std::size_t index);

// The CanvasPath mixin, shared by the 2D context and Path2D.
template <const InterfaceDefinition& Interface, typename Self>
std::vector<Member> canvasPathMembers()
{
    return {
        operation<Interface, "closePath", 0>([](Call&, Self& path) { path.closePath(); }),
        operation<Interface, "moveTo", 2>([](Call& call, Self& path) {
            auto [x, y] = call.numbers<2>();
            path.moveTo(x, y);
        }),
        operation<Interface, "lineTo", 2>([](Call& call, Self& path) {
            auto [x, y] = call.numbers<2>();
            path.lineTo(x, y);
        }),
        operation<Interface, "quadraticCurveTo", 4>([](Call& call, Self& path) {
            auto [cpx, cpy, x, y] = call.numbers<4>();
            path.quadraticCurveTo(cpx, cpy, x, y);
        }),
        operation<Interface, "bezierCurveTo", 6>([](Call& call, Self& path) {
            auto [cp1x, cp1y, cp2x, cp2y, x, y] = call.numbers<6>();
            path.bezierCurveTo(cp1x, cp1y, cp2x, cp2y, x, y);
        }),
        operation<Interface, "arcTo", 5>([](Call& call, Self& path) {
            auto [x1, y1, x2, y2, radius] = call.numbers<5>();
            call.check(path.arcTo(x1, y1, x2, y2, radius));
        }),
        operation<Interface, "rect", 4>([](Call& call, Self& path) {
            auto [x, y, w, h] = call.numbers<4>();
            path.rect(x, y, w, h);
        }),
        operation<Interface, "roundRect", 4>([](Call& call, Self& path) {
            auto [x, y, w, h] = call.numbers<4>();
            std::vector<RoundRectRadius> radii = toRoundRectRadii(call, 4);
            call.check(path.roundRect(x, y, w, h, radii));
        }),
        operation<Interface, "arc", 5>([](Call& call, Self& path) {
            auto [x, y, radius, startAngle, endAngle] = call.numbers<5>();
            bool counterclockwise = call.boolean(5);
            call.check(path.arc(x, y, radius, startAngle, endAngle, counterclockwise));
        }),
        operation<Interface, "ellipse", 7>([](Call& call, Self& path) {
            auto [x, y, radiusX, radiusY, rotation, startAngle, endAngle] = call.numbers<7>();
            bool counterclockwise = call.boolean(7);
            call.check(path.ellipse(x, y, radiusX, radiusY, rotation, startAngle, endAngle, counterclockwise));
        }),
    };
}

} // namespace script
