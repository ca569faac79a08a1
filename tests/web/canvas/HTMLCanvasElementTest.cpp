#include "CanvasTestSupport.h"

#include "platform/core/Base64.h"

#include <cairo.h>

#include <cstring>

namespace {

struct PNGReader {
    const std::vector<std::uint8_t>& bytes;
    std::size_t offset = 0;
};

cairo_status_t readPNG(void* closure, unsigned char* data, unsigned length)
{
    auto* reader = static_cast<PNGReader*>(closure);
    if (reader->offset + length > reader->bytes.size())
        return CAIRO_STATUS_READ_ERROR;
    std::memcpy(data, reader->bytes.data() + reader->offset, length);
    reader->offset += length;
    return CAIRO_STATUS_SUCCESS;
}

// Decodes a data URL with Cairo's PNG reader (libpng), as the battery renderer does.
cairo_surface_t* decodeDataURL(const std::string& url)
{
    const std::string prefix = "data:image/png;base64,";
    if (url.compare(0, prefix.size(), prefix) != 0)
        return nullptr;
    auto bytes = Base64::decode(std::string_view(url).substr(prefix.size()));
    if (!bytes)
        return nullptr;
    PNGReader reader{*bytes};
    cairo_surface_t* surface = cairo_image_surface_create_from_png_stream(readPNG, &reader);
    if (cairo_surface_status(surface) != CAIRO_STATUS_SUCCESS) {
        cairo_surface_destroy(surface);
        return nullptr;
    }
    return surface;
}

TEST(HTMLCanvasElement, HasTheDefaultSizeAndOneContext)
{
    auto canvas = HTMLCanvasElement::create();
    EXPECT_EQ(canvas->width(), 300u);
    EXPECT_EQ(canvas->height(), 150u);
    auto* context = canvas->getContext2d();
    EXPECT_EQ(canvas->getContext2d(), context);
    EXPECT_EQ(&context->canvas(), canvas.get());
    canvas->setWidth(0x80000000u);
    EXPECT_EQ(canvas->width(), 300u);
    canvas->setHeight(0xffffffffu);
    EXPECT_EQ(canvas->height(), 150u);
}

TEST(HTMLCanvasElement, ToDataURLGivesAPNGThatDecodesToTheSamePixels)
{
    TestCanvas canvas(37, 23);
    canvas->setFillStyle(std::string("rgba(0, 128, 255, 0.5)"));
    canvas->fillRect(3, 3, 20, 10);
    canvas->setFillStyle(std::string("#f00"));
    canvas->fillRect(30, 0, 7, 23);
    std::string url = canvas.element->toDataURL("image/jpeg", 0.5); // PNG whatever the type
    cairo_surface_t* decoded = decodeDataURL(url);
    ASSERT_NE(decoded, nullptr) << url.substr(0, 40);
    ASSERT_EQ(cairo_image_surface_get_width(decoded), 37);
    ASSERT_EQ(cairo_image_surface_get_height(decoded), 23);
    cairo_surface_t* bitmap = canvas.element->bitmap();
    cairo_surface_flush(bitmap);
    for (int y = 0; y < 23; ++y) {
        const auto* ours = reinterpret_cast<const std::uint32_t*>(cairo_image_surface_get_data(bitmap) + y * cairo_image_surface_get_stride(bitmap));
        const auto* theirs = reinterpret_cast<const std::uint32_t*>(cairo_image_surface_get_data(decoded) + y * cairo_image_surface_get_stride(decoded));
        for (int x = 0; x < 37; ++x)
            ASSERT_EQ(ours[x], theirs[x]) << x << "," << y;
    }
    cairo_surface_destroy(decoded);

    // A large empty canvas compresses well and still decodes.
    TestCanvas big(1000, 1000);
    std::string bigURL = big.element->toDataURL();
    EXPECT_LT(bigURL.size(), 100000u);
    cairo_surface_t* bigDecoded = decodeDataURL(bigURL);
    ASSERT_NE(bigDecoded, nullptr);
    cairo_surface_destroy(bigDecoded);
}

TEST(HTMLCanvasElement, CanvasesWithoutABitmapDrawNothingAndGiveEmptyURLs)
{
    TestCanvas zero(0, 10);
    EXPECT_EQ(zero.element->toDataURL(), "data:,");
    TestCanvas wide(8193, 1);
    TestCanvas huge(4097, 4097);
    TestCanvas largest(8192, 2048);
    for (auto* canvas : {&wide, &huge}) {
        EXPECT_FALSE(canvas->element->hasBitmap());
        EXPECT_EQ(canvas->element->toDataURL(), "data:,");
        (*canvas)->fillRect(0, 0, 10, 10);
        EXPECT_EQ(pixelAt(*canvas, 0, 0), kTransparent);
    }
    EXPECT_TRUE(largest.element->hasBitmap());
    // Resizing a canvas brings its bitmap back.
    huge.element->setWidth(10);
    huge.element->setHeight(10);
    huge->fillRect(0, 0, 10, 10);
    EXPECT_EQ(pixelAt(huge, 5, 5), kBlack);
}

TEST(HTMLCanvasElement, OpaqueContextsStartBlackAndStayOpaque)
{
    auto canvas = HTMLCanvasElement::create();
    CanvasRenderingContext2DSettings settings;
    settings.alpha = false;
    auto* context = canvas->getContext2d(settings);
    canvas->setWidth(4);
    canvas->setHeight(4);
    EXPECT_FALSE(context->getContextAttributes().alpha);
    auto data = context->getImageData(0, 0, 1, 1).releaseValue();
    EXPECT_EQ(data->data()[3], 255);
    context->setFillStyle(std::string("rgba(255, 0, 0, 0.5)"));
    context->fillRect(0, 0, 4, 4);
    context->clearRect(0, 0, 2, 4);
    auto after = context->getImageData(0, 0, 4, 1).releaseValue();
    EXPECT_EQ(after->data()[3], 255);
    EXPECT_EQ(after->data()[0], 0);
    EXPECT_EQ(after->data()[12], 128);
}

} // namespace
