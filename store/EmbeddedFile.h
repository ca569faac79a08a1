#pragma once

#include <string_view>
#include <vector>

// A file compiled into the program: its file name and its bytes.
struct EmbeddedFile {
    std::string_view name;
    std::string_view contents;
};

// The theme scripts that ship with the product, one "<theme name>.js" each.
const std::vector<EmbeddedFile>& bundledThemes();
