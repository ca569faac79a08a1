#pragma once

#include <string>
#include <vector>

// Installs the component into the root on first start: the bundled theme scripts into the
// product's Themes folder and the profile folder, each only when missing. Nothing else is
// written (in particular no preferences file). Returns what could not be installed.
std::vector<std::string> installComponent();
