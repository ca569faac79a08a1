#pragma once

#include "QLAWSettingsController.h"

#include <string>
#include <vector>

// "Other Options": the charging bolt, the percentage and the levels at which it shows, which
// special colours to ignore, the low-battery level, and a development section that fixes the
// level or the charging state for trying themes out. Every row stores one setting.
class QLAWSettingsOptionsController : public QLAWSettingsController {
    Q_OBJECT
    AMPWELL_OBJC_CLASS()

public:
    std::string customTitle();
    EntryTable customSpecifiers();

private:
    std::vector<std::string> themes_; // never filled: the page lists no themes
};
