#pragma once

#include <optional>
#include <string>

// The shared data an installation puts beside the programs: "<prefix>/share/ampwell", found from
// where the running program lives, so that an installation can be moved as a whole. Nothing
// when the program runs from a build folder (it then uses what is built into it).
std::optional<std::string> installedDataFolder();
