#include "UIViewFrameAdditions.h"

#include <QWidget>

#include <algorithm>
#include <cmath>

namespace FrameAdditions {

namespace {

// The edge setters work in single precision, as the platform's did.
double nonNegativeSingle(double value)
{
    return static_cast<double>(std::max(static_cast<float>(value), 0.0f));
}

} // namespace

CGPoint origin(const CGRect& frame) { return frame.origin; }
void setOrigin(CGRect& frame, CGPoint origin) { frame.origin = origin; }
CGSize size(const CGRect& frame) { return frame.size; }
void setSize(CGRect& frame, CGSize size) { frame.size = size; }
double x(const CGRect& frame) { return frame.origin.x; }
void setX(CGRect& frame, double x) { frame.origin.x = x; }
double y(const CGRect& frame) { return frame.origin.y; }
void setY(CGRect& frame, double y) { frame.origin.y = y; }
double width(const CGRect& frame) { return frame.size.width; }
void setWidth(CGRect& frame, double width) { frame.size.width = width; }
double height(const CGRect& frame) { return frame.size.height; }
void setHeight(CGRect& frame, double height) { frame.size.height = height; }

double left(const CGRect& frame) { return frame.origin.x; }
void setLeft(CGRect& frame, double left)
{
    frame.size.width = nonNegativeSingle(frame.origin.x + frame.size.width - left);
    frame.origin.x = left;
}
double top(const CGRect& frame) { return frame.origin.y; }
void setTop(CGRect& frame, double top)
{
    frame.size.height = nonNegativeSingle(frame.origin.y + frame.size.height - top);
    frame.origin.y = top;
}
double right(const CGRect& frame) { return frame.origin.x + frame.size.width; }
void setRight(CGRect& frame, double right) { frame.size.width = nonNegativeSingle(right - frame.origin.x); }
double bottom(const CGRect& frame) { return frame.origin.y + frame.size.height; }
void setBottom(CGRect& frame, double bottom) { frame.size.height = nonNegativeSingle(bottom - frame.origin.y); }

double leftM(const CGRect& frame) { return frame.origin.x; }
void setLeftM(CGRect& frame, double left) { frame.origin.x = left; }
double topM(const CGRect& frame) { return frame.origin.y; }
void setTopM(CGRect& frame, double top) { frame.origin.y = top; }
double rightM(const CGRect& frame) { return frame.origin.x + frame.size.width; }
void setRightM(CGRect& frame, double right) { frame.origin.x = right - frame.size.width; }
double bottomM(const CGRect& frame) { return frame.origin.y + frame.size.height; }
void setBottomM(CGRect& frame, double bottom) { frame.origin.y = bottom - frame.size.height; }

double centerX(const CGRect& frame) { return frame.origin.x + frame.size.width / 2; }
void setCenterX(CGRect& frame, double centerX) { frame.origin.x = centerX - frame.size.width / 2; }
double centerY(const CGRect& frame) { return frame.origin.y + frame.size.height / 2; }
void setCenterY(CGRect& frame, double centerY) { frame.origin.y = centerY - frame.size.height / 2; }

CGRect frame(const QWidget* view)
{
    if (!view)
        return CGRect{};
    QRect geometry = view->geometry();
    return CGRectMake(geometry.x(), geometry.y(), geometry.width(), geometry.height());
}

void setFrame(QWidget* view, const CGRect& frame)
{
    if (!view)
        return;
    auto point = [](double value) {
        return std::isfinite(value) ? static_cast<int>(std::lround(std::clamp(value, -1e7, 1e7))) : 0;
    };
    view->setGeometry(point(frame.origin.x), point(frame.origin.y), std::max(0, point(frame.size.width)),
                      std::max(0, point(frame.size.height)));
}

} // namespace FrameAdditions
