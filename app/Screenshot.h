#pragma once

#include <string>

class SettingsWindow;

// Draws the window off screen into a PNG at the given scale (device pixels per point),
// without the alerts that may stand over it. False with a reason when it cannot be written.
bool writeScreenshot(SettingsWindow& window, const std::string& path, double scale, std::string* error);
