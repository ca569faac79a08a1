// The renderer takes a canvas's own data URL without decoding it: decodedPNGSurface() must give
// exactly what decoding the PNG gives, for every colour and alpha a file can hold.
#include "CanvasTestSupport.h"

#include "web/canvas/PixelConversion.h"
#include "web/image/DataURL.h"
#include "web/image/FastDeflate.h"
#include "web/image/PNGEncoder.h"

#include "platform/core/Base64.h"
#include "platform/core/UIImage.h"

#include <cairo.h>

#include <algorithm>
#include <cstring>
#include <functional>
#include <vector>

#include <zlib.h>

namespace {

bool sameSurfaces(cairo_surface_t* a, cairo_surface_t* b, std::string* where)
{
    if (!a || !b || cairo_image_surface_get_format(a) != cairo_image_surface_get_format(b)
        || cairo_image_surface_get_width(a) != cairo_image_surface_get_width(b)
        || cairo_image_surface_get_height(a) != cairo_image_surface_get_height(b)) {
        *where = "different surfaces";
        return false;
    }
    cairo_surface_flush(a);
    cairo_surface_flush(b);
    for (int y = 0; y < cairo_image_surface_get_height(a); ++y) {
        for (int x = 0; x < cairo_image_surface_get_width(a); ++x) {
            std::uint32_t p, q;
            std::memcpy(&p, cairo_image_surface_get_data(a) + y * cairo_image_surface_get_stride(a) + 4 * x, 4);
            std::memcpy(&q, cairo_image_surface_get_data(b) + y * cairo_image_surface_get_stride(b) + 4 * x, 4);
            if (p != q) {
                char text[96];
                std::snprintf(text, sizeof text, "at %d,%d: %08x decoded, %08x made", x, y, unsigned(p), unsigned(q));
                *where = text;
                return false;
            }
        }
    }
    return true;
}

UIImage decodePNG(const std::string& png)
{
    return UIImage::imageWithDataScale(reinterpret_cast<const std::uint8_t*>(png.data()), png.size(), 1);
}

TEST(PNGImageData, EveryChannelAndAlphaDecodesAsMade)
{
    // One pixel for each pair of channel value and alpha, the three colour channels differing.
    PNGImageData data{256, 256, {}, {}};
    for (int alpha = 0; alpha < 256; ++alpha) {
        data.rows.push_back(0);
        for (int value = 0; value < 256; ++value) {
            unsigned char rgba[4] = {static_cast<unsigned char>(value), static_cast<unsigned char>(255 - value),
                                     static_cast<unsigned char>(value ^ 0x5a), static_cast<unsigned char>(alpha)};
            data.rows.insert(data.rows.end(), rgba, rgba + 4);
        }
    }
    UIImage decoded = decodePNG(encodePNG(data));
    ASSERT_FALSE(decoded.isNil());
    cairo_surface_t* made = decodedPNGSurface(data);
    std::string where;
    EXPECT_TRUE(sameSurfaces(decoded.CGImage(), made, &where)) << where;
    cairo_surface_destroy(made);
}

TEST(PNGImageData, ACanvasDataURLDecodesToItsImageData)
{
    TestCanvas canvas(37, 23);
    CanvasRenderingContext2D* context = canvas.context;
    context->setFillStyle(std::string("rgba(200, 30, 90, 0.37)"));
    context->fillRect(2, 3, 30, 15);
    context->setFillStyle(std::string("rgba(10, 250, 130, 0.61)"));
    context->beginPath();
    (void)context->arc(18, 11, 9.3, 0, 6.2831853, false);
    context->fill();
    PNGImageData data;
    std::string url = canvas.element->toDataURL("image/png", {}, &data);
    ASSERT_EQ(data.width, 37);
    ASSERT_EQ(data.height, 23);
    std::optional<std::vector<std::uint8_t>> png = Base64::decode(std::string_view(url).substr(url.find("base64,") + 7));
    ASSERT_TRUE(png);
    UIImage decoded = UIImage::imageWithDataScale(*png, 1);
    cairo_surface_t* made = decodedPNGSurface(data);
    std::string where;
    EXPECT_TRUE(sameSurfaces(decoded.CGImage(), made, &where)) << where;
    cairo_surface_destroy(made);

    // "data:," has no image data.
    PNGImageData none;
    canvas.element->setWidth(0);
    EXPECT_EQ(canvas.element->toDataURL("image/png", {}, &none), "data:,");
    EXPECT_TRUE(none.rows.empty());
}

// A surface's own pixels stand for the decoded file only where they round-trip: a channel above
// its alpha (which no drawing makes, but a surface can hold) comes back otherwise.
TEST(PNGImageData, PixelsThatDoNotRoundTripAreDecoded)
{
    for (std::uint32_t odd : {0x40ff0000u, 0x00000001u, 0x80808080u, 0xff123456u}) {
        cairo_surface_t* surface = cairo_image_surface_create(CAIRO_FORMAT_ARGB32, 3, 2);
        auto* pixels = reinterpret_cast<std::uint32_t*>(cairo_image_surface_get_data(surface));
        const std::uint32_t values[] = {0, 0x80402010u, odd, 0xff00ff00u, 0x01010101u, 0};
        cairo_surface_flush(surface);
        for (int i = 0; i < 6; ++i)
            pixels[(i / 3) * cairo_image_surface_get_stride(surface) / 4 + i % 3] = values[i];
        cairo_surface_mark_dirty(surface);
        PNGImageData data;
        UIImage decoded = decodePNG(encodePNG(surface, &data));
        cairo_surface_t* made = decodedPNGSurface(data);
        std::string where;
        EXPECT_TRUE(sameSurfaces(decoded.CGImage(), made, &where)) << std::hex << odd << ": " << where;
        cairo_surface_destroy(made);
        cairo_surface_destroy(surface);
    }
}

TEST(PNGImageData, InconsistentDataMakesNoSurface)
{
    PNGImageData shortRows{2, 2, std::vector<unsigned char>(17, 0), {}};
    EXPECT_EQ(decodedPNGSurface(shortRows), nullptr);
    PNGImageData filtered{1, 1, {1, 0, 0, 0, 255}, {}};
    EXPECT_EQ(decodedPNGSurface(filtered), nullptr);
    EXPECT_EQ(decodedPNGSurface(PNGImageData{}), nullptr);
}

} // namespace

// Unpremultiplying multiplies by a reciprocal instead of dividing: it must round as the
// division does, for every channel and alpha.
TEST(PNGImageData, UnpremultiplyingRoundsAsDividing)
{
    for (unsigned alpha = 0; alpha < 256; ++alpha) {
        for (unsigned channel = 0; channel < 256; ++channel) {
            unsigned divided = alpha ? std::min(255u, (channel * 510 + alpha) / (2 * alpha)) : 0;
            ASSERT_EQ(unpremultiply(std::uint8_t(channel), std::uint8_t(alpha)), divided) << channel << "/" << alpha;
        }
    }
}

// A data URL's image data must inflate to exactly the scanlines it was made of, its checksum
// included (zlib refuses a stream whose checksum is wrong): runs longer than one match, runs of
// transparent pixels through several rows, a colour repeated at other alphas, noise, rows a
// pixel wide and rows longer than a chunk of the checksum.
TEST(PNGImageData, ScanlinesInflateAsWritten)
{
    std::uint32_t seed = 12345;
    auto next = [&] { return seed = seed * 1103515245 + 12345, std::uint8_t(seed >> 16); };
    struct Case {
        int width, height;
        std::function<std::uint32_t(int x, int y)> pixel; // RGBA, R in the lowest byte
    };
    const Case cases[] = {
        {1, 1, [](int, int) { return 0u; }},
        {1, 7, [](int, int y) { return y == 3 ? 0x80ffffffu : 0u; }},
        {300, 4, [](int, int) { return 0xff2040a0u; }},
        {41, 41, [](int x, int y) { return (x - 20) * (x - 20) + (y - 20) * (y - 20) < 300 ? std::uint32_t(x * 6) << 24 | 0xffffff : 0u; }},
        {64, 9, [](int x, int y) { return y % 3 ? 0u : std::uint32_t(x % 5) * 0x01010101u; }},
        {2100, 3, [&](int x, int) { return x % 700 < 600 ? 0u : std::uint32_t(next()) << 24 | next() << 16 | next() << 8 | next(); }},
        {33, 17, [&](int, int) { return std::uint32_t(next() & 0xc0) << 24 | 0x00ff8000u | (next() & 1); }},
    };
    for (const Case& c : cases) {
        PNGImageData data{c.width, c.height, {}, {}};
        for (int y = 0; y < c.height; ++y) {
            data.rows.push_back(0);
            for (int x = 0; x < c.width; ++x) {
                std::uint32_t p = c.pixel(x, y);
                for (int k = 0; k < 4; ++k)
                    data.rows.push_back(std::uint8_t(p >> (8 * k)));
            }
        }
        std::string stream;
        appendZlibOfScanlines(stream, data.rows.data(), std::size_t(c.width), std::size_t(c.height));
        std::vector<std::uint8_t> inflated(data.rows.size() + 16);
        uLongf size = uLongf(inflated.size());
        ASSERT_EQ(uncompress(inflated.data(), &size, reinterpret_cast<const Bytef*>(stream.data()), uLong(stream.size())), Z_OK)
            << c.width << "x" << c.height;
        inflated.resize(size);
        EXPECT_EQ(inflated, data.rows) << c.width << "x" << c.height;
    }
}

// Both forms of a data URL, for every length of trailing group: the platform's encoder is the
// measure.
TEST(PNGImageData, DataURLsInBothFormsMatchTheEncoder)
{
    const std::string bytes = std::string("\x00\xff\x10\x80\x7f\x3e\xfe", 7);
    for (std::size_t size = 0; size <= bytes.size(); ++size) {
        const std::string_view data(bytes.data(), size);
        const std::string expected
            = "data:image/png;base64," + Base64::encode(reinterpret_cast<const std::uint8_t*>(data.data()), size);
        EXPECT_EQ(base64DataURL("image/png", data), expected) << size;
        const std::u16string wide = base64DataURLUTF16("image/png", data);
        EXPECT_EQ(std::string(wide.begin(), wide.end()), expected) << size;
    }
}
