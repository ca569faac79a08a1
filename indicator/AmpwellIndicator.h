#pragma once

#include "BatteryState.h"
#include "IndicatorState.h"

#include "platform/core/UIImage.h"

#include <QImage>
#include <QMenu>
#include <QSystemTrayIcon>
#include <QObject>
#include <QPointer>

#include <optional>
#include <set>
#include <string>

class PowerSources;
class QFileSystemWatcher;

// What the command line fixes instead of asking the system.
struct IndicatorOverrides {
    std::optional<double> level;
    std::optional<bool> charging;
    std::optional<bool> fullyCharged;
    std::optional<bool> present;
    std::optional<bool> powerSaver;
    std::optional<int> appearance; // 0 light, 1 dark
    std::optional<double> height;  // points
    std::optional<double> scale;
};

// The battery in the desktop's tray: it reads the settings and the power state, draws the
// chosen theme's battery and shows it. It redraws when the settings announce a change, the
// battery or power profile changes, a theme file changes or the palette changes, and does
// nothing in between.
class AmpwellIndicator : public QObject {
    Q_OBJECT

public:
    static constexpr double kDefaultHeight = 22; // points, a panel's usual icon height

    explicit AmpwellIndicator(IndicatorOverrides overrides = {}, QObject* parent = nullptr);
    ~AmpwellIndicator() override;

    // Puts the icon in the tray (and waits for a tray if there is none yet).
    void showInTray();
    // Fixes parts of the state instead of asking the system, and draws again.
    void setOverrides(const IndicatorOverrides& overrides);

    BatteryState battery() const;
    IndicatorState state() const;
    double iconHeight() const;
    double iconScale() const;
    const QImage& icon() const { return icon_; }
    QString tooltip() const;
    QSystemTrayIcon* trayIcon() const { return tray_; }

public slots:
    // Reads what may have changed and draws the icon again.
    void settingsChanged();
    void refresh();

signals:
    // A new icon is ready (and handed to the tray when there is one).
    void iconChanged(const QImage& icon);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void readSettings();
    void watchThemeFiles();
    UIImage renderBattery(const IndicatorState& state);
    int panelAppearance() const;
    QColor panelTextColour() const;
    void trayAppeared();

    IndicatorOverrides overrides_;
    PowerSources* power_;
    PlistDict settings_;
    bool haveSettings_ = false;
    std::set<std::string> failedScripts_;
    QFileSystemWatcher* themeWatcher_;
    QPointer<QSystemTrayIcon> tray_;
    QPointer<QMenu> menu_;
    QImage icon_;
    bool saidNoTray_ = false;
};
