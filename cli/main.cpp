// ampwell: reads and changes Ampwell's settings and profiles from the command line.

#include "Command.h"

#include "store/Installation.h"

#include "platform/core/Root.h"

#include <iostream>

namespace {

std::vector<Command> allCommands()
{
    std::vector<Command> commands;
    for (auto group : {settingsCommands, profileCommands, renderCommands, watchCommands})
        for (Command& command : group())
            commands.push_back(std::move(command));
    return commands;
}

void printOverview(const std::vector<Command>& commands)
{
    std::cout << "Usage: ampwell [--root DIR] COMMAND [ARGS] [--help]\n"
                 "       ampwell --version\n\n"
                 "Reads and changes the settings of Ampwell, the battery indicator.\n\n"
                 "Commands:\n";
    for (const Command& command : commands)
        std::cout << "  " << command.name << std::string(command.name.size() < 10 ? 10 - command.name.size() : 1, ' ')
                  << command.summary << "\n";
    std::cout << "\n--root DIR  the folder the phone's file layout lives in (default: $AMPWELL_ROOT,\n"
                 "            else $XDG_DATA_HOME/ampwell/root)\n";
}

// Takes "--root DIR" (or "--root=DIR") out of the arguments, wherever it stands.
std::optional<std::string> extractRoot(std::vector<std::string>& words, std::string* problem)
{
    std::optional<std::string> root;
    for (std::size_t i = 0; i < words.size(); ++i) {
        if (words[i] == "--")
            break;
        if (words[i].starts_with("--root=")) {
            root = words[i].substr(7);
            words.erase(words.begin() + static_cast<std::ptrdiff_t>(i--));
        } else if (words[i] == "--root") {
            if (i + 1 >= words.size()) {
                *problem = "--root needs a folder";
                return root;
            }
            root = words[i + 1];
            words.erase(words.begin() + static_cast<std::ptrdiff_t>(i), words.begin() + static_cast<std::ptrdiff_t>(i) + 2);
            --i;
        }
    }
    if (root && root->empty())
        *problem = "--root needs a folder";
    return root;
}

} // namespace

int main(int argc, char** argv)
{
    std::vector<std::string> words(argv + 1, argv + argc);
    std::vector<Command> commands = allCommands();

    std::string problem;
    std::optional<std::string> root = extractRoot(words, &problem);
    if (!problem.empty()) {
        std::cerr << "ampwell: " << problem << "\n";
        return 2;
    }
    if (!words.empty() && words[0] == "--version") {
        std::cout << "ampwell " AMPWELL_VERSION "\n";
        return 0;
    }
    if (words.empty() || words[0] == "--help" || words[0] == "-h" || words[0] == "help") {
        printOverview(commands);
        return words.empty() ? 2 : 0;
    }

    for (const Command& command : commands) {
        if (command.name != words[0])
            continue;
        CommandLine line;
        std::vector<std::string> rest(words.begin() + 1, words.end());
        if (std::optional<std::string> error = parseCommandLine(rest, command.options, &line))
            return usageError(command.name, *error);
        if (line.has("--help") && command.name != "profile") {
            std::cout << command.help;
            return 0;
        }
        Root::set(Root::resolve(root));
        for (const std::string& installProblem : installComponent())
            std::cerr << "ampwell: " << installProblem << "\n";
        return command.run(line);
    }
    std::cerr << "ampwell: unknown command \"" << words[0] << "\"\n";
    printOverview(commands);
    return 2;
}
