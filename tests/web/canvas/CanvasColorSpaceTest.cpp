#include "CanvasTestSupport.h"

#include "web/canvas/Float16.h"

#include <cmath>
#include <limits>

namespace {

struct SpaceCanvas {
    std::shared_ptr<HTMLCanvasElement> element = HTMLCanvasElement::create();
    CanvasRenderingContext2D* context;

    explicit SpaceCanvas(PredefinedColorSpace space, CanvasColorType type = CanvasColorType::Unorm8)
    {
        CanvasRenderingContext2DSettings settings;
        settings.colorSpace = space;
        settings.colorType = type;
        context = element->getContext2d(settings);
        element->setWidth(8);
        element->setHeight(8);
    }
    CanvasRenderingContext2D* operator->() const { return context; }
};

RGBA readPixel(const SpaceCanvas& canvas, std::optional<PredefinedColorSpace> space, int x = 1, int y = 1)
{
    ImageDataSettings settings;
    settings.colorSpace = space;
    auto data = canvas->getImageData(x, y, 1, 1, settings);
    const std::uint8_t* p = data.value()->data();
    return RGBA{{p[0], p[1], p[2], p[3]}};
}

TEST(CanvasColorSpace, DisplayP3CanvasesStoreP3Channels)
{
    // Values Chromium reads back for the same drawing.
    SpaceCanvas canvas(PredefinedColorSpace::DisplayP3);
    canvas->setFillStyle(std::string("rgb(50, 100, 150)"));
    canvas->fillRect(0, 0, 8, 8);
    EXPECT_TRUE(near(readPixel(canvas, std::nullopt), RGBA{{62, 99, 146, 255}}, 1));
    EXPECT_TRUE(near(readPixel(canvas, PredefinedColorSpace::Srgb), RGBA{{50, 100, 150, 255}}, 1));
    EXPECT_EQ(canvas->getImageData(0, 0, 1, 1).value()->colorSpace(), PredefinedColorSpace::DisplayP3);
    EXPECT_EQ(canvas->createImageData(1, 1).value()->colorSpace(), PredefinedColorSpace::DisplayP3);

    canvas->setFillStyle(std::string("color(display-p3 1 0 0)"));
    canvas->fillRect(0, 0, 8, 8);
    EXPECT_TRUE(near(readPixel(canvas, std::nullopt), RGBA{{255, 0, 0, 255}}, 0));
    canvas->setFillStyle(std::string("#f00"));
    canvas->fillRect(0, 0, 8, 8);
    EXPECT_TRUE(near(readPixel(canvas, std::nullopt), RGBA{{234, 51, 35, 255}}, 1));
}

TEST(CanvasColorSpace, ImageDataConvertsBetweenSpaces)
{
    // P3 green-cyan is outside sRGB: an sRGB canvas keeps the nearest colour it has.
    SpaceCanvas srgb(PredefinedColorSpace::Srgb);
    ImageDataSettings p3;
    p3.colorSpace = PredefinedColorSpace::DisplayP3;
    auto input = ImageData::create(1, 1, p3).releaseValue();
    std::uint8_t pixel[4] = {5, 250, 128, 255};
    std::copy_n(pixel, 4, input->data());
    EXPECT_FALSE(srgb->putImageData(*input, 1, 1).isException());
    EXPECT_TRUE(near(readPixel(srgb, PredefinedColorSpace::Srgb), RGBA{{0, 255, 112, 255}}, 1));
    EXPECT_TRUE(near(readPixel(srgb, PredefinedColorSpace::DisplayP3), RGBA{{116, 251, 129, 255}}, 2));
}

TEST(CanvasColorSpace, HalfFloatImageData)
{
    EXPECT_EQ(floatToHalf(1.0f), 0x3c00);
    EXPECT_EQ(floatToHalf(-0.5f), 0xb800);
    EXPECT_EQ(floatToHalf(65504.0f), 0x7bff);
    EXPECT_EQ(floatToHalf(65520.0f), 0x7c00); // rounds up to infinity
    EXPECT_EQ(floatToHalf(std::numeric_limits<float>::infinity()), 0x7c00);
    EXPECT_TRUE(std::isnan(halfToFloat(floatToHalf(NAN))));
    EXPECT_EQ(floatToHalf(5.960464477539063e-8f), 0x0001); // smallest subnormal
    EXPECT_EQ(floatToHalf(1.0f + 1.0f / 2048), 0x3c00);   // a tie rounds to even
    for (std::uint32_t h = 0; h < 0x7c00; ++h)
        ASSERT_EQ(floatToHalf(halfToFloat(std::uint16_t(h))), h);

    SpaceCanvas canvas(PredefinedColorSpace::Srgb);
    canvas->setFillStyle(std::string("rgba(255, 0, 51, 0.6)"));
    canvas->fillRect(0, 0, 8, 8);
    ImageDataSettings half;
    half.pixelFormat = ImageDataPixelFormat::RgbaFloat16;
    auto data = canvas->getImageData(0, 0, 2, 2, half).releaseValue();
    ASSERT_EQ(data->pixelFormat(), ImageDataPixelFormat::RgbaFloat16);
    EXPECT_EQ(data->dataLength(), 2u * 2 * 8);
    EXPECT_NEAR(halfToFloat(data->halves()[0]), 1.0, 0.002);
    EXPECT_NEAR(halfToFloat(data->halves()[2]), 0.2, 0.005); // premultiplied storage
    EXPECT_NEAR(halfToFloat(data->halves()[3]), 0.6, 0.003);
    // Back onto a cleared canvas: the same bytes again; out-of-range halves clip.
    data->halves()[4] = floatToHalf(-3.0f);
    data->halves()[5] = floatToHalf(NAN);
    data->halves()[7] = floatToHalf(9.0f);
    canvas->clearRect(0, 0, 8, 8);
    EXPECT_FALSE(canvas->putImageData(*data, 0, 0).isException());
    EXPECT_TRUE(near(readPixel(canvas, std::nullopt, 0, 0), RGBA{{255, 0, 51, 153}}, 1));
    EXPECT_TRUE(near(readPixel(canvas, std::nullopt, 1, 0), RGBA{{0, 0, 51, 255}}, 1));
}

TEST(CanvasColorSpace, HalfFloatCanvasesKeepWhatBytesCannot)
{
    ImageDataSettings p3;
    p3.colorSpace = PredefinedColorSpace::DisplayP3;
    auto input = ImageData::create(2, 1, p3).releaseValue();
    std::uint8_t pixels[8] = {5, 250, 128, 255, 200, 100, 50, 3};
    std::copy_n(pixels, 8, input->data());

    // P3 green-cyan goes beyond sRGB; a float16 sRGB canvas keeps it (below zero in red), and
    // a faint pixel keeps its colour, which premultiplied bytes would lose.
    SpaceCanvas wide(PredefinedColorSpace::Srgb, CanvasColorType::Float16);
    EXPECT_FALSE(wide->putImageData(*input, 1, 1).isException());
    EXPECT_TRUE(near(readPixel(wide, PredefinedColorSpace::DisplayP3), RGBA{{5, 250, 128, 255}}, 0));
    EXPECT_TRUE(near(readPixel(wide, PredefinedColorSpace::Srgb), RGBA{{0, 255, 112, 255}}, 1));
    EXPECT_TRUE(near(readPixel(wide, PredefinedColorSpace::DisplayP3, 2, 1), RGBA{{200, 100, 50, 3}}, 0));
    ImageDataSettings half;
    half.pixelFormat = ImageDataPixelFormat::RgbaFloat16;
    auto read = wide->getImageData(1, 1, 1, 1, half).releaseValue();
    EXPECT_NEAR(halfToFloat(read->halves()[0]), -0.499, 0.002);
    // A unorm8 canvas clips to its gamut, as before.
    SpaceCanvas narrow(PredefinedColorSpace::Srgb);
    EXPECT_FALSE(narrow->putImageData(*input, 1, 1).isException());
    EXPECT_TRUE(near(readPixel(narrow, PredefinedColorSpace::DisplayP3), RGBA{{116, 251, 129, 255}}, 2));

    // Drawing over a pixel replaces what was kept of it; pixels beside it keep theirs.
    wide->setFillStyle(std::string("#00f"));
    wide->fillRect(1, 1, 1, 1);
    EXPECT_EQ(readPixel(wide, PredefinedColorSpace::Srgb), kBlue);
    EXPECT_TRUE(near(readPixel(wide, PredefinedColorSpace::DisplayP3, 2, 1), RGBA{{200, 100, 50, 3}}, 0));
    // Resizing clears everything, the kept values too: the clipped colour drawn afterwards is
    // just that.
    EXPECT_FALSE(wide->putImageData(*input, 1, 1).isException());
    wide.element->setWidth(8);
    EXPECT_EQ(readPixel(wide, PredefinedColorSpace::DisplayP3), kTransparent);
    wide->setFillStyle(std::string("#00ff70"));
    wide->fillRect(0, 0, 8, 8);
    EXPECT_TRUE(near(readPixel(wide, PredefinedColorSpace::DisplayP3), RGBA{{116, 251, 129, 255}}, 2));
}

} // namespace
