// The renderer takes a canvas's own data URL without decoding it: decodedPNGSurface() must give
// exactly what decoding the PNG gives, for every colour and alpha a file can hold.
#include "CanvasTestSupport.h"

#include "web/image/FastDeflate.h"
#include "web/image/PNGEncoder.h"

#include "platform/core/Base64.h"
#include "platform/core/UIImage.h"

#include <cairo.h>

#include <cstring>
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
    PNGImageData data{256, 256, {}};
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

TEST(PNGImageData, InconsistentDataMakesNoSurface)
{
    PNGImageData shortRows{2, 2, std::vector<unsigned char>(17, 0)};
    EXPECT_EQ(decodedPNGSurface(shortRows), nullptr);
    PNGImageData filtered{1, 1, {1, 0, 0, 0, 255}};
    EXPECT_EQ(decodedPNGSurface(filtered), nullptr);
    EXPECT_EQ(decodedPNGSurface(PNGImageData{}), nullptr);
}

} // namespace

// The checksum ends every data URL's image data: a wrong one and browsers refuse the picture.
// Lengths about every block and sum-reduction boundary, bytes from none to all ones.
TEST(PNGImageData, ChecksumMatchesZlib)
{
    std::vector<std::uint8_t> bytes(3 * 5552 + 40);
    std::uint32_t seed = 12345;
    for (int fill = 0; fill < 3; ++fill) {
        for (auto& byte : bytes) {
            seed = seed * 1103515245 + 12345;
            byte = fill == 0 ? 0xFF : fill == 1 ? std::uint8_t(seed >> 16) : 0;
        }
        for (std::size_t size : {0, 1, 15, 16, 17, 31, 32, 33, 5551, 5552, 5553, 5568, 11104, 11105, 16696}) {
            ASSERT_LE(size, bytes.size());
            std::uint32_t expected = std::uint32_t(adler32(adler32(0, nullptr, 0), bytes.data(), uInt(size)));
            ASSERT_EQ(adler32Of(bytes.data(), size), expected) << "fill " << fill << ", " << size << " bytes";
        }
    }
}
