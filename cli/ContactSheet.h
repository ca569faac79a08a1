#pragma once

#include "platform/core/UIImage.h"

#include <string>
#include <vector>

// A picture of every installed theme in the light and the dark variant at a few levels, for
// theme authors to look over at once.
struct ContactSheetOptions {
    double heightPoints = 26;
};

struct ContactSheet {
    UIImage picture;
    std::vector<std::string> failures; // "<theme> (<variant>): <reason>"
};

ContactSheet drawContactSheet(const ContactSheetOptions& options);
