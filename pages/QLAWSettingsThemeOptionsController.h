#pragma once

#include "QLAWSettingsController.h"

#include <string>
#include <vector>

// "Theme Options": the theme for normal use, a secondary theme below a charge level and a
// theme while charging, each with its mirror switches. Each theme row opens a list of every
// installed theme with live previews.
class QLAWSettingsThemeOptionsController : public QLAWSettingsController {
    Q_OBJECT
    AMPWELL_OBJC_CLASS()

public:
    // The options page last loaded, or null.
    static QLAWSettingsThemeOptionsController* current();

    UIColor navigationTintColor() { return tintColour(); }
    std::string navigationTitle() { return "Theme Options"; }
    void loadView() override;
    // The names of the themes in a folder (files ending in ".js"), in the order the file
    // system lists them; none for a folder that does not exist.
    std::vector<std::string> themesInFolder(const std::string& folder);
    std::vector<std::string> themeTitles(Id entry);
    std::vector<std::string> themeValues(Id entry);
    EntryTable customSpecifiers();

    const std::vector<std::string>& themes() const { return themes_; }

private:
    std::vector<std::string> themes_;
};
