#pragma once

#include "support/PlistPrinting.h"
#include "support/RunProcess.h"
#include "support/TemporaryRoot.h"

#include "store/PreferencesStore.h"

#include "platform/core/PropertyListFile.h"

#include <fstream>
#include <sstream>

// Runs the `ampwell` command against a temporary root.
class AmpwellRunner {
public:
    TemporaryRoot root;

    ProcessResult run(std::vector<std::string> arguments, std::map<std::string, std::string> environment = {}) const
    {
        arguments.insert(arguments.begin(), {"--root", root.folder()});
        return runProcess(AMPWELL_CLI, arguments, environment);
    }
    PlistDict preferences() const { return readPropertyListDictionary(preferencesPath()).value_or(PlistDict()); }
    std::string preferencesText() const
    {
        std::ifstream in(preferencesPath(), std::ios::binary);
        std::stringstream text;
        text << in.rdbuf();
        return text.str();
    }
};
