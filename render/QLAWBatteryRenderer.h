#pragma once

#include "platform/core/PlistValue.h"
#include "platform/core/UIImage.h"

#include <cstdint>
#include <string>
#include <string_view>

// Turns one style's render settings into a battery image: calls the theme script in the one
// shared web view, decodes the PNG data URL it returns at the screen's scale and mirrors it
// as the settings ask.
//
// A script that once ran past the time or memory limit is not run again in this process: a
// looping theme would otherwise cost its time limit on every repaint of a list that shows it.
// Nothing else is remembered between renders.
class QLAWBatteryRenderer {
public:
    // Nil when the script is missing or invalid, throws, runs out of time, or returns no PNG
    // data URL; then *failure (when given) says why in one line. The style is not consulted:
    // the caller has chosen the settings for it.
    static UIImage renderBatteryImageWithSettingsForStyle(const PlistDict& settings, int style,
                                                          std::string* failure = nullptr);

    // How many scripts this process has evaluated so far.
    static std::uint64_t evaluationCount();

    // Kept inert: the real test and count happen inside the render.
    static bool isValidScript(std::string_view script);
    static int numberOfParametersInScript(std::string_view script);
};
