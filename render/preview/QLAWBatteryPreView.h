#pragma once

#include "platform/core/CGGeometry.h"
#include "platform/core/PlistValue.h"

#include <QWidget>

#include <memory>

class UIImageView;

// Render settings that a preview and its owner share: the preview writes its own icon height
// into them before each render, and the owner changes colours or the level in place.
using SharedRenderSettings = std::shared_ptr<PlistDict>;

// A small rounded panel in two halves, the battery drawn for a light status bar on the left
// and for a dark one on the right. Each half renders its own settings when it has them, else
// the shared `batterySettings`; a half with neither stays empty.
//
// Renders happen when the panel is made with settings, on every layout pass and when the owner
// asks, but only while the panel is on screen: a panel scrolled out of sight renders when it
// is next painted, so that a long list does not draw rows nobody sees.
class QLAWBatteryPreView : public QWidget {
    Q_OBJECT

public:
    static constexpr double kDefaultBatteryImageHeight = 26.0;

    explicit QLAWBatteryPreView(CGRect frame, QWidget* parent = nullptr);
    QLAWBatteryPreView(CGRect frame, SharedRenderSettings settings, QWidget* parent = nullptr);

    void refreshBattery();
    void layoutSubviews();
    void setupViews();

    const SharedRenderSettings& batterySettings() const { return batterySettings_; }
    void setBatterySettings(SharedRenderSettings settings) { batterySettings_ = std::move(settings); }
    const SharedRenderSettings& lightSettings() const { return lightSettings_; }
    void setLightSettings(SharedRenderSettings settings) { lightSettings_ = std::move(settings); }
    const SharedRenderSettings& darkSettings() const { return darkSettings_; }
    void setDarkSettings(SharedRenderSettings settings) { darkSettings_ = std::move(settings); }
    float batteryImageHeight() const { return batteryImageHeight_; }
    // Also places the icons anew; the next refresh renders at the new height.
    void setBatteryImageHeight(float height);

    QWidget* lightView() const { return lightView_; }
    QWidget* darkView() const { return darkView_; }
    UIImageView* lightBatteryView() const { return lightBatteryView_; }
    UIImageView* darkBatteryView() const { return darkBatteryView_; }

    // Whether a refresh is waiting for the panel to come on screen.
    bool isRefreshPending() const { return refreshPending_; }

protected:
    void resizeEvent(QResizeEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private:
    void placeHalves();
    void renderHalves();
    bool isOnScreen() const;

    SharedRenderSettings batterySettings_;
    SharedRenderSettings lightSettings_;
    SharedRenderSettings darkSettings_;
    float batteryImageHeight_ = static_cast<float>(kDefaultBatteryImageHeight);
    QWidget* lightView_ = nullptr;
    QWidget* darkView_ = nullptr;
    UIImageView* lightBatteryView_ = nullptr;
    UIImageView* darkBatteryView_ = nullptr;
    QWidget* border_ = nullptr;
    bool refreshPending_ = false;
};
