#pragma once

#include <string>
#include <string_view>

enum UIUserInterfaceIdiom {
    UIUserInterfaceIdiomUnspecified = -1,
    UIUserInterfaceIdiomPhone = 0,
    UIUserInterfaceIdiomPad = 1,
};

// The device the pages believe they run on: a phone on system "16.0" unless configured
// (the app's --idiom and --system-version, or tests).
class UIDevice {
public:
    static UIDevice& currentDevice();

    UIUserInterfaceIdiom userInterfaceIdiom() const { return idiom_; }
    void setUserInterfaceIdiom(UIUserInterfaceIdiom idiom) { idiom_ = idiom; }
    const std::string& systemVersion() const { return systemVersion_; }
    void setSystemVersion(std::string version) { systemVersion_ = std::move(version); }

private:
    UIUserInterfaceIdiom idiom_ = UIUserInterfaceIdiomPhone;
    std::string systemVersion_ = "16.0";
};

// Compares version texts the way a numeric string search does: runs of digits as numbers
// ("10.0" > "9.3", "10.2.1" > "10.0"), other characters one by one. Returns -1, 0 or 1.
int compareVersionsNumerically(std::string_view a, std::string_view b);
