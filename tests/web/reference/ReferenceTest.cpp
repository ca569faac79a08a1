// Renders each reference case through the web view and compares it with the picture headless
// Chromium drew for the same script (tests/web/reference/data/chromium). Chromium is
// needed only to make those pictures again, never here.
#include "ImageDiff.h"
#include "ReferenceCases.h"

#include "platform/core/Base64.h"
#include "platform/core/UIImage.h"

#include <gtest/gtest.h>

#include <cctype>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <memory>
#include <optional>
#include <sstream>
#include <utility>
#include <vector>

#if __has_include("platform/web/UIWebView.h")
#include "platform/web/UIWebView.h"
#include "WebViewFactory.h"
#define AMPWELL_HAVE_WEB_VIEW 1
#endif

namespace {

namespace fs = std::filesystem;

const fs::path kData = AMPWELL_TEST_DATA_DIR;
const fs::path kFailures = fs::path(AMPWELL_BINARY_DIR) / "reference-failures";

std::vector<ReferenceCase> allCases()
{
    return loadReferenceCases((kData / "cases.tsv").string());
}

TEST(ReferenceCases, ListIsPresentAndEveryPictureExists)
{
    const auto cases = allCases();
    ASSERT_GT(cases.size(), 20u) << "data/cases.tsv is missing or unreadable";
    for (const auto& c : cases)
        EXPECT_TRUE(fs::exists(kData / "chromium" / (c.picture + ".png"))) << c.picture;
}

#ifdef AMPWELL_HAVE_WEB_VIEW

std::optional<std::string> readFile(const fs::path& path)
{
    std::ifstream file(path, std::ios::binary);
    if (!file)
        return std::nullopt;
    std::ostringstream text;
    text << file.rdbuf();
    return text.str();
}

UIImage decodeDataURL(const std::string& url)
{
    const auto marker = url.find("base64,");
    if (marker == std::string::npos)
        return {};
    const auto png = Base64::decode(std::string_view(url).substr(marker + 7));
    return png ? UIImage::imageWithDataScale(*png, 1.0) : UIImage();
}

// Writes ours, Chromium's and the difference side by side in the build folder; returns where.
std::string keepFailure(const ReferenceCase& c, const UIImage& ours, const UIImage& reference)
{
    fs::create_directories(kFailures);
    const fs::path base = kFailures / c.picture;
    ours.writePNG(base.string() + "-ours.png");
    reference.writePNG(base.string() + "-chromium.png");
    std::string names = base.string() + "-ours.png, " + base.string() + "-chromium.png";
    if (cairo_surface_t* diff = diffPicture(ours.CGImage(), reference.CGImage(), c.channelTolerance)) {
        UIImage(diff, 1.0).writePNG(base.string() + "-diff.png");
        names += ", " + base.string() + "-diff.png";
    }
    return names;
}

// How many of the compared pictures are close by the strict measure (see ImageDiff.h); printed
// once all cases ran, with the pictures that are not and how far off they are, so that a
// change's effect on closeness shows in every run, picture by picture.
struct Closeness {
    int compared = 0, close = 0;
    std::vector<std::pair<std::string, double>> far;  // picture, strict share
};

Closeness& closeness()
{
    static Closeness tally;
    return tally;
}

class ChromiumReference : public testing::TestWithParam<ReferenceCase> {
public:
    static void TearDownTestSuite()
    {
        const Closeness& tally = closeness();
        if (tally.compared == 0)
            return;
        std::printf("closeness: %d of %d pictures (%.1f%%) have at most %.0f%% of their pixels off by more than %d "
                    "in a channel\n",
                    tally.close, tally.compared, 100.0 * tally.close / tally.compared, kCloseShare * 100,
                    kStrictChannelTolerance);
        for (const auto& [picture, share] : tally.far)
            std::printf("  not close: %s, %.2f%% off by more than %d\n", picture.c_str(), share * 100,
                        kStrictChannelTolerance);
    }

protected:
    // One web view for every case, a fresh document for each, as the battery renderer does.
    static UIWebView& webView()
    {
        static auto view = makeWebView<UIWebView>();
        return *view;
    }
};

TEST_P(ChromiumReference, RendersLikeChromium)
{
    const ReferenceCase& c = GetParam();
    const auto script = readFile(fs::path(AMPWELL_SOURCE_DIR) / c.source);
    if (!script)
        GTEST_SKIP() << c.source << " is not in the tree";
    if (fnv1aHex(*script) != c.sourceHash)
        GTEST_SKIP() << c.source << " changed after its reference was drawn; run "
                     << "scripts/reference/regenerate-references.mjs on purpose";

    const UIImage reference =
        UIImage::imageWithContentsOfFile((kData / "chromium" / (c.picture + ".png")).string());
    ASSERT_FALSE(reference.isNil()) << "unreadable reference picture " << c.picture;

    UIWebView& view = webView();
    view.loadHTMLStringBaseURL(std::nullopt, std::nullopt);
    const std::string result = view.stringByEvaluatingJavaScriptFromString(evaluationText(c, *script));
    ASSERT_FALSE(result.empty()) << "the script returned no data URL: " << std::string(view.lastError());
    const UIImage ours = decodeDataURL(result);
    ASSERT_FALSE(ours.isNil()) << "the returned data URL is no PNG: " << result.substr(0, 60);

    const ImageDiff diff = compareImages(ours.CGImage(), reference.CGImage(), c.channelTolerance);
    ++closeness().compared;
    closeness().close += diff.close();
    if (!diff.close())
        closeness().far.emplace_back(c.picture, diff.sameSize ? diff.strictShare() : 1.0);
    if (diff.grosslyDifferent()) {
        ADD_FAILURE() << c.picture << " is grossly different from Chromium's: " << diff.describe()
                      << " (at most " << kGrossShare * 100.0 << "% beyond " << kStrictChannelTolerance
                      << " is allowed to any case); pictures: " << keepFailure(c, ours, reference);
    } else if (!diff.within(c.allowedShare)) {
        ADD_FAILURE() << c.picture << ": " << diff.describe() << "; ours " << ours.pixelWidth() << "x"
                      << ours.pixelHeight() << "; allowed " << c.allowedShare * 100.0
                      << "% beyond " << c.channelTolerance << "; pictures: "
                      << keepFailure(c, ours, reference);
    }
}

std::string caseName(const testing::TestParamInfo<ReferenceCase>& info)
{
    std::string name;
    for (const char ch : info.param.picture)
        name += std::isalnum(static_cast<unsigned char>(ch)) ? ch : '_';
    return name;
}

INSTANTIATE_TEST_SUITE_P(Cases, ChromiumReference, testing::ValuesIn(allCases()), caseName);

#else

TEST(ChromiumReference, NeedsTheWebView)
{
    GTEST_SKIP() << "platform/web/UIWebView.h is not there yet";
}

#endif

} // namespace
