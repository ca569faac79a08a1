#include "web/canvas/CanvasGradient.h"
#include "web/canvas/CanvasPattern.h"
#include "web/canvas/Path2D.h"
#include "web/script/Bindings.h"
#include "web/script/CanvasPathBinding.h"
#include "web/script/GeometryConversions.h"
#include "web/script/Realm.h"

namespace script {

namespace {

// new Path2D(), new Path2D(path), new Path2D(svgPathData)
JSObjectRef constructPath2D(Call& call)
{
    std::shared_ptr<Path2D> path;
    if (!call.has(0))
        path = std::make_shared<Path2D>();
    else if (const Path2D* other = call.unwrap<Path2D>(call.arg(0), path2DInterface))
        path = std::make_shared<Path2D>(*other);
    else
        path = std::make_shared<Path2D>(call.string(0));
    return call.realm().wrap(path2DInterface, std::move(path));
}

std::vector<Member> path2DMembers()
{
    std::vector<Member> members = {
        operation<path2DInterface, "addPath", 1>([](Call& call, Path2D& path) {
            const Path2D* other = call.unwrap<Path2D>(call.arg(0), path2DInterface);
            if (!other)
                call.throwTypeError("Failed to execute 'addPath' on 'Path2D': parameter 1 is not of type 'Path2D'.");
            // A copy: adding a path to itself must not read what it is appending.
            Path2D added = *other;
            call.check(path.addPath(added, toDOMMatrix2DInit(call, call.arg(1))));
        }),
    };
    std::vector<Member> mixin = canvasPathMembers<path2DInterface, Path2D>();
    members.insert(members.end(), mixin.begin(), mixin.end());
    return members;
}

} // namespace

InterfaceDefinition canvasGradientInterface = {
    .name = "CanvasGradient",
    .members = {
        operation<canvasGradientInterface, "addColorStop", 2>([](Call& call, CanvasGradient& gradient) {
            double offset = call.number(0);
            call.check(gradient.addColorStop(offset, call.string(1)));
        }),
    },
};

InterfaceDefinition canvasPatternInterface = {
    .name = "CanvasPattern",
    .members = {
        operation<canvasPatternInterface, "setTransform", 0>([](Call& call, CanvasPattern& pattern) {
            call.check(pattern.setTransform(toDOMMatrix2DInit(call, call.arg(0))));
        }),
    },
};

InterfaceDefinition path2DInterface = {
    .name = "Path2D",
    .constructor = &constructPath2D,
    .members = path2DMembers(),
};
} // namespace script
