#include "platform/web/UIWebView.h"

#include "web/script/ScriptEngine.h"

using script::ScriptEngine;

UIWebView::UIWebView(CGRect frame)
    : frame_(frame)
{
}

UIWebView::~UIWebView() = default;

void UIWebView::loadHTMLStringBaseURL(std::optional<std::string>, std::optional<std::string>)
{
    ScriptEngine& engine = ScriptEngine::shared();
    engine.newDocument();
    document_ = engine.documentNumber();
}

std::string UIWebView::stringByEvaluatingJavaScriptFromString(std::string_view script)
{
    ScriptEngine& engine = ScriptEngine::shared();
    // A view whose document another view replaced starts a fresh one rather than run in theirs.
    if (document_ != engine.documentNumber()) {
        engine.newDocument();
        document_ = engine.documentNumber();
    }
    ScriptEngine::Result result = engine.evaluate(script);
    lastError_ = std::move(result.error);
    lastStopWasLimit_ = result.stoppedByLimit;
    return result.value ? std::move(*result.value) : std::string();
}

void UIWebView::setExecutionTimeLimit(std::chrono::milliseconds limit)
{
    ScriptEngine::setTimeLimit(limit);
}
