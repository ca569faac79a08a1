#include "UIScreen.h"

#include <cmath>

UIScreen& UIScreen::mainScreen()
{
    static UIScreen screen;
    return screen;
}

void UIScreen::setScale(double scale)
{
    if (std::isfinite(scale) && scale > 0)
        scale_ = scale;
}
