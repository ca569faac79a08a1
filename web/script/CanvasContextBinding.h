#pragma once

#include "web/script/Binding.h"

#include <vector>

class CanvasImageSource;
class Path2D;

namespace script {

// The members of CanvasRenderingContext2D, in groups kept in their own files.
std::vector<Member> contextStateMembers();
std::vector<Member> contextDrawingMembers();

// A CanvasImageSource argument (a canvas), or a TypeError.
CanvasImageSource& toImageSource(const Call& call, std::size_t index);
// The Path2D an argument wraps, or null.
Path2D* asPath(const Call& call, std::size_t index);

} // namespace script
