#pragma once

#include "platform/core/UIColor.h"

#include <QFont>
#include <QWidget>

#include <optional>
#include <string_view>

// The platform view's properties that Qt's QWidget lacks, kept on the widget.
namespace UIView {

// The tint colour set on the view itself (nothing: inherit from the superview).
std::optional<UIColor> tintColor(const QWidget* view);
void setTintColor(QWidget* view, std::optional<UIColor> color);
// The colour the view draws its tinted parts in: its own tint, else its nearest tinted
// ancestor's, else the system blue.
UIColor effectiveTintColor(const QWidget* view);

// The system's default tint: red 0, green 122/255, blue 1.
UIColor systemBlueColor();

// The layer's rounded corners, clipped when masksToBounds.
double cornerRadius(const QWidget* view);
void setCornerRadius(QWidget* view, double radius);
bool masksToBounds(const QWidget* view);
void setMasksToBounds(QWidget* view, bool masks);

// A number the owner gives a view to find it again among its superview's subviews.
int tag(const QWidget* view);
void setTag(QWidget* view, int tag);
// The view itself or its first descendant (depth first) with the tag, or null. Tag 0 is no tag.
QWidget* viewWithTag(QWidget* view, int tag);

} // namespace UIView

// The system font at a size in points, and the fonts that pages ask for by name
// ("HelveticaNeue-Light", "Helvetica"), mapped onto the desktop's closest family.
QFont systemFont(double points, QFont::Weight weight = QFont::Normal);
QFont fontWithName(std::string_view name, double points);
