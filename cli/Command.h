#pragma once

#include "CommandLine.h"

#include <string>
#include <vector>

// One subcommand of `ampwell`.
struct Command {
    std::string name;
    std::string summary;            // one line for the overview
    std::string help;               // the whole --help text
    std::vector<OptionSpec> options;
    int (*run)(const CommandLine&); // exit status
};

// Each file of subcommands registers its own.
std::vector<Command> settingsCommands();
std::vector<Command> profileCommands();
std::vector<Command> watchCommands();
std::vector<Command> renderCommands();
