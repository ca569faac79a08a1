#pragma once

#include <string>
#include <vector>

// An installed theme as the command lists it.
struct InstalledTheme {
    std::string name;
    std::string folder;   // the phone path of its folder
    std::string callForm; // "short", "long", or "invalid" when it has no parameter list
    bool shadowed = false; // an earlier folder holds a theme of the same name, which wins
};

// Every theme in the three theme folders, folder by folder, sorted by name within each.
std::vector<InstalledTheme> installedThemes();
