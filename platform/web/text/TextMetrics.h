#pragma once

// The result of measureText(), in CSS pixels. Horizontal values are relative to the
// alignment point, vertical values to the baseline chosen by textBaseline (positive
// ascent values lie above it, positive descent values below).
struct TextMetrics {
    double width = 0;
    double actualBoundingBoxLeft = 0;
    double actualBoundingBoxRight = 0;
    double fontBoundingBoxAscent = 0;
    double fontBoundingBoxDescent = 0;
    double actualBoundingBoxAscent = 0;
    double actualBoundingBoxDescent = 0;
    double emHeightAscent = 0;
    double emHeightDescent = 0;
    double hangingBaseline = 0;
    double alphabeticBaseline = 0;
    double ideographicBaseline = 0;
};
