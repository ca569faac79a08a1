#pragma once

#include "web/canvas/CanvasRenderingContext2D.h"
#include "web/canvas/HTMLCanvasElement.h"

#include <gtest/gtest.h>

#include <array>
#include <cstdint>
#include <memory>
#include <ostream>
#include <string>

// A canvas of the given size with its context, kept alive together.
struct TestCanvas {
    std::shared_ptr<HTMLCanvasElement> element;
    CanvasRenderingContext2D* context;

    TestCanvas(unsigned width, unsigned height) : element(HTMLCanvasElement::create())
    {
        context = element->getContext2d();
        element->setWidth(width);
        element->setHeight(height);
    }
    CanvasRenderingContext2D* operator->() const { return context; }
};

// One unpremultiplied pixel.
struct RGBA {
    std::array<int, 4> channels;

    int operator[](std::size_t i) const { return channels[i]; }
    friend bool operator==(const RGBA&, const RGBA&) = default;
};

inline std::ostream& operator<<(std::ostream& out, const RGBA& c)
{
    return out << "rgba(" << c[0] << ", " << c[1] << ", " << c[2] << ", " << c[3] << ")";
}

// The unpremultiplied pixel as getImageData reports it.
inline RGBA pixelAt(const TestCanvas& canvas, int x, int y)
{
    auto data = canvas->getImageData(x, y, 1, 1);
    if (data.isException())
        return RGBA{{-1, -1, -1, -1}};
    const std::uint8_t* p = data.value()->data();
    return RGBA{{p[0], p[1], p[2], p[3]}};
}

// Whether two pixels agree within `tolerance` on every channel.
inline ::testing::AssertionResult near(const RGBA& actual, const RGBA& expected, int tolerance = 2)
{
    for (int i = 0; i < 4; ++i) {
        if (std::abs(actual[i] - expected[i]) > tolerance)
            return ::testing::AssertionFailure() << actual << " is not within " << tolerance << " of " << expected;
    }
    return ::testing::AssertionSuccess();
}

constexpr RGBA kTransparent{{0, 0, 0, 0}};
constexpr RGBA kRed{{255, 0, 0, 255}};
constexpr RGBA kGreen{{0, 128, 0, 255}};
constexpr RGBA kLime{{0, 255, 0, 255}};
constexpr RGBA kBlue{{0, 0, 255, 255}};
constexpr RGBA kBlack{{0, 0, 0, 255}};
