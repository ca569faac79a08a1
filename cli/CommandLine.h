#pragma once

#include <map>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <vector>

struct OptionSpec {
    std::string name;        // with its dashes: "--type"
    bool takesValue = false;
};

// One subcommand's arguments: positional words, flags, and options with values.
struct CommandLine {
    std::vector<std::string> positional;
    std::set<std::string> flags;
    std::map<std::string, std::string> values;

    bool has(std::string_view name) const { return flags.count(std::string(name)) || values.count(std::string(name)); }
    std::optional<std::string> value(std::string_view name) const;
};

// Parses against the options the subcommand knows ("--help" is always known). A word after
// "--" is positional even if it starts with a dash. Returns the problem, or nothing.
std::optional<std::string> parseCommandLine(const std::vector<std::string>& words, const std::vector<OptionSpec>& options,
                                            CommandLine* out);

// A usage problem: printed as "ampwell <command>: <message>" with a hint, exit status 2.
int usageError(std::string_view command, std::string_view message);
// A failure to do what was asked: printed the same way, exit status 1.
int failure(std::string_view command, std::string_view message);
