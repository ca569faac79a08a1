#pragma once

#include "platform/core/CGGeometry.h"

class QWidget;

// Reading and changing one aspect of a view's frame, leaving the rest alone. The plain edge
// setters keep the opposite edge and resize (never below zero); the "M" setters move.
// The CGRect forms compute in points as the platform does; the QWidget forms apply the
// result to the widget's whole-point geometry.
namespace FrameAdditions {

CGPoint origin(const CGRect& frame);
void setOrigin(CGRect& frame, CGPoint origin);
CGSize size(const CGRect& frame);
void setSize(CGRect& frame, CGSize size);
double x(const CGRect& frame);
void setX(CGRect& frame, double x);
double y(const CGRect& frame);
void setY(CGRect& frame, double y);
double width(const CGRect& frame);
void setWidth(CGRect& frame, double width);
double height(const CGRect& frame);
void setHeight(CGRect& frame, double height);
double left(const CGRect& frame);
void setLeft(CGRect& frame, double left);
double top(const CGRect& frame);
void setTop(CGRect& frame, double top);
double right(const CGRect& frame);
void setRight(CGRect& frame, double right);
double bottom(const CGRect& frame);
void setBottom(CGRect& frame, double bottom);
double leftM(const CGRect& frame);
void setLeftM(CGRect& frame, double left);
double topM(const CGRect& frame);
void setTopM(CGRect& frame, double top);
double rightM(const CGRect& frame);
void setRightM(CGRect& frame, double right);
double bottomM(const CGRect& frame);
void setBottomM(CGRect& frame, double bottom);
double centerX(const CGRect& frame);
void setCenterX(CGRect& frame, double centerX);
double centerY(const CGRect& frame);
void setCenterY(CGRect& frame, double centerY);

CGRect frame(const QWidget* view);
void setFrame(QWidget* view, const CGRect& frame);

// Applies one of the setters above to a widget's frame: apply(view, setLeftM, 18.0).
template <typename Value>
void apply(QWidget* view, void (*setter)(CGRect&, Value), Value value)
{
    CGRect current = frame(view);
    setter(current, value);
    setFrame(view, current);
}

} // namespace FrameAdditions
