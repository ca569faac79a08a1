#pragma once

#include "UIImage.h"

// Mirrors a rendered battery: axis 0 (and any value other than 1 and 2) turns the image upside
// down, axis 1 mirrors it left to right, axis 2 does both. The result keeps the image's scale.
UIImage flippedImageByAxis(const UIImage& image, int axis);
