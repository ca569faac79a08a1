#pragma once

#include "IndicatorState.h"

#include "platform/core/UIImage.h"

#include <QColor>
#include <QImage>

// The tray icon: the theme's battery with the percentage before it and the charging bolt after
// it, as the state asks, `height` points high at `scale` device pixels a point. Parts without
// a colour of their own take the panel's text colour.
QImage composeIndicatorIcon(const IndicatorState& state, const UIImage& battery, double height, double scale,
                            const QColor& panelText);

// The icon while Ampwell is off: the icon theme's battery for the level and charging state
// (freedesktop names, symbolic ones first), else a plain battery of our own.
QImage standardBatteryIcon(int level, bool charging, double height, double scale, const QColor& panelText);

// The names asked of the icon theme for a level, most specific first.
QStringList standardBatteryIconNames(int level, bool charging);
