#include "platform/web/UIWebView.h"

#include "web/canvas/HTMLCanvasElement.h"
#include "web/image/PNGEncoder.h"
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

void UIWebView::startDocumentIfReplaced()
{
    // A view whose document another view replaced starts a fresh one rather than run in theirs.
    ScriptEngine& engine = ScriptEngine::shared();
    if (document_ != engine.documentNumber()) {
        engine.newDocument();
        document_ = engine.documentNumber();
    }
}

std::string UIWebView::stringByEvaluatingJavaScriptFromString(std::string_view script)
{
    startDocumentIfReplaced();
    ScriptEngine::Result result = ScriptEngine::shared().evaluate(script);
    lastError_ = std::move(result.error);
    lastStopWasLimit_ = result.stoppedByLimit;
    return result.value ? std::move(*result.value) : std::string();
}

UIWebView::DataURLResult UIWebView::dataURLByEvaluatingJavaScriptFromString(std::string_view script, double scale)
{
    startDocumentIfReplaced();
    return dataURLResult(ScriptEngine::shared().evaluate(script, true), scale);
}

std::optional<UIWebView::DataURLResult> UIWebView::dataURLByCallingFunction(std::string_view functionText,
                                                                          std::span<const Argument> arguments,
                                                                          double scale)
{
    startDocumentIfReplaced();
    std::optional<ScriptEngine::Result> result = ScriptEngine::shared().callFunctionExpression(functionText, arguments, true);
    if (!result)
        return std::nullopt;
    return dataURLResult(std::move(*result), scale);
}

UIWebView::DataURLResult UIWebView::dataURLResult(ScriptEngine::Result&& result, double scale)
{
    lastError_ = std::move(result.error);
    lastStopWasLimit_ = result.stoppedByLimit;
    DataURLResult out;
    if (result.dataURLImage) {
        // The canvas's bitmap is within what the decoder accepts, so the file would decode.
        static_assert(HTMLCanvasElement::kMaxSide <= UIImage::kMaxPixelsPerSide
                      && HTMLCanvasElement::kMaxArea <= static_cast<unsigned long>(UIImage::kMaxPixels));
        out.fromCanvas = true;
        out.image = UIImage(decodedPNGSurface(*result.dataURLImage), scale);
    } else if (result.value) {
        out.text = std::move(*result.value);
    }
    return out;
}

void UIWebView::setExecutionTimeLimit(std::chrono::milliseconds limit)
{
    ScriptEngine::setTimeLimit(limit);
}
