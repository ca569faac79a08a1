#include "CommandLine.h"

#include <algorithm>
#include <iostream>

std::optional<std::string> CommandLine::value(std::string_view name) const
{
    auto it = values.find(std::string(name));
    if (it == values.end())
        return std::nullopt;
    return it->second;
}

std::optional<std::string> parseCommandLine(const std::vector<std::string>& words, const std::vector<OptionSpec>& options,
                                            CommandLine* out)
{
    bool onlyPositional = false;
    for (std::size_t i = 0; i < words.size(); ++i) {
        const std::string& word = words[i];
        if (onlyPositional || word.size() < 2 || word[0] != '-' || (word[1] >= '0' && word[1] <= '9')) {
            out->positional.push_back(word);
            continue;
        }
        if (word == "--") {
            onlyPositional = true;
            continue;
        }
        std::string name = word;
        std::optional<std::string> inlineValue;
        if (std::size_t equals = word.find('='); equals != std::string::npos && word.starts_with("--")) {
            name = word.substr(0, equals);
            inlineValue = word.substr(equals + 1);
        }
        if (name == "--help" || name == "-h") {
            out->flags.insert("--help");
            continue;
        }
        auto spec = std::find_if(options.begin(), options.end(), [&](const OptionSpec& o) { return o.name == name; });
        if (spec == options.end())
            return "unknown option " + name;
        if (!spec->takesValue) {
            if (inlineValue)
                return name + " takes no value";
            out->flags.insert(name);
            continue;
        }
        if (inlineValue) {
            out->values[name] = *inlineValue;
        } else if (i + 1 < words.size()) {
            out->values[name] = words[++i];
        } else {
            return name + " needs a value";
        }
    }
    return std::nullopt;
}

int usageError(std::string_view command, std::string_view message)
{
    std::cerr << "ampwell " << command << ": " << message << "\n"
              << "Try 'ampwell " << command << " --help'.\n";
    return 2;
}

int failure(std::string_view command, std::string_view message)
{
    std::cerr << "ampwell " << command << ": " << message << "\n";
    return 1;
}
