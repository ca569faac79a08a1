#pragma once

#include "platform/core/UIColor.h"
#include "platform/core/UIImage.h"

#include <QColor>
#include <QImage>
#include <QPixmap>

// The core's colours and Cairo bitmaps as Qt sees them, and back.
QColor toQColor(const UIColor& color);
UIColor toUIColor(const QColor& color);

// Shares no memory with the image; carries its scale as the device pixel ratio.
QImage toQImage(const UIImage& image);
QPixmap toQPixmap(const UIImage& image);
UIImage toUIImage(const QImage& image);
