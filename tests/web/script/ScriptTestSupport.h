#pragma once

#include "platform/web/UIWebView.h"

#include <gtest/gtest.h>

#include <string>

// Every test shares the process's one engine, as the app does; each script runs in a new
// document unless a test says otherwise.
class ScriptTest : public ::testing::Test {
protected:
    static UIWebView& view()
    {
        static UIWebView webView(CGRect{});
        return webView;
    }

    // The script's string value in a fresh document.
    static std::string run(const std::string& script)
    {
        view().loadHTMLStringBaseURL(std::nullopt, std::nullopt);
        return view().stringByEvaluatingJavaScriptFromString(script);
    }

    // The script's value in the current document.
    static std::string runHere(const std::string& script) { return view().stringByEvaluatingJavaScriptFromString(script); }

    static const std::string& lastError() { return view().lastError(); }

    void TearDown() override { UIWebView::setExecutionTimeLimit(std::chrono::milliseconds(500)); }
};
