#include "HSVColor.h"

#include <algorithm>
#include <cmath>

double clampUnit(double value)
{
    if (std::isnan(value))
        return 0;
    return std::clamp(value, 0.0, 1.0);
}

void HSVColorFromUIColor(const UIColor& color, HSVColor* hsv)
{
    if (!hsv)
        return;
    *hsv = HSVColorFromUIColor(color);
}

HSVColor HSVColorFromUIColor(const UIColor& color)
{
    double red = clampUnit(color.red());
    double green = clampUnit(color.green());
    double blue = clampUnit(color.blue());
    double maximum = std::max({red, green, blue});
    double minimum = std::min({red, green, blue});
    double chroma = maximum - minimum;

    double hue = 0;
    if (chroma > 0) {
        if (maximum == red)
            hue = (green - blue) / chroma;
        else if (maximum == green)
            hue = 2 + (blue - red) / chroma;
        else
            hue = 4 + (red - green) / chroma;
        hue /= 6;
        if (hue < 0)
            hue += 1;
    }
    HSVColor hsv;
    hsv.hue = static_cast<float>(hue);
    // A hue just below 1 may round up to 1 in single precision; keep it in [0, 1).
    if (hsv.hue >= 1.0f)
        hsv.hue = 0;
    hsv.saturation = static_cast<float>(maximum > 0 ? chroma / maximum : 0);
    hsv.brightness = static_cast<float>(maximum);
    hsv.alpha = static_cast<float>(clampUnit(color.alpha()));
    return hsv;
}

HSVColor HSVColorFromUIColorKeepingHue(const UIColor& color, const HSVColor& before)
{
    HSVColor hsv = HSVColorFromUIColor(color);
    if (hsv.brightness <= 0)
        hsv.saturation = static_cast<float>(clampUnit(before.saturation));
    if (hsv.brightness <= 0 || hsv.saturation <= 0)
        hsv.hue = static_cast<float>(clampUnit(before.hue));
    return hsv;
}

UIColor colorWithHueSaturationBrightnessAlpha(double hue, double saturation, double brightness, double alpha)
{
    hue = clampUnit(hue);
    saturation = clampUnit(saturation);
    brightness = clampUnit(brightness);
    alpha = clampUnit(alpha);

    double sector = hue * 6;
    if (sector >= 6)
        sector = 0;
    int index = static_cast<int>(std::floor(sector));
    double within = sector - index;
    double p = brightness * (1 - saturation);
    double q = brightness * (1 - saturation * within);
    double t = brightness * (1 - saturation * (1 - within));
    double v = brightness;
    switch (index) {
    case 0: return UIColor::colorWithRedGreenBlueAlpha(v, t, p, alpha);
    case 1: return UIColor::colorWithRedGreenBlueAlpha(q, v, p, alpha);
    case 2: return UIColor::colorWithRedGreenBlueAlpha(p, v, t, alpha);
    case 3: return UIColor::colorWithRedGreenBlueAlpha(p, q, v, alpha);
    case 4: return UIColor::colorWithRedGreenBlueAlpha(t, p, v, alpha);
    default: return UIColor::colorWithRedGreenBlueAlpha(v, p, q, alpha);
    }
}

UIColor UIColorFromHSVColor(const HSVColor& hsv)
{
    return colorWithHueSaturationBrightnessAlpha(hsv.hue, hsv.saturation, hsv.brightness, hsv.alpha);
}
