#pragma once

#include "platform/core/CGGeometry.h"
#include "platform/core/UIImage.h"
#include "web/script/ScriptEngine.h"

#include <chrono>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

// The web view that runs theme scripts: a JavaScript engine with a 2D canvas, never shown.
// Every web view of the process shares one engine; the first use makes it.
class UIWebView {
public:
    explicit UIWebView(CGRect frame);
    ~UIWebView();
    UIWebView(const UIWebView&) = delete;
    UIWebView& operator=(const UIWebView&) = delete;

    CGRect frame() const { return frame_; }

    // Starts a new, empty document: nothing a previous script made or changed is reachable.
    // The markup is not parsed (the document is always empty); the base URL is not used.
    void loadHTMLStringBaseURL(std::optional<std::string> html, std::optional<std::string> baseURL);

    // Evaluates the script in the current document and returns the value of its last expression
    // when that is a string; "" when it is not a string, on an exception, or when a limit
    // stopped the script.
    std::string stringByEvaluatingJavaScriptFromString(std::string_view script);

    // For a script meant to give a PNG data URL: evaluates it as stringByEvaluatingJavaScript-
    // FromString does. When the value is a data URL that a canvas's toDataURL() made during this
    // evaluation, passed back untouched, `fromCanvas` is set and `image` is the picture the URL
    // holds, at `scale` (nil only when memory for it ran out): the PNG is never decoded, since
    // its pixels are known. Otherwise `text` is what stringByEvaluatingJavaScriptFromString
    // would give.
    struct DataURLResult {
        std::string text;
        bool fromCanvas = false;
        UIImage image;
    };
    DataURLResult dataURLByEvaluatingJavaScriptFromString(std::string_view script, double scale);
    // The same for the call "(function<functionText>)(<arguments>)", its function compiled once
    // for every text. Nothing, and nothing has run, when "function<functionText>" is not one
    // function expression exactly: evaluate the call's text instead.
    using Argument = script::ScriptArgument;
    std::optional<DataURLResult> dataURLByCallingFunction(std::string_view functionText,
                                                          std::span<const Argument> arguments, double scale);

    // Why the last evaluation gave "": the exception's text ("TypeError: ..."), "stopped after
    // 500 ms", "stopped: used too much memory", "the result is not a string"; empty after
    // success.
    const std::string& lastError() const { return lastError_; }
    // Whether the last evaluation was stopped for using too much time or memory.
    bool lastStopWasLimit() const { return lastStopWasLimit_; }

    // How much of the evaluating thread's CPU time one evaluation may use; 500 ms by default.
    // Wall time is not counted (a busy machine must not stop a short script), up to ten times
    // the limit.
    static void setExecutionTimeLimit(std::chrono::milliseconds limit);

private:
    void startDocumentIfReplaced();
    DataURLResult dataURLResult(script::ScriptEngine::Result&& result, double scale);

    CGRect frame_;
    std::string lastError_;
    bool lastStopWasLimit_ = false;
    // The engine's document this view last started; another view's load replaces it.
    std::uint64_t document_ = 0;
};
