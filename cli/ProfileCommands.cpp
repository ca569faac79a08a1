#include "Command.h"
#include "ValueText.h"

#include "store/PreferencesStore.h"
#include "store/ProfileList.h"
#include "store/Profiles.h"
#include "store/SettingsCatalogue.h"

#include <filesystem>
#include <iostream>
#include <sys/stat.h>

namespace {

bool exists(const std::string& path)
{
    struct stat info {};
    return ::stat(path.c_str(), &info) == 0;
}

// Screens the NAME argument; on a problem prints it and returns the exit status.
std::optional<int> screenName(std::string_view command, const CommandLine& line)
{
    if (line.positional.size() != 1)
        return usageError(command, "give exactly one profile NAME");
    if (std::optional<std::string> problem = profileNameProblem(line.positional[0]))
        return usageError(command, *problem);
    return std::nullopt;
}

int runList(const CommandLine& line)
{
    if (!line.positional.empty())
        return usageError("profile list", "takes no arguments");
    std::vector<std::string> names = loadProfiles();
    if (line.has("--json")) {
        std::string out = "[";
        for (const std::string& name : names)
            out += (out.size() > 1 ? "," : "") + jsonString(name);
        std::cout << out << "]\n";
        return 0;
    }
    for (const std::string& name : names) {
        std::optional<PlistDict> profile = readProfile(name);
        std::cout << name << "\t" << (!profile ? "unreadable" : isCompleteProfile(*profile) ? "all" : "colors") << "\n";
    }
    return 0;
}

int runSave(const CommandLine& line)
{
    if (std::optional<int> status = screenName("profile save", line))
        return *status;
    bool complete = line.has("--complete");
    if (complete == line.has("--colors"))
        return usageError("profile save", "say what to save: --complete or --colors");
    const std::string& name = line.positional[0];
    if (exists(profilePath(name)))
        return failure("profile save", "a profile named \"" + name + "\" already exists");
    std::string error;
    if (!writeProfile(name, complete ? currentCompleteProfile() : currentColorProfile(), &error))
        return failure("profile save", error);
    return 0;
}

int runRestore(const CommandLine& line)
{
    if (std::optional<int> status = screenName("profile restore", line))
        return *status;
    const std::string& name = line.positional[0];
    bool colorsOnly = line.has("--colors-only");
    bool resetOthers = line.has("--reset-others");
    if (colorsOnly && resetOthers)
        return usageError("profile restore", "--colors-only and --reset-others exclude each other");

    std::optional<PlistDict> profile = readProfile(name);
    if (!profile)
        return failure("profile restore", "no readable profile named \"" + name + "\"");
    bool complete = isCompleteProfile(*profile);
    if (complete && resetOthers)
        return usageError("profile restore", "\"" + name + "\" is a complete profile; --reset-others is for colour profiles");
    if (!complete && colorsOnly)
        return usageError("profile restore", "\"" + name + "\" holds colours only; --colors-only is for complete profiles");
    if (!loadPreferences())
        return failure("profile restore", "there are no settings yet to restore into (" + preferencesPath() +
                                              " is missing or unreadable); change a setting first");

    std::string error;
    if (!writeProfile(kMostRecentProfileName, currentCompleteProfile(), &error))
        return failure("profile restore", "cannot keep the current settings as \"Most Recent\": " + error);
    if (complete && !colorsOnly) {
        applyProfile(*profile);
    } else if (!complete && resetOthers) {
        PlistDict withDefaults = *profile;
        withDefaults.addEntriesFrom(otherProfileTemplate());
        applyProfile(withDefaults);
    } else {
        applyOnlyColorProfile(*profile);
    }
    postSettingsChangedNotification();
    return 0;
}

int runDelete(const CommandLine& line)
{
    if (std::optional<int> status = screenName("profile delete", line))
        return *status;
    const std::string& name = line.positional[0];
    if (name == kDefaultProfileName || name == kMostRecentProfileName)
        return usageError("profile delete", "\"" + name + "\" is kept by Ampwell and cannot be deleted");
    std::error_code error;
    if (!std::filesystem::remove(profilePath(name), error))
        return failure("profile delete", error ? error.message() : "no profile named \"" + name + "\"");
    return 0;
}

const Command kSubcommands[] = {
    {"list", "", "", {{"--json"}}, runList},
    {"save", "", "", {{"--complete"}, {"--colors"}}, runSave},
    {"restore", "", "", {{"--colors-only"}, {"--reset-others"}}, runRestore},
    {"delete", "", "", {}, runDelete},
};

const char* kProfileHelp =
    "Usage: ampwell profile list [--json]\n"
    "       ampwell profile save NAME --complete|--colors\n"
    "       ampwell profile restore NAME [--colors-only|--reset-others]\n"
    "       ampwell profile delete NAME\n\n"
    "list     the saved profiles: \"Most Recent\" (after a restore), \"Default\", then the\n"
    "         others in folder order, each marked \"all\" or \"colors\"\n"
    "save     keeps the current settings (--complete) or only the colours (--colors) under\n"
    "         a new NAME; a taken name is refused\n"
    "restore  keeps the current settings as \"Most Recent\", then applies NAME: a complete\n"
    "         profile restores everything (or only its colours with --colors-only); a colour\n"
    "         profile keeps the other settings (or resets them to defaults with\n"
    "         --reset-others). Then the change notification is posted.\n"
    "delete   removes a saved profile; \"Default\" and \"Most Recent\" stay\n";

std::vector<std::string> tail(const CommandLine& line)
{
    return {line.positional.begin() + 1, line.positional.end()};
}

int runProfile(const CommandLine& line)
{
    if (line.positional.empty()) {
        if (line.has("--help")) {
            std::cout << kProfileHelp;
            return 0;
        }
        return usageError("profile", "give a subcommand: list, save, restore or delete");
    }
    for (const Command& sub : kSubcommands) {
        if (sub.name != line.positional[0])
            continue;
        if (line.has("--help")) {
            std::cout << kProfileHelp;
            return 0;
        }
        // The outer parse accepted every option of every subcommand; parse again strictly.
        std::vector<std::string> words(line.flags.begin(), line.flags.end());
        words.push_back("--");
        for (const std::string& word : tail(line))
            words.push_back(word);
        CommandLine own;
        if (std::optional<std::string> problem = parseCommandLine(words, sub.options, &own))
            return usageError("profile " + sub.name, *problem);
        return sub.run(own);
    }
    return usageError("profile", "unknown subcommand \"" + line.positional[0] + "\"");
}

} // namespace

std::vector<Command> profileCommands()
{
    return {{"profile", "list, save, restore and delete profiles", kProfileHelp,
             {{"--json"}, {"--complete"}, {"--colors"}, {"--colors-only"}, {"--reset-others"}},
             runProfile}};
}
