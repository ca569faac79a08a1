#pragma once

// An immutable colour. Components are the platform's floating-point values, normally 0 to 1
// but not clamped (extended colours). A colour made from white and alpha stays grey: it
// answers both getWhiteAlpha and getRedGreenBlueAlpha, while an RGB colour answers only the
// latter, as on the phone.
class UIColor {
public:
    UIColor() = default; // opaque black
    static UIColor colorWithRedGreenBlueAlpha(double red, double green, double blue, double alpha);
    static UIColor colorWithWhiteAlpha(double white, double alpha);
    static UIColor blackColor() { return colorWithWhiteAlpha(0, 1); }
    static UIColor whiteColor() { return colorWithWhiteAlpha(1, 1); }
    static UIColor clearColor() { return colorWithWhiteAlpha(0, 0); }
    static UIColor grayColor() { return colorWithWhiteAlpha(0.5, 1); }

    bool getRedGreenBlueAlpha(double* red, double* green, double* blue, double* alpha) const;
    bool getWhiteAlpha(double* white, double* alpha) const;

    // Red, green, blue and alpha whatever the colour's space (grey gives equal channels).
    double red() const { return c_[0]; }
    double green() const { return isGrey_ ? c_[0] : c_[1]; }
    double blue() const { return isGrey_ ? c_[0] : c_[2]; }
    double alpha() const { return c_[3]; }

    UIColor colorWithAlphaComponent(double alpha) const;

    bool operator==(const UIColor&) const = default;

private:
    bool isGrey_ = true;
    double c_[4] = {0, 0, 0, 1};
};
