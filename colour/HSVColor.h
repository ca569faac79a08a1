#pragma once

#include "platform/core/UIColor.h"

// A colour as hue, saturation, brightness and alpha, each 0 to 1. Hue 1 is red again.
struct HSVColor {
    float hue = 0;
    float saturation = 0;
    float brightness = 0;
    float alpha = 1;
};

// Fills the record from the colour's red, green and blue. Components outside 0..1 are clamped
// first and NaN reads as 0, so the record always holds values in range. A grey
// has hue 0 and saturation 0; black also brightness 0.
void HSVColorFromUIColor(const UIColor& color, HSVColor* hsv);
HSVColor HSVColorFromUIColor(const UIColor& color);

// As above, but where the colour does not carry a hue (a grey) or a saturation (black), those
// are taken from the record before, so a control that passes through black or grey keeps its
// place instead of jumping to red.
HSVColor HSVColorFromUIColorKeepingHue(const UIColor& color, const HSVColor& before);

// The colour back in red, green and blue; values are clamped to 0..1 (NaN: 0).
UIColor UIColorFromHSVColor(const HSVColor& hsv);
UIColor colorWithHueSaturationBrightnessAlpha(double hue, double saturation, double brightness, double alpha);

// 0..1, NaN as 0: the one rule for values handed to the picker's controls.
double clampUnit(double value);
