#pragma once

#include <string>
#include <vector>

// The names of the saved profiles, as the profile row lists them: "Most Recent" first when it
// exists, then "Default", then the others in directory order. Rewrites the Default profile
// with every default on each call, so it can never be changed or lost.
std::vector<std::string> loadProfiles();

// Every profile file's name in directory order, with no special placing.
std::vector<std::string> profileTitles();
