// ampwell-settings: Ampwell's settings pages in a phone-sized window.

#include "Screenshot.h"
#include "SettingsWindow.h"

#include "pages/PageClasses.h"
#include "store/Installation.h"

#include "platform/core/Root.h"
#include "platform/core/UIScreen.h"
#include "platform/qt/Accessibility.h"
#include "platform/qt/UIDevice.h"

#include <QApplication>
#include <QDir>

#include <cstdlib>
#include <iostream>
#include <optional>
#include <string>
#include <vector>

namespace {

struct Options {
    std::optional<std::string> root;
    std::optional<std::string> screenshot;
    std::string page = "QLAWSettingsMainController";
    std::optional<std::string> systemVersion;
    std::optional<std::string> idiom;
    double scale = 2;
};

constexpr const char* kUsage =
    "Usage: ampwell-settings [--root DIR] [--screenshot FILE [--page CLASS] [--scale N]]\n"
    "                        [--system-version VERSION] [--idiom phone|pad]\n\n"
    "Shows Ampwell's settings in a phone-sized window.\n\n"
    "  --root DIR               the folder the phone's file layout lives in (default: $AMPWELL_ROOT,\n"
    "                           else $XDG_DATA_HOME/ampwell/root)\n"
    "  --screenshot FILE        draw a page off screen into a PNG and exit\n"
    "  --page CLASS             the page to draw (default: the main page; e.g. QLAWCreditsController)\n"
    "  --scale N                device pixels per point of the picture (default: 2)\n"
    "  --system-version VERSION the system version the pages believe they run on (default: 16.0)\n"
    "  --idiom phone|pad        the device the pages believe they run on (default: phone)\n"
    "  --version                print the version and exit\n\n"
    "Keys: arrows move between rows, Enter opens, Space toggles, Escape or Alt+Left goes back.\n"
    "Without a display it writes main.png and credits.png into the current folder instead.\n";

// Reads the arguments; a message when they are wrong.
std::optional<std::string> parse(const std::vector<std::string>& words, Options* options)
{
    for (std::size_t i = 0; i < words.size(); ++i) {
        std::string word = words[i];
        std::optional<std::string> inlineValue;
        if (std::size_t equals = word.find('='); word.starts_with("--") && equals != std::string::npos) {
            inlineValue = word.substr(equals + 1);
            word.resize(equals);
        }
        auto value = [&]() -> std::optional<std::string> {
            if (inlineValue)
                return inlineValue;
            if (i + 1 < words.size())
                return words[++i];
            return std::nullopt;
        };
        std::optional<std::string> given;
        if (word == "--root" || word == "--screenshot" || word == "--page" || word == "--system-version"
            || word == "--idiom" || word == "--scale") {
            given = value();
            if (!given || given->empty())
                return word + " needs a value";
        }
        if (word == "--root")
            options->root = given;
        else if (word == "--screenshot")
            options->screenshot = given;
        else if (word == "--page")
            options->page = *given;
        else if (word == "--system-version")
            options->systemVersion = given;
        else if (word == "--idiom") {
            if (*given != "phone" && *given != "pad")
                return "--idiom is phone or pad";
            options->idiom = given;
        } else if (word == "--scale") {
            char* end = nullptr;
            double scale = std::strtod(given->c_str(), &end);
            if (!end || *end || !(scale >= 1 && scale <= 4))
                return "--scale is a number from 1 to 4";
            options->scale = scale;
        } else
            return "unknown argument \"" + words[i] + "\"";
    }
    return std::nullopt;
}

bool hasDisplay()
{
    auto set = [](const char* name) {
        const char* value = std::getenv(name);
        return value && *value;
    };
    return set("DISPLAY") || set("WAYLAND_DISPLAY") || set("QT_QPA_PLATFORM");
}


SettingsWindow* openWindow(const std::string& page)
{
    auto* window = new SettingsWindow();
    window->setAttribute(Qt::WA_DontShowOnScreen);
    window->show();
    window->appear();
    if (!window->pushPageNamed(page)) {
        delete window;
        return nullptr;
    }
    return window;
}

int writePage(const std::string& page, const std::string& path, double scale)
{
    SettingsWindow* window = openWindow(page);
    if (!window) {
        std::cerr << "ampwell-settings: no page class named \"" << page << "\"\n";
        return 2;
    }
    std::string error;
    bool written = writeScreenshot(*window, path, scale, &error);
    delete window;
    if (!written) {
        std::cerr << "ampwell-settings: cannot write " << path << ": " << error << "\n";
        return 1;
    }
    return 0;
}

} // namespace

int main(int argc, char** argv)
{
    Options options;
    std::vector<std::string> words(argv + 1, argv + argc);
    for (const std::string& word : words) {
        if (word == "--version") {
            std::cout << "ampwell-settings " AMPWELL_VERSION "\n";
            return 0;
        }
        if (word == "--help" || word == "-h") {
            std::cout << kUsage;
            return 0;
        }
    }
    if (std::optional<std::string> problem = parse(words, &options)) {
        std::cerr << "ampwell-settings: " << *problem << "\n\n" << kUsage;
        return 2;
    }

    // Without a display there is no window to show; the pages are drawn into pictures.
    bool headless = !hasDisplay();
    if (headless || options.screenshot)
        qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication application(argc, argv);
    QApplication::setApplicationName(QStringLiteral("ampwell-settings"));

    Root::set(Root::resolve(options.root));
    for (const std::string& problem : installComponent())
        std::cerr << "ampwell-settings: " << problem << "\n";
    if (options.systemVersion)
        UIDevice::currentDevice().setSystemVersion(*options.systemVersion);
    if (options.idiom)
        UIDevice::currentDevice().setUserInterfaceIdiom(*options.idiom == "pad" ? UIUserInterfaceIdiomPad
                                                                                  : UIUserInterfaceIdiomPhone);
    registerAmpwellPages();
    installAccessibility();

    if (options.screenshot) {
        UIScreen::mainScreen().setScale(options.scale);
        return writePage(options.page, *options.screenshot, options.scale);
    }
    if (headless) {
        UIScreen::mainScreen().setScale(options.scale);
        QString folder = QDir::currentPath();
        std::cout << "ampwell-settings: no display (DISPLAY and WAYLAND_DISPLAY are unset); writing screenshots\n"
                  << "  " << QDir(folder).filePath(QStringLiteral("main.png")).toStdString() << "\n"
                  << "  " << QDir(folder).filePath(QStringLiteral("credits.png")).toStdString() << "\n";
        int result = writePage("QLAWSettingsMainController", "main.png", options.scale);
        if (result == 0)
            result = writePage("QLAWCreditsController", "credits.png", options.scale);
        return result;
    }

    SettingsWindow window;
    window.show();
    // Window managers give a new window the keyboard; a bare X server needs asking.
    window.activateWindow();
    window.appear();
    return application.exec();
}
