#include "QLAWBatteryRenderer.h"

#include "ThemeScriptCall.h"

#include "platform/core/Base64.h"
#include "platform/core/UIImageFlipping.h"
#include "platform/core/UIScreen.h"
#include "platform/web/UIWebView.h"

#include <memory>
#include <unordered_set>
#include <variant>

namespace {

// One web view serves every render of the process; a list of themes renders two images per
// row and must not pay for a new engine each time.
UIWebView& sharedWebView()
{
    static std::unique_ptr<UIWebView> webView = std::make_unique<UIWebView>(CGRect{});
    return *webView;
}

// The texts of scripts that were stopped for running too long or using too much memory.
std::unordered_set<std::string>& scriptsThatHitALimit()
{
    static std::unordered_set<std::string> scripts;
    return scripts;
}

std::uint64_t evaluations = 0;

// A channel of 0.0 to 1.0 times 255, truncated toward zero (0.999 gives 254).
int channel(double component)
{
    return static_cast<int>(component * 255.0);
}

void readColour(const PlistDict& settings, const char* key, int rgb[3], double* alpha)
{
    double r = 0, g = 0, b = 0, a = 0;
    if (const PlistValue* value = settings.find(key))
        if (const UIColor* color = value->asColor())
            color->getRedGreenBlueAlpha(&r, &g, &b, &a);
    rgb[0] = channel(r);
    rgb[1] = channel(g);
    rgb[2] = channel(b);
    if (alpha)
        *alpha = a;
}

UIImage fail(std::string* failure, std::string reason)
{
    if (failure)
        *failure = std::move(reason);
    return {};
}

// The picture in the PNG data URL a script returned as text, or why it holds none.
std::variant<UIImage, std::string> imageFromDataURL(std::string_view text, double scale)
{
    std::size_t marker = text.find("base64,");
    if (marker == std::string_view::npos)
        return "the script returned no PNG data URL";
    std::optional<std::vector<std::uint8_t>> png = Base64::decode(text.substr(marker + 7));
    if (!png)
        return "the data URL is not valid Base64";
    return UIImage::imageWithDataScale(*png, scale);
}

} // namespace

UIImage QLAWBatteryRenderer::renderBatteryImageWithSettingsForStyle(const PlistDict& settings, int, std::string* failure)
{
    const PlistValue* scriptValue = settings.find("script");
    const std::string* script = scriptValue ? scriptValue->asString() : nullptr;
    if (!script)
        return fail(failure, "no theme script");
    if (scriptsThatHitALimit().contains(*script))
        return fail(failure, "the script ran past its limit before and is not run again");

    float scale = static_cast<float>(UIScreen::mainScreen().scale());
    ThemeCallArguments arguments;
    arguments.pixelHeight = settings.value("height").floatValue() * scale;
    arguments.level = settings.value("level").intValue();
    arguments.charging = settings.value("charging").boolValue();
    arguments.low = settings.value("low").boolValue();
    arguments.lowPowerMode = settings.value("lpm").boolValue();
    readColour(settings, "color", arguments.color, nullptr);
    readColour(settings, "baseColor", arguments.baseColor, &arguments.baseAlpha);

    UIWebView& webView = sharedWebView();
    webView.loadHTMLStringBaseURL(std::nullopt, std::nullopt);

    std::optional<std::string_view> parameters = themeScriptParameterList(*script);
    if (!parameters)
        return fail(failure, "the script has no parameter list");
    bool longForm = usesLongCallForm(*parameters);

    // The function compiled once and called with the argument values where the script is one
    // function expression, the call's text evaluated otherwise: the same call either way.
    ++evaluations;
    double imageScale = UIScreen::mainScreen().scale();
    std::optional<UIWebView::DataURLResult> called;
    if (std::optional<std::vector<ThemeCallValue>> values = themeScriptCallValues(longForm, arguments))
        called = webView.dataURLByCallingFunction(*script, *values, imageScale);
    UIWebView::DataURLResult result = called ? std::move(*called)
        : webView.dataURLByEvaluatingJavaScriptFromString(themeScriptCallText(*script, longForm, arguments), imageScale);
    if (webView.lastStopWasLimit())
        scriptsThatHitALimit().insert(*script);
    UIImage image = result.image;
    if (!result.fromCanvas) {
        if (result.text.empty())
            return fail(failure, webView.lastError().empty() ? "the script returned nothing" : webView.lastError());
        std::variant<UIImage, std::string> decoded = imageFromDataURL(result.text, imageScale);
        if (const std::string* why = std::get_if<std::string>(&decoded))
            return fail(failure, *why);
        image = std::get<UIImage>(std::move(decoded));
    }
    if (image.isNil())
        return fail(failure, "the data URL holds no readable PNG");

    bool flipX = settings.value("flipX").boolValue();
    bool flipY = settings.value("flipY").boolValue();
    if (flipX && flipY)
        return flippedImageByAxis(image, 2);
    if (flipX)
        return flippedImageByAxis(image, 0);
    if (flipY)
        return flippedImageByAxis(image, 1);
    return image;
}

std::uint64_t QLAWBatteryRenderer::evaluationCount()
{
    return evaluations;
}

bool QLAWBatteryRenderer::isValidScript(std::string_view)
{
    return true;
}

int QLAWBatteryRenderer::numberOfParametersInScript(std::string_view)
{
    return 0;
}
