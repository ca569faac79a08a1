#pragma once

#include "UIColor.h"
#include "UIImage.h"

// Recolours the image to one solid colour along its shape, at the main screen's scale.
UIImage changeImageColor(const UIImage& image, const UIColor& color);
