#include "CanvasTestSupport.h"

#include <climits>
#include <cstring>
#include <vector>

namespace {

TEST(ImageData, ConstructorsCheckSizesAsTheStandardSays)
{
    EXPECT_EQ(ImageData::create(0, 5).exception().name, "IndexSizeError");
    EXPECT_EQ(ImageData::create(100000, 100000).exception().name, "IndexSizeError");
    TestCanvas canvas(1, 1);
    EXPECT_EQ(canvas->createImageData(100000, 100000).exception().name, "RangeError");
    EXPECT_EQ(canvas->getImageData(0, 0, 100000, -100000).exception().name, "RangeError");
    auto zeroed = ImageData::create(3, 2).releaseValue();
    EXPECT_EQ(zeroed->dataLength(), 24u);
    EXPECT_TRUE(std::all_of(zeroed->data(), zeroed->data() + 24, [](std::uint8_t b) { return b == 0; }));

    std::vector<std::uint8_t> bytes(24);
    auto keepAlive = std::make_shared<int>(0);
    EXPECT_EQ(ImageData::create(bytes.data(), 0, 1, {}, keepAlive).exception().name, "InvalidStateError");
    EXPECT_EQ(ImageData::create(bytes.data(), 22, 1, {}, keepAlive).exception().name, "InvalidStateError");
    EXPECT_EQ(ImageData::create(bytes.data(), 24, 0, {}, keepAlive).exception().name, "IndexSizeError");
    EXPECT_EQ(ImageData::create(bytes.data(), 24, 4, {}, keepAlive).exception().name, "IndexSizeError");
    EXPECT_EQ(ImageData::create(bytes.data(), 24, 3, 3u, keepAlive).exception().name, "IndexSizeError");
    auto wrapped = ImageData::create(bytes.data(), 24, 3, {}, keepAlive).releaseValue();
    EXPECT_EQ(wrapped->height(), 2u);
    EXPECT_EQ(wrapped->data(), bytes.data()); // no copy
    EXPECT_EQ(keepAlive.use_count(), 2);
    wrapped.reset();
    EXPECT_EQ(keepAlive.use_count(), 1);
}

TEST(CanvasImageData, GetImageDataUnpremultipliesAndReadsOutsideAsTransparent)
{
    TestCanvas canvas(4, 4);
    canvas->setFillStyle(std::string("rgba(255, 0, 0, 0.5)"));
    canvas->fillRect(0, 0, 2, 2);
    EXPECT_EQ(canvas->getImageData(0, 0, 0, 1).exception().name, "IndexSizeError");
    // A rectangle half outside the canvas, given by negative sizes.
    auto data = canvas->getImageData(2, 2, -4, -4).releaseValue();
    ASSERT_EQ(data->width(), 4u);
    ASSERT_EQ(data->height(), 4u);
    const std::uint8_t* p = data->data();
    EXPECT_EQ(p[0], 0);
    EXPECT_EQ(p[3], 0); // (-2, -2): outside
    const std::uint8_t* inside = p + (2 * 4 + 2) * 4;
    EXPECT_EQ(inside[0], 255);
    EXPECT_EQ(inside[3], 128);
    EXPECT_EQ(canvas->createImageData(-3, 2).value()->width(), 3u);
    EXPECT_EQ(canvas->createImageData(*data).value()->height(), 4u);
    EXPECT_EQ(canvas->getImageData(INT_MIN, INT_MIN, 1, 1).value()->data()[3], 0);
}

TEST(CanvasImageData, PutImageDataWritesRawPixelsWithinTheDirtyRectangle)
{
    TestCanvas canvas(8, 4);
    auto data = ImageData::create(4, 2).releaseValue();
    const std::uint8_t pixels[] = {255, 128, 0, 128, 10, 20, 30, 1, 200, 100, 50, 254, 7, 8, 9, 0,
                                   1, 2, 3, 255, 4, 5, 6, 255, 7, 8, 9, 255, 10, 11, 12, 255};
    std::memcpy(data->data(), pixels, sizeof pixels);
    // Transform, alpha, compositing and clip are all ignored.
    canvas->translate(3, 3);
    canvas->setGlobalAlpha(0.1);
    canvas->setGlobalCompositeOperation("xor");
    canvas->rect(0, 0, 1, 1);
    canvas->clip();
    EXPECT_FALSE(canvas->putImageData(*data, 0, 0).isException());
    // Premultiplied storage loses precision at low alpha, as in browsers.
    EXPECT_EQ(pixelAt(canvas, 0, 0), (RGBA{{255, 128, 0, 128}}));
    EXPECT_EQ(pixelAt(canvas, 1, 0), (RGBA{{0, 0, 0, 1}}));
    EXPECT_EQ(pixelAt(canvas, 2, 0), (RGBA{{200, 100, 50, 254}}));
    EXPECT_EQ(pixelAt(canvas, 3, 0), kTransparent);
    EXPECT_EQ(pixelAt(canvas, 0, 1), (RGBA{{1, 2, 3, 255}}));

    // Only the dirty rectangle, normalised and cut to the data, is written.
    canvas->clearRect(-10, -10, 100, 100);
    canvas->resetTransform();
    canvas->setGlobalCompositeOperation("source-over");
    canvas->clearRect(0, 0, 8, 4);
    EXPECT_FALSE(canvas->putImageData(*data, 4, 2, 3, 2, -2, -5).isException());
    // Data columns 1 and 2, rows 0 and 1, land at canvas columns 5 and 6, rows 2 and 3.
    EXPECT_EQ(pixelAt(canvas, 4, 3), kTransparent);
    EXPECT_EQ(pixelAt(canvas, 5, 2), (RGBA{{0, 0, 0, 1}}));
    EXPECT_EQ(pixelAt(canvas, 6, 2), (RGBA{{200, 100, 50, 254}}));
    EXPECT_EQ(pixelAt(canvas, 5, 3), (RGBA{{4, 5, 6, 255}}));
    EXPECT_EQ(pixelAt(canvas, 6, 3), (RGBA{{7, 8, 9, 255}}));
    EXPECT_EQ(pixelAt(canvas, 7, 3), kTransparent);
    EXPECT_FALSE(canvas->putImageData(*data, INT_MAX, INT_MIN).isException()); // far away: nothing, no overflow
}

TEST(CanvasImageData, RoundTripsOpaquePixelsExactly)
{
    TestCanvas canvas(16, 16);
    auto data = ImageData::create(16, 16).releaseValue();
    for (std::size_t i = 0; i < data->dataLength(); ++i)
        data->data()[i] = i % 4 == 3 ? 255 : std::uint8_t(i * 7);
    EXPECT_FALSE(canvas->putImageData(*data, 0, 0).isException());
    auto back = canvas->getImageData(0, 0, 16, 16).releaseValue();
    EXPECT_EQ(std::memcmp(back->data(), data->data(), data->dataLength()), 0);
}

} // namespace
