#pragma once

#include "CGGeometry.h"

// The main screen: its scale (device pixels per point) and its bounds in points. Off the
// phone the settings app takes both from its display and window, the command from --scale.
class UIScreen {
public:
    static UIScreen& mainScreen();

    double scale() const { return scale_; }
    void setScale(double scale);
    CGRect bounds() const { return bounds_; }
    void setBounds(CGRect bounds) { bounds_ = bounds; }

private:
    double scale_ = 2.0;
    CGRect bounds_ = CGRectMake(0, 0, 390, 844);
};
