#pragma once

#include "QLAWSettingsController.h"

// "Color Options": the main and base colours for light and dark status bars, the colours of
// charging, low charge and low-power mode with their switches, the shared base colour and the
// status-bar colours. Its buttons swap or copy colours in one step; colour rows open the
// picker.
//
// The "light" section edits the "dark" keys: those are the colours drawn on a light status bar.
class QLAWSettingsColorOptionsController : public QLAWSettingsController {
    Q_OBJECT
    AMPWELL_OBJC_CLASS()

public:
    void loadView() override;
    std::string customTitle() { return "Choices..."; }
    EntryTable customSpecifiers();

    void pullBaseToStatus();
    void pullMainToStatus();
    void swapMainWithBaseLight();
    void swapMainWithBaseDark();
    void swapLightAndDarkColors();
    // Main and base change places; the base keeps its transparency and the main colour is
    // opaque. The pair is the dark one when the settings hold it, else the light one.
    static PlistDict swapColorsRetainingAlphas(const PlistDict& settings);

private:
    // The colours as the rows show them: stored, else the row's default.
    PlistDict shownColors(const std::vector<std::string>& keys);
    // Writes the changed colours, announces them and shows them.
    void store(const PlistDict& changed);
};
