#include "UIColor.h"

UIColor UIColor::colorWithRedGreenBlueAlpha(double red, double green, double blue, double alpha)
{
    UIColor color;
    color.isGrey_ = false;
    color.c_[0] = red;
    color.c_[1] = green;
    color.c_[2] = blue;
    color.c_[3] = alpha;
    return color;
}

UIColor UIColor::colorWithWhiteAlpha(double white, double alpha)
{
    UIColor color;
    color.isGrey_ = true;
    color.c_[0] = white;
    color.c_[1] = white;
    color.c_[2] = white;
    color.c_[3] = alpha;
    return color;
}

bool UIColor::getRedGreenBlueAlpha(double* red, double* green, double* blue, double* alpha) const
{
    if (red) *red = c_[0];
    if (green) *green = c_[1];
    if (blue) *blue = c_[2];
    if (alpha) *alpha = c_[3];
    return true;
}

bool UIColor::getWhiteAlpha(double* white, double* alpha) const
{
    if (!isGrey_)
        return false;
    if (white) *white = c_[0];
    if (alpha) *alpha = c_[3];
    return true;
}

UIColor UIColor::colorWithAlphaComponent(double alpha) const
{
    UIColor color = *this;
    color.c_[3] = alpha;
    return color;
}
