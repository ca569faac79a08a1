#include "QLAWBatteryPreView.h"

#include "render/QLAWBatteryRenderer.h"

#include "pagekit/UIViewFrameAdditions.h"
#include "platform/core/UIScreen.h"
#include "platform/qt/UIImageView.h"
#include "platform/qt/UIView.h"

#include <QPainter>
#include <QPainterPath>

namespace {

constexpr double kCornerRadius = 8.0;
constexpr double kBorderDevicePixels = 1.5;
constexpr double kLightHalfWhite = 0.95;
constexpr double kDarkHalfWhite = 0.15;

QPainterPath roundedBounds(const QWidget* panel)
{
    QPainterPath path;
    double radius = UIView::masksToBounds(panel) ? UIView::cornerRadius(panel) : 0;
    path.addRoundedRect(QRectF(panel->rect()), radius, radius);
    return path;
}

// One half of the panel: its grey, kept inside the panel's rounded corners.
class PreviewHalf : public QWidget {
public:
    PreviewHalf(double white, QWidget* panel) : QWidget(panel), panel_(panel), colour_(QColor::fromRgbF(white, white, white))
    {
        setAttribute(Qt::WA_TransparentForMouseEvents);
    }

protected:
    void paintEvent(QPaintEvent*) override
    {
        QPainter painter(this);
        painter.setRenderHint(QPainter::Antialiasing);
        painter.fillPath(roundedBounds(panel_).translated(-pos()), colour_);
    }

private:
    QWidget* panel_;
    QColor colour_;
};

// The panel's outline, drawn over both halves as a layer border is.
class PanelBorder : public QWidget {
public:
    explicit PanelBorder(QWidget* panel) : QWidget(panel) { setAttribute(Qt::WA_TransparentForMouseEvents); }

protected:
    void paintEvent(QPaintEvent*) override
    {
        double width = kBorderDevicePixels / UIScreen::mainScreen().scale();
        double radius = std::max(0.0, UIView::cornerRadius(parentWidget()) - width / 2);
        QPainter painter(this);
        painter.setRenderHint(QPainter::Antialiasing);
        painter.setPen(QPen(Qt::black, width));
        painter.setBrush(Qt::NoBrush);
        painter.drawRoundedRect(QRectF(rect()).adjusted(width / 2, width / 2, -width / 2, -width / 2), radius, radius);
    }
};

void showRender(UIImageView* view, const SharedRenderSettings& settings, float height, int style)
{
    if (!settings) {
        view->setImage(UIImage());
        return;
    }
    settings->set("height", static_cast<double>(height));
    view->setImage(QLAWBatteryRenderer::renderBatteryImageWithSettingsForStyle(*settings, style));
}

} // namespace

QLAWBatteryPreView::QLAWBatteryPreView(CGRect frame, QWidget* parent) : QLAWBatteryPreView(frame, nullptr, parent) {}

QLAWBatteryPreView::QLAWBatteryPreView(CGRect frame, SharedRenderSettings settings, QWidget* parent)
    : QWidget(parent), batterySettings_(std::move(settings))
{
    FrameAdditions::setFrame(this, frame);
    setAccessibleName(QStringLiteral("Battery preview"));
    setupViews();
    if (batterySettings_)
        refreshBattery();
}

void QLAWBatteryPreView::setupViews()
{
    UIView::setCornerRadius(this, kCornerRadius);
    UIView::setMasksToBounds(this, true);
    lightView_ = new PreviewHalf(kLightHalfWhite, this);
    darkView_ = new PreviewHalf(kDarkHalfWhite, this);
    lightBatteryView_ = new UIImageView(UIImage(), lightView_);
    darkBatteryView_ = new UIImageView(UIImage(), darkView_);
    for (UIImageView* battery : {lightBatteryView_, darkBatteryView_})
        battery->setContentMode(UIImageView::ContentMode::Center);
    lightBatteryView_->setAccessibleName(QStringLiteral("On a light background"));
    darkBatteryView_->setAccessibleName(QStringLiteral("On a dark background"));
    border_ = new PanelBorder(this);
    placeHalves();
}

void QLAWBatteryPreView::placeHalves()
{
    CGRect bounds = FrameAdditions::frame(this);
    double half = bounds.size.width / 2;
    double height = bounds.size.height;
    FrameAdditions::setFrame(lightView_, CGRectMake(0, 0, half, height));
    FrameAdditions::setFrame(darkView_, CGRectMake(half, 0, half, height));
    CGRect battery = CGRectMake(0, (height - batteryImageHeight_) / 2, half, batteryImageHeight_);
    FrameAdditions::setFrame(lightBatteryView_, battery);
    FrameAdditions::setFrame(darkBatteryView_, battery);
    border_->setGeometry(rect());
    border_->raise();
}

void QLAWBatteryPreView::setBatteryImageHeight(float height)
{
    batteryImageHeight_ = height;
    placeHalves();
}

void QLAWBatteryPreView::layoutSubviews()
{
    placeHalves();
    refreshBattery();
}

void QLAWBatteryPreView::refreshBattery()
{
    if (isOnScreen()) {
        renderHalves();
        return;
    }
    refreshPending_ = true;
    update();
}

void QLAWBatteryPreView::renderHalves()
{
    refreshPending_ = false;
    showRender(lightBatteryView_, lightSettings_ ? lightSettings_ : batterySettings_, batteryImageHeight_, 0);
    showRender(darkBatteryView_, darkSettings_ ? darkSettings_ : batterySettings_, batteryImageHeight_, 1);
}

bool QLAWBatteryPreView::isOnScreen() const
{
    return isVisible() && !visibleRegion().isEmpty();
}

void QLAWBatteryPreView::resizeEvent(QResizeEvent* event)
{
    QWidget::resizeEvent(event);
    layoutSubviews();
}

void QLAWBatteryPreView::paintEvent(QPaintEvent*)
{
    // The halves paint after the panel, so what is rendered here shows in this same pass.
    if (refreshPending_)
        renderHalves();
}
