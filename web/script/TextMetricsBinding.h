#pragma once

#include "web/script/Binding.h"
#include "web/text/TextCluster.h"

namespace script {

// The TextCluster a value wraps, or a TypeError naming the method's parameter.
const TextCluster& toTextCluster(const Call& call, std::size_t index, const char* method);
// The TextClusterOptions dictionary (undefined and null give the defaults).
TextClusterOptions toTextClusterOptions(const Call& call, JSValueRef value, const char* method);

} // namespace script
