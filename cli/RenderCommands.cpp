#include "Command.h"
#include "ContactSheet.h"
#include "HexColourArgument.h"
#include "ThemeCatalog.h"
#include "ValueText.h"

#include "render/QLAWBatteryRenderer.h"
#include "store/RenderSettings.h"
#include "store/ThemeScripts.h"

#include "platform/core/UIScreen.h"
#include "platform/web/UIWebView.h"

#include <charconv>
#include <cmath>
#include <fstream>
#include <iostream>
#include <sstream>

namespace {

// Reads a number option; returns the problem or nothing.
std::optional<std::string> numberOption(const CommandLine& line, const char* name, double min, double max, double* out)
{
    std::optional<std::string> text = line.value(name);
    if (!text)
        return std::nullopt;
    double value = 0;
    auto [end, error] = std::from_chars(text->data(), text->data() + text->size(), value);
    if (error != std::errc() || end != text->data() + text->size() || !std::isfinite(value) || value < min || value > max)
        return std::string(name) + " takes a number from " + std::to_string(static_cast<int>(min)) + " to " +
               std::to_string(static_cast<int>(max));
    *out = value;
    return std::nullopt;
}

std::optional<std::string> readScriptFile(const std::string& path, std::string* problem)
{
    std::ifstream in(path, std::ios::binary);
    if (!in) {
        *problem = "cannot read " + path;
        return std::nullopt;
    }
    std::stringstream text;
    text << in.rdbuf();
    return text.str();
}

// The render settings the options describe, or the problem.
std::optional<PlistDict> settingsFromOptions(const CommandLine& line, std::string* problem)
{
    int sources = line.has("--theme") + line.has("--script") + line.has("--builtin") + line.has("--settings");
    if (sources != 1) {
        *problem = "say what to draw: one of --theme NAME, --script FILE, --builtin or --settings";
        return std::nullopt;
    }
    if (line.has("--settings")) {
        std::string style = line.value("--style").value_or("light");
        if (style != "light" && style != "dark") {
            *problem = "--style is light or dark";
            return std::nullopt;
        }
        PlistDict both = getBatteryRenderSettings();
        return *both.find(style + "Settings")->asDict();
    }

    std::optional<std::string> script;
    if (std::optional<std::string> theme = line.value("--theme")) {
        script = getThemeScriptWithName(*theme);
        if (!script) {
            *problem = "no readable theme named \"" + *theme + "\" is installed (see 'ampwell themes')";
            return std::nullopt;
        }
    } else if (std::optional<std::string> file = line.value("--script")) {
        if (!(script = readScriptFile(*file, problem)))
            return std::nullopt;
    } else {
        script = std::string(kBuiltInPreviewScript);
    }

    double height = 26, level = 55;
    for (auto [name, min, max, out] : {std::tuple{"--height", 1.0, 1000.0, &height}, {"--level", 0.0, 100.0, &level}})
        if (std::optional<std::string> error = numberOption(line, name, min, max, out)) {
            *problem = *error;
            return std::nullopt;
        }
    std::optional<UIColor> color = parseHexColourArgument(line.value("--color").value_or("#ffffff"));
    std::optional<UIColor> base = parseHexColourArgument(line.value("--base-color").value_or("#000000"));
    if (!color || !base) {
        *problem = "--color and --base-color take 6 or 8 hex digits, \"#\" optional";
        return std::nullopt;
    }
    return PlistDict{{"script", *script}, {"height", height}, {"level", static_cast<int>(level)},
                     {"charging", line.has("--charging")}, {"low", line.has("--low")}, {"lpm", line.has("--lpm")},
                     {"color", *color}, {"baseColor", *base}, {"flipX", line.has("--flip-x")},
                     {"flipY", line.has("--flip-y")}};
}

std::optional<std::string> applyEngineOptions(const CommandLine& line)
{
    double scale = 2, limit = 500;
    if (auto error = numberOption(line, "--scale", 1, 4, &scale))
        return error;
    if (auto error = numberOption(line, "--time-limit", 1, 60000, &limit))
        return error;
    UIScreen::mainScreen().setScale(scale);
    UIWebView::setExecutionTimeLimit(std::chrono::milliseconds(static_cast<long>(limit)));
    return std::nullopt;
}

int runSheet(const CommandLine& line, const std::string& output)
{
    ContactSheetOptions options;
    if (auto error = numberOption(line, "--height", 1, 200, &options.heightPoints))
        return usageError("render", *error);
    ContactSheet sheet = drawContactSheet(options);
    for (const std::string& failure : sheet.failures)
        std::cerr << "ampwell render: " << failure << "\n";
    if (sheet.picture.isNil() || !sheet.picture.writePNG(output))
        return failure("render", "cannot write " + output);
    return sheet.failures.empty() ? 0 : 1;
}

int runRender(const CommandLine& line)
{
    if (!line.positional.empty())
        return usageError("render", "takes no positional arguments");
    std::optional<std::string> output = line.value("-o");
    if (!output || output->empty())
        return usageError("render", "say where the picture goes: -o FILE.png");
    if (std::optional<std::string> error = applyEngineOptions(line))
        return usageError("render", *error);
    if (line.has("--sheet"))
        return runSheet(line, *output);

    std::string problem;
    std::optional<PlistDict> settings = settingsFromOptions(line, &problem);
    if (!settings)
        return usageError("render", problem);
    std::string failureReason;
    UIImage image = QLAWBatteryRenderer::renderBatteryImageWithSettingsForStyle(*settings, 0, &failureReason);
    if (image.isNil())
        return failure("render", failureReason);
    if (!image.writePNG(*output))
        return failure("render", "cannot write " + *output);
    return 0;
}

int runThemes(const CommandLine& line)
{
    if (!line.positional.empty())
        return usageError("themes", "takes no arguments");
    std::vector<InstalledTheme> themes = installedThemes();
    if (line.has("--json")) {
        std::string out = "[";
        for (const InstalledTheme& theme : themes)
            out += std::string(out.size() > 1 ? ",\n " : "\n ") + "{\"name\":" + jsonString(theme.name) +
                   ",\"folder\":" + jsonString(theme.folder) + ",\"form\":" + jsonString(theme.callForm) +
                   ",\"shadowed\":" + (theme.shadowed ? "true" : "false") + "}";
        std::cout << out << "\n]\n";
        return 0;
    }
    for (const InstalledTheme& theme : themes)
        std::cout << theme.name << "\t" << theme.folder << "\t" << theme.callForm
                  << (theme.shadowed ? "\t(hidden by an earlier folder)" : "") << "\n";
    return 0;
}

} // namespace

std::vector<Command> renderCommands()
{
    return {
        {"render", "draw a battery with a theme script into a PNG",
         "Usage: ampwell render (--theme NAME | --script FILE | --builtin) [options] -o FILE.png\n"
         "       ampwell render --settings [--style light|dark] [--scale S] -o FILE.png\n"
         "       ampwell render --sheet [--height PT] [--scale S] -o FILE.png\n\n"
         "  --height PT        icon height in points (26)\n"
         "  --scale S          device pixels per point (2)\n"
         "  --level N          charge level, 0 to 100 (55)\n"
         "  --charging, --low, --lpm   battery state\n"
         "  --color HEX        main colour (#ffffff)\n"
         "  --base-color HEX   base colour, alpha allowed (#000000)\n"
         "  --flip-x, --flip-y turn the picture upside down / mirror it left to right\n"
         "  --time-limit MS    how long a script may run (500)\n"
         "  --settings         draw what the current settings give (light or dark style)\n"
         "  --sheet            every installed theme, light and dark, at a few levels\n"
         "A script that is invalid, throws, returns no PNG data URL or runs out of time\n"
         "gives the reason on stderr and exit status 1.\n",
         {{"--theme", true}, {"--script", true}, {"--builtin"}, {"--settings"}, {"--style", true}, {"--sheet"},
          {"--height", true}, {"--scale", true}, {"--level", true}, {"--charging"}, {"--low"}, {"--lpm"},
          {"--color", true}, {"--base-color", true}, {"--flip-x"}, {"--flip-y"}, {"--time-limit", true},
          {"-o", true}},
         runRender},
        {"themes", "list the installed themes",
         "Usage: ampwell themes [--json]\n\n"
         "Lists every installed theme with its folder and its call form: short (five\n"
         "parameters or fewer), long (six or more), or invalid (no parameter list).\n",
         {{"--json"}},
         runThemes},
    };
}
