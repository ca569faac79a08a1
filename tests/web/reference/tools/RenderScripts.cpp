// Renders canvas scripts through our web view and writes the PNG each returns as a data URL:
// the counterpart of scripts/reference/render.mjs for our engine, for tools that compare the
// two engines' pictures of scripts made on the fly (scripts/reference/text-placement.mjs).
//
//   ampwell_reference_render --out DIR FILE.js ...
//
// Each FILE.js is evaluated as it stands in a fresh document; the value of its last expression
// must be a PNG data URL and lands in DIR/<file name>.png. Prints "ok NAME" or "error NAME: why"
// per file; exits 1 when any failed, 2 on bad arguments.
#include "platform/core/Base64.h"
#include "platform/web/UIWebView.h"
#include "../WebViewFactory.h"

#include <filesystem>
#include <fstream>
#include <iostream>
#include <sstream>
#include <string>
#include <vector>

namespace fs = std::filesystem;

int main(int argc, char** argv)
{
    fs::path out = ".";
    std::vector<fs::path> scripts;
    for (int i = 1; i < argc; ++i) {
        const std::string arg = argv[i];
        if (arg == "--out" && i + 1 < argc) {
            out = argv[++i];
        } else if (arg.starts_with("--")) {
            std::cerr << "ampwell_reference_render: unknown option " << arg << "\n";
            return 2;
        } else {
            scripts.emplace_back(arg);
        }
    }
    if (scripts.empty()) {
        std::cerr << "Usage: ampwell_reference_render --out DIR FILE.js ...\n";
        return 2;
    }
    std::error_code error;
    fs::create_directories(out, error);
    auto view = makeWebView<UIWebView>();
    int failures = 0;
    for (const fs::path& script : scripts) {
        const std::string name = script.stem().string();
        std::ifstream file(script, std::ios::binary);
        std::ostringstream code;
        code << file.rdbuf();
        if (!file) {
            std::cout << "error " << name << ": cannot read " << script.string() << "\n";
            ++failures;
            continue;
        }
        view->loadHTMLStringBaseURL(std::nullopt, std::nullopt);
        const std::string result = view->stringByEvaluatingJavaScriptFromString(code.str());
        const auto marker = result.find("base64,");
        const auto png = marker == std::string::npos || !result.starts_with("data:image/png")
            ? std::nullopt
            : Base64::decode(std::string_view(result).substr(marker + 7));
        if (!png) {
            std::cout << "error " << name << ": returned no PNG data URL " << std::string(view->lastError()) << "\n";
            ++failures;
            continue;
        }
        std::ofstream picture(out / (name + ".png"), std::ios::binary);
        picture.write(reinterpret_cast<const char*>(png->data()), static_cast<std::streamsize>(png->size()));
        if (!picture) {
            std::cout << "error " << name << ": cannot write " << (out / (name + ".png")).string() << "\n";
            ++failures;
            continue;
        }
        std::cout << "ok " << name << "\n";
    }
    return failures ? 1 : 0;
}
