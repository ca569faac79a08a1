#pragma once

#include "platform/core/Root.h"

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>
#include <string_view>

// A fresh root folder for one test, removed afterwards. Phone paths given to its helpers
// are joined onto it.
class TemporaryRoot {
public:
    TemporaryRoot()
    {
        std::string pattern = (std::filesystem::temp_directory_path() / "ampwell-test-XXXXXX").string();
        folder_ = ::mkdtemp(pattern.data()) ? pattern : std::string();
        Root::set(folder_);
    }
    ~TemporaryRoot()
    {
        std::error_code ignored;
        std::filesystem::remove_all(folder_, ignored);
    }
    TemporaryRoot(const TemporaryRoot&) = delete;
    TemporaryRoot& operator=(const TemporaryRoot&) = delete;

    const std::string& folder() const { return folder_; }
    std::string path(std::string_view phonePath) const { return Root::path(phonePath); }

    // Creates the folder holding the phone path (the file itself is not made).
    void makeFolderFor(std::string_view phonePath) const
    {
        std::filesystem::create_directories(std::filesystem::path(path(phonePath)).parent_path());
    }
    void makeFolder(std::string_view phonePath) const { std::filesystem::create_directories(path(phonePath)); }

    void writeFile(std::string_view phonePath, std::string_view contents) const
    {
        makeFolderFor(phonePath);
        std::ofstream(path(phonePath), std::ios::binary) << contents;
    }
    bool exists(std::string_view phonePath) const { return std::filesystem::exists(path(phonePath)); }

private:
    std::string folder_;
};
