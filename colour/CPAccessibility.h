#pragma once

#include <QAccessible>
#include <QString>

class QWidget;

// Screen readers hear the picker's parts by name and value: the colour map's hue and
// saturation, the brightness slider's percentage, the info view's hex text. A part is
// registered once, when made, with its role and name; its value is its accessible description,
// which the part keeps up to date through setAccessibleValue.
void registerAccessiblePart(QWidget* part, QAccessible::Role role, const QString& name);

// Sets the part's value text and tells a listening screen reader that it changed.
void setAccessibleValue(QWidget* part, const QString& value);
