#include "ProfileList.h"

#include "Profiles.h"

#include <filesystem>

namespace {

// Names of the profile files in directory order; false when the folder cannot be listed.
bool listProfileFiles(std::vector<std::string>* names)
{
    std::error_code error;
    std::filesystem::directory_iterator folder(profileDirectoryPath(), error);
    if (error)
        return false;
    for (const auto& entry : folder) {
        std::string file = entry.path().filename().string();
        if (file.size() > kProfileExtension.size() && file.ends_with(kProfileExtension))
            names->push_back(file.substr(0, file.size() - kProfileExtension.size()));
    }
    return true;
}

} // namespace

std::vector<std::string> loadProfiles()
{
    std::vector<std::string> files;
    bool listed = listProfileFiles(&files);
    writeProfile(kDefaultProfileName, defaultProfile());

    std::vector<std::string> profiles;
    bool sawDefault = false;
    bool sawMostRecent = false;
    for (const std::string& name : files) {
        if (name == kDefaultProfileName)
            sawDefault = true;
        else if (name == kMostRecentProfileName)
            sawMostRecent = true;
        else
            profiles.push_back(name);
    }
    if (sawMostRecent)
        profiles.insert(profiles.begin(), std::string(kMostRecentProfileName));
    if (!listed || !sawDefault)
        writeProfile(kDefaultProfileName, defaultProfile());
    profiles.insert(profiles.begin() + (sawMostRecent ? 1 : 0), std::string(kDefaultProfileName));
    return profiles;
}

std::vector<std::string> profileTitles()
{
    std::vector<std::string> names;
    listProfileFiles(&names);
    return names;
}
