// ampwell-indicator: the battery in the desktop's tray, drawn by the chosen theme.

#include "AmpwellIndicator.h"

#include "store/Installation.h"

#include "platform/core/Root.h"

#include <QApplication>
#include <QDBusConnection>
#include <QDBusConnectionInterface>

#include <cstdlib>
#include <iostream>
#include <optional>
#include <string>
#include <vector>

namespace {

constexpr const char* kServiceName = "com.mossgate.ampwell.Indicator";

constexpr const char* kUsage =
    "Usage: ampwell-indicator [--root DIR]\n"
    "       ampwell-indicator --once -o FILE.png [STATE...] [--root DIR]\n"
    "       ampwell-indicator --print-state [STATE...] [--root DIR]\n\n"
    "Shows the battery in the desktop's tray, drawn by the theme, colours and options chosen in\n"
    "Ampwell Settings, and redraws it when the charge or a setting changes.\n\n"
    "  --root DIR          the folder the settings live in (default: $AMPWELL_ROOT, else\n"
    "                      $XDG_DATA_HOME/ampwell/root)\n"
    "  --once -o FILE.png  write the icon it would show now and exit\n"
    "  --print-state       print the level, flags, theme and colours it would use, as JSON\n"
    "  --version           print the version and exit\n\n"
    "STATE (instead of what UPower and power-profiles-daemon say):\n"
    "  --level N           charge level 0..100      --charging | --discharging | --full\n"
    "  --no-battery        as on a desktop machine  --lpm | --no-lpm (power saver profile)\n"
    "  --appearance light|dark   the panel          --height PT  --scale S (icon size)\n";

struct Options {
    std::optional<std::string> root;
    bool once = false;
    bool printState = false;
    std::optional<std::string> output;
    IndicatorOverrides overrides;
};

std::optional<double> number(const std::string& text, double low, double high)
{
    char* end = nullptr;
    double value = std::strtod(text.c_str(), &end);
    if (text.empty() || !end || *end || !(value >= low && value <= high))
        return std::nullopt;
    return value;
}

// Reads the arguments; a message when they are wrong.
std::optional<std::string> parse(const std::vector<std::string>& words, Options* options)
{
    for (std::size_t i = 0; i < words.size(); ++i) {
        const std::string& word = words[i];
        auto value = [&]() -> std::optional<std::string> {
            return i + 1 < words.size() ? std::optional<std::string>(words[++i]) : std::nullopt;
        };
        IndicatorOverrides& state = options->overrides;
        if (word == "--root" || word == "-o" || word == "--output" || word == "--level" || word == "--appearance"
            || word == "--height" || word == "--scale") {
            std::optional<std::string> given = value();
            if (!given)
                return word + " needs a value";
            if (word == "--root")
                options->root = *given;
            else if (word == "-o" || word == "--output")
                options->output = *given;
            else if (word == "--level") {
                if (!(state.level = number(*given, 0, 100)))
                    return "--level is a number from 0 to 100";
            } else if (word == "--appearance") {
                if (*given != "light" && *given != "dark")
                    return "--appearance is light or dark";
                state.appearance = *given == "dark" ? 1 : 0;
            } else if (word == "--height") {
                if (!(state.height = number(*given, 4, 512)))
                    return "--height is a number of points from 4 to 512";
            } else if (!(state.scale = number(*given, 1, 4))) {
                return "--scale is a number from 1 to 4";
            }
        } else if (word == "--once") {
            options->once = true;
        } else if (word == "--print-state") {
            options->printState = true;
        } else if (word == "--charging" || word == "--discharging") {
            state.charging = word == "--charging";
        } else if (word == "--full") {
            state.charging = true;
            state.fullyCharged = true;
        } else if (word == "--no-battery") {
            state.present = false;
        } else if (word == "--lpm" || word == "--no-lpm") {
            state.powerSaver = word == "--lpm";
        } else {
            return "unknown argument \"" + word + "\"";
        }
    }
    if (options->once && !options->output)
        return "--once needs -o FILE.png";
    if (options->output && !options->once)
        return "-o goes with --once";
    return std::nullopt;
}

bool hasDisplay()
{
    for (const char* name : {"DISPLAY", "WAYLAND_DISPLAY", "QT_QPA_PLATFORM"})
        if (const char* value = std::getenv(name); value && *value)
            return true;
    return false;
}

} // namespace

int main(int argc, char** argv)
{
    std::vector<std::string> words(argv + 1, argv + argc);
    for (const std::string& word : words) {
        if (word == "--version") {
            std::cout << "ampwell-indicator " AMPWELL_VERSION "\n";
            return 0;
        }
        if (word == "--help" || word == "-h") {
            std::cout << kUsage;
            return 0;
        }
    }
    Options options;
    if (std::optional<std::string> problem = parse(words, &options)) {
        std::cerr << "ampwell-indicator: " << *problem << "\n\n" << kUsage;
        return 2;
    }
    // The icon is drawn now and then, never in a loop: the script engine's interpreter serves,
    // and its compilers' code and memory stay out of what the idle program holds.
    setenv("JSC_useJIT", "0", 0);
    bool oneShot = options.once || options.printState;
    // A picture or a report needs no screen.
    if (oneShot && !hasDisplay())
        qputenv("QT_QPA_PLATFORM", "offscreen");
    int qtArgc = 1;
    QApplication application(qtArgc, argv);
    QApplication::setApplicationName(QStringLiteral("ampwell-indicator"));
    QApplication::setApplicationDisplayName(QStringLiteral("Ampwell"));
    QApplication::setQuitOnLastWindowClosed(false);
    Root::set(Root::resolve(options.root));
    for (const std::string& problem : installComponent())
        std::cerr << "ampwell-indicator: " << problem << "\n";

    if (oneShot) {
        AmpwellIndicator indicator(options.overrides);
        if (options.printState)
            std::cout << indicatorStateJSON(indicator.state(), indicator.iconHeight(), indicator.iconScale()) << "\n";
        if (options.once && !indicator.icon().save(QString::fromStdString(*options.output), "PNG")) {
            std::cerr << "ampwell-indicator: cannot write " << *options.output << "\n";
            return 1;
        }
        return 0;
    }

    // One indicator a session: a second one says so and leaves the first alone.
    QDBusConnection session = QDBusConnection::sessionBus();
    if (session.isConnected() && !session.registerService(QString::fromLatin1(kServiceName))) {
        std::cout << "ampwell-indicator is already running in this session\n";
        return 0;
    }
    AmpwellIndicator indicator(options.overrides);
    indicator.showInTray();
    return application.exec();
}
