#include "web/text/GlyphCoverage.h"

#include <algorithm>
#include <cmath>

namespace {

// Measured from the reference's pictures: for each class, the alpha of text against that of
// the same outline filled as a path, fitted as c + c(1 - c)(a + b c + d c²) for coverage c
// (within 2.5 levels of 255 everywhere).
constexpr double kCurves[kGlyphLightnessClasses][3] = {
    {-0.0203, 0.1720, -0.3897},
    {0.0455, -0.0737, 0.0583},
    {0.0656, -0.0629, 0.0864},
    {0.0813, -0.0178, 0.0482},
    {0.1176, -0.0821, 0.1066},
    {0.1628, -0.1067, 0.0945},
    {0.2579, -0.2585, 0.1701},
    {0.4989, -0.7750, 0.5014},
};

GlyphCoverageTable makeTable(const double (&curve)[3])
{
    GlyphCoverageTable table{};
    int previous = 0;
    for (int i = 0; i < 256; ++i) {
        const double c = i / 255.0;
        const double adjusted = c + c * (1 - c) * (curve[0] + curve[1] * c + curve[2] * c * c);
        const int value = std::clamp(static_cast<int>(std::lround(adjusted * 255)), previous, 255);
        table[i] = static_cast<std::uint8_t>(value);
        previous = value;
    }
    table[0] = 0;
    table[255] = 255;
    return table;
}

} // namespace

int glyphLightnessClass(std::uint8_t red, std::uint8_t green, std::uint8_t blue)
{
    const int luma = (54 * red + 183 * green + 19 * blue) >> 8;
    return std::clamp(luma >> 5, 0, kGlyphLightnessClasses - 1);
}

const GlyphCoverageTable& glyphCoverageTable(int lightnessClass)
{
    static const std::array<GlyphCoverageTable, kGlyphLightnessClasses> tables = [] {
        std::array<GlyphCoverageTable, kGlyphLightnessClasses> all{};
        for (int i = 0; i < kGlyphLightnessClasses; ++i)
            all[i] = makeTable(kCurves[i]);
        return all;
    }();
    return tables[std::clamp(lightnessClass, 0, kGlyphLightnessClasses - 1)];
}
