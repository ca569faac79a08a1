#pragma once

// Points and sizes in the platform's floating-point points.
struct CGPoint {
    double x = 0;
    double y = 0;
    bool operator==(const CGPoint&) const = default;
};

struct CGSize {
    double width = 0;
    double height = 0;
    bool operator==(const CGSize&) const = default;
};

struct CGRect {
    CGPoint origin;
    CGSize size;
    bool operator==(const CGRect&) const = default;
};

inline CGRect CGRectMake(double x, double y, double width, double height)
{
    return CGRect{{x, y}, {width, height}};
}
