#pragma once

#include "platform/core/PlistValue.h"

// What the previews draw: {"lightSettings": ..., "darkSettings": ...}, each a dictionary with
// what one theme-script call needs ("script", "height", "level", "charging", "low", "lpm",
// "flipX", "flipY", "color", "baseColor" as colours, and "share"/"shareAlpha" when the base
// colour follows the main colour). The light style draws with the dark colour keys and the
// dark style with the light ones: colours for a light background are the "dark" settings.

// Set while the secondary theme's list is on screen: previews then use its flip settings.
extern bool useSecondarySettings;

PlistDict getBatteryRenderSettings();

// The colours of one style as every preview builds them: the main and base colour read from
// the settings (style 0, for light backgrounds, takes the "dark" keys; style 1 the "light"
// ones), defaults for what is missing or unreadable, and the base following the main colour at
// the shared alpha when sharing is on ("share" and "shareAlpha" are then set too).
void fillRenderColours(PlistDict& style, const PlistDict& settings, int appearance);
// For a profile's preview: a colour profile is shown with the current theme.
PlistDict getBatteryRenderSettingsForProfile(const PlistDict& profile);
PlistDict getLightAndDarkColors();
