#include "PKTintedCells.h"

#include "platform/qt/QtConversions.h"
#include "platform/qt/UIView.h"

#include <QLabel>

#include <cmath>

const ObjCClass& PKTintedCell::staticClass()
{
    static const ObjCClass& cls = ClassBuilder<PKTintedCell>("PKTintedCell", &PSTableCell::staticClass()).build();
    return cls;
}

const ObjCClass& PKTintedSwitchCell::staticClass()
{
    static const ObjCClass& cls =
        ClassBuilder<PKTintedSwitchCell>("PKTintedSwitchCell", &PSSwitchTableCell::staticClass()).build();
    return cls;
}

const ObjCClass& PKTintedControlCell::staticClass()
{
    static const ObjCClass& cls =
        ClassBuilder<PKTintedControlCell>("PKTintedControlCell", &PSControlTableCell::staticClass()).build();
    return cls;
}

bool isSimilarToColor(const UIColor& a, const UIColor& b, double fraction)
{
    return std::fabs(a.red() - b.red()) <= fraction && std::fabs(a.green() - b.green()) <= fraction
        && std::fabs(a.blue() - b.blue()) <= fraction && std::fabs(a.alpha() - b.alpha()) <= fraction;
}

void PKTintedControlCell::layoutSubviews()
{
    PSControlTableCell::layoutSubviews();
    UIColor tint = UIView::effectiveTintColor(this);
    if (isSimilarToColor(tint, UIView::systemBlueColor(), 0.1))
        return;
    QPalette palette = textLabel()->palette();
    if (palette.color(QPalette::WindowText) == toQColor(tint))
        return;
    palette.setColor(QPalette::WindowText, toQColor(tint));
    textLabel()->setPalette(palette);
}
