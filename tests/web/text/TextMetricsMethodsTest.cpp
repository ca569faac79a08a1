// The methods of TextMetrics: carets, selections, ink of ranges and clusters. Expected values
// are the reference browser's with the project's font configuration.
#include "web/text/CanvasText.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

constexpr double kTolerance = 0.01;

CanvasTextStyle styleOf(const char* font, CanvasDirection direction = CanvasDirection::Inherit,
                        CanvasTextAlign align = CanvasTextAlign::Start)
{
    CanvasTextStyle style;
    style.font = *parseCanvasFont(font);
    style.direction = direction;
    style.align = align;
    return style;
}

// Selection rectangles as {x, width} pairs.
std::vector<std::pair<double, double>> spans(const TextMetrics& m, std::uint32_t start, std::uint32_t end)
{
    std::vector<std::pair<double, double>> out;
    for (const DOMRectReadOnly& rect : m.getSelectionRects(start, end).releaseValue())
        out.emplace_back(rect.x(), rect.width());
    return out;
}

void expectSpans(const std::vector<std::pair<double, double>>& actual,
                 const std::vector<std::pair<double, double>>& expected, const char* what)
{
    ASSERT_EQ(actual.size(), expected.size()) << what;
    for (std::size_t i = 0; i < actual.size(); ++i) {
        EXPECT_NEAR(actual[i].first, expected[i].first, kTolerance) << what << " rect " << i;
        EXPECT_NEAR(actual[i].second, expected[i].second, kTolerance) << what << " rect " << i;
    }
}

std::uint32_t indexAt(const TextMetrics& m, double offset)
{
    return m.getIndexFromOffset(offset).releaseValue();
}

const char* const kAbAlefBet = "ab\u05d0\u05d1";

TEST(TextMetricsMethodsTest, CaretsFallAtTheNearerEdgeOfEachCluster)
{
    const TextMetrics m = measureText("AVA", styleOf("50px sans-serif"));
    // Kerned advances: 29.64, 29.64, 33.35.
    EXPECT_EQ(indexAt(m, 10), 0u);
    EXPECT_EQ(indexAt(m, 15), 1u);
    EXPECT_EQ(indexAt(m, 44), 1u);
    EXPECT_EQ(indexAt(m, 45), 2u);
    EXPECT_EQ(indexAt(m, 80), 3u);
    EXPECT_EQ(indexAt(m, -5), 0u);
    EXPECT_EQ(indexAt(m, 200), 3u);
    EXPECT_TRUE(m.getIndexFromOffset(NAN).isException());
    EXPECT_TRUE(m.getIndexFromOffset(INFINITY).isException());

    // Offsets count from the alignment point.
    const TextMetrics centred = measureText("AVA", styleOf("50px sans-serif", CanvasDirection::Ltr, CanvasTextAlign::Center));
    EXPECT_EQ(indexAt(centred, 10 - 92.627 / 2), 0u);
    EXPECT_EQ(indexAt(centred, 0), 2u);
}

TEST(TextMetricsMethodsTest, WhereDirectionsMeetTheParagraphsSideWins)
{
    // "ab" then Hebrew reading right to left, in a left-to-right paragraph.
    const TextMetrics ltr = measureText(kAbAlefBet, styleOf("50px sans-serif"));
    EXPECT_EQ(indexAt(ltr, 60), 2u);  // the left half of bet: after "ab", not after bet
    EXPECT_EQ(indexAt(ltr, 75), 3u);
    EXPECT_EQ(indexAt(ltr, 110), 2u);
    EXPECT_EQ(indexAt(ltr, 200), 2u);

    // Hebrew then "ab" in a right-to-left paragraph: "ab" stands left of the Hebrew.
    const TextMetrics rtl = measureText("\u05d0\u05d1ab", styleOf("50px sans-serif", CanvasDirection::Rtl, CanvasTextAlign::Left));
    EXPECT_NEAR(rtl.width, 117.944, kTolerance);
    EXPECT_EQ(indexAt(rtl, 10), 2u);
    EXPECT_EQ(indexAt(rtl, 40), 3u);
    EXPECT_EQ(indexAt(rtl, 50), 2u);  // the right half of b: before bet
    EXPECT_EQ(indexAt(rtl, 110), 0u);
}

TEST(TextMetricsMethodsTest, SelectionsCoverOneRectanglePerDirectionalRun)
{
    const CanvasTextStyle style = styleOf("50px sans-serif");
    const TextMetrics ava = measureText("AVA", style);
    expectSpans(spans(ava, 0, 1), {{0, 29.639}}, "first letter");
    expectSpans(spans(ava, 1, 3), {{29.639, 62.988}}, "the rest");
    const auto rect = ava.getSelectionRects(0, 1).releaseValue().front();
    EXPECT_EQ(rect.y(), -45);  // the font's ascent and descent, whatever the letters
    EXPECT_EQ(rect.height(), 56);

    const TextMetrics bidi = measureText(kAbAlefBet, style);
    expectSpans(spans(bidi, 0, 3), {{0, 55.615}, {84.522, 33.423}}, "across the runs");
    // A caret where the runs meet stands in both.
    expectSpans(spans(bidi, 2, 2), {{55.615, 0}, {117.944, 0}}, "caret between runs");
    // A range backwards is a caret at its end.
    expectSpans(spans(bidi, 3, 1), {{27.808, 0}}, "backwards");

    // Halves of a surrogate pair widen to the whole character.
    const TextMetrics emoji = measureText("\U0001F3C1x", style);
    expectSpans(spans(emoji, 1, 1), {{0, 18.262}}, "caret inside a pair");
    expectSpans(spans(emoji, 1, 2), {{0, 18.262}}, "half a pair");

    EXPECT_EQ(ava.getSelectionRects(3, 3).releaseValue().size(), 1u);
    EXPECT_TRUE(ava.getSelectionRects(4, 0).isException());
    EXPECT_TRUE(ava.getSelectionRects(0, 4).isException());
    EXPECT_EQ(ava.getSelectionRects(4, 0).exception().name, "IndexSizeError");
}

TEST(TextMetricsMethodsTest, LigaturesShareTheirWidthBetweenTheirLetters)
{
    // Lam and alef join into one glyph of two letters, read right to left.
    const TextMetrics m = measureText("\u0644\u0627", styleOf("30px sans-serif"));
    EXPECT_NEAR(m.width, 17.109, kTolerance);
    expectSpans(spans(m, 0, 1), {{8.555, 8.555}}, "lam");
    expectSpans(spans(m, 1, 2), {{0, 8.555}}, "alef");
    EXPECT_EQ(indexAt(m, 1), 2u);
    EXPECT_EQ(indexAt(m, 7), 1u);
    EXPECT_EQ(indexAt(m, 10), 1u);
    EXPECT_EQ(m.getTextClusters().size(), 1u);
}

TEST(TextMetricsMethodsTest, DirectionalControlsTakeNoSpaceNorSpacing)
{
    CanvasTextStyle style = styleOf("50px sans-serif");
    style.letterSpacing = 10;
    EXPECT_NEAR(measureText("\u202dAB\u202c", style).width, 86.699, kTolerance);
    EXPECT_NEAR(measureText("AB", style).width, 86.699, kTolerance);

    // An override makes one run with its controls: one rectangle for the whole text.
    style.letterSpacing = 0;
    const TextMetrics m = measureText("\u202e\u05d0\u05d1\u202c", styleOf("50px sans-serif", CanvasDirection::Rtl));
    EXPECT_EQ(m.getSelectionRects(0, 4).releaseValue().size(), 1u);
    // Controls are no clusters of their own.
    const auto clusters = m.getTextClusters();
    ASSERT_EQ(clusters.size(), 2u);
    EXPECT_EQ(clusters[0].start, 1u);
    EXPECT_EQ(clusters[1].start, 2u);
}

TEST(TextMetricsMethodsTest, ActualBoundingBoxOfARange)
{
    const TextMetrics m = measureText("UNAVAILABLE", styleOf("50px sans-serif"));
    const DOMRectReadOnly u = m.getActualBoundingBox(0, 1).releaseValue();
    EXPECT_NEAR(u.x(), 3, kTolerance);
    EXPECT_NEAR(u.y(), -35, kTolerance);
    EXPECT_NEAR(u.width(), 30, kTolerance);
    EXPECT_NEAR(u.height(), 36, kTolerance);
    const DOMRectReadOnly n = m.getActualBoundingBox(1, 2).releaseValue();
    EXPECT_NEAR(n.x(), 40.108, kTolerance);
    EXPECT_NEAR(n.width(), 29, kTolerance);
    // The whole text agrees with the attributes.
    const DOMRectReadOnly all = m.getActualBoundingBox(0, 11).releaseValue();
    EXPECT_NEAR(all.x(), -m.actualBoundingBoxLeft, kTolerance);
    EXPECT_NEAR(all.right(), m.actualBoundingBoxRight, kTolerance);
    EXPECT_NEAR(all.y(), -m.actualBoundingBoxAscent, kTolerance);
    EXPECT_NEAR(all.bottom(), m.actualBoundingBoxDescent, kTolerance);

    EXPECT_EQ(m.getActualBoundingBox(11, 11).exception().name, "IndexSizeError");
    EXPECT_EQ(m.getActualBoundingBox(0, 12).exception().name, "IndexSizeError");
    EXPECT_FALSE(m.getActualBoundingBox(3, 1).isException());

    // Centred from the top: a cluster counts where it begins; a range without glyphs, or with
    // only a space, is an empty box on the baseline.
    CanvasTextStyle style = styleOf("20px serif", CanvasDirection::Ltr, CanvasTextAlign::Center);
    style.baseline = CanvasTextBaseline::Top;
    const TextMetrics accents = measureText("e\u0301t a", style);
    EXPECT_NEAR(accents.width, 28.311, kTolerance);
    const DOMRectReadOnly e = accents.getActualBoundingBox(0, 2).releaseValue();
    EXPECT_NEAR(e.x(), -14.155, kTolerance);
    EXPECT_NEAR(e.y(), 1.25, kTolerance);
    EXPECT_NEAR(e.height(), 15, kTolerance);
    const DOMRectReadOnly mark = accents.getActualBoundingBox(1, 2).releaseValue();
    EXPECT_NEAR(mark.x(), -14.155, kTolerance);
    EXPECT_NEAR(mark.y(), 15.25, kTolerance);
    EXPECT_EQ(mark.width(), 0);
    const DOMRectReadOnly space = accents.getActualBoundingBox(3, 4).releaseValue();
    EXPECT_NEAR(space.x(), 0.278, kTolerance);
    EXPECT_EQ(space.height(), 0);
}

TEST(TextMetricsMethodsTest, ClustersArePositionedForAnAlignAndBaseline)
{
    const TextMetrics e = measureText("E", styleOf("40px sans-serif"));
    auto aligned = [&](CanvasTextAlign align) {
        TextClusterOptions options;
        options.align = align;
        return e.getTextClusters(options).front().x;
    };
    auto onBaseline = [&](CanvasTextBaseline baseline) {
        TextClusterOptions options;
        options.baseline = baseline;
        return e.getTextClusters(options).front().y;
    };
    EXPECT_NEAR(aligned(CanvasTextAlign::Left), 0, kTolerance);
    EXPECT_NEAR(aligned(CanvasTextAlign::Center), 13.340, kTolerance);
    EXPECT_NEAR(aligned(CanvasTextAlign::Right), 26.680, kTolerance);
    EXPECT_NEAR(onBaseline(CanvasTextBaseline::Top), -31.031, kTolerance);
    EXPECT_NEAR(onBaseline(CanvasTextBaseline::Middle), -11.031, kTolerance);
    EXPECT_NEAR(onBaseline(CanvasTextBaseline::Bottom), 8.969, kTolerance);
    EXPECT_NEAR(onBaseline(CanvasTextBaseline::Hanging), -28.8, kTolerance);
    EXPECT_NEAR(onBaseline(CanvasTextBaseline::Ideographic), 8, kTolerance);
    // Without options, the measured align made physical and the measured baseline.
    const TextCluster plain = e.getTextClusters().front();
    EXPECT_EQ(plain.align, CanvasTextAlign::Left);
    EXPECT_EQ(plain.baseline, CanvasTextBaseline::Alphabetic);
    EXPECT_EQ(plain.y, 0);

    // Runs left to right, each run's clusters in reading order.
    const TextMetrics bidi = measureText(kAbAlefBet, styleOf("50px sans-serif"));
    const auto clusters = bidi.getTextClusters();
    ASSERT_EQ(clusters.size(), 4u);
    const double x[] = {0, 27.808, 84.522, 55.615};
    for (std::uint32_t i = 0; i < 4; ++i) {
        EXPECT_EQ(clusters[i].start, i);
        EXPECT_NEAR(clusters[i].x, x[i], kTolerance);
    }

    // Emoji stay whole; ranges take the clusters they touch.
    const TextMetrics emoji = measureText("ABC \u263a\ufe0f\u2764\ufe0f", styleOf("50px serif"));
    EXPECT_EQ(emoji.getTextClusters().size(), 6u);
    const auto touched = emoji.getTextClusters(5, 7).releaseValue();
    ASSERT_EQ(touched.size(), 2u);
    EXPECT_EQ(touched[0].start, 4u);
    EXPECT_EQ(touched[1].end, 8u);
    EXPECT_EQ(emoji.getTextClusters(8, 8).exception().name, "IndexSizeError");
    EXPECT_EQ(emoji.getTextClusters(0, 9).exception().name, "IndexSizeError");
    EXPECT_TRUE(emoji.getTextClusters(3, 1).releaseValue().empty());
}

TEST(TextMetricsMethodsTest, MetricsOfNothingAnswerWithoutFailing)
{
    const TextMetrics empty = measureText("", styleOf("10px sans-serif"));
    EXPECT_TRUE(empty.getTextClusters().empty());
    EXPECT_EQ(indexAt(empty, 5), 0u);
    EXPECT_TRUE(empty.getSelectionRects(0, 0).releaseValue().empty());
    EXPECT_TRUE(empty.getActualBoundingBox(0, 0).isException());

    const TextMetrics byHand;
    EXPECT_EQ(indexAt(byHand, 3), 0u);
    EXPECT_TRUE(byHand.getTextClusters().empty());
    EXPECT_TRUE(byHand.getTextClusters(0, 0).isException());
}

} // namespace
