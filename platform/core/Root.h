#pragma once

#include <optional>
#include <string>
#include <string_view>

// Every absolute path of the system (the phone's file layout) lives under one root folder.
namespace Root {

// The root chosen by --root, else $AMPWELL_ROOT, else $XDG_DATA_HOME/ampwell/root (with
// XDG_DATA_HOME defaulting to ~/.local/share).
std::string resolve(const std::optional<std::string>& commandLineRoot);

void set(std::string folder);
const std::string& folder();

// The absolute phone path joined onto the root.
std::string path(std::string_view absolutePath);

} // namespace Root
