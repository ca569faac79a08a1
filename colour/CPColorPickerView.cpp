#include "CPColorPickerView.h"

#include "CPAccessibility.h"
#include "CPBackdropView.h"
#include "CPBrightnessSlider.h"
#include "CPColorCursor.h"
#include "CPColorInfoView.h"
#include "CPColorMapView.h"

#include "pagekit/UIViewFrameAdditions.h"
#include "platform/core/SystemLog.h"

#include <QKeyEvent>
#include <QLayout>

#include <cmath>

namespace {

std::string describeRect(const CGRect& rect)
{
    auto number = [](double value) { return QString::number(value, 'g', 17).toStdString(); };
    return "{{" + number(rect.origin.x) + ", " + number(rect.origin.y) + "}, {" + number(rect.size.width) + ", " +
           number(rect.size.height) + "}}";
}

std::chrono::microseconds steadyNow()
{
    return std::chrono::duration_cast<std::chrono::microseconds>(std::chrono::steady_clock::now().time_since_epoch());
}

// Parts the picker made itself go with it; parts it was given belong to whoever gave them.
template <typename Part>
void letGo(QWidget* picker, const QPointer<Part>& part, bool made)
{
    if (!part)
        return;
    QObject::disconnect(part, nullptr, picker, nullptr);
    if (made && part->parent() == picker) {
        part->hide();
        part->deleteLater();
    }
}

template <typename Part>
void adopt(QWidget* picker, Part* part)
{
    if (part && !part->parentWidget()) {
        part->setParent(picker);
        part->show();
    }
}

} // namespace

CPColorPickerView::CPColorPickerView(QWidget* parent) : QWidget(parent), clock_(steadyNow)
{
    setFocusPolicy(Qt::StrongFocus);
    registerAccessiblePart(this, QAccessible::ColorChooser, QStringLiteral("Colour picker"));
    updateAccessibleValue();
}

CPColorPickerView::~CPColorPickerView() = default;

UIColor CPColorPickerView::color() const
{
    return UIColorFromHSVColor(hsv_);
}

void CPColorPickerView::setColor(const UIColor& color)
{
    HSVColorFromUIColor(color, &hsv_);
    UIColor stored = this->color();
    if (brightnessSlider_)
        brightnessSlider_->setColor(stored);
    if (colorInfoView_)
        colorInfoView_->setColor(stored);
    if (colorMapView_) {
        colorMapView_->setColor(stored);
        colorMapView_->setBrightness(hsv_.brightness);
    }
    updateAccessibleValue();
}

CPColorMapView* CPColorPickerView::colorMapView()
{
    if (!colorMapView_) {
        auto* map = CPColorMapView::colorMapWithFrameSaturationUpperLimit(CGRect{}, 1, this);
        map->setTileSize(1);
        // A child made after its parent was shown stays hidden until told otherwise.
        map->show();
        setColorMapView(map);
        madeColorMapView_ = true;
    }
    return colorMapView_;
}

void CPColorPickerView::setColorMapView(CPColorMapView* colorMapView)
{
    if (colorMapView == colorMapView_)
        return;
    letGo(this, colorMapView_, madeColorMapView_);
    colorMapView_ = colorMapView;
    madeColorMapView_ = false;
    if (!colorMapView)
        return;
    adopt(this, colorMapView);
    connect(colorMapView, &CPColorMapView::valueChanged, this, &CPColorPickerView::colorMapColorChanged);
    connect(colorMapView, &CPColorMapView::editingFinished, this, &CPColorPickerView::sendPendingActions);
    colorMapView->setColor(color());
    colorMapView->setBrightness(hsv_.brightness);
    if (CPColorCursor* cursor = colorMapView->colorCursor())
        cursor->setShowsFocus(hasFocus());
}

CPBrightnessSlider* CPColorPickerView::brightnessSlider()
{
    if (!brightnessSlider_) {
        auto* slider = new CPBrightnessSlider(this);
        slider->show();
        setBrightnessSlider(slider);
        madeBrightnessSlider_ = true;
    }
    return brightnessSlider_;
}

void CPColorPickerView::setBrightnessSlider(CPBrightnessSlider* brightnessSlider)
{
    if (brightnessSlider == brightnessSlider_)
        return;
    letGo(this, brightnessSlider_, madeBrightnessSlider_);
    brightnessSlider_ = brightnessSlider;
    madeBrightnessSlider_ = false;
    if (!brightnessSlider)
        return;
    adopt(this, brightnessSlider);
    connect(brightnessSlider, &CPBrightnessSlider::valueChanged, this, &CPColorPickerView::brightnessChanged);
    connect(brightnessSlider, &CPBrightnessSlider::editingFinished, this, &CPColorPickerView::sendPendingActions);
    brightnessSlider->setColor(color());
    brightnessSlider->setShowsFocus(hasFocus());
}

CPColorInfoView* CPColorPickerView::colorInfoView()
{
    if (!colorInfoView_) {
        setColorInfoView(new CPColorInfoView(this));
        madeColorInfoView_ = true;
    }
    return colorInfoView_;
}

void CPColorPickerView::setColorInfoView(CPColorInfoView* colorInfoView)
{
    if (colorInfoView == colorInfoView_)
        return;
    letGo(this, colorInfoView_, madeColorInfoView_);
    colorInfoView_ = colorInfoView;
    madeColorInfoView_ = false;
    if (!colorInfoView)
        return;
    adopt(this, colorInfoView);
    colorInfoView->setColor(color());
}

void CPColorPickerView::setHeaderHeightModifier(double modifier)
{
    if (std::isfinite(modifier))
        headerHeightModifier_ = modifier;
}

void CPColorPickerView::colorMapColorChanged()
{
    if (!colorMapView_)
        return;
    // The map's own record rather than a conversion of its colour: at brightness 0 the colour
    // is black and would lose the hue and saturation the user is pointing at.
    hsv_ = colorMapView_->hsvColor();
    UIColor mapColor = colorMapView_->color();
    if (brightnessSlider_)
        brightnessSlider_->setColor(mapColor);
    if (backdropView_)
        backdropView_->setBackgroundColor(mapColor);
    if (colorInfoView_)
        colorInfoView_->setColor(color());
    updateAccessibleValue();
    sendActions();
}

void CPColorPickerView::brightnessChanged()
{
    if (!brightnessSlider_)
        return;
    hsv_.brightness = static_cast<float>(clampUnit(brightnessSlider_->brightness()));
    UIColor current = color();
    if (colorMapView_) {
        colorMapView_->setBrightness(hsv_.brightness);
        colorMapView_->setColor(current);
    }
    if (colorInfoView_)
        colorInfoView_->setColor(current);
    if (backdropView_)
        backdropView_->setBackgroundColor(current);
    updateAccessibleValue();
    sendActions();
}

std::chrono::microseconds CPColorPickerView::now() const
{
    return clock_ ? clock_() : steadyNow();
}

void CPColorPickerView::sendActions()
{
    std::chrono::microseconds time = now();
    // A clock that went backwards counts as time enough: better one event too many than none.
    bool due = !lastActionTime_ || time < *lastActionTime_ || time - *lastActionTime_ >= kMinimumActionInterval;
    if (!due) {
        pendingActions_ = true;
        return;
    }
    lastActionTime_ = time;
    pendingActions_ = false;
    emit valueChanged();
}

void CPColorPickerView::sendPendingActions()
{
    if (!pendingActions_)
        return;
    lastActionTime_ = now();
    pendingActions_ = false;
    emit valueChanged();
}

void CPColorPickerView::setClockForTesting(Clock clock)
{
    clock_ = std::move(clock);
}

bool CPColorPickerView::usingAutoLayout() const
{
    return layout() != nullptr;
}

void CPColorPickerView::layoutSubviews()
{
    if (usingAutoLayout() || layoutDone_)
        return;
    double headerHeight = headerHeightModifier_ != 0 ? headerHeightModifier_ * 64 : 153.6;
    double header = std::round(headerHeight);

    CPColorMapView* map = colorMapView();
    systemLog("map frame before: " + describeRect(FrameAdditions::frame(map)));
    FrameAdditions::setFrame(map, CGRectMake(0, header, width(), height() - header - 44));
    CGRect mapFrame = FrameAdditions::frame(map);
    systemLog("map frame after: " + describeRect(mapFrame));
    double mapTop = FrameAdditions::top(mapFrame);

    CPColorInfoView* info = colorInfoView();
    FrameAdditions::setFrame(info, CGRectMake(8, mapTop - 84 - 18, 66, 84));
    info->hide();

    CPBrightnessSlider* slider = brightnessSlider();
    CGRect track = CGRectMake(32, mapTop - 24 - 11, FrameAdditions::width(mapFrame) - 64, 11);
    FrameAdditions::setFrame(slider, CPBrightnessSlider::frameForAlignmentRect(track));

    if (!backdropView_) {
        backdropView_ = new CPBackdropView(this);
        backdropView_->setOpacity(0.08);
        backdropView_->show();
    }
    backdropView_->lower();
    FrameAdditions::setFrame(backdropView_, CGRectMake(0, 0, width(), height()));
    backdropView_->setBackgroundColor(map->color());

    ++layoutPassCount_;
    if (layoutPassCount_ >= 5)
        layoutDone_ = true;
}

void CPColorPickerView::resizeEvent(QResizeEvent* event)
{
    QWidget::resizeEvent(event);
    layoutSubviews();
}

void CPColorPickerView::keyPressEvent(QKeyEvent* event)
{
    int step = event->modifiers() & Qt::ShiftModifier ? kKeyboardLargeTileStep : 1;
    switch (event->key()) {
    case Qt::Key_Left: colorMapView()->moveColorCursorByTiles(-step, 0); break;
    case Qt::Key_Right: colorMapView()->moveColorCursorByTiles(step, 0); break;
    case Qt::Key_Up: colorMapView()->moveColorCursorByTiles(0, -step); break;
    case Qt::Key_Down: colorMapView()->moveColorCursorByTiles(0, step); break;
    case Qt::Key_PageUp: brightnessSlider()->stepBrightness(kKeyboardBrightnessStep); break;
    case Qt::Key_PageDown: brightnessSlider()->stepBrightness(-kKeyboardBrightnessStep); break;
    default: return QWidget::keyPressEvent(event);
    }
    event->accept();
}

void CPColorPickerView::keyReleaseEvent(QKeyEvent* event)
{
    // Held keys repeat; the change is complete only when the key comes up.
    if (!event->isAutoRepeat())
        sendPendingActions();
    QWidget::keyReleaseEvent(event);
}

void CPColorPickerView::focusInEvent(QFocusEvent* event)
{
    QWidget::focusInEvent(event);
    showFocus(true);
}

void CPColorPickerView::focusOutEvent(QFocusEvent* event)
{
    QWidget::focusOutEvent(event);
    showFocus(false);
}

void CPColorPickerView::showFocus(bool shows)
{
    if (CPColorCursor* cursor = colorMapView_ ? colorMapView_->colorCursor() : nullptr)
        cursor->setShowsFocus(shows);
    if (brightnessSlider_)
        brightnessSlider_->setShowsFocus(shows);
}

void CPColorPickerView::updateAccessibleValue()
{
    setAccessibleValue(this, CPColorInfoView::hexTextForColor(color()));
}
