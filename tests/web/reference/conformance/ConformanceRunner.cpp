// Runs the web platform tests' 2D canvas suite (fetched by scripts/conformance/fetch) through
// our web view: a fresh document per test file, our harness (scripts/conformance/harness.js)
// standing in for testharness.js and the canvas helpers. Prints pass rates by area and, with
// --failures, writes every failure with its message.
//
//   ampwell_conformance [--suite DIR] [--harness FILE] [--filter TEXT] [--failures FILE]
//                       [--min-pass PERCENT] [--timeout SECONDS]
//
// The files run in a child process, so that a test that hangs or crashes the engine costs that
// file (counted as a failure) and not the run. Exit status: 0, 1 under --min-pass, 2 on bad
// arguments, 77 when the suite or the web view is missing (CTest counts that as skipped).
#include "ConformanceTally.h"

#include <poll.h>
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <optional>
#include <sstream>
#include <string>
#include <vector>

#if __has_include("platform/web/UIWebView.h")
#include "platform/core/JSONString.h"
#include "platform/web/UIWebView.h"
#include "../WebViewFactory.h"
#define AMPWELL_HAVE_WEB_VIEW 1
#endif

namespace fs = std::filesystem;

namespace {

constexpr int kSkipped = 77;

struct Options {
    fs::path suite = fs::path(AMPWELL_BINARY_DIR) / "conformance/wpt/html/canvas/element";
    fs::path harness = fs::path(AMPWELL_SOURCE_DIR) / "scripts/conformance/harness.js";
    std::string filter;
    std::optional<fs::path> failures;
    std::optional<double> minPass;
    int timeoutSeconds = 20;
};

std::optional<std::string> readFile(const fs::path& path)
{
    std::ifstream file(path, std::ios::binary);
    if (!file)
        return std::nullopt;
    std::ostringstream text;
    text << file.rdbuf();
    return text.str();
}

std::optional<Options> parseOptions(int argc, char** argv)
{
    Options options;
    for (int i = 1; i < argc; ++i) {
        const std::string arg = argv[i];
        if (i + 1 >= argc) {
            std::cerr << "ampwell_conformance: " << arg << " needs a value\n";
            return std::nullopt;
        }
        const std::string value = argv[++i];
        try {
            if (arg == "--suite")
                options.suite = value;
            else if (arg == "--harness")
                options.harness = value;
            else if (arg == "--filter")
                options.filter = value;
            else if (arg == "--failures")
                options.failures = value;
            else if (arg == "--min-pass")
                options.minPass = std::stod(value);
            else if (arg == "--timeout")
                options.timeoutSeconds = std::max(1, std::stoi(value));
            else {
                std::cerr << "ampwell_conformance: unknown option " << arg << "\n";
                return std::nullopt;
            }
        } catch (const std::exception&) {
            std::cerr << "ampwell_conformance: bad value for " << arg << ": " << value << "\n";
            return std::nullopt;
        }
    }
    return options;
}

std::vector<std::string> collectFiles(const fs::path& root, const std::string& filter)
{
    std::vector<std::string> files;
    std::error_code error;
    for (fs::recursive_directory_iterator it(root, error), end; !error && it != end; it.increment(error)) {
        const std::string name = it->path().filename().string();
        if (!it->is_regular_file() || it->path().extension() != ".html")
            continue;
        if (name.ends_with("-ref.html") || name.ends_with("-expected.html"))
            continue;
        const std::string relative = fs::relative(it->path(), root).generic_string();
        if (filter.empty() || relative.find(filter) != std::string::npos)
            files.push_back(relative);
    }
    std::sort(files.begin(), files.end());
    return files;
}

[[maybe_unused]] std::string oneLine(std::string text)
{
    std::replace(text.begin(), text.end(), '\n', ' ');
    std::replace(text.begin(), text.end(), '\t', ' ');
    return text;
}

#ifdef AMPWELL_HAVE_WEB_VIEW

// The child: runs files from `first` on and writes "@<index>\n" before each file's result lines
// and "@end\n" after them, so that the parent knows which file was running if it stops hearing.
[[noreturn]] void runFiles(int out, const Options& options, const std::string& harness,
                           const std::vector<std::string>& files, std::size_t first)
{
    auto webView = makeWebView<UIWebView>();
    UIWebView& view = *webView;
    auto write = [out](const std::string& text) {
        std::size_t done = 0;
        while (done < text.size()) {
            const ssize_t n = ::write(out, text.data() + done, text.size() - done);
            if (n < 0 && errno == EINTR)
                continue;
            if (n <= 0)
                _exit(3);
            done += std::size_t(n);
        }
    };
    for (std::size_t i = first; i < files.size(); ++i) {
        write("@" + std::to_string(i) + "\n");
        std::string results;
        if (const auto html = readFile(options.suite / files[i])) {
            view.loadHTMLStringBaseURL(std::nullopt, std::nullopt);
            view.stringByEvaluatingJavaScriptFromString(harness);
            results = view.stringByEvaluatingJavaScriptFromString("__wpt.run(" + jsonString(*html) + ")");
            if (results.empty())
                results = "FAIL\t(harness)\t" + oneLine("no result: " + std::string(view.lastError())) + "\n";
        } else {
            results = "FAIL\t(runner)\tunreadable file\n";
        }
        if (results.back() != '\n')
            results += '\n';
        write(results);
    }
    write("@end\n");
    _exit(0);
}

// Runs every file, restarting the child past a file that hung or crashed it.
void runAll(const Options& options, const std::string& harness, const std::vector<std::string>& files,
            ConformanceTally& tally)
{
    std::size_t next = 0;
    while (next < files.size()) {
        int pipeEnds[2];
        if (pipe(pipeEnds) != 0) {
            std::perror("pipe");
            return;
        }
        std::cout.flush();
        const pid_t child = fork();
        if (child == 0) {
            close(pipeEnds[0]);
            runFiles(pipeEnds[1], options, harness, files, next);
        }
        close(pipeEnds[1]);
        std::string pending, current;
        // Index of the file the child is running; kNone before the first. (Not an optional: GCC
        // warns of it being used uninitialised.)
        constexpr std::size_t kNone = static_cast<std::size_t>(-1);
        std::size_t running = kNone;
        bool finished = false, timedOut = false;
        auto lastNews = std::chrono::steady_clock::now();
        auto settle = [&] {
            if (running != kNone)
                tally.add(files[running], current);
        };
        while (!finished) {
            pollfd fd{pipeEnds[0], POLLIN, 0};
            const int ready = poll(&fd, 1, 1000);
            if (ready < 0 && errno == EINTR)
                continue;
            if (ready == 0) {
                if (std::chrono::steady_clock::now() - lastNews > std::chrono::seconds(options.timeoutSeconds)) {
                    timedOut = true;
                    break;
                }
                continue;
            }
            char buffer[65536];
            const ssize_t n = read(pipeEnds[0], buffer, sizeof buffer);
            if (n <= 0)
                break; // the child is gone
            lastNews = std::chrono::steady_clock::now();
            pending.append(buffer, std::size_t(n));
            std::size_t newline;
            while ((newline = pending.find('\n')) != std::string::npos) {
                const std::string line = pending.substr(0, newline);
                pending.erase(0, newline + 1);
                if (line == "@end") {
                    settle();
                    running = kNone;
                    finished = true;
                } else if (line.starts_with("@")) {
                    settle();
                    running = std::stoul(line.substr(1));
                    current.clear();
                } else {
                    current += line + "\n";
                }
            }
        }
        close(pipeEnds[0]);
        if (timedOut)
            kill(child, SIGKILL);
        int status = 0;
        waitpid(child, &status, 0);
        if (finished)
            return;
        if (running == kNone) { // died before it began a file: nothing more can be learnt
            std::cerr << "ampwell_conformance: the runner process stopped before any file\n";
            return;
        }
        std::string why = timedOut ? "timed out after " + std::to_string(options.timeoutSeconds) + " s"
            : WIFSIGNALED(status) ? "crashed the engine (signal " + std::to_string(WTERMSIG(status)) + ")"
                                  : "ended the runner (status " + std::to_string(WEXITSTATUS(status)) + ")";
        tally.add(files[running], current + "FAIL\t(runner)\t" + why + "\n");
        next = running + 1;
    }
}

#endif

} // namespace

int main(int argc, char** argv)
{
    const auto options = parseOptions(argc, argv);
    if (!options)
        return 2;
    const auto harness = readFile(options->harness);
    if (!harness) {
        std::cerr << "ampwell_conformance: cannot read the harness " << options->harness << "\n";
        return 2;
    }
    const auto files = collectFiles(options->suite, options->filter);
    if (files.empty()) {
        std::cout << "conformance suite not found in " << options->suite
                  << ": run scripts/conformance/fetch to get it (skipped)\n";
        return kSkipped;
    }
#ifdef AMPWELL_HAVE_WEB_VIEW
    std::string source = "suite in " + options->suite.string();
    if (const auto origin = readFile(options->suite / "../../../../SOURCE"))
        source = "suite from " + oneLine(*origin);
    ConformanceTally tally("Ampwell web view, " + source);
    runAll(*options, *harness, files, tally);
    tally.print(std::cout);
    if (options->failures) {
        std::ofstream out(*options->failures);
        tally.writeFailures(out);
    }
    if (options->minPass && tally.passRate() < *options->minPass) {
        std::cout << "below the required " << *options->minPass << "%\n";
        return 1;
    }
    return 0;
#else
    std::cout << "the web view is not built yet (skipped)\n";
    return kSkipped;
#endif
}
